#include "model/string_item.h"

#include "model/journal.h"

#include "model/var_ref_item.h"

namespace kq_pdt {

CStringItem::CStringItem() : CTypedItem(TItemCode::kString) {}

/// Unlike a number, a text takes its default at each publishing as long as it was given no value, enabled or not.
void CStringItem::Publish() {
    if (Attributes().default_value.IsGiven() && !has_value_ && !undefined_) {
        TakeDefault();
    }
    PublishValue(TParValue::Text(value_));
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

bool CStringItem::Store(const TParValue &value) {
    if (value.kind != TParKind::pvText) {
        return false;
    }
    CJournal::Keep(value_);
    value_ = value.text;
    return true;
}

void CStringItem::AppendShownValue(kq_base::CTextBuffer &text) const { text.Append(value_.View()); }

void CStringItem::AddControl(TCellEditor &editor) const {
    editor.kind = TCellEditor::TControl::kEditBox;
    editor.control = std::make_unique<CEditBox>(value_.View());
}

TParValue CStringItem::TypedValue(const TCellEditor &editor) const {
    const bool is_edit_box = editor.kind == TCellEditor::TControl::kEditBox;
    return TParValue::Text(is_edit_box ? editor.EditBox().Text() : editor.ComboBox().Text());
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
    // A clone doesn't count its text as given. So a default replaces a string after which the pattern goes on, and
    // not over one that ends it.
    has_value_ = has_value_ && piece.ends_text;
}

void CStringItem::TakePiece(const TMatchPiece &piece) {
    has_value_ = false;
    ParsePiece(piece);
}

}  // namespace kq_pdt
