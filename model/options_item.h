#pragma once

#include "model/cell_item.h"

namespace kq_pdt {

/// A choice from a fixed list of texts.
class COptionsItem final : public CCellItem {
public:
    COptionsItem();

    const std::vector<COptionEntry> &Entries() const { return Attributes().Entries(); }
    /// The index of the selected entry from 0; 0xFFFFFFFF if the list is empty.
    std::uint32_t SelectedIndex() const { return selected_index_; }

    /// The entry whose text the given text has at a position: the longest one, of equally long ones the last. False
    /// without any.
    bool FindEntry(std::string_view text, std::uint32_t position, TMatchStep &step, std::uint32_t &index) const;

    void Publish() override;
    void GetValue(TParValue &value) override;
    void GetInitialValue(TParValue &value) const override;
    TParValue PublishedValue() const override;
    bool AppendText(kq_base::CTextBuffer &text) override;
    std::unique_ptr<CItem> Clone() override;
    void CopyValue(CItem *source) override;
    void OpenEditor(std::uint32_t &index, std::unique_ptr<TCellEditor> &editor) override;
    void CloseEditor(std::unique_ptr<TCellEditor> &editor, bool accept) override;
    void SetAttribute(std::uint32_t keyword, std::uint32_t form, std::string_view text, CVarScope *scope) override;
    bool Match(std::string_view text, std::uint32_t position, TMatchStep &step) override;
    void CountAsGiven() override { Publish(); }
    bool ParseValue(std::string_view text, std::uint32_t first, std::uint32_t end) override;
    void TakePiece(const TMatchPiece &piece) override;

protected:
    void AppendShownValue(kq_base::CTextBuffer &text) const override;

private:
    const COptionEntry *Selected() const;
    /// The selected entry's text as a value, an empty text without a selection.
    TParValue SelectedText() const;

    std::uint32_t selected_index_ = kNoNumber;
};

}  // namespace kq_pdt
