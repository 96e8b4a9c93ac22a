#pragma once

#include "desktop/peers/qt_peer.h"
#include "platform/view/labels.h"

namespace kq_desktop {

class CStaticTextPeer final : public CQtPeer {
public:
    CStaticTextPeer(CStaticText &view, CPeerAdvice &advice);

protected:
    void Show(const TViewNotice &notice) override;

private:
    CStaticText &view_;
};

class CButtonPeer final : public CQtPeer {
public:
    CButtonPeer(CButton &view, CPeerAdvice &advice);
};

/// A text over what it explains; it never takes the keyboard or the mouse.
class CBubblePeer final : public CQtPeer {
public:
    CBubblePeer(CBubble &view, CPeerAdvice &advice);
    ~CBubblePeer() override;
    CBubblePeer(const CBubblePeer &) = delete;
    CBubblePeer &operator=(const CBubblePeer &) = delete;
};

}  // namespace kq_desktop
