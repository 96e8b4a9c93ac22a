#include "desktop/peers/peer_factory.h"

#include "desktop/peers/combo_peer.h"
#include "desktop/peers/container_peer.h"
#include "desktop/peers/count_peer.h"
#include "desktop/peers/edit_box_peer.h"
#include "desktop/peers/label_peers.h"
#include "desktop/peers/list_peer.h"
#include "desktop/peers/menu_peer.h"
#include "desktop/peers/sheet_peer.h"
#include "desktop/peers/splitter_peer.h"
#include "desktop/peers/tab_peer.h"
#include "desktop/peers/text_peer.h"
#include "desktop/peers/tool_box_peer.h"
#include "desktop/peers/tree_peer.h"
#include "desktop/peers/window_peer.h"

namespace kq_desktop {

namespace {

template <typename TPeer, typename TView>
std::unique_ptr<CQtPeer> Make(CView &view, CPeerAdvice &advice) {
    return std::make_unique<TPeer>(static_cast<TView &>(view), advice);
}

std::unique_ptr<CQtPeer> MakeByKind(CView &view, CPeerAdvice &advice) {
    switch (view.Kind()) {
        case TViewKind::kWindow:
            return Make<CWindowPeer, CWindow>(view, advice);
        case TViewKind::kMenuBar:
            return Make<CMenuPeer, CMenuBar>(view, advice);
        case TViewKind::kToolBox:
            return Make<CToolBoxPeer, CToolBox>(view, advice);
        case TViewKind::kSplitterPane:
            return Make<CSplitterPeer, CSplitterPane>(view, advice);
        case TViewKind::kTab:
            return Make<CTabPeer, CTab>(view, advice);
        case TViewKind::kListBox:
            return Make<CListPeer, CListBox>(view, advice);
        case TViewKind::kStaticText:
            return Make<CStaticTextPeer, CStaticText>(view, advice);
        case TViewKind::kButton:
            return Make<CButtonPeer, CButton>(view, advice);
        case TViewKind::kBubble:
            return Make<CBubblePeer, CBubble>(view, advice);
        case TViewKind::kTreeViewer:
            return Make<CTreePeer, CTreeViewerPane>(view, advice);
        case TViewKind::kSheet:
            return Make<CSheetPeer, CSheetView>(view, advice);
        case TViewKind::kText:
            return Make<CTextPeer, CTextView>(view, advice);
        case TViewKind::kComboBox:
            return Make<CComboPeer, CComboBox>(view, advice);
        case TViewKind::kCountBox:
            return Make<CCountPeer, CIntegerCountBox>(view, advice);
        case TViewKind::kEditBox:
            return Make<CEditBoxPeer, CEditBox>(view, advice);
        case TViewKind::kView:
        case TViewKind::kDataContainer:
            break;
    }
    return std::make_unique<CContainerPeer>(view, advice);
}

}  // namespace

CQtPeerFactory::CQtPeerFactory(CPeerAdvice &advice) : advice_(advice), former_(SetPeerFactory(this)) {}

CQtPeerFactory::~CQtPeerFactory() { SetPeerFactory(former_); }

std::unique_ptr<CViewPeer> CQtPeerFactory::MakePeer(CView &view) {
    std::unique_ptr<CQtPeer> peer = MakeByKind(view, advice_);
    QWidget *widget = peer->Widget();
    CQtPeer *parent = CQtPeer::Of(view.Parent());
    if (widget != nullptr && parent != nullptr && parent->Widget() != nullptr) {
        parent->AddChild(view, *widget);
        if (!view.IsVisible()) {
            widget->hide();
        }
    }
    if (widget != nullptr && !view.IsEnabled()) {
        widget->setEnabled(false);
    }
    return peer;
}

}  // namespace kq_desktop
