#pragma once

#include <cstdint>
#include <memory>

#include "model/item.h"
#include "platform/base/slim_vector.h"

namespace kq_pdt {

class CDefNode;

/// The value items of a name or of a `par` statement, joined by `+`, in order.
class CItemSeq : public kq_base::CPooled {
public:
    using TItems = kq_base::TSlimVector<CItem>;

    CItemSeq() = default;
    CItemSeq(const CItemSeq &) = delete;
    CItemSeq &operator=(const CItemSeq &) = delete;

    void Append(std::unique_ptr<CItem> item);
    /// Appends the text of all items. True if any of them wrote something, with `write_if_all` if all did.
    bool AppendText(kq_base::CTextBuffer &text);
    /// Publishes all items. From then on the node answers their questions about channels.
    void PublishAll();
    /// The line that was read has no text for the items: see CItem.
    void PublishWithoutText();
    /// The values of the first items of a name came from a text: see CItem.
    void CountAsGiven(std::size_t count);
    /// Does what CloneInto does to the items that are cloned.
    void ForceIntoRange() const;
    /// Gives back what others can see of the items.
    void GiveBack();
    /// True if every item may be left without a value, also for an empty list.
    bool AllOptional() const;
    /// True if some item is a choice among modules.
    bool HasModule() const;
    /// True if some item's condition holds or it has none.
    bool AnyEnabled() const;
    void CloneInto(CItemSeq &target) const;
    /// Takes over the values of another list, item by item from the front until the shorter list ends.
    void CopyValues(const CItemSeq &source);
    /// Cells in the sheet.
    std::uint32_t CountCells();
    /// The value of the cell at index; without any cell the texts of all items joined.
    void GetCell(std::uint32_t &index, kq_base::CTextBuffer &text, bool &disabled);
    void GetCellInfo(std::uint32_t &index, kq_base::CTextBuffer &text, TCellField field, bool &disabled);
    void OpenEditor(std::uint32_t &index, std::unique_ptr<TCellEditor> &editor);
    /// True if the last item takes all further values of its key.
    bool ReadsAll() const;
    /// Gives text that is left over, with the separator before it, to the last item.
    void AppendRaw(std::uint32_t separator_kind, std::string_view text);

    /// Both ask the items in order and stop at the first that answers.
    bool GetChannelAttr(std::uint32_t keyword, std::uint32_t &value);
    bool SetChannelAttr(std::uint32_t keyword, std::uint32_t number, std::string_view text, bool &matched);
    bool HasUndefinedChannelNumber() const;
    void BindVariable(CVariable &variable);
    void CapturedValueChanged(const TParValue &value, const CVariable *variable);
    void ParameterChanged(const CVariable *variable, const TParValue &value, bool &ok);
    /// Gives back what the items hold and empties the list.
    void Clear();

    /// `write_if_all`: the list writes only if all its items do.
    bool WriteIfAll() const { return write_if_all_; }
    void SetWriteIfAll() { write_if_all_ = true; }
    const TItems &Items() const { return items_; }
    bool IsEmpty() const { return items_.empty(); }
    bool IsPublished() const { return published_; }
    /// The node whose name or value the list is; none for the results of a match.
    CDefNode *Node() const { return node_; }
    void SetNode(CDefNode *node) { node_ = node; }

private:
    TItems items_;
    CDefNode *node_ = nullptr;
    std::uint32_t cells_ = kNoNumber;  ///< not counted yet
    bool write_if_all_ = false;
    bool published_ = false;
};

/// A value list as the template has it: the items and, optionally, a variable for the list as a whole.
class CItemList : public kq_base::CPooled {
public:
    CItemSeq &Items() { return items_; }
    const CItemSeq &Items() const { return items_; }
    const CVarRefItem *ListVariable() const { return list_variable_.get(); }
    void SetListVariable(std::unique_ptr<CVarRefItem> variable);

    CItemList();
    ~CItemList();

    void BindVariable(CVariable &variable);
    void CapturedValueChanged(const TParValue &value, const CVariable *variable);
    /// A copy, with the items of names in place of its own if names are given.
    std::unique_ptr<CItemList> Clone(const CItemSeq *names) const;
    void CloneInto(CItemList &target, const CItemSeq *names) const;

private:
    CItemSeq items_;
    std::unique_ptr<CVarRefItem> list_variable_;
};

}  // namespace kq_pdt
