#pragma once

#include "desktop/peers/qt_peer.h"
#include "platform/view/panes.h"

class QSplitter;

namespace kq_desktop {

/// Two panes, one above the other. The lower one keeps its size when the window's changes.
class CSplitterPeer final : public CQtPeer {
public:
    CSplitterPeer(CSplitterPane &view, CPeerAdvice &advice);

    void AddChild(CView &child, QWidget &widget) override;

protected:
    void Show(const TViewNotice &notice) override;

private:
    void Resized();
    void Moved();
    bool AreBothShown() const;
    void ApplySplit(int lower);
    QSplitter *Splitter() const;

    CSplitterPane &view_;
    bool sized_ = false;
    bool syncing_ = false;
};

}  // namespace kq_desktop
