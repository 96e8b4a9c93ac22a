#include "configurator/message_list.h"

namespace kq_pdt {

void CMessageList::Append(TIcon icon, std::string_view text1, std::string_view text2, std::uint32_t line,
                          std::uint32_t column) {
    AppendRecord(line, column);
    TRow row{icon, kq_base::TText(text1)};
    row.text.Append(text2);
    rows_.push_back(std::move(row));
    error_count_ += icon == TIcon::kError ? 1 : 0;
}

void CMessageList::CutTo(std::size_t rows) {
    if (rows < rows_.size()) {
        rows_.resize(rows);
        records_.resize(rows);
    }
}

void CMessageList::Clear() {
    rows_.clear();
    records_.clear();
}

}  // namespace kq_pdt
