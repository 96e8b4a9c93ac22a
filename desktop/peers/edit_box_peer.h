#pragma once

#include "desktop/peers/editor_peer.h"
#include "platform/view/controls.h"

namespace kq_desktop {

/// A line of text in a cell.
class CEditBoxPeer final : public CEditorPeer {
public:
    CEditBoxPeer(CEditBox &view, CPeerAdvice &advice);
};

}  // namespace kq_desktop
