// The simulator's search for devices, called as a configurator calls it: on a thread, with callbacks that carry no
// context.

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <set>

#include "configurator/kq_cfg.h"
#include "driver/kq_driver.h"
#include "driver/kq_driver_w.h"
#include "platform/base/code_page.h"
#include "platform/os/events.h"
#include "tests/support/temporary_directory.h"
#include "tools/driver/module_file.h"

namespace {

using TClock = std::chrono::steady_clock;

struct TItem {
    std::uint32_t parent;
    std::uint32_t key;
    std::string name;
    std::uint32_t flags;
};

/// What the callbacks saw, and what they answer.
struct TSeen {
    std::vector<TItem> items;
    std::vector<std::string> progress;
    std::size_t cancel_after = 0;  ///< signal the event with this item, 0 for never
    kq_os::HANDLE cancel = nullptr;
    TClock::time_point cancelled;
    std::set<std::uint32_t> checked;
};
TSeen seen;

void AddItem(std::uint32_t parent, std::uint32_t key, const std::string &name, std::uint32_t flags) {
    seen.items.push_back({parent, key, name, flags});
    if (seen.items.size() == seen.cancel_after) {
        seen.cancelled = TClock::now();
        kq_os::SetEvent(seen.cancel);
    }
}

std::string Narrow(std::u16string_view wide) {
    std::string text;
    for (const char16_t character : wide) {
        const auto &all = kq_base::kCodePageToUnicode;
        text += static_cast<char>(std::find(all.begin(), all.end(), character) - all.begin());
    }
    return text;
}

extern "C" {
void AddItemA(std::uint32_t parent, std::uint32_t key, std::uint32_t name_length, const char *name, std::uint32_t,
              const char *, std::uint32_t flags) {
    AddItem(parent, key, std::string(name, name_length), flags);
}
void AddItemW(std::uint32_t parent, std::uint32_t key, std::uint32_t name_length, const char16_t *name, std::uint32_t,
              const char16_t *, std::uint32_t flags) {
    AddItem(parent, key, Narrow({name, name_length}), flags);
}
void ProgressA(std::uint32_t, const char *, std::uint32_t length, const char *line, std::uint32_t, const char *) {
    seen.progress.emplace_back(line, length);
}
void ProgressW(std::uint32_t, const char16_t *, std::uint32_t length, const char16_t *line, std::uint32_t,
               const char16_t *) {
    seen.progress.push_back(Narrow({line, length}));
}
KQTruth IsChecked(std::uint32_t key) { return static_cast<KQTruth>(seen.checked.contains(key)); }
}

/// The module and one search in it.
class CSearch {
public:
    CSearch() {
        std::string reason;
        EXPECT_TRUE(module_.Load(KQ_BINARY_DIR "/examples/simulator/simulator.dll", reason)) << reason;
        seen = {};
        seen.cancel = kq_os::CreateEventA(true, false);
    }
    ~CSearch() {
        Entry<KQDoneTreeDataEntry>("DoneTreeData")();
        kq_os::CloseHandle(seen.cancel);
    }
    CSearch(const CSearch &) = delete;
    CSearch &operator=(const CSearch &) = delete;

    /// Runs on a thread, as a host does it, up to the end.
    void Run(bool wide) {
        wide_ = wide;
        start_ = TClock::now();
        kq_os::HANDLE thread = kq_os::CreateThread(Work, this);
        EXPECT_EQ(kq_os::WaitForSingleObject(thread, 20000), kq_os::kWaitObject0);
        kq_os::CloseHandle(thread);
        end_ = TClock::now();
    }
    void Put() { Entry<KQPutModulesToParEntry>("PutModulesToPar")(IsChecked); }
    bool Found() const { return found_; }
    TClock::duration Lasted() const { return end_ - start_; }
    TClock::duration LastedAfterCancel() const { return end_ - seen.cancelled; }

private:
    template <typename TEntry>
    TEntry *Entry(const char *name) {
        return reinterpret_cast<TEntry *>(kq_os::GetProcAddress(module_.Handle(), name));
    }
    static std::uint32_t Work(void *parameter) {
        auto &search = *static_cast<CSearch *>(parameter);
        if (search.wide_) {
            KQPathW path = {u"zku\u0161ka.TMP"};
            search.found_ =
                search.Entry<KQLoadModulesTreeEntryW>("LoadModulesTreeW")(path, AddItemW, ProgressW, seen.cancel) != 0;
        } else {
            KQPath path = {"zku\x9Aka.TMP"};
            search.found_ =
                search.Entry<KQLoadModulesTreeEntry>("LoadModulesTree")(path, AddItemA, ProgressA, seen.cancel) != 0;
        }
        return 0;
    }

