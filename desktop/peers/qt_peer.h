#pragma once

#include <QPointer>
#include <QWidget>
#include <cstdint>

#include "platform/view/peer.h"
#include "platform/view/view.h"

class QIcon;

namespace kq_desktop {

class CPeerAdvice;

/// What all peers have: the view that they show and the widget in which they do, which ends with the peer. A peer reads
/// its view's state and gives what a person does to the view's operations named User...; it has no state of its own
/// beside what concerns pixels.
class CQtPeer : public CViewPeer {
public:
    ~CQtPeer() override;
    CQtPeer(const CQtPeer &) = delete;
    CQtPeer &operator=(const CQtPeer &) = delete;

    /// The peer of a view; null without one.
    static CQtPeer *Of(const CView *view);
    QWidget *Widget() const { return widget_; }
    /// Takes the widget of a view that lies in this peer's one.
    virtual void AddChild(CView &child, QWidget &widget);

    void ViewChanged(CView &view, const TViewNotice &notice) final;
    void AreaInvalidated(CView &view, const TRect &area) override;

protected:
    explicit CQtPeer(CPeerAdvice &advice) : advice_(advice) {}

    void SetWidget(QWidget *widget) { widget_ = widget; }
    CPeerAdvice &Advice() const { return advice_; }
    QIcon Icon(std::uint32_t number) const;
    /// Shows a change; visibility, enabling and focus of the widget have been handled.
    virtual void Show(const TViewNotice & /*notice*/) {}
    /// The widget that takes the keyboard.
    virtual QWidget *FocusWidget() const { return widget_; }

private:
    CPeerAdvice &advice_;
    QPointer<QWidget> widget_;
};

/// While it lives, a flag is set: what Qt reports then comes from the program and not from a person.
class CSyncing {
public:
    explicit CSyncing(bool &flag) : flag_(flag), before_(flag) { flag_ = true; }
    ~CSyncing() { flag_ = before_; }
    CSyncing(const CSyncing &) = delete;
    CSyncing &operator=(const CSyncing &) = delete;

private:
    bool &flag_;
    bool before_;
};

}  // namespace kq_desktop
