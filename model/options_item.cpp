#include "model/options_item.h"

#include <cassert>
#include <utility>

#include "model/const_item.h"
#include "model/journal.h"
#include "model/var_ref_item.h"

namespace kq_pdt {

COptionsItem::COptionsItem() : CCellItem(TItemCode::kOptions) {}

const COptionEntry *COptionsItem::Selected() const {
    return selected_index_ < Entries().size() ? &Entries()[selected_index_] : nullptr;
}

TParValue COptionsItem::SelectedText() const {
    const COptionEntry *entry = Selected();
    return entry != nullptr ? TParValue::Text(entry->text) : TParValue::Text(std::string_view());
}

/// The condition isn't asked here: a disabled choice keeps its variable known.
void COptionsItem::Publish() { AssignToVariable(undefined_ ? TParValue::Undefined() : SelectedText()); }

TParValue COptionsItem::PublishedValue() const {
    if (!IsEnabled()) {
        const bool none = optional_ || Entries().empty();
        return none ? TParValue::Undefined() : TParValue::Text(Entries().front().text);
    }
    return undefined_ ? TParValue::Undefined() : SelectedText();
}

void COptionsItem::GetInitialValue(TParValue &value) const {
    value = TParValue::Text(optional_ || Entries().empty() ? kq_base::TText() : Entries().front().text);
}

void COptionsItem::GetValue(TParValue &value) {
    value = undefined_ ? TParValue::Text(std::string_view()) : SelectedText();
}

bool COptionsItem::AppendText(kq_base::CTextBuffer &text) {
    const COptionEntry *entry = Selected();
    if (entry == nullptr || undefined_ || !IsEnabled()) {
        return false;
    }
    text.Append(entry->text.View());
    return true;
}

void COptionsItem::AppendShownValue(kq_base::CTextBuffer &text) const {
    if (const COptionEntry *entry = Selected()) {
        text.Append(entry->label.View());
    }
}

std::unique_ptr<CItem> COptionsItem::Clone() {
    auto clone = std::make_unique<COptionsItem>();
    clone->selected_index_ = selected_index_;
    CloneBaseInto(*clone);
    return clone;
}

void COptionsItem::CopyValue(CItem *source) {
    if (source == nullptr || source->Code() != TItemCode::kOptions) {
        return;
    }
    CopyBaseValue(*source);
    const std::uint32_t index = static_cast<const COptionsItem &>(*source).selected_index_;
    selected_index_ = index < Entries().size() ? index : kNoNumber;
    AdoptDependent(*source, undefined_ ? TParValue::Undefined() : SelectedText());
}

void COptionsItem::OpenEditor(std::uint32_t &index, std::unique_ptr<TCellEditor> &editor) {
    if (!BeginEditor(index, editor) || !IsEnabled()) {
        return;
    }
    auto box = std::make_unique<CComboBox>(CComboBox::TMode::kList);
    if (optional_) {
        box->AppendEntry(NoneText().View());
    }
    for (const COptionEntry &entry : Entries()) {
        box->AppendEntry(entry.label.View());
    }
    const std::size_t row = static_cast<std::size_t>(selected_index_) + (optional_ ? 2 : 1);
    box->Select(undefined_ ? 1 : Selected() != nullptr ? row : 0);
    editor->kind = TCellEditor::TControl::kComboBox;
    editor->control = std::move(box);
}

void COptionsItem::CloseEditor(std::unique_ptr<TCellEditor> &editor, bool accept) {
    if (editor && editor->control && CheckChannelEdit(*editor, accept)) {
        const std::size_t row = editor->ComboBox().Selected();
        const bool undefined = optional_ ? row == 1 : undefined_;
        const std::size_t first_row = optional_ ? 2 : 1;
        const std::size_t index = row >= first_row ? row - first_row : Entries().size();
        const bool known = index < Entries().size();
        const TParValue value = undefined ? TParValue::Undefined()
                                : known   ? TParValue::Text(Entries()[index].text)
                                          : SelectedText();
        CJournal::Keep(undefined_, selected_index_);
        undefined_ = undefined;
        if (known) {
            selected_index_ = static_cast<std::uint32_t>(index);
        }
        AssignToVariable(value);
    }
    editor.reset();
}

void COptionsItem::SetAttribute(std::uint32_t keyword, std::uint32_t form, std::string_view text, CVarScope *scope) {
    CCellItem::SetAttribute(keyword, form, text, scope);
    if (keyword != kwOption) {
        return;
    }
    TItemAttributes &attributes = EditAttributes();
    if (!attributes.options) {
        attributes.options = std::make_unique<TOptions>();
    }
    TOptions &options = *attributes.options;
    assert(!options.index);
    if (form == kwLabel) {
        options.pending_label = text;
    } else {
        COptionEntry entry{kq_base::TText(text), std::exchange(options.pending_label, {})};
        if (entry.label.IsEmpty()) {
            entry.label = entry.text;
        }
        options.entries.push_back(std::move(entry));
        selected_index_ = 0;
    }
}

bool COptionsItem::FindEntry(std::string_view text, std::uint32_t position, TMatchStep &step,
                             std::uint32_t &index) const {
    step.complete = true;
    step.may_be_empty = false;
    step.position = position;
    const TOptions *options = Attributes().options.get();
    if (options == nullptr || position > text.size()) {
        return false;
    }
    if (!options->index) {
        options->index = std::make_unique<COptionIndex>(options->entries, Attributes().case_sensitive);
    }
    const std::uint32_t found = options->index->Find(text.substr(position));
    if (found == kNoNumber) {
        return false;
    }
    index = found;
    step.position += static_cast<std::uint32_t>(options->entries[found].text.Length());
    return true;
}

bool COptionsItem::Match(std::string_view text, std::uint32_t position, TMatchStep &step) {
    std::uint32_t index = 0;
    return FindEntry(text, position, step, index);
}

bool COptionsItem::ParseValue(std::string_view text, std::uint32_t first, std::uint32_t end) {
    TMatchStep step;
    std::uint32_t index = 0;
    if (first >= end || !FindEntry(text, first, step, index)) {
        return false;
    }
    selected_index_ = index;
    undefined_ = false;
    AssignToVariable(SelectedText());
    return true;
}

void COptionsItem::TakePiece(const TMatchPiece &piece) {
    ParsePiece(piece);
    if (selected_index_ >= Entries().size()) {
        selected_index_ = kNoNumber;
    }
}

}  // namespace kq_pdt
