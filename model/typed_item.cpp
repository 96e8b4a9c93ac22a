#include "model/typed_item.h"

#include "model/journal.h"

namespace kq_pdt {

bool CTypedItem::AppendText(kq_base::CTextBuffer &text) {
    if (undefined_ || !IsEnabled()) {
        return false;
    }
    AppendShownValue(text);
    return true;
}

void CTypedItem::OpenEditor(std::uint32_t &index, std::unique_ptr<TCellEditor> &editor) {
    if (!BeginEditor(index, editor) || !IsEnabled()) {
        return;
    }
    if (!optional_) {
        AddControl(*editor);
        return;
    }
    auto box = std::make_unique<CComboBox>(CComboBox::TMode::kFreeText);
    box->AppendEntry(NoneText().View());
    if (undefined_) {
        box->Select(1);
    } else {
        kq_base::CTextBuffer text;
        AppendShownValue(text);
        box->SetText(text.View());
    }
    editor->kind = TCellEditor::TControl::kComboBox;
    editor->control = std::move(box);
}

TParValue CTypedItem::EditedValue(const TCellEditor &editor) const {
    if (editor.kind == TCellEditor::TControl::kComboBox && editor.ComboBox().Selected() == 1 &&
        editor.ComboBox().Text() == NoneText().View()) {
        return TParValue::Undefined();
    }
    return TypedValue(editor);
}

/// What doesn't read leaves the value as it is. A value that is undefined in a control without the choice of none stays
/// undefined.
void CTypedItem::CloseEditor(std::unique_ptr<TCellEditor> &editor, bool accept) {
    if (editor && editor->control && CheckChannelEdit(*editor, accept)) {
        const TParValue edited = EditedValue(*editor);
        const bool taken_away = edited.kind == TParKind::pvUndefined;
        const bool keeps_undefined = editor->kind != TCellEditor::TControl::kComboBox && undefined_;
        const bool undefined = keeps_undefined || taken_away;
        const TParValue value = taken_away || edited.kind == TParKind::pvNone ? Stored() : edited;
        CJournal::Keep(undefined_, has_value_);
        undefined_ = undefined;
        has_value_ = true;
        Store(value);
        AssignToVariable(undefined ? TParValue::Undefined() : value);
    }
    editor.reset();
}

void CTypedItem::SetDefault(CDefaultValue value) { EditAttributes().default_value = std::move(value); }

bool CTypedItem::TakeDefault() {
    TParValue result;
    Attributes().default_value.Evaluate(result);
    return Store(result);
}

TParValue CTypedItem::PublishedValue() const { return undefined_ || !IsEnabled() ? TParValue::Undefined() : Stored(); }

void CTypedItem::CountAsGiven() {
    has_value_ = true;
    PublishValue(Stored());
}

void CTypedItem::ParameterChanged(const CVariable *variable, const TParValue &value, bool &ok) {
    const TItemAttributes &attributes = Attributes();
    if (!has_value_ && attributes.default_value.IsGiven() && !undefined_ && attributes.enable_if &&
        attributes.enable_if->Holds()) {
        CJournal::Keep(has_value_);
        has_value_ = true;
        if (TakeDefault()) {
            PublishValue(Stored());
        }
    }
    CCellItem::ParameterChanged(variable, value, ok);
}

}  // namespace kq_pdt
