#pragma once

#include <memory>

#include "desktop/peers/qt_peer.h"
#include "platform/view/list_box.h"

class QListView;

namespace kq_desktop {

/// A list of messages: icon, place in the text, text. A click or Enter chooses a row.
class CListPeer final : public CQtPeer {
public:
    CListPeer(CListBox &view, CPeerAdvice &advice);
    ~CListPeer() override;
    CListPeer(const CListPeer &) = delete;
    CListPeer &operator=(const CListPeer &) = delete;

protected:
    void Show(const TViewNotice &notice) override;

private:
    class CModel;

    QListView *List() const;
    void ShowSelection();

    CListBox &view_;
    std::unique_ptr<CModel> model_;
};

}  // namespace kq_desktop
