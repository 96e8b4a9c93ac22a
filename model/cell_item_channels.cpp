// Carrying an edit of a cell over to the table of channels.

#include <algorithm>

#include "model/cell_item.h"
#include "model/def_node.h"
#include "model/item_list.h"
#include "model/sheet_data.h"

namespace kq_pdt {

/// What an edit does to a channel number.
struct CCellItem::TChannelEdit {
    std::uint32_t old_number = kNoNumber;
    TParValue new_value;  ///< pvNumber; pvUndefined if the value is taken away; pvNone if it doesn't read
    bool HadNumber() const { return old_number != kNoNumber; }
    bool TakenAway() const { return new_value.kind == TParKind::pvUndefined; }
};

bool CCellItem::TellNode(std::uint32_t keyword, std::uint32_t value) {
    CDefNode *node = AskedNode();
    return node == nullptr || !node->Has(nfChannels) || node->TakeNumber(keyword, value) || RefuseChannel();
}

bool CCellItem::RefuseChannel() {
    SheetData()->Refuse(true);
    return false;
}

/// Lays the block of a node that has none yet.
bool CCellItem::DefineRange(std::uint64_t first, std::uint64_t last) {
    if (first > last || last >= kNoNumber) {
        return RefuseChannel();
    }
    const auto number = static_cast<std::uint32_t>(first);
    if (!SheetData()->DefineChannelRange(number, static_cast<std::uint32_t>(last), AskNode(kwChType),
                                         AskNode(kwChDirection))) {
        return false;
    }
    AskedNode()->SetRangeFirst(number);
    return true;
}

/// `ch_number` and `ch_from`. A bound that is moved past the other takes it along. As long as another number of the
/// block is missing there is nothing to lay.
bool CCellItem::EditFirst(const TChannelEdit &edit, bool by_count) {
    CDefNode &node = *AskedNode();
    const std::uint32_t number = edit.new_value.number;
    if (edit.TakenAway()) {
        node.RemoveRange();
        return true;
    }
    const std::uint32_t other = AskNode(by_count ? kwChCount : kwChTo);
    const bool takes_along = !by_count && other != kNoNumber && number > other;
    if (node.RangeFirst() != kNoNumber) {
        if (!ChangeChannels(kNoNumber, by_count ? kwChNumber : kwChFrom, TParValue::Number(node.RangeFirst()),
                            edit.new_value)) {
            return false;
        }
        node.SetRangeFirst(number);
    } else if (other != kNoNumber) {
        const std::uint64_t last = by_count ? std::uint64_t{number} + other - 1 : std::max(number, other);
        if ((by_count && other == 0) || !DefineRange(number, last)) {
            return RefuseChannel();
        }
    }
    return !takes_along || TellNode(kwChTo, number);
}

bool CCellItem::EditCount(const TChannelEdit &edit) {
    const std::uint32_t count = edit.new_value.number;
    if (edit.TakenAway()) {
        return !edit.HadNumber();
    }
    if (count == 0 || count == kNoNumber) {
        return RefuseChannel();
    }
    const std::uint32_t first = AskNode(kwChNumber);
    if (first == kNoNumber) {
        return true;
    }
    const std::uint64_t last = std::uint64_t{first} + count - 1;
    if (last >= kNoNumber) {
        return RefuseChannel();
    }
    if (AskedNode()->RangeFirst() == kNoNumber) {
        return DefineRange(first, last);
    }
    return ChangeChannels(first, kwChCount, TParValue::Number(edit.old_number), edit.new_value);
}

/// Of a pair of bounds that may both be missing, the one that is given second lays the block.
bool CCellItem::EditLast(const TChannelEdit &edit) {
    const std::uint32_t number = edit.new_value.number;
    if (edit.TakenAway()) {
        return !edit.HadNumber();
    }
    CDefNode &node = *AskedNode();
    const std::uint32_t first = AskNode(kwChFrom);
    if (first == kNoNumber) {
        return node.HasUndefinedChannelNumber();
    }
    if (node.RangeFirst() == kNoNumber) {
        if (!DefineRange(std::min(first, number), number)) {
            return false;
        }
    } else if (!ChangeChannels(first, kwChTo, TParValue::Number(edit.old_number), edit.new_value)) {
        return false;
    }
    if (number < first) {
        node.SetRangeFirst(number);
        return TellNode(kwChFrom, number);
    }
    return true;
}

/// The first role that the item has decides. Text that is no number is refused.
bool CCellItem::EditChannelNumber(const TChannelEdit &edit) {
    if (!edit.new_value.IsNumber() && edit.new_value.kind != TParKind::pvUndefined) {
        return false;
    }
    if (AskedNode() == nullptr || !AskedNode()->Has(nfChannels)) {
        return true;
    }
    if (HasRole(roleChNumber)) {
        return EditFirst(edit, true);
    }
    if (HasRole(roleChCount)) {
        return EditCount(edit);
    }
    return HasRole(roleChFrom) ? EditFirst(edit, false) : EditLast(edit);
}

/// The selection's text has to have a row, and the node channels.
bool CCellItem::EditChannelWord(std::uint32_t keyword, const TValueMap &map, TCellEditor &editor) {
    std::uint32_t code = 0;
    if (!MapValue(map, TParValue::Text(editor.ComboBox().Text()), code)) {
        return false;
    }
    const CDefNode *node = AskedNode();
    if (node == nullptr || node->RangeFirst() == kNoNumber) {
        return node != nullptr && node->Has(nfChannels) && node->HasUndefinedChannelNumber();
    }
    return ChangeChannels(node->RangeFirst(), keyword, TParValue(), TParValue::Number(code));
}

bool CCellItem::EditChannels(TCellEditor &editor) {
    const TItemAttributes &attributes = Attributes();
    if ((attributes.roles & (roleChNumber | roleChCount | roleChFrom | roleChTo)) != 0) {
        TChannelEdit edit;
        TParValue old_value;
        GetValue(old_value);
        if (old_value.IsNumber()) {
            edit.old_number = old_value.number;
        }
        edit.new_value = EditedValue(editor);
        if (!EditChannelNumber(edit)) {
            return false;
        }
        if (edit.HadNumber() || edit.TakenAway()) {
            return true;
        }
    }
    const TChannelAttributes *channel = attributes.channel.get();
    if (channel == nullptr || editor.kind != TCellEditor::TControl::kComboBox) {
        return true;
    }
    return (!HasRole(roleChDirection) || EditChannelWord(kwChDirection, channel->direction_map, editor)) &&
           (!HasRole(roleChType) || EditChannelWord(kwChType, channel->type_map, editor));
}

bool CCellItem::CheckChannelEdit(TCellEditor &editor, bool accept) {
    if (!accept || SheetData() == nullptr) {
        return accept;
    }
    const bool taken = EditChannels(editor);
    if (!taken) {
        SheetData()->Refuse();
    }
    return taken;
}

}  // namespace kq_pdt
