#pragma once

#include <cstdint>
#include <memory>

#include "configurator/search_progress.h"
#include "driver/kq_driver.h"
#include "platform/view/tool_box.h"
#include "platform/view/tree_viewer.h"
#include "platform/view/window.h"

namespace kq_pdt {

/// A tree in which an exclusive item is a radio button: of its siblings, it leaves none checked.
class CSearchTreePane final : public CTreeViewerPane {
public:
    void SetElementTag(TTreeItem &item, bool tagged, bool repaint) override;
};

class CSearchTreeView final : public CTreeViewer {
protected:
    std::unique_ptr<CTreeViewerPane> MakePane() override { return std::make_unique<CSearchTreePane>(); }
};

/// The window with what a driver found, in which a person checks what is to be taken over. It exists from before the
/// search begins, unshown, and takes the driver's reports.
class CSearchResult final : public CWindow {
public:
    /// The driver's entry that takes over what is checked, called when the person confirms; may be null.
    CSearchResult(const CWindow &owner, KQPutModulesToParEntry *put);
    ~CSearchResult() override { EndSearchReports(); }

    /// Where reported lines are shown; null is nowhere.
    void SetProgress(CSearchProgress *progress) { progress_ = progress; }

    /// kEndLoop if the person confirmed, otherwise kCloseLoop.
    std::uint32_t Exec() override;
    void ReceiveEvent(TEvent &event) override;

private:
    void TakeReports();
    void AddItem(const TFoundItem &found);
    void Confirm();

    KQPutModulesToParEntry *put_;
    CSearchProgress *progress_ = nullptr;
    CToolBox tools_;
    CSearchTreeView tree_;
    bool confirmed_ = false;
    bool closed_ = false;
};

}  // namespace kq_pdt
