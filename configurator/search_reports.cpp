#include "configurator/search_reports.h"

#include <algorithm>
#include <mutex>
#include <string_view>
#include <utility>

#include "platform/base/bounded_text.h"
#include "platform/base/wide_text.h"

namespace kq_pdt {

namespace {

constexpr std::size_t kTextBound = kq_base::TText::kBound;

struct TState {
    std::mutex mutex;
    CEventHandler *receiver = nullptr;  ///< null without a search
    std::vector<TSearchReport> waiting;
    const CTreeViewerPane *tree = nullptr;
};

/// Never ends: drivers may call while the process does.
TState &State() {
    static TState &state = *new TState;
    return state;
}

/// The event is posted under the mutex, so that the receiver can't end meanwhile.
void Report(TSearchReport report) {
    TState &state = State();
    const std::scoped_lock lock(state.mutex);
    if (state.receiver == nullptr) {
        return;
    }
    state.waiting.push_back(std::move(report));
    if (state.waiting.size() == 1) {
        MakeEvent(*state.receiver, ecNotice, kSearchReported);
    }
}

std::string TextOf(std::uint32_t length, const char *text) {
    return std::string(kq_base::ViewOfPair(length, text).substr(0, kTextBound));
}

std::string TextOf(std::uint32_t length, const char16_t *wide) {
    if (wide == nullptr) {
        return {};
    }
    const std::size_t limit = length == 0 ? kTextBound : std::min<std::size_t>(length, kTextBound);
    const std::u16string_view view = kq_base::UpToTerminator(wide, limit);
    std::string text(view.size(), '\0');
    kq_base::Narrow(view, text.data());
    return text;
}

}  // namespace

void BeginSearchReports(CEventHandler &receiver) {
    const std::scoped_lock lock(State().mutex);
    State().receiver = &receiver;
}

void EndSearchReports() {
    const std::scoped_lock lock(State().mutex);
    State().receiver = nullptr;
    State().waiting.clear();
}

std::vector<TSearchReport> TakeSearchReports() {
    const std::scoped_lock lock(State().mutex);
    return std::exchange(State().waiting, {});
}

void AnswerCheckedFrom(const CTreeViewerPane *tree) {
    const std::scoped_lock lock(State().mutex);
    State().tree = tree;
}

void AddSearchItem(std::uint32_t parent, std::uint32_t key, std::uint32_t name_length, const char *name,
                   std::uint32_t /*text_length*/, const char * /*text*/, std::uint32_t flags) {
    Report(TFoundItem{.parent = parent, .key = key, .name = TextOf(name_length, name), .flags = flags});
}

void AddSearchItemW(std::uint32_t parent, std::uint32_t key, std::uint32_t name_length, const char16_t *name,
                    std::uint32_t /*text_length*/, const char16_t * /*text*/, std::uint32_t flags) {
    Report(TFoundItem{.parent = parent, .key = key, .name = TextOf(name_length, name), .flags = flags});
}

void ShowSearchProgress(std::uint32_t length1, const char *line1, std::uint32_t length2, const char *line2,
                        std::uint32_t length3, const char *line3) {
    Report(TSearchLines{TextOf(length1, line1), TextOf(length2, line2), TextOf(length3, line3)});
}

void ShowSearchProgressW(std::uint32_t length1, const char16_t *line1, std::uint32_t length2, const char16_t *line2,
                         std::uint32_t length3, const char16_t *line3) {
    Report(TSearchLines{TextOf(length1, line1), TextOf(length2, line2), TextOf(length3, line3)});
}

KQTruth IsSearchItemChecked(std::uint32_t key) {
    const std::scoped_lock lock(State().mutex);
    const TTreeItem *item = State().tree == nullptr ? nullptr : State().tree->FindItem(key);
    return static_cast<KQTruth>(item != nullptr && item->Has(kTreeItemTagged));
}

}  // namespace kq_pdt
