#include "model/string_item.h"

#include "model/var_ref_item.h"

namespace kq_pdt {

CStringItem::CStringItem() : CItem(TItemCode::kString) {}

bool CStringItem::TakeDefault() {
    TParValue result;
    Attributes().default_expression->Evaluate(result);
    if (result.kind == TParKind::pvText) {
        value_ = result.text;
    }
    return result.kind == TParKind::pvText;
}

/// Unlike a number, a text takes its default at each publishing as long as nobody gave it a value, enabled or not.
void CStringItem::Publish() {
    published_ = true;
    if (Attributes().default_expression && !has_value_ && !undefined_) {
        TakeDefault();
    }
    PublishValue(TParValue::Text(value_));
}

bool CStringItem::AppendText(kq_base::CTextBuffer &text) {
    if (undefined_ || !IsEnabled()) {
        return false;
    }
    text.Append(value_.View());
    return true;
}

void CStringItem::GetCell(std::uint32_t &index, kq_base::CTextBuffer &text, TCellField field, bool &disabled) {
    if (AnswerCell(index, text, field, disabled)) {
        text.Append(undefined_ ? NoneText().View() : value_.View());
    }
}

std::unique_ptr<CItem> CStringItem::Clone() {
    auto clone = std::make_unique<CStringItem>();
    clone->value_ = value_;
    CloneBaseInto(*clone);
    return clone;
}

void CStringItem::CopyValue(CItem *source) {
    if (source == nullptr || source->Code() != TItemCode::kString) {
        return;
    }
    CopyBaseValue(*source);
    const auto &other = static_cast<const CStringItem &>(*source);
    value_ = other.value_;
    has_value_ = other.has_value_;
    const TParValue value = TParValue::Text(value_);
    AdoptDependent(*source, value);
    PublishValue(value);
}

void CStringItem::OpenEditor(std::uint32_t &index, std::unique_ptr<TCellEditor> &editor) {
    if (!BeginEditor(index, editor) || !IsEnabled()) {
        return;
    }
    if (!optional_) {
        editor->kind = TCellEditor::TControl::kEditBox;
        editor->control = std::make_unique<CEditBox>(value_.View());
        return;
    }
    auto box = std::make_unique<CComboBox>(CComboBox::TMode::kFreeText);
    box->AppendEntry(NoneText().View());
    if (undefined_) {
        box->Select(1);
    } else {
        box->SetText(value_.View());
    }
    editor->kind = TCellEditor::TControl::kComboBox;
    editor->control = std::move(box);
}

TParValue CStringItem::EditedValue(const TCellEditor &editor) const {
    if (editor.kind == TCellEditor::TControl::kEditBox) {
        return TParValue::Text(editor.EditBox().Text());
    }
    const CComboBox &box = editor.ComboBox();
    const bool taken_away = box.Selected() == 1 && box.Text() == NoneText().View();
    return taken_away ? TParValue::Undefined() : TParValue::Text(box.Text());
}

void CStringItem::CloseEditor(std::unique_ptr<TCellEditor> &editor, bool accept) {
    if (editor && editor->control && CheckChannelEdit(*editor, accept)) {
        const TParValue edited = EditedValue(*editor);
        const bool keeps_undefined = editor->kind == TCellEditor::TControl::kEditBox && undefined_;
        const bool undefined = keeps_undefined || edited.kind == TParKind::pvUndefined;
        if (AssignToVariable(undefined ? TParValue::Undefined() : edited)) {
            if (edited.kind == TParKind::pvText) {
                value_ = edited.text;
            }
            undefined_ = undefined;
            has_value_ = true;
        }
    }
    editor.reset();
}

void CStringItem::SetAttribute(std::uint32_t keyword, std::uint32_t form, std::string_view text, CVarScope *scope) {
    CItem::SetAttribute(keyword, form, text, scope);
    if (keyword == kwLabel) {
        EditAttributes().label = text;
    } else if (keyword == kwBubble) {
        EditAttributes().bubble = text;
    } else if (keyword == kwOptional) {
        optional_ = true;
        undefined_ = true;
    }
}

void CStringItem::SetExpression(std::uint32_t keyword, std::uint32_t /*word*/,
                                std::unique_ptr<CExpression> expression) {
    if (keyword == kwDefault) {
        EditAttributes().default_expression = std::move(expression);
    }
}

bool CStringItem::Match(std::string_view text, std::uint32_t position, TMatchStep &step) {
    step.position = position + 1;
    step.complete = false;
    step.may_be_empty = true;
    return position < text.size();
}

bool CStringItem::ParseValue(std::string_view text, std::uint32_t first, std::uint32_t end) {
    if (first >= end) {
        return false;
    }
    const std::string_view piece = text.substr(first, end - first);
    if (has_value_) {
        value_.Append(piece);
    } else {
        value_ = piece;
    }
    undefined_ = false;
    has_value_ = true;
    PublishValue(TParValue::Text(value_));
    return true;
}

void CStringItem::ParsePiece(const TMatchPiece &piece) {
    CItem::ParsePiece(piece);
    // A clone doesn't count its text as given. So a default is laid over a string behind which the pattern goes on, and
    // not over one that ends it.
    has_value_ = has_value_ && piece.ends_text;
}

void CStringItem::TakePiece(const TMatchPiece &piece) {
    has_value_ = false;
    ParsePiece(piece);
}

void CStringItem::ParameterChanged(const CVariable *variable, const TParValue &value, bool &ok) {
    CItem::ParameterChanged(variable, value, ok);
    const TItemAttributes &attributes = Attributes();
    if (!has_value_ && attributes.default_expression && !undefined_ && attributes.enable_if &&
        attributes.enable_if->Holds()) {
        has_value_ = true;
        if (TakeDefault()) {
            PublishValue(TParValue::Text(value_));
        }
    }
}

}  // namespace kq_pdt
