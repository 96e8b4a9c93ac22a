#pragma once

#include "desktop/peers/editor_peer.h"
#include "platform/view/controls.h"

namespace kq_desktop {

/// A list of choices in a cell, with or without free text. A choice from the open list ends the editor where nothing
/// else can be entered.
class CComboPeer final : public CEditorPeer {
public:
    CComboPeer(CComboBox &view, CPeerAdvice &advice);
    ~CComboPeer() override;
    CComboPeer(const CComboPeer &) = delete;
    CComboPeer &operator=(const CComboPeer &) = delete;

    void Begin(const QString &typed) override;
    void OpenList() override;

protected:
    bool IsListOpen() const override;

private:
    class CCombo;

    CCombo *Combo() const;
    void Chosen(int index);

    CComboBox &view_;
    bool from_list_ = false;
};

}  // namespace kq_desktop
