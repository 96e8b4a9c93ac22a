#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "platform/view/peer.h"
#include "platform/view/view.h"

/// Gives each view a peer that records here what it hears, as long as this lives.
class CRecordingFactory : public CPeerFactory {
public:
    CRecordingFactory() : former_(SetPeerFactory(this)) {}
    CRecordingFactory(const CRecordingFactory &) = delete;
    CRecordingFactory &operator=(const CRecordingFactory &) = delete;
    ~CRecordingFactory() override { SetPeerFactory(former_); }

    std::unique_ptr<CViewPeer> MakePeer(CView &view) override {
        made.push_back(&view);
        return std::make_unique<CPeer>(*this);
    }
    std::vector<TViewChange> Changes() const {
        std::vector<TViewChange> changes;
        for (const TViewNotice &notice : notices) {
            changes.push_back(notice.change);
        }
        return changes;
    }
    /// The notices since the last call.
    std::vector<TViewNotice> Take() { return std::exchange(notices, {}); }

    std::vector<CView *> made;  ///< the views that got a peer
    std::vector<TViewNotice> notices;
    std::vector<TRect> areas;

private:
    class CPeer : public CViewPeer {
    public:
        explicit CPeer(CRecordingFactory &factory) : factory_(factory) {}
        void ViewChanged(CView & /*view*/, const TViewNotice &notice) override { factory_.notices.push_back(notice); }
        void AreaInvalidated(CView & /*view*/, const TRect &area) override { factory_.areas.push_back(area); }

    private:
        CRecordingFactory &factory_;
    };

    CPeerFactory *former_;
};
