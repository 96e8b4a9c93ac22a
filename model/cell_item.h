#pragma once

#include "model/item.h"

namespace kq_pdt {

/// A value item with a cell in the sheet: number, string, options, dll. It takes label, bubble and `optional` from the
/// template, answers for its cell, and carries an edit over to the table of channels before the value is taken.
///
/// What an edit does to channels is in cell_item_channels.cpp, the rest in cell_item.cpp.
class CCellItem : public CItem {
public:
    std::uint32_t GetCellCount() const final { return 1; }
    void GetCell(std::uint32_t &index, kq_base::CTextBuffer &text, TCellField field, bool &disabled) final;
    void SetAttribute(std::uint32_t keyword, std::uint32_t form, std::string_view text, CVarScope *scope) override;

    void ParameterChanged(const CVariable *variable, const TParValue &value, bool &ok) override;

protected:
    explicit CCellItem(TItemCode code) : CItem(code) {}

    /// Appends what the cell shows while there is a value.
    virtual void AppendShownValue(kq_base::CTextBuffer &text) const = 0;
    /// Counts index down; true if it meant this item, whose editor is then in editor.
    bool BeginEditor(std::uint32_t &index, std::unique_ptr<TCellEditor> &editor);
    /// The value that an editor holds, as a channel number: pvUndefined if the value is taken away, pvNone if it is no
    /// value or no number is typed here.
    virtual TParValue EditedValue(const TCellEditor &editor) const;
    /// Carries an edit over to the table of channels; false if the editor's value may not be taken.
    bool CheckChannelEdit(TCellEditor &editor, bool accept);

private:
    struct TChannelEdit;
    bool IsUnknownStill(const TParValue &published) const;
    bool EditChannels(TCellEditor &editor);
    bool EditChannelNumber(const TChannelEdit &edit);
    bool EditFirst(const TChannelEdit &edit, bool by_count);
    bool EditCount(const TChannelEdit &edit);
    bool EditLast(const TChannelEdit &edit);
    bool EditChannelWord(std::uint32_t keyword, const TValueMap &map, TCellEditor &editor);
    /// Hands a number to the item of the node that is for it; refused if it doesn't fit there.
    bool TellNode(std::uint32_t keyword, std::uint32_t value);
    bool DefineRange(std::uint64_t first, std::uint64_t last);
    bool RefuseChannel();
};

}  // namespace kq_pdt
