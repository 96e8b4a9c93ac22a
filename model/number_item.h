#pragma once

#include "model/typed_item.h"

namespace kq_pdt {

/// An unsigned number of 32 bits with a range. From 0 to 0, as when no range is written, there is no limit, and an
/// upper bound below the lower one means no upper limit.
class CNumberItem final : public CTypedItem {
public:
    CNumberItem();

    std::uint32_t Value() const { return value_; }
    /// The number, or the bound of the range that is next to it.
    std::uint32_t InRange(std::uint32_t number) const;

    void Publish() override;
    bool SetValue(const TParValue &value) override;
    /// A number; 0xFFFFFFFF while undefined.
    void GetValue(TParValue &value) override;
    void GetInitialValue(TParValue &value) const override;
    std::unique_ptr<CItem> Clone() override;
    void CopyValue(CItem *source) override;
    void SetAttribute(std::uint32_t keyword, std::uint32_t form, std::string_view text, CVarScope *scope) override;
    bool Match(std::string_view text, std::uint32_t position, TMatchStep &step) override;
    bool ParseValue(std::string_view text, std::uint32_t first, std::uint32_t end) override;
    void ParsePiece(const TMatchPiece &piece) override;
    void TakePiece(const TMatchPiece &piece) override;
    bool IsInRange(std::uint32_t number) const override;
    void ForceIntoRange() override;

protected:
    TParValue Stored() const override { return TParValue::Number(value_); }
    bool Store(const TParValue &value) override;
    void AppendShownValue(kq_base::CTextBuffer &text) const override;
    void AddControl(TCellEditor &editor) const override;
    TParValue TypedValue(const TCellEditor &editor) const override;

private:
    void TakeDigits(std::string_view digits);

    std::uint32_t value_ = 0;
    kq_base::TText parse_buffer_;  ///< the digits taken so far
};

}  // namespace kq_pdt
