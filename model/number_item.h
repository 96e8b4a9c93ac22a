#pragma once

#include "model/item.h"

namespace kq_pdt {

/// An unsigned number of 32 bits with a range. From 0 to 0, as when no range is written, there is no limit, and an
/// upper bound below the lower one means no upper limit.
class CNumberItem final : public CItem {
public:
    CNumberItem();

    std::uint32_t Value() const { return value_; }

    void Publish() override;
    bool SetValue(const TParValue &value) override;
    /// A number; 0xFFFFFFFF while undefined.
    void GetValue(TParValue &value) override;
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
    void ForceIntoRange() override;

protected:
    TParValue EditedValue(const TCellEditor &editor) const override;

private:
    bool IsInRange(std::uint32_t number) const;
    /// Takes the default, whatever it evaluates to; true if that is a number.
    bool TakeDefault();

    std::uint32_t value_ = 0;
    kq_base::TText parse_buffer_;  ///< the digits taken so far
};

}  // namespace kq_pdt
