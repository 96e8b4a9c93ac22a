#include "configurator/search_result.h"

#include "configurator/geometry.h"
#include "configurator/kq_pdt.h"
#include "configurator/texts.h"

namespace kq_pdt {

namespace {

constexpr std::uint32_t kStyle = 0x80F;
constexpr std::int32_t kWidth = 300;
constexpr std::int32_t kDepth = 250;
constexpr CTreeViewer::TParameters kTreeParameters = {.options = {1U << 2U, 1U << 5U}, .sizes = {5, 6, 34, 24}};

/// Flags of an item, as drivers give them.
constexpr std::uint32_t kMarkFlag = 2;
constexpr std::uint32_t kExclusiveFlag = 4;

}  // namespace

void CSearchTreePane::SetElementTag(TTreeItem &item, bool tagged, bool repaint) {
    if (item.Has(kTreeItemExclusive)) {
        ClearSiblingTags(item, repaint);
    }
    CTreeViewerPane::SetElementTag(item, tagged, repaint);
}

CSearchResult::CSearchResult(const CWindow &owner, KQPutModulesToParEntry *put) : put_(put) {
    Init(CentredOver(owner, kWidth, kDepth), kStyle, texts::kSearchDevices, nullptr, nullptr);
    tools_.AddButton({}, cmApply, icApply);
    tools_.AddButton({}, cmClose, icClose);
    tools_.SetReceiver(this);
    Dock(&tools_);
    tree_.Init(ClientRect(), kTreeParameters);
    Register(tree_);
    BeginSearchReports(*this);
}

void CSearchResult::TakeReports() {
    for (const TSearchReport &report : TakeSearchReports()) {
        if (const auto *const found = std::get_if<TFoundItem>(&report)) {
            AddItem(*found);
        } else if (progress_ != nullptr) {
            progress_->ShowLines(std::get<TSearchLines>(report));
        }
    }
}

void CSearchResult::AddItem(const TFoundItem &found) {
    CTreeViewerPane &pane = tree_.Pane();
    TTreeItem *const parent = found.parent == 0 ? nullptr : pane.FindItem(found.parent);
    std::uint32_t attributes = 0;
    if ((found.flags & (kMarkFlag | kExclusiveFlag)) != 0) {
        attributes |= kTreeItemHasMark;
    }
    if ((found.flags & kExclusiveFlag) != 0) {
        attributes |= kTreeItemExclusive;
    }
    // The driver can't ask for a plain item, nor for one whose key another item had before; nor put others below it.
    const bool can_be_asked_for = found.flags != 0 && pane.FindItem(found.key) == nullptr;
    pane.AddItem(parent, found.name, attributes, can_be_asked_for ? std::optional(found.key) : std::nullopt);
}

void CSearchResult::Confirm() {
    confirmed_ = true;
    if (put_ != nullptr) {
        AnswerCheckedFrom(&tree_.Pane());
        put_(IsSearchItemChecked);
        AnswerCheckedFrom(nullptr);
    }
    MakeEvent(*this, ecCommand, kEndLoop);
}

void CSearchResult::ReceiveEvent(TEvent &event) {
    if (event.Is(ecNotice) && event.code == kSearchReported) {
        TakeReports();
    } else if (event.Is(ecCommand | ecNotice) && (event.code == cmApply || event.code == cmClose)) {
        StopEvent(event);
        // What was pressed first counts.
        if (!confirmed_ && !closed_ && event.code == cmApply) {
            Confirm();
        } else if (!confirmed_ && !closed_) {
            closed_ = true;
            MakeEvent(*this, ecCommand, kCloseLoop);
        }
    }
    CWindow::ReceiveEvent(event);
}

std::uint32_t CSearchResult::Exec() {
    // A code that was meant to end another window confirms nothing.
    CWindow::Exec();
    return confirmed_ ? kEndLoop : kCloseLoop;
}

}  // namespace kq_pdt
