#include "model/section_def.h"

#include <algorithm>

#include "driver/channels/text_out.h"
#include "model/journal.h"
#include "model/reference_index.h"
#include "model/sheet_data.h"
#include "model/var_ref_item.h"

namespace kq_pdt {

CSectionDef::CSectionDef(CParSheetData *sheet_data) : CDefNode(sheet_data) { flags_ = nfSection; }

CSectionDef::~CSectionDef() = default;

std::weak_ptr<CSectionDef *> CSectionDef::Handle() {
    if (!handle_) {
        handle_ = std::make_shared<CSectionDef *>(this);
    }
    return handle_;
}

std::unique_ptr<CSectionDef> CSectionDef::Clone(bool deep) {
    auto clone = std::make_unique<CSectionDef>(SheetData());
    CloneInto(*clone);
    clone->definition_ = this;
    if (names_) {
        clone->SetNames(names_->Clone(nullptr));
    }
    if (deep) {
        clone->keys_.reserve(keys_.size());
        for (const auto &key : keys_) {
            if (key->Has(nfMultiple)) {
                has_multiple_keys_ = true;
                clone->has_multiple_keys_ = true;
                continue;
            }
            clone->keys_.push_back(key->Clone(true, nullptr));
            clone->keys_.back()->SetIndex(clone->keys_.size() - 1);
            clone->keys_.back()->SetSection(clone.get());
        }
    }
    clone->ComputeLayout();
    return clone;
}

CKeyDef &CSectionDef::AddKey(std::unique_ptr<CKeyDef> key) {
    key->SetSection(this);
    key->SetIndex(keys_.size());
    keys_.push_back(std::move(key));
    key_names_.reset();
    TellRow(keys_.size() - 1, true);
    CJournal::Note([this] {
        TellRow(keys_.size() - 1, false);
        auto kept = std::make_shared<std::unique_ptr<CKeyDef>>(std::move(keys_.back()));
        keys_.pop_back();
        SheetData()->Instances().Bury(std::move(*kept));
    });
    ComputeLayout();
    return *keys_.back();
}

/// The keys of a definition don't change once a text is matched against them.
const CNameIndex &CSectionDef::KeyNames() {
    if (!key_names_) {
        key_names_ = std::make_unique<CNameIndex>();
        for (const auto &key : keys_) {
            if (key->Names() != nullptr) {
                const auto order = static_cast<std::uint32_t>(key->Index());
                key_names_->Add(CNameIndex::LeadsOf(key->Names()->Items()), {order, key.get()});
            }
        }
    }
    return *key_names_;
}

/// These clones come first, in the order of the definition.
CKeyDef *CSectionDef::CloneOf(const CKeyDef &key) const {
    const auto found = std::partition_point(keys_.begin(), keys_.end(), [&key](const auto &other) {
        return other->Definition() != nullptr && !other->Has(nfMultiple) && other->Definition()->Index() < key.Index();
    });
    return found != keys_.end() && (*found)->Definition() == &key ? found->get() : nullptr;
}

/// The definition's keys never change once an instance looks at them, so one look is enough.
void CSectionDef::ComputeLayout() {
    if (definition_ == nullptr || columns_ != kNoNumber) {
        return;
    }
    const auto &keys = definition_->keys_;
    columns_ = keys.empty() ? 0 : keys.front()->GetCellCount();
    uniform_ =
        std::all_of(keys.begin(), keys.end(), [this](const auto &key) { return key->GetCellCount() == columns_; });
    if (columns_ > 1 && names_ && names_->Items().CountCells() != 0) {
        uniform_ = false;
    }
}

std::uint32_t CSectionDef::GetColumns() {
    ComputeLayout();
    return columns_;
}

void CSectionDef::PublishTree() {
    const CScopeGuard scope(this);
    if (names_) {
        names_->Items().PublishAll();
    }
    for (const auto &key : keys_) {
        key->PublishTree();
    }
}

void CSectionDef::ClearKeys() {
    for (const auto &key : keys_) {
        key->Done();
    }
    keys_.clear();
}

void CSectionDef::Retire() {
    CJournal::Keep(released_);
    released_ = true;
    SheetData()->NodeReleased(*this);
    SetRowId(0);
    for (const auto &key : keys_) {
        key->Retire();
    }
}

void CSectionDef::GetNameChannelAttr(std::uint32_t keyword, std::uint32_t &value) {
    CDefNode::GetChannelAttr(keyword, value);
}

bool CSectionDef::SetNameChannelAttr(std::uint32_t keyword, std::uint32_t number, std::string_view text,
                                     bool &matched) {
    return CDefNode::SetChannelAttr(keyword, number, text, matched);
}

bool CSectionDef::CommitChannels() {
    const CScopeGuard scope(this);
    bool result = true;
    for (const auto &key : keys_) {
        result = key->CommitChannels() && result;
    }
    return CDefNode::CommitChannels() && result;
}

void CSectionDef::ReconsiderChannels() {
    const CScopeGuard scope(this);
    CDefNode::ReconsiderChannels();
    for (const auto &key : keys_) {
        key->ReconsiderChannels();
    }
}

void CSectionDef::CapturedValueChanged(const TParValue &value, const CVariable *variable) {
    CJournal::Note([this] { SheetData()->Instances().Renamed(*this); });
    {
        const CScopeGuard scope(this);
        if (names_) {
            names_->CapturedValueChanged(value, variable);
        }
        for (const auto &key : keys_) {
            key->CapturedValueChanged(value, variable);
        }
    }
    SheetData()->Instances().Renamed(*this);
    SheetData()->Post(cmRebuildSheets);
}

void CSectionDef::BindVariable(CVariable &variable) {
    CJournal::Note([this] { SheetData()->Instances().Renamed(*this); });
    {
        const CScopeGuard scope(this);
        if (names_) {
            names_->BindVariable(variable);
        }
        for (const auto &key : keys_) {
            key->BindVariable(variable);
        }
    }
    SheetData()->Instances().Renamed(*this);
}

void CSectionDef::GetChannelAttr(std::uint32_t keyword, std::uint32_t &value) {
    const CScopeGuard scope(this);
    GetNameChannelAttr(keyword, value);
    for (auto key = keys_.begin(); key != keys_.end() && value == kNoNumber; ++key) {
        (*key)->GetChannelAttr(keyword, value);
    }
}

bool CSectionDef::SetChannelAttr(std::uint32_t keyword, std::uint32_t number, std::string_view text, bool &matched) {
    const CScopeGuard scope(this);
    bool result = SetNameChannelAttr(keyword, number, text, matched);
    for (const auto &key : keys_) {
        if (!key->Has(nfChannels)) {
            bool key_matched = false;
            result = key->SetChannelAttr(keyword, number, text, key_matched) || result;
            matched = matched || key_matched;
        }
    }
    return result;
}

void CSectionDef::RegisterChannels() {
    const CScopeGuard scope(this);
    RegisterGroupItems();
    if (Has(nfChannels)) {
        CDefNode::RegisterChannels();
        return;
    }
    for (const auto &key : keys_) {
        if (key->Has(nfChannels) && !key->WasRead()) {
            const CScopeGuard key_scope(key.get());
            key->RegisterGroupItems();
        } else {
            key->RegisterChannels();
        }
    }
}

/// The section is measured first, so that its values are in columns.
void CSectionDef::WriteSection(CTextOut &out) {
    const CScopeGuard scope(this);
    CColumnWidths widths;
    for (const auto &key : keys_) {
        key->MeasureKey(widths);
    }
    if (names_) {
        kq_base::CTextBuffer text;
        names_->Items().AppendText(text);
        out.SectionLine(text.View());
    }
    for (const auto &key : keys_) {
        key->WriteKey(out, widths);
    }
    out.Newline();
}

bool CSectionDef::HasUndefinedChannelNumber() const {
    return CDefNode::HasUndefinedChannelNumber() || std::any_of(keys_.begin(), keys_.end(), [](const auto &key) {
               return !key->Has(nfChannels) && key->HasUndefinedChannelNumber();
           });
}

void CSectionDef::ParameterChanged(const CVariable *variable, const TParValue &value, bool &ok) {
    const CScopeGuard scope(this);
    CDefNode::ParameterChanged(variable, value, ok);
    if (names_) {
        names_->Items().ParameterChanged(variable, value, ok);
    }
    for (const auto &key : keys_) {
        key->ParameterChanged(variable, value, ok);
    }
}

void CSectionDef::FollowVariable(const TSectionUse &use, const CVariable *variable, const TParValue &value, bool &ok) {
    const CScopeGuard scope(this);
    if (use.in_section) {
        CDefNode::ParameterChanged(variable, value, ok);
        if (names_) {
            names_->Items().ParameterChanged(variable, value, ok);
        }
    }
    if (use.keys.empty()) {
        return;
    }
    // NOLINTNEXTLINE(modernize-loop-convert): the list may grow on the way.
    for (std::size_t index = 0; index < keys_.size(); ++index) {
        if (use.Holds(keys_[index]->Definition())) {
            keys_[index]->ParameterChanged(variable, value, ok);
        }
    }
}

void CSectionDef::RemoveKey(CKeyDef &key) {
    const std::size_t index = IndexOf(key);
    const auto found = keys_.begin() + static_cast<std::ptrdiff_t>(index);
    const CScopeGuard scope(this);
    key.GiveBack();
    key.Retire();
    auto removed = std::make_shared<std::unique_ptr<CKeyDef>>(std::move(*found));
    TellRow(index, false);
    keys_.erase(found);
    CJournal::Note([this, removed, index] {
        keys_.insert(keys_.begin() + static_cast<std::ptrdiff_t>(index), std::move(*removed));
        TellRow(index, true);
    });
}

/// Deletions move the keys after them up, and taking one back moves them down again: a key isn't far from where it was
/// last seen.
std::size_t CSectionDef::IndexOf(CKeyDef &key) const {
    std::size_t below = std::min(key.Index(), keys_.size());
    std::size_t above = below;
    while (above == keys_.size() || keys_[above].get() != &key) {
        above = std::min(above + 1, keys_.size());
        if (below != 0 && keys_[--below].get() == &key) {
            above = below;
        }
    }
    key.SetIndex(above);
    return above;
}

/// Keys are the rows of the section's table, after the cells of its name.
void CSectionDef::TellRow(std::size_t index, bool inserted) {
    if (RowId() != 0) {
        SheetData()->RowsChanged(RowId(), (names_ ? names_->Items().CountCells() : 0) + index + 1, inserted);
    }
}

TParValue CSectionDef::BoundValue(std::string_view variable) const {
    if (names_) {
        for (const auto &item : names_->Items().Items()) {
            const auto *reference = dynamic_cast<const CVarRefItem *>(item.get());
            if (reference != nullptr && reference->IsCaptured() && reference->Name() == variable) {
                return reference->BoundValue();
            }
        }
    }
    return {};
}

void CSectionDef::GiveBack() {
    const CScopeGuard scope(this);
    CDefNode::GiveBack();
    for (const auto &key : keys_) {
        key->GiveBack();
    }
}

void CSectionDef::Done() {
    handle_.reset();
    CDefNode::Done();
    {
        const CScopeGuard scope(this);
        ClearKeys();
    }
    depend_on_.reset();
    if (names_) {
        names_->Items().Clear();
    }
    ReleaseScope();
}

}  // namespace kq_pdt
