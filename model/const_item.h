#pragma once

#include "model/item.h"

namespace kq_pdt {

/// A constant text. It has no cell, is optional from the start and always writes.
class CConstItem final : public CItem {
public:
    explicit CConstItem(std::string_view text);

    std::string_view Text() const { return text_.View(); }

    bool AppendText(kq_base::CTextBuffer &text) override;
    void AppendCellText(kq_base::CTextBuffer &text, bool &disabled) override;
    std::unique_ptr<CItem> Clone() override;
    bool Match(std::string_view text, std::uint32_t position, TMatchStep &step) override;

private:
    kq_base::TText text_;
};

/// True if a text has a part at a position, in the same case of letters or in any.
bool HasPartAt(std::string_view text, std::uint32_t position, std::string_view part, bool case_sensitive);

}  // namespace kq_pdt
