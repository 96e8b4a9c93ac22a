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

void CCellItem::TellNode(std::uint32_t keyword, std::uint32_t value) {
    CDefNode *node = AskedNode();
    if (node != nullptr && node->Has(nfChannels)) {
        bool matched = false;
        node->SetChannelAttr(keyword, value, {}, matched);
    }
}

/// A range for numbers that a node gets for the first time. An edit isn't refused because it isn't free.
void CCellItem::AddIfFree(std::uint32_t first, std::uint32_t last) {
    CParSheetData *data = SheetData();
    if (data != nullptr && first <= last) {
        data->AddChannelRangeIfFree(first, last, AskNode(kwChType), AskNode(kwChDirection));
    }
}

/// Decides an edit of a channel number by the first role that the item has; decided stays false where the number has
/// no say, and the edit goes on to the words.
bool CCellItem::EditChannelNumber(const TChannelEdit &edit, bool &decided) {
    const TParValue old_value = TParValue::Number(edit.old_number);
    const std::uint32_t number = edit.new_value.number;
    decided = edit.HadNumber() || edit.new_value.IsNumber();
    if (HasRole(roleChNumber) || (!HasRole(roleChCount) && HasRole(roleChFrom))) {
        const bool by_count = HasRole(roleChNumber);
        if (edit.HadNumber() && edit.TakenAway()) {
            if (CParSheetData *data = SheetData()) {
                data->RemoveChannelRange(edit.old_number);
            }
            return true;
        }
        const std::uint32_t other = AskNode(by_count ? kwChCount : kwChTo);
        if (!edit.HadNumber()) {
            if (edit.new_value.IsNumber()) {
                const std::uint32_t count = other == kNoNumber ? 1 : other;
                const std::uint32_t last = other == kNoNumber ? number : std::max(other, number);
                if (!by_count || count != 0) {
                    AddIfFree(number, by_count ? number + count - 1 : last);
                }
                if (!by_count && other != kNoNumber && number > other) {
                    TellNode(kwChTo, number);
                }
            }
            return true;
        }
        const bool moved = ChangeChannels(kNoNumber, by_count ? kwChNumber : kwChFrom, old_value, edit.new_value);
        if (moved && !by_count && edit.new_value.IsNumber() && number > other) {
            TellNode(kwChTo, number);
        }
        return moved;
    }
    if (HasRole(roleChCount)) {
        const std::uint32_t first = AskNode(kwChNumber);
        if (edit.HadNumber() && edit.TakenAway()) {
            return false;
        }
        if (first == kNoNumber || !edit.new_value.IsNumber()) {
            return true;
        }
        if (!edit.HadNumber()) {
            if (number != 0) {
                AddIfFree(first, first + number - 1);
            }
            return true;
        }
        return ChangeChannels(first, kwChTo, TParValue::Number(first + edit.old_number - 1),
                              TParValue::Number(first + number - 1));
    }
    decided = true;
    const std::uint32_t first = AskNode(kwChFrom);
    if (first == kNoNumber || edit.TakenAway()) {
        return false;
    }
    const bool moved = ChangeChannels(first, kwChTo, old_value, edit.new_value);
    if (moved && edit.new_value.IsNumber() && number < first) {
        TellNode(kwChFrom, number);
    }
    return moved;
}

/// The selection's text has to have a row, and the node channels.
bool CCellItem::EditChannelWord(std::uint32_t keyword, const TValueMap &map, TCellEditor &editor) {
    std::uint32_t code = 0;
    if (!MapValue(map, TParValue::Text(editor.ComboBox().Text()), code)) {
        return false;
    }
    const std::uint32_t first = AskFirstChannel();
    TParValue old_value;
    GetValue(old_value);
    return first != kNoNumber && ChangeChannels(first, keyword, old_value, TParValue::Number(code));
}

bool CCellItem::CheckChannelEdit(TCellEditor &editor, bool accept) {
    if (!accept || Owner() == nullptr) {
        return accept;
    }
    const TItemAttributes &attributes = Attributes();
    const bool is_combo_box = editor.kind == TCellEditor::TControl::kComboBox;
    if ((attributes.roles & (roleChNumber | roleChCount | roleChFrom | roleChTo)) != 0) {
        TChannelEdit edit;
        TParValue old_value;
        GetValue(old_value);
        if (old_value.IsNumber()) {
            edit.old_number = old_value.number;
        }
        edit.new_value = EditedValue(editor);
        bool decided = false;
        const bool result = EditChannelNumber(edit, decided);
        if (decided) {
            return result;
        }
    }
    const TChannelAttributes *channel = attributes.channel.get();
    if (channel != nullptr && is_combo_box && HasRole(roleChDirection) &&
        !EditChannelWord(kwChDirection, channel->direction_map, editor)) {
        return false;
    }
    if (channel != nullptr && is_combo_box && HasRole(roleChType)) {
        return EditChannelWord(kwChType, channel->type_map, editor);
    }
    return true;
}

}  // namespace kq_pdt
