#pragma once

#include "platform/view/peer.h"

namespace kq_desktop {

class CPeerAdvice;

/// Makes the peers of all views, in Qt's widgets. It is in place while it lives.
class CQtPeerFactory final : public CPeerFactory {
public:
    explicit CQtPeerFactory(CPeerAdvice &advice);
    ~CQtPeerFactory() override;
    CQtPeerFactory(const CQtPeerFactory &) = delete;
    CQtPeerFactory &operator=(const CQtPeerFactory &) = delete;

    std::unique_ptr<CViewPeer> MakePeer(CView &view) override;

private:
    CPeerAdvice &advice_;
    CPeerFactory *former_;
};

}  // namespace kq_desktop
