// The entries of the device search. They belong to the module, not to a driver, and the host runs one search at a time:
// what lasts from its beginning to its end is the path of the file that takes the devices.

#include <algorithm>
#include <string>
#include <vector>

#include "chosen_devices.h"
#include "device_search.h"
#include "driver/kq_driver.h"
#include "driver/kq_driver_w.h"
#include "platform/base/code_page.h"

using simulator::TDevice;
using simulator::TItemFlags;

namespace {

std::string &SearchedPath() {
    static std::string path;
    return path;
}

class CListener : public simulator::CSearchListener {
public:
    CListener(KQAddItemEntry *add_item, KQProgressEntry *progress) : add_item_(add_item), progress_(progress) {}

    void AddItem(std::uint32_t parent, std::uint32_t key, std::string_view name, TItemFlags flags) override {
        add_item_(parent, key, Length(name), name.data(), 0, "", static_cast<std::uint32_t>(flags));
    }
    void Progress(std::string_view line1, std::string_view line2, std::string_view line3) override {
        progress_(Length(line1), line1.data(), Length(line2), line2.data(), Length(line3), line3.data());
    }

private:
    static std::uint32_t Length(std::string_view text) { return static_cast<std::uint32_t>(text.size()); }

    KQAddItemEntry *add_item_;
    KQProgressEntry *progress_;
};

std::u16string Wide(std::string_view text) {
    std::u16string wide;
    for (const char character : text) {
        wide += static_cast<char16_t>(kq_base::kCodePageToUnicode[static_cast<unsigned char>(character)]);
    }
    return wide;
}

/// A character that the code page lacks becomes a question mark.
std::string Narrow(std::u16string_view wide) {
    std::string text;
    for (const char16_t character : wide) {
        const auto &all = kq_base::kCodePageToUnicode;
        const auto *const found = std::find(all.begin(), all.end(), static_cast<std::uint16_t>(character));
        text += found != all.end() ? static_cast<char>(found - all.begin()) : '?';
    }
    return text;
}

class CWideListener : public simulator::CSearchListener {
public:
    CWideListener(KQAddItemEntryW *add_item, KQProgressEntryW *progress) : add_item_(add_item), progress_(progress) {}

    void AddItem(std::uint32_t parent, std::uint32_t key, std::string_view name, TItemFlags flags) override {
        const std::u16string wide = Wide(name);
        add_item_(parent, key, Length(wide), wide.data(), 0, u"", static_cast<std::uint32_t>(flags));
    }
    void Progress(std::string_view line1, std::string_view line2, std::string_view line3) override {
        const std::u16string wide1 = Wide(line1);
        const std::u16string wide2 = Wide(line2);
        const std::u16string wide3 = Wide(line3);
        progress_(Length(wide1), wide1.data(), Length(wide2), wide2.data(), Length(wide3), wide3.data());
    }

private:
    static std::uint32_t Length(const std::u16string &text) { return static_cast<std::uint32_t>(text.size()); }

    KQAddItemEntryW *add_item_;
    KQProgressEntryW *progress_;
};

/// What comes before the terminator, or all of it.
template <typename TCharacter, std::size_t Size>
std::basic_string_view<TCharacter> Terminated(const TCharacter (&text)[Size]) {
    return {text, static_cast<std::size_t>(std::find(text, text + Size, TCharacter()) - text)};
}

}  // namespace

extern "C" {
KQ_DRIVER_ENTRY KQLoadModulesTreeEntry LoadModulesTree;
KQ_DRIVER_ENTRY KQLoadModulesTreeEntryW LoadModulesTreeW;
KQ_DRIVER_ENTRY KQPutModulesToParEntry PutModulesToPar;
KQ_DRIVER_ENTRY KQDoneTreeDataEntry DoneTreeData;
}

KQTruth LoadModulesTree(KQPath path, KQAddItemEntry *add_item, KQProgressEntry *progress, void *cancel) {
    SearchedPath() = Terminated(path.text);
    CListener listener(add_item, progress);
    return static_cast<KQTruth>(simulator::SearchDevices(listener, cancel));
}

KQTruth LoadModulesTreeW(KQPathW path, KQAddItemEntryW *add_item, KQProgressEntryW *progress, void *cancel) {
    SearchedPath() = Narrow(Terminated(path.text));
    CWideListener listener(add_item, progress);
    return static_cast<KQTruth>(simulator::SearchDevices(listener, cancel));
}

void PutModulesToPar(KQIsCheckedEntry *is_checked) {
    std::vector<const TDevice *> chosen;
    for (const TDevice &device : simulator::kDevices) {
        const bool with_group = device.flags != TItemFlags::kExclusive && is_checked(device.group) != 0;
        if (with_group || is_checked(device.key) != 0) {
            chosen.push_back(&device);
        }
    }
    if (!chosen.empty()) {
        simulator::AppendDevices(SearchedPath(), chosen);
    }
}

void DoneTreeData() { SearchedPath().clear(); }
