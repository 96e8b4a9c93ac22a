#include "model/const_item.h"

#include "platform/base/code_page.h"

namespace kq_pdt {

bool HasPartAt(std::string_view text, std::uint32_t position, std::string_view part, bool case_sensitive) {
    if (position > text.size() || text.size() - position < part.size()) {
        return false;
    }
    const std::string_view here = text.substr(position, part.size());
    return case_sensitive ? here == part : kq_base::EqualIgnoringCase(here, part);
}

CConstItem::CConstItem(std::string_view text) : CItem(TItemCode::kConst), text_(text) { optional_ = true; }

bool CConstItem::AppendText(kq_base::CTextBuffer &text) {
    text.Append(text_.View());
    return true;
}

void CConstItem::AppendCellText(kq_base::CTextBuffer &text, bool &disabled) {
    text.Append(text_.View());
    disabled = false;
}

std::unique_ptr<CItem> CConstItem::Clone() {
    auto clone = std::make_unique<CConstItem>(std::string_view());
    clone->text_ = text_;
    CloneBaseInto(*clone);
    return clone;
}

bool CConstItem::Match(std::string_view text, std::uint32_t position, TMatchStep &step) {
    const bool found = HasPartAt(text, position, text_.View(), Attributes().case_sensitive);
    step.may_be_empty = false;
    step.complete = found;
    step.position = found ? position + static_cast<std::uint32_t>(text_.Length()) : position;
    return found;
}

}  // namespace kq_pdt
