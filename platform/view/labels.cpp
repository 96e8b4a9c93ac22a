#include "platform/view/labels.h"

void CStaticText::SetText(std::string_view text) {
    if (text != text_) {
        text_ = text;
        Changed(TViewChange::kContent);
    }
}

bool CButton::UserPress() {
    if (!IsEnabled()) {
        return false;
    }
    if (receiver_ != nullptr) {
        MakeEvent(*receiver_, ecCommand, command_);
    }
    return true;
}
