#include "model/item_list.h"

#include <algorithm>

#include "model/var_ref_item.h"
#include "scanner/par_scanner.h"

namespace kq_pdt {

void CItemSeq::Append(std::unique_ptr<CItem> item) {
    item->SetOwner(this);
    items_.push_back(std::move(item));
}

bool CItemSeq::AppendText(kq_base::CTextBuffer &text) {
    bool result = write_if_all_;
    for (const auto &item : items_) {
        const bool wrote = item->AppendText(text);
        result = write_if_all_ ? result && wrote : result || wrote;
    }
    return result;
}

void CItemSeq::PublishAll() {
    published_ = true;
    for (const auto &item : items_) {
        item->Publish();
    }
}

void CItemSeq::PublishWithoutText() {
    for (const auto &item : items_) {
        item->PublishWithoutText();
    }
}

void CItemSeq::CountAsGiven(std::size_t count) {
    for (std::size_t index = 0; index < std::min(count, items_.size()); ++index) {
        items_[index]->CountAsGiven();
    }
}

void CItemSeq::ForceIntoRange() const {
    for (const auto &item : items_) {
        item->ForceIntoRange();
    }
}

void CItemSeq::GiveBack() {
    for (const auto &item : items_) {
        item->GiveBack();
    }
}

bool CItemSeq::AllOptional() const {
    return std::all_of(items_.begin(), items_.end(), [](const auto &item) { return item->IsOptional(); });
}

bool CItemSeq::HasModule() const {
    return std::any_of(items_.begin(), items_.end(), [](const auto &item) { return item->Code() == TItemCode::kDll; });
}

bool CItemSeq::AnyEnabled() const {
    return std::any_of(items_.begin(), items_.end(), [](const auto &item) { return item->IsEnabled(); });
}

void CItemSeq::CloneInto(CItemSeq &target) const {
    target.write_if_all_ = write_if_all_;
    target.items_.reserve(target.items_.size() + items_.size());
    for (const auto &item : items_) {
        target.Append(item->Clone());
    }
}

void CItemSeq::CopyValues(const CItemSeq &source) {
    const std::size_t count = std::min(items_.size(), source.items_.size());
    for (std::size_t index = 0; index < count; ++index) {
        items_[index]->CopyValue(source.items_[index].get());
    }
}

std::uint32_t CItemSeq::CountCells() {
    if (cells_ == kNoNumber) {
        cells_ = 0;
        for (const auto &item : items_) {
            cells_ += item->GetCellCount();
        }
    }
    return cells_;
}

void CItemSeq::GetCell(std::uint32_t &index, kq_base::CTextBuffer &text, bool &disabled) {
    text.Clear();
    if (CountCells() != 0) {
        GetCellInfo(index, text, TCellField::kValue, disabled);
        return;
    }
    for (const auto &item : items_) {
        item->AppendCellText(text, disabled);
    }
}

void CItemSeq::GetCellInfo(std::uint32_t &index, kq_base::CTextBuffer &text, TCellField field, bool &disabled) {
    text.Clear();
    for (auto item = items_.begin(); item != items_.end() && index != 0; ++item) {
        (*item)->GetCell(index, text, field, disabled);
    }
}

void CItemSeq::OpenEditor(std::uint32_t &index, std::unique_ptr<TCellEditor> &editor) {
    for (auto item = items_.begin(); item != items_.end() && index != 0; ++item) {
        (*item)->OpenEditor(index, editor);
    }
}

bool CItemSeq::ReadsAll() const { return !items_.empty() && items_.back()->HasRole(roleReadAll); }

void CItemSeq::AppendRaw(std::uint32_t separator_kind, std::string_view text) {
    if (items_.empty()) {
        return;
    }
    const std::string_view separator = par_scanner::TokenKindText(separator_kind);
    items_.back()->ParseValue(separator, 0, static_cast<std::uint32_t>(separator.size()));
    items_.back()->ParseValue(text, 0, static_cast<std::uint32_t>(text.size()));
}

bool CItemSeq::GetChannelAttr(std::uint32_t keyword, std::uint32_t &value) {
    return std::any_of(items_.begin(), items_.end(),
                       [&](const auto &item) { return item->GetChannelAttr(keyword, value); });
}

bool CItemSeq::SetChannelAttr(std::uint32_t keyword, std::uint32_t number, std::string_view text, bool &matched) {
    return std::any_of(items_.begin(), items_.end(),
                       [&](const auto &item) { return item->SetChannelAttr(keyword, number, text, matched); });
}

bool CItemSeq::HasUndefinedChannelNumber() const {
    return std::any_of(items_.begin(), items_.end(), [](const auto &item) {
        return item->IsUnknown() && (item->HasRole(roleChFrom) || item->HasRole(roleChTo) ||
                                     item->HasRole(roleChNumber) || item->HasRole(roleChCount));
    });
}

void CItemSeq::BindVariable(CVariable &variable) {
    for (const auto &item : items_) {
        item->BindVariable(variable);
    }
}

void CItemSeq::CapturedValueChanged(const TParValue &value, const CVariable *variable) {
    for (const auto &item : items_) {
        item->CapturedValueChanged(value, variable);
    }
}

void CItemSeq::ParameterChanged(const CVariable *variable, const TParValue &value, bool &ok) {
    for (const auto &item : items_) {
        item->ParameterChanged(variable, value, ok);
    }
}

void CItemSeq::Clear() {
    for (const auto &item : items_) {
        item->Done();
    }
    items_.clear();
}

CItemList::CItemList() = default;
CItemList::~CItemList() = default;

void CItemList::SetListVariable(std::unique_ptr<CVarRefItem> variable) { list_variable_ = std::move(variable); }

void CItemList::BindVariable(CVariable &variable) {
    if (list_variable_) {
        list_variable_->BindVariable(variable);
    }
    items_.BindVariable(variable);
}

void CItemList::CapturedValueChanged(const TParValue &value, const CVariable *variable) {
    if (list_variable_) {
        list_variable_->CapturedValueChanged(value, variable);
    }
    items_.CapturedValueChanged(value, variable);
}

std::unique_ptr<CItemList> CItemList::Clone(const CItemSeq *names) const {
    auto clone = std::make_unique<CItemList>();
    CloneInto(*clone, names);
    return clone;
}

void CItemList::CloneInto(CItemList &target, const CItemSeq *names) const {
    (names != nullptr ? *names : items_).CloneInto(target.items_);
    if (list_variable_) {
        target.list_variable_ = list_variable_->CloneReference();
    }
}

}  // namespace kq_pdt
