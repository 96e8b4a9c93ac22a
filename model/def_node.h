#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "model/channels_group_item.h"
#include "model/item_list.h"
#include "model/variable.h"
#include "platform/base/slim_vector.h"

namespace kq_pdt {

class CParSheetData;

/// Flags of a node. The numbers are part of the model.
enum TNodeFlag : std::uint32_t {
    nfRequired = 1U << 1U,      ///< the reader makes the section if the text has none
    nfMultiple = 1U << 2U,      ///< there may be several of it
    nfModule = 1U << 3U,        ///< the section came with a module's template
    nfChannels = 1U << 4U,      ///< the node stands for one block of channels
    nfUnrecognised = 1U << 5U,  ///< the node keeps raw text
    nfKey = 1U << 6U,
    nfSection = 1U << 7U,
};

/// What sections and keys have in common. The same classes serve twice: as definitions, which the compiler makes and
/// nobody edits, and as instances, which are cloned from definitions and hold the values of a parameter file.
class CDefNode : public kq_base::CPooled {
public:
    explicit CDefNode(CParSheetData *sheet_data) : sheet_data_(sheet_data) {}
    virtual ~CDefNode();
    CDefNode(const CDefNode &) = delete;
    CDefNode &operator=(const CDefNode &) = delete;

    // Parts, scope and values: def_node.cpp

    void AddGroupItem(std::unique_ptr<CChannelsGroupItem> item);
    /// Finds or makes a variable in the node's own scope.
    CVariable &DeclareVariable(std::string_view name);
    /// The values behind bound references have moved on.
    virtual void CapturedValueChanged(const TParValue &value, const CVariable *variable);
    /// Binds the references to a variable to its present value.
    virtual void BindVariable(CVariable &variable);
    /// Puts the node's own variables in force, and ends that. Calls come in pairs.
    void EnterScope();
    void LeaveScope();
    /// True between the two: the node is in use.
    bool IsEntered() const { return entered_ != 0; }
    virtual void ParameterChanged(const CVariable *variable, const TParValue &value, bool &ok);
    /// Gives back what others can see of the node: channels, dependent sections, what its modules brought along. An
    /// edit can take that back.
    virtual void GiveBack();
    /// Gives back and releases the parts.
    virtual void Done();
    std::uint32_t Flags() const { return flags_; }
    bool Has(TNodeFlag flag) const { return (flags_ & flag) != 0; }
    void SetFlag(TNodeFlag flag) { flags_ |= flag; }
    CItemList *Names() const { return names_.get(); }
    void SetNames(std::unique_ptr<CItemList> names);
    CParSheetData *SheetData() const { return sheet_data_; }
    /// True once the node was released; it may live on until the work under way is done.
    bool IsReleased() const { return released_; }
    const CVarScope *Scope() const { return scope_.get(); }
    const kq_base::TSlimVector<CChannelsGroupItem> &Groups() const { return groups_; }
    /// The id of the node's table in the sheet, 0 without one.
    std::uint32_t RowId() const { return row_id_; }
    void SetRowId(std::uint32_t id);

    // Channels: def_node_channels.cpp

    /// Makes a block of channels for a node that has none yet, and its groups. False if one of them can't be, or its
    /// numbers aren't in the ranges of their items.
    virtual bool CommitChannels();
    /// After the node was published while a file is read: groups whose values have changed since give their ranges
    /// back, and a block whose type or direction a default has changed follows it.
    virtual void ReconsiderChannels();
    /// Hands a channel number to the item that is for it. False if there is one and it can't take the number.
    bool TakeNumber(std::uint32_t keyword, std::uint32_t number);
    /// Looks through the items for the answer to a channel attribute; 0xFFFFFFFF if none has one.
    virtual void GetChannelAttr(std::uint32_t keyword, std::uint32_t &value);
    /// Hands a channel attribute to the first item that is for it.
    virtual bool SetChannelAttr(std::uint32_t keyword, std::uint32_t number, std::string_view text, bool &matched);
    /// Lays the block that a text defines over the table of channels.
    virtual void RegisterChannels();
    /// Defines the node's channel groups.
    void RegisterGroupItems();
    /// True if an item with a channel number is undefined: the node gets its block when the number is given.
    virtual bool HasUndefinedChannelNumber() const;
    /// Brings the node's block in step with what its items say now; ok becomes false if that can't be.
    void FollowChannels(bool &ok);
    /// Gives the node's block the type and direction that its items say now.
    void FollowWords();
    /// Takes the node's block out of the table.
    void RemoveRange();
    /// Shows the node's channels in the table of channels.
    void SelectChannel();
    bool ChannelsDone() const { return channels_done_; }
    /// The first channel of the block that the node made or registered; kNoNumber without one.
    std::uint32_t RangeFirst() const { return range_first_; }
    void SetRangeFirst(std::uint32_t first);

protected:
    /// Clones groups and scope into another node.
    void CloneInto(CDefNode &node) const;
    void ReleaseScope();
    std::uint32_t flags_ = 0;
    bool channels_done_ = false;  ///< the node's own block stands in the table, or was given up with an error
    bool released_ = false;
    std::unique_ptr<CItemList> names_;

private:
    /// Lays the node's own block, once.
    void RegisterOwnChannels();
    /// The first and last channel that the items give. Otherwise they are kNoNumber, and the result is the error.
    std::string_view ReadChannelBounds(std::uint32_t &first, std::uint32_t &last);

    CParSheetData *sheet_data_;
    std::unique_ptr<CVarScope> scope_;
    kq_base::TSlimVector<CChannelsGroupItem> groups_;
    std::uint32_t row_id_ = 0;
    std::uint32_t entered_ = 0;
    std::uint32_t range_first_ = kNoNumber;
};

/// Keeps a node's scope in force for the length of a block; a null node has none.
class CScopeGuard {
public:
    explicit CScopeGuard(CDefNode *node) : node_(node) {
        if (node_ != nullptr) {
            node_->EnterScope();
        }
    }
    ~CScopeGuard() {
        if (node_ != nullptr) {
            node_->LeaveScope();
        }
    }
    CScopeGuard(const CScopeGuard &) = delete;
    CScopeGuard &operator=(const CScopeGuard &) = delete;

private:
    CDefNode *node_;
};

}  // namespace kq_pdt
