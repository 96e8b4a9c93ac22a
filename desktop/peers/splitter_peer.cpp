#include "desktop/peers/splitter_peer.h"

#include <QResizeEvent>
#include <QSplitter>
#include <algorithm>
#include <functional>
#include <utility>

namespace kq_desktop {

namespace {

using TPane = CSplitterPane::TPane;

class CSplitterWidget final : public QSplitter {
public:
    explicit CSplitterWidget(std::function<void()> resized) : QSplitter(Qt::Vertical), resized_(std::move(resized)) {}

protected:
    void resizeEvent(QResizeEvent *event) override {
        QSplitter::resizeEvent(event);
        resized_();
    }

private:
    std::function<void()> resized_;
};

}  // namespace

CSplitterPeer::CSplitterPeer(CSplitterPane &view, CPeerAdvice &advice) : CQtPeer(advice), view_(view) {
    auto *splitter = new CSplitterWidget([this] { Resized(); });
    splitter->setChildrenCollapsible(false);
    QObject::connect(splitter, &QSplitter::splitterMoved, splitter, [this] { Moved(); });
    SetWidget(splitter);
}

QSplitter *CSplitterPeer::Splitter() const { return static_cast<QSplitter *>(Widget()); }

void CSplitterPeer::AddChild(CView &child, QWidget &widget) {
    const bool lower = &child == view_.Pane(TPane::kLower);
    Splitter()->insertWidget(lower ? Splitter()->count() : 0, &widget);
    Splitter()->setStretchFactor(Splitter()->indexOf(&widget), lower ? 0 : 1);
}

/// `lower` is what lies below the split: the handle and the pane.
void CSplitterPeer::ApplySplit(int lower) {
    if (Splitter()->count() == 2) {
        const CSyncing syncing(syncing_);
        lower = std::clamp(lower, 0, std::max(Splitter()->height(), 1));
        Splitter()->setSizes({Splitter()->height() - lower, std::max(lower - Splitter()->handleWidth(), 0)});
    }
}

void CSplitterPeer::Resized() {
    const TRect before = view_.Rect();
    const int lower = before.depth - view_.SplitPosition();
    if (!sized_) {
        // The views were laid out before the real size was known: the lower pane is to be as large as it was there.
        sized_ = true;
        ApplySplit(lower);
    }
    const CSyncing syncing(syncing_);
    view_.NewRect({before.x, before.y, Splitter()->width(), Splitter()->height()});
    if (AreBothShown()) {
        Moved();
    } else {
        // A pane that is hidden now comes back as large as it was.
        view_.UserSplit(Splitter()->height() - lower);
    }
}

bool CSplitterPeer::AreBothShown() const {
    return view_.IsPaneShown(TPane::kUpper) && view_.IsPaneShown(TPane::kLower) && Splitter()->count() == 2;
}

void CSplitterPeer::Moved() {
    if (AreBothShown()) {
        const CSyncing syncing(syncing_);
        view_.UserSplit(Splitter()->sizes().first());
    }
}

void CSplitterPeer::Show(const TViewNotice &notice) {
    const bool shown = notice.change == TViewChange::kVisible;
    if (!syncing_ && sized_ && (notice.change == TViewChange::kArea || shown)) {
        ApplySplit(view_.Rect().depth - view_.SplitPosition());
        // A pane gets no smaller than its widget allows.
        Moved();
    }
}

}  // namespace kq_desktop
