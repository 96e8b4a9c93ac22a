#include "model/number_item.h"

#include "model/journal.h"

#include <utility>

#include "model/var_ref_item.h"
#include "platform/base/number_text.h"

namespace kq_pdt {

namespace {

/// So many digits are a number of 32 bits whatever they are.
constexpr std::uint32_t kSafeDigits = 9;

}  // namespace

CNumberItem::CNumberItem() : CTypedItem(TItemCode::kNumber) {}

bool CNumberItem::IsInRange(std::uint32_t number) const {
    const TItemAttributes &attributes = Attributes();
    if (attributes.range_from == 0 && attributes.range_to == 0) {
        return true;
    }
    return number >= attributes.range_from &&
           (attributes.range_to < attributes.range_from || number <= attributes.range_to);
}

std::uint32_t CNumberItem::InRange(std::uint32_t number) const {
    const TItemAttributes &attributes = Attributes();
    return IsInRange(number) ? number : number < attributes.range_from ? attributes.range_from : attributes.range_to;
}

void CNumberItem::ForceIntoRange() { value_ = InRange(value_); }

void CNumberItem::Publish() {
    if (Attributes().default_value.IsGiven() && !has_value_ && !undefined_ && IsEnabled()) {
        CJournal::Keep(has_value_);
        has_value_ = true;
        TakeDefault();
    }
    PublishValue(TParValue::Number(value_));
}

bool CNumberItem::SetValue(const TParValue &value) {
    if (!value.IsNumber()) {
        return false;
    }
    CJournal::Keep(value_, has_value_);
    value_ = value.number;
    has_value_ = true;
    return true;
}

void CNumberItem::GetInitialValue(TParValue &value) const {
    value = TParValue::Number(optional_ ? kNoNumber : Attributes().range_from);
}

void CNumberItem::GetValue(TParValue &value) { value = TParValue::Number(undefined_ ? kNoNumber : value_); }

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

bool CNumberItem::Store(const TParValue &value) { return SetValue(value); }

void CNumberItem::AppendShownValue(kq_base::CTextBuffer &text) const { text.AppendDecimal(value_); }

void CNumberItem::AddControl(TCellEditor &editor) const {
    editor.kind = TCellEditor::TControl::kCountBox;
    editor.control = std::make_unique<CIntegerCountBox>(value_, Attributes().range_from, Attributes().range_to);
}

TParValue CNumberItem::TypedValue(const TCellEditor &editor) const {
    if (editor.kind == TCellEditor::TControl::kCountBox) {
        return TParValue::Number(editor.CountBox().Value());
    }
    std::uint32_t number = 0;
    const bool reads = kq_base::ParseDecimal(editor.ComboBox().Text(), number) && IsInRange(number);
    return reads ? TParValue::Number(number) : TParValue();
}

void CNumberItem::SetAttribute(std::uint32_t keyword, std::uint32_t form, std::string_view text, CVarScope *scope) {
    switch (keyword) {
        case kwRangeFrom:
            kq_base::ParseDecimal(text, EditAttributes().range_from);
            break;
        case kwRangeTo:
            kq_base::ParseDecimal(text, EditAttributes().range_to);
            break;
        default:
            CTypedItem::SetAttribute(keyword, form, text, scope);
    }
}

bool CNumberItem::Match(std::string_view text, std::uint32_t position, TMatchStep &step) {
    step.position = position + 1;
    step.complete = false;
    step.may_be_empty = true;
    return position < text.size() && text[position] >= '0' && text[position] <= '9';
}

/// Digits that make the number too large for 32 bits are not taken over.
void CNumberItem::TakeDigits(std::string_view digits) {
    if (kq_base::ParseDecimal(digits, value_)) {
        undefined_ = false;
        has_value_ = true;
        PublishValue(TParValue::Number(value_));
    }
}

/// Digits may come one at a time.
bool CNumberItem::ParseValue(std::string_view text, std::uint32_t first, std::uint32_t end) {
    if (first >= end) {
        return false;
    }
    parse_buffer_.Append(text.substr(first, end - first));
    TakeDigits(parse_buffer_.View());
    return true;
}

/// No further digits come, so they need no buffer. Where they may not all fit they come one at a time, each after a
/// clone of what they made so far.
void CNumberItem::ParsePiece(const TMatchPiece &piece) {
    if (piece.end - piece.first <= kSafeDigits) {
        TakeDigits(piece.text.substr(piece.first, piece.end - piece.first));
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

}  // namespace kq_pdt
