#include "configurator/editor_content.h"

#include "platform/view/controls.h"

namespace kq_pdt {

CEditorContent::CEditorContent(const CView &editor) {
    if (editor.Kind() == TViewKind::kEditBox) {
        text_ = static_cast<const CEditBox &>(editor).Text();
    } else if (editor.Kind() == TViewKind::kCountBox) {
        number_ = static_cast<const CIntegerCountBox &>(editor).Value();
    } else if (editor.Kind() == TViewKind::kComboBox) {
        const auto &box = static_cast<const CComboBox &>(editor);
        selected_ = box.Selected();
        text_ = box.Text();
    }
}

void CEditorContent::PutInto(CView &editor) const {
    if (editor.Kind() == TViewKind::kEditBox) {
        static_cast<CEditBox &>(editor).SetText(text_);
    } else if (editor.Kind() == TViewKind::kCountBox) {
        static_cast<CIntegerCountBox &>(editor).SetValue(number_);
    } else if (editor.Kind() == TViewKind::kComboBox) {
        auto &box = static_cast<CComboBox &>(editor);
        box.Select(selected_);
        if (selected_ == 0) {
            box.SetText(text_);
        }
    }
}

}  // namespace kq_pdt