    CModuleFile module_;
    bool wide_ = false;
    bool found_ = false;
    TClock::time_point start_;
    TClock::time_point end_;
};

const std::string kFolder = KQ_SOURCE_DIR "/examples/simulator/";
constexpr const char *kTemporary = "zkuška.TMP";

std::string ChannelsOf(const std::string &par) {
    kq_cfg::CConfiguration configuration({});
    configuration.Translate(ReadBytes(kFolder + "simulator.pdt"), par, "");
    EXPECT_TRUE(configuration.Report().Good()) << par;
    EXPECT_TRUE(configuration.Report().messages.empty()) << par;
    std::string text;
    for (const kq_cfg::TChannel &channel : configuration.Channels()) {
        text += std::to_string(channel.first) + "-" + std::to_string(channel.last) + " " + channel.type.value_or("?") +
                " " + channel.direction.value_or("?") + "\n";
    }
    return text;
}

TEST(SimulatorSearch, TreeIsWholeAndChosenDevicesJoinTheFile) {
    const CTemporaryDirectory directory;
    const std::string before = ReadBytes(kFolder + "simulator.par");
    WriteBytes(kTemporary, before);
    CSearch search;
    search.Run(false);
    EXPECT_TRUE(search.Found());
    EXPECT_GT(search.Lasted(), std::chrono::milliseconds(2000));

    std::set<std::uint32_t> parents = {0};
    std::size_t exclusive = 0;
    for (const TItem &item : seen.items) {
        EXPECT_TRUE(parents.contains(item.parent)) << item.name;
        EXPECT_TRUE(parents.insert(item.key).second) << item.name;
        EXPECT_TRUE(item.flags == 2 || item.flags == 4) << item.name;
        exclusive += item.flags == 4 ? 1 : 0;
    }
    EXPECT_EQ(seen.items.size(), 10U);
    EXPECT_EQ(exclusive, 3U);
    EXPECT_EQ(seen.progress.size(), 8U);
    EXPECT_EQ(seen.progress.back(), "Hled\xE1 se na adrese 8 z 8");

    search.Put();
    EXPECT_EQ(ReadBytes(kTemporary), before) << "nothing is checked";
    seen.checked = {103, 202};
    search.Put();
    const std::string after = ReadBytes(kTemporary);
    EXPECT_TRUE(after.starts_with(before));
    EXPECT_EQ(ChannelsOf(after), ChannelsOf(before) + "24-31 boolean input\n32-35 shortreal input\n");
    seen.checked = {100, 200};
    search.Put();
    EXPECT_EQ(ChannelsOf(ReadBytes(kTemporary)),
              ChannelsOf(after) +
                  "36-37 shortreal input\n38-38 shortreal input\n39-46 boolean input\n"
                  "47-47 integer input\n48-51 boolean bidirectional\n")
        << "a checked group is all of its check marks, but none that is exclusive";
}

TEST(SimulatorSearch, FreeNumbersAreFound) {
    struct TRow {
        const char *par;
        const char *section;
        const char *channels;
    };
    const TRow rows[] = {
        {"", "[Signal1]", "READ, 8, 7\r\n"},
        {"[Signal1]\n[Signal3]\nChannels = READ, 5, 20", "[Signal2]", "READ, 8, 25\r\n"},
        {"[Signal1]\nChannels = READ, 5\n", "[Signal2]", "READ, 8, 12\r\n"},
        {"[Signal1]\nChannels = READ, 1, 9995\n", "[Signal2]", "READ, 8, 10001\r\n"},
        {"[Signal1]\nChannels = READ, x, 9\n[Signal2", "[Signal2]", "READ, 8, 8\r\n"},
    };
    const CTemporaryDirectory directory;
    for (const TRow &row : rows) {
        WriteBytes(kTemporary, row.par);
        CSearch search;
        seen.cancel_after = 1;
        search.Run(false);
        seen.checked = {103};
        search.Put();
        const std::string added = ReadBytes(kTemporary).substr(std::strlen(row.par));
        EXPECT_NE(added.find(row.section), std::string::npos) << row.par << " -> " << added;
        EXPECT_NE(added.find(row.channels), std::string::npos) << row.par << " -> " << added;
    }
    WriteBytes(kTemporary, "");
    CSearch search;
    seen.cancel_after = 1;
    search.Run(true);
    std::string full = "[Signal99]\r\n";
    for (int number = 1; number < 99; ++number) {
        full += "[Signal" + std::to_string(number) + "]\r\n";
    }
    WriteBytes(kTemporary, full);
    seen.checked = {100};
    search.Put();
    EXPECT_EQ(ReadBytes(kTemporary), full) << "no number is left";
}

TEST(SimulatorSearch, CancelIsHeardAtOnce) {
    const CTemporaryDirectory directory;
    WriteBytes(kTemporary, "[Simulator]\r\n");
    for (const bool wide : {false, true}) {
        CSearch search;
        seen.cancel_after = 3;
        search.Run(wide);
        EXPECT_TRUE(search.Found());
        EXPECT_EQ(seen.items.size(), 3U);
        EXPECT_EQ(seen.items[0].name, "Sb\xECrnice \xE8idel");
        EXPECT_EQ(seen.progress.size(), 3U);
        EXPECT_LT(search.LastedAfterCancel(), std::chrono::milliseconds(250)) << "less than an answer takes";
    }
    CSearch search;
    kq_os::SetEvent(seen.cancel);
    search.Run(true);
    EXPECT_FALSE(search.Found()) << "nothing was found by then";
    EXPECT_TRUE(seen.items.empty());
    EXPECT_EQ(ReadBytes(kTemporary), "[Simulator]\r\n");
}

}  // namespace
