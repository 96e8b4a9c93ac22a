#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "model/column_widths.h"
#include "model/def_node.h"
#include "model/par_def.h"

class CTextOut;

namespace kq_pdt {

class CSectionDef;

/// A key: its name and its values, one for each `par` statement.
class CKeyDef final : public CDefNode {
public:
    explicit CKeyDef(CParSheetData *sheet_data);
    ~CKeyDef() override;

    /// A copy; with names given it shows these items as its name. deep clones the values too. The caller sets the
    /// section.
    std::unique_ptr<CKeyDef> Clone(bool deep, const CItemSeq *names) const;
    /// Publishes all items, name first.
    void PublishTree();
    /// One for the label, and those of name and values.
    std::uint32_t GetCellCount();
    /// Finds the value that holds a cell, counted from 1 over all values; offset becomes the cell's index in it from 1.
    CParDef *FindPar(std::uint32_t index, std::uint32_t &offset);
    /// The text of a column: 1 is the label, followed by the cells of the name and of the values.
    void GetCell(std::uint32_t index, kq_base::CTextBuffer &text, bool &disabled);
    /// A field of a cell of name or values, counted from 1.
    void GetCellInfo(std::uint32_t index, kq_base::CTextBuffer &text, TCellField field, bool &disabled);
    /// Opens the editor of a cell of name or values, counted from 1.
    void OpenEditor(std::uint32_t index, std::unique_ptr<TCellEditor> &editor);
    /// Raises the widths to what the key needs.
    void MeasureKey(CColumnWidths &widths);
    void WriteKey(CTextOut &out, const CColumnWidths &widths);

    void GetChannelAttr(std::uint32_t keyword, std::uint32_t &value) override;
    bool SetChannelAttr(std::uint32_t keyword, std::uint32_t number, std::string_view text, bool &matched) override;
    void ParameterChanged(const CVariable *variable, const TParValue &value, bool &ok) override;
    bool HasUndefinedChannelNumber() const override;
    void GiveBack() override;
    void Done() override;
    /// The key was taken out of its section.
    void Retire();

    const kq_base::TText &Label() const { return definition_ != nullptr ? definition_->Label() : label_; }
    void SetLabel(std::string_view label) { label_ = label; }
    CSectionDef *Section() const { return section_; }
    void SetSection(CSectionDef *section) { section_ = section; }
    /// In an instance, what it was cloned from; absent in a definition.
    const CKeyDef *Definition() const { return definition_; }
    const kq_base::TSlimVector<CParDef> &Pars() const { return pars_; }
    CParDef &AddPar();
    /// Where the key was last seen among the keys of its section (CSectionDef::IndexOf).
    std::size_t Index() const { return index_; }
    void SetIndex(std::size_t index) { index_ = static_cast<std::uint32_t>(index); }
    /// True if a line of the text gave the key its values.
    bool WasRead() const { return was_read_; }
    void SetRead() { was_read_ = true; }

private:
    std::uint32_t columns_ = kNoNumber;  ///< not counted yet
    const CKeyDef *definition_ = nullptr;
    CSectionDef *section_ = nullptr;
    kq_base::TText label_;  ///< only in a definition
    kq_base::TSlimVector<CParDef> pars_;
    std::uint32_t index_ = 0;
    bool was_read_ = false;
};

}  // namespace kq_pdt
