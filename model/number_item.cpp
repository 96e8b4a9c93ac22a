#include "model/number_item.h"

#include <utility>

#include "model/var_ref_item.h"
#include "platform/base/number_text.h"

namespace kq_pdt {

CNumberItem::CNumberItem() : CItem(TItemCode::kNumber) {}

bool CNumberItem::IsInRange(std::uint32_t number) const {
    const TItemAttributes &attributes = Attributes();
    if (attributes.range_from == 0 && attributes.range_to == 0) {
        return true;
    }
    return number >= attributes.range_from &&
           (attributes.range_to < attributes.range_from || number <= attributes.range_to);
}

void CNumberItem::ForceIntoRange() {
    if (!IsInRange(value_)) {
        const TItemAttributes &attributes = Attributes();
        value_ = value_ < attributes.range_from ? attributes.range_from : attributes.range_to;
    }
}

bool CNumberItem::TakeDefault() {
    TParValue result;
    Attributes().default_expression->Evaluate(result);
    has_value_ = true;
    if (result.IsNumber()) {
        value_ = result.number;
    }
    return result.IsNumber();
}

void CNumberItem::Publish() {
    published_ = true;
    if (Attributes().default_expression && !has_value_ && !undefined_ && IsEnabled()) {
        TakeDefault();
    }
    PublishValue(TParValue::Number(value_));
}

bool CNumberItem::SetValue(const TParValue &value) {
    if (!value.IsNumber()) {
        return false;
    }
    value_ = value.number;
    return true;
}

void CNumberItem::GetValue(TParValue &value) { value = TParValue::Number(undefined_ ? kNoNumber : value_); }

bool CNumberItem::AppendText(kq_base::CTextBuffer &text) {
    if (undefined_ || !IsEnabled()) {
        return false;
    }
    text.AppendDecimal(value_);
    return true;
}

void CNumberItem::GetCell(std::uint32_t &index, kq_base::CTextBuffer &text, TCellField field, bool &disabled) {
    if (!AnswerCell(index, text, field, disabled)) {
        return;
    }
    if (undefined_) {
        text.Append(NoneText().View());
    } else {
        text.AppendDecimal(value_);
    }
}

std::unique_ptr<CItem> CNumberItem::Clone() {
    ForceIntoRange();
    auto clone = std::make_unique<CNumberItem>();
    clone->value_ = value_;
    CloneBaseInto(*clone);
    return clone;
}

void CNumberItem::CopyValue(CItem *source) {
    if (source == nullptr || source->Code() != TItemCode::kNumber) {
        return;
    }
    CopyBaseValue(*source);
    value_ = static_cast<CNumberItem *>(source)->value_;
    has_value_ = true;
    const TParValue value = TParValue::Number(value_);
    AdoptDependent(*source, value);
    PublishValue(value);
}

void CNumberItem::OpenEditor(std::uint32_t &index, std::unique_ptr<TCellEditor> &editor) {
    if (!BeginEditor(index, editor) || !IsEnabled()) {
        return;
    }
    if (!optional_) {
        editor->kind = TCellEditor::TControl::kCountBox;
        editor->control = std::make_unique<CIntegerCountBox>(value_, Attributes().range_from, Attributes().range_to);
        return;
    }
    auto box = std::make_unique<CComboBox>(CComboBox::TMode::kFreeText);
    box->AppendEntry(NoneText().View());
    if (undefined_) {
        box->Select(1);
    } else {
        box->SetText(kq_base::DecimalText(value_));
    }
    editor->kind = TCellEditor::TControl::kComboBox;
    editor->control = std::move(box);
}

TParValue CNumberItem::EditedValue(const TCellEditor &editor) const {
    if (editor.kind == TCellEditor::TControl::kCountBox) {
        return TParValue::Number(editor.CountBox().Value());
    }
    const CComboBox &box = editor.ComboBox();
    if (box.Selected() == 1 && box.Text() == NoneText().View()) {
        return TParValue::Undefined();
    }
    std::uint32_t number = 0;
    const bool reads = kq_base::ParseDecimal(box.Text(), number) && IsInRange(number);
    return reads ? TParValue::Number(number) : TParValue();
}

void CNumberItem::CloseEditor(std::unique_ptr<TCellEditor> &editor, bool accept) {
    if (editor && editor->control && CheckChannelEdit(*editor, accept)) {
        const TParValue edited = EditedValue(*editor);
        const bool keeps_undefined = editor->kind == TCellEditor::TControl::kCountBox && undefined_;
        const bool undefined = keeps_undefined || edited.kind == TParKind::pvUndefined;
        const std::uint32_t number = edited.IsNumber() ? edited.number : value_;
        if (AssignToVariable(undefined ? TParValue::Undefined() : TParValue::Number(number))) {
            value_ = number;
            undefined_ = undefined;
            has_value_ = true;
        }
    }
    editor.reset();
}

void CNumberItem::SetAttribute(std::uint32_t keyword, std::uint32_t form, std::string_view text, CVarScope *scope) {
    CItem::SetAttribute(keyword, form, text, scope);
    TItemAttributes &attributes = EditAttributes();
    switch (keyword) {
        case kwLabel:
            attributes.label = text;
            break;
        case kwBubble:
            attributes.bubble = text;
            break;
        case kwRangeFrom:
            kq_base::ParseDecimal(text, attributes.range_from);
            break;
        case kwRangeTo:
            kq_base::ParseDecimal(text, attributes.range_to);
            break;
        case kwOptional:
            optional_ = true;
            undefined_ = true;
            break;
        default:
            break;
    }
}

void CNumberItem::SetExpression(std::uint32_t keyword, std::uint32_t /*word*/,
                                std::unique_ptr<CExpression> expression) {
    if (keyword == kwDefault) {
        EditAttributes().default_expression = std::move(expression);
    }
}

bool CNumberItem::Match(std::string_view text, std::uint32_t position, TMatchStep &step) {
    step.position = position + 1;
    step.complete = false;
    step.may_be_empty = true;
    return position < text.size() && text[position] >= '0' && text[position] <= '9';
}

/// Digits may come one at a time. Those that make the number too large for 32 bits are not taken over.
bool CNumberItem::ParseValue(std::string_view text, std::uint32_t first, std::uint32_t end) {
    if (first >= end) {
        return false;
    }
    parse_buffer_.Append(text.substr(first, end - first));
    if (kq_base::ParseDecimal(parse_buffer_.View(), value_)) {
        undefined_ = false;
        has_value_ = true;
        PublishValue(TParValue::Number(value_));
    }
    return true;
}

/// The digits come one at a time where they may not all fit, each behind a clone of what they made so far.
void CNumberItem::ParsePiece(const TMatchPiece &piece) {
    constexpr std::uint32_t kSafeDigits = 9;
    if (piece.end - piece.first <= kSafeDigits) {
        ParseValue(piece.text, piece.first, piece.end);
    } else {
        for (std::uint32_t digit = piece.first; digit < piece.end; ++digit) {
            if (digit != piece.first && !piece.ends_pattern) {
                ForceIntoRange();
            }
            ParseValue(piece.text, digit, digit + 1);
        }
    }
    if (!piece.ends_text) {
        ForceIntoRange();
    }
}

void CNumberItem::TakePiece(const TMatchPiece &piece) {
    ForceIntoRange();
    kq_base::TText own_buffer = std::exchange(parse_buffer_, {});
    ParsePiece(piece);
    parse_buffer_ = std::move(own_buffer);
    has_value_ = true;
}

void CNumberItem::ParameterChanged(const CVariable *variable, const TParValue &value, bool &ok) {
    CItem::ParameterChanged(variable, value, ok);
    const TItemAttributes &attributes = Attributes();
    if (!has_value_ && attributes.default_expression && !undefined_ && attributes.enable_if &&
        attributes.enable_if->Holds() && TakeDefault()) {
        PublishValue(TParValue::Number(value_));
    }
}

}  // namespace kq_pdt
