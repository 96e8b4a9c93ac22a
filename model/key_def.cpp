#include "model/key_def.h"

#include <algorithm>

#include "driver/channels/text_out.h"
#include "model/journal.h"
#include "model/section_def.h"
#include "model/sheet_data.h"

namespace kq_pdt {

CKeyDef::CKeyDef(CParSheetData *sheet_data) : CDefNode(sheet_data) { flags_ = nfKey; }

CKeyDef::~CKeyDef() = default;

CParDef &CKeyDef::AddPar() {
    pars_.push_back(std::make_unique<CParDef>(this));
    return *pars_.back();
}

std::unique_ptr<CKeyDef> CKeyDef::Clone(bool deep, const CItemSeq *names) const {
    auto clone = std::make_unique<CKeyDef>(SheetData());
    CloneInto(*clone);
    clone->definition_ = this;
    if (names != nullptr) {
        clone->SetNames(std::make_unique<CItemList>());
        names->CloneInto(clone->names_->Items());
    } else if (names_) {
        clone->SetNames(names_->Clone(nullptr));
    }
    if (deep) {
        clone->pars_.reserve(pars_.size());
        for (const auto &par : pars_) {
            clone->pars_.push_back(par->CloneFor(clone.get()));
        }
    }
    return clone;
}

void CKeyDef::PublishTree() {
    const CScopeGuard scope(this);
    if (names_) {
        names_->Items().PublishAll();
    }
    for (const auto &par : pars_) {
        par->Items().PublishAll();
    }
}

std::uint32_t CKeyDef::GetCellCount() {
    if (columns_ == kNoNumber) {
        columns_ = 1 + (names_ ? names_->Items().CountCells() : 0);
        for (const auto &par : pars_) {
            columns_ += par->GetCellCount();
        }
    }
    return columns_;
}

CParDef *CKeyDef::FindPar(std::uint32_t index, std::uint32_t &offset) {
    offset = index;
    for (const auto &par : pars_) {
        const std::uint32_t cells = par->GetCellCount();
        if (offset <= cells) {
            return par.get();
        }
        offset -= cells;
    }
    return nullptr;
}

void CKeyDef::GetCell(std::uint32_t index, kq_base::CTextBuffer &text, bool &disabled) {
    if (index == 1) {
        text.Clear();
        text.Append(Label().View());
        return;
    }
    GetCellInfo(index - 1, text, TCellField::kValue, disabled);
}

void CKeyDef::GetCellInfo(std::uint32_t index, kq_base::CTextBuffer &text, TCellField field, bool &disabled) {
    text.Clear();
    const CScopeGuard scope(this);
    const std::uint32_t name_cells = names_ ? names_->Items().CountCells() : 0;
    if (names_ && index <= name_cells) {
        names_->Items().GetCellInfo(index, text, field, disabled);
        return;
    }
    std::uint32_t offset = 0;
    if (CParDef *par = FindPar(index - name_cells, offset)) {
        par->Items().GetCellInfo(offset, text, field, disabled);
    }
}

void CKeyDef::OpenEditor(std::uint32_t index, std::unique_ptr<TCellEditor> &editor) {
    const CScopeGuard scope(this);
    const std::uint32_t name_cells = names_ ? names_->Items().CountCells() : 0;
    if (names_ && index <= name_cells) {
        names_->Items().OpenEditor(index, editor);
        return;
    }
    std::uint32_t offset = 0;
    if (CParDef *par = FindPar(index - name_cells, offset)) {
        par->Items().OpenEditor(offset, editor);
    }
}

void CKeyDef::GetChannelAttr(std::uint32_t keyword, std::uint32_t &value) {
    const CScopeGuard scope(this);
    value = kNoNumber;
    if (section_ != nullptr && section_->Has(nfChannels)) {
        section_->GetNameChannelAttr(keyword, value);
    }
    if (names_ && !names_->Items().GetChannelAttr(keyword, value)) {
        value = kNoNumber;
    }
    if (value != kNoNumber) {
        return;
    }
    const bool answered = std::any_of(pars_.begin(), pars_.end(),
                                      [&](const auto &par) { return par->Items().GetChannelAttr(keyword, value); });
    if (!answered) {
        value = kNoNumber;
    }
}

bool CKeyDef::SetChannelAttr(std::uint32_t keyword, std::uint32_t number, std::string_view text, bool &matched) {
    const CScopeGuard scope(this);
    matched = false;
    if (section_ != nullptr && section_->Has(nfChannels) &&
        section_->SetNameChannelAttr(keyword, number, text, matched)) {
        return true;
    }
    if (names_ && names_->Items().SetChannelAttr(keyword, number, text, matched)) {
        return true;
    }
    return std::any_of(pars_.begin(), pars_.end(),
                       [&](const auto &par) { return par->Items().SetChannelAttr(keyword, number, text, matched); });
}

void CKeyDef::MeasureKey(CColumnWidths &widths) {
    if (Has(nfUnrecognised)) {
        return;
    }
    const CScopeGuard scope(this);
    kq_base::CTextBuffer text;
    if (names_) {
        names_->Items().AppendText(text);
        widths.Raise(0, text.Length());
    }
    for (std::size_t index = 0; index < pars_.size(); ++index) {
        if (pars_[index]->AppendText(text)) {
            widths.Raise(index + 1, text.Length());
        }
    }
}

/// A separator directly follows the value before it and the padding comes after the separator, so no line ends in
/// blanks.
void CKeyDef::WriteKey(CTextOut &out, const CColumnWidths &widths) {
    const CScopeGuard scope(this);
    const bool aligned = !Has(nfUnrecognised);
    bool written = false;
    std::size_t pad = 0;  // blanks due before the next value
    for (std::size_t index = 0; index < pars_.size(); ++index) {
        kq_base::CTextBuffer text;
        if (!pars_[index]->AppendText(text)) {
            continue;
        }
        kq_base::CTextBuffer head;
        if (written) {
            out.Insert(pars_[index]->Separator());
            head.PadTo(pad);
            out.Insert(head.View());
        } else if (names_) {
            names_->Items().AppendText(head);
            if (aligned) {
                head.PadTo(widths.Width(0) + 1);
            }
            out.KeyHead(head.View());
        }
        written = true;
        out.Insert(text.View());
        const std::size_t column = widths.Width(index + 1) + 1;
        pad = aligned && column > text.Length() ? column - text.Length() : 0;
    }
    if (written) {
        out.Newline();
        return;
    }
    kq_base::CTextBuffer name;
    if (pars_.empty() && names_ && names_->Items().AppendText(name)) {
        out.Insert(name.View());
        out.Newline();
    }
}

bool CKeyDef::HasUndefinedChannelNumber() const {
    return CDefNode::HasUndefinedChannelNumber() || std::any_of(pars_.begin(), pars_.end(), [](const auto &par) {
               return par->Items().HasUndefinedChannelNumber();
           });
}

void CKeyDef::ParameterChanged(const CVariable *variable, const TParValue &value, bool &ok) {
    const CScopeGuard scope(this);
    CDefNode::ParameterChanged(variable, value, ok);
    if (names_) {
        names_->Items().ParameterChanged(variable, value, ok);
    }
    for (const auto &par : pars_) {
        par->ParameterChanged(variable, value, ok);
    }
}

void CKeyDef::GiveBack() {
    const CScopeGuard scope(this);
    CDefNode::GiveBack();
    for (const auto &par : pars_) {
        par->Items().GiveBack();
    }
}

void CKeyDef::Retire() {
    CJournal::Keep(released_);
    released_ = true;
    SheetData()->NodeReleased(*this);
    SetRowId(0);
}

void CKeyDef::Done() {
    CDefNode::Done();
    {
        const CScopeGuard scope(this);
        if (names_) {
            names_->Items().Clear();
        }
        for (const auto &par : pars_) {
            par->Done();
        }
        pars_.clear();
    }
    ReleaseScope();
}

}  // namespace kq_pdt
