#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "model/item_list.h"

namespace kq_pdt {

/// One value of a key, as a `par` statement describes it: its items and the separator before it.
class CParDef : public kq_base::CPooled {
public:
    /// A separator's text is at most this long.
    using TSeparator = kq_base::TBoundedText<31>;

    explicit CParDef(CDefNode *key);

    CItemList &List() { return list_; }
    const CItemList &List() const { return list_; }
    CItemSeq &Items() { return list_.Items(); }
    const CItemSeq &Items() const { return list_.Items(); }

    /// What is written before this value; "," unless the text that was read had something else.
    const TSeparator &Separator() const { return separator_; }
    void SetSeparator(std::string_view text) { separator_ = text; }

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
    TSeparator separator_;
};

}  // namespace kq_pdt
