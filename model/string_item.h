#pragma once

#include "model/item.h"

namespace kq_pdt {

/// A text of at most 255 characters, kept as it stands in the file, quotes included.
class CStringItem final : public CItem {
public:
    CStringItem();

    std::string_view Value() const { return value_.View(); }

    void Publish() override;
    std::uint32_t GetCellCount() const override { return 1; }
    bool AppendText(kq_base::CTextBuffer &text) override;
    void GetCell(std::uint32_t &index, kq_base::CTextBuffer &text, TCellField field, bool &disabled) override;
    std::unique_ptr<CItem> Clone() override;
    void CopyValue(CItem *source) override;
    void OpenEditor(std::uint32_t &index, std::unique_ptr<TCellEditor> &editor) override;
    void CloseEditor(std::unique_ptr<TCellEditor> &editor, bool accept) override;
    void SetAttribute(std::uint32_t keyword, std::uint32_t form, std::string_view text, CVarScope *scope) override;
    void SetExpression(std::uint32_t keyword, std::uint32_t word, std::unique_ptr<CExpression> expression) override;
    bool Match(std::string_view text, std::uint32_t position, TMatchStep &step) override;
    bool ParseValue(std::string_view text, std::uint32_t first, std::uint32_t end) override;
    void ParsePiece(const TMatchPiece &piece) override;
    void TakePiece(const TMatchPiece &piece) override;
    void ParameterChanged(const CVariable *variable, const TParValue &value, bool &ok) override;

protected:
    TParValue EditedValue(const TCellEditor &editor) const override;

private:
    /// Takes the default if it evaluates to a text; true if it does.
    bool TakeDefault();

    kq_base::TText value_;
};

}  // namespace kq_pdt
