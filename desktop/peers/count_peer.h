#pragma once

#include <string>

#include "desktop/peers/editor_peer.h"
#include "platform/view/controls.h"

namespace kq_desktop {

/// A number in a cell, with steps up and down. A number that the view doesn't take leaves the value as it was, and says
/// so when a person wants to leave by a key.
class CCountPeer final : public CEditorPeer {
public:
    CCountPeer(CIntegerCountBox &view, CPeerAdvice &advice);

protected:
    bool MayCommit() override;
    void Show(const TViewNotice &notice) override;

private:
    class CSpin;

    CSpin *Spin() const;
    void Typed(const QString &text);
    void ShowValue();

    CIntegerCountBox &view_;
    std::uint32_t before_;
    bool good_ = true;
    bool typing_ = false;
};

}  // namespace kq_desktop
