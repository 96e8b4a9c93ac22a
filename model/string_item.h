#pragma once

#include "model/typed_item.h"

namespace kq_pdt {

/// A text of at most 255 characters, kept as it is in the file, quotes included.
class CStringItem final : public CTypedItem {
public:
    CStringItem();

    std::string_view Value() const { return value_.View(); }

    void Publish() override;
    std::unique_ptr<CItem> Clone() override;
    void CopyValue(CItem *source) override;
    bool Match(std::string_view text, std::uint32_t position, TMatchStep &step) override;
    bool ParseValue(std::string_view text, std::uint32_t first, std::uint32_t end) override;
    void ParsePiece(const TMatchPiece &piece) override;
    void TakePiece(const TMatchPiece &piece) override;

protected:
    TParValue Stored() const override { return TParValue::Text(value_); }
    bool Store(const TParValue &value) override;
    void AppendShownValue(kq_base::CTextBuffer &text) const override;
    void AddControl(TCellEditor &editor) const override;
    TParValue TypedValue(const TCellEditor &editor) const override;

private:
    kq_base::TText value_;
};

}  // namespace kq_pdt
