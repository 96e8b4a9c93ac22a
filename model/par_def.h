#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "model/item_list.h"
#include "scanner/token.h"

namespace kq_pdt {

/// One value of a key, as a `par` statement describes it: its items and the separator before it.
class CParDef : public kq_base::CPooled {
public:
    explicit CParDef(CDefNode *key);

    CItemList &List() { return list_; }
    const CItemList &List() const { return list_; }
    CItemSeq &Items() { return list_.Items(); }
    const CItemSeq &Items() const { return list_.Items(); }

    /// What is written before this value; "," unless the text that was read had something else.
    std::string_view Separator() const { return par_scanner::TokenKindText(separator_); }
    /// Takes the token that is before the value.
    void SetSeparator(std::uint32_t token_kind) { separator_ = token_kind; }

    bool AppendText(kq_base::CTextBuffer &text);
    /// A copy for another key.
    std::unique_ptr<CParDef> CloneFor(CDefNode *key) const;
    std::uint32_t GetCellCount() { return Items().CountCells(); }
    bool AllOptional() const { return Items().AllOptional(); }
    bool AnyEnabled() const { return Items().AnyEnabled(); }
    void ParameterChanged(const CVariable *variable, const TParValue &value, bool &ok);
    void Done() { Items().Clear(); }

private:
    CItemList list_;
    std::uint32_t separator_ = par_scanner::kComma;
};

}  // namespace kq_pdt
