// The channel side of a value item: answering for channel attributes, and carrying an edit or a changed variable over
// to the table of channels.

#include <algorithm>

#include "model/item.h"
#include "model/key_def.h"
#include "model/section_def.h"
#include "model/sheet_data.h"
#include "model/var_ref_item.h"
#include "platform/base/number_text.h"

namespace kq_pdt {

namespace {

TRole RoleOf(std::uint32_t keyword) {
    switch (keyword) {
        case kwChFrom:
            return roleChFrom;
        case kwChTo:
            return roleChTo;
        case kwChNumber:
            return roleChNumber;
        case kwChCount:
            return roleChCount;
        case kwChType:
            return roleChType;
        default:
            return roleChDirection;
    }
}

bool IsNumberAttribute(std::uint32_t keyword) {
    return keyword == kwChFrom || keyword == kwChTo || keyword == kwChNumber || keyword == kwChCount;
}

/// The node that answers an item's questions about channels, which it does once the item was published.
CDefNode *OwnerNode(const CItemSeq *owner) {
    return owner != nullptr && owner->IsPublished() ? owner->Node() : nullptr;
}

/// The sheet data of the item's node; none outside any node.
CParSheetData *SheetData(const CItemSeq *owner) {
    return owner != nullptr && owner->Node() != nullptr ? owner->Node()->SheetData() : nullptr;
}

/// The answer of the item's node to a channel attribute; 0xFFFFFFFF if the node doesn't stand for channels.
std::uint32_t AskOwner(const CItemSeq *owner, std::uint32_t keyword) {
    std::uint32_t value = kNoNumber;
    CDefNode *node = OwnerNode(owner);
    if (node != nullptr && node->Has(nfChannels)) {
        node->GetChannelAttr(keyword, value);
    }
    return value;
}

void TellOwner(const CItemSeq *owner, std::uint32_t keyword, std::uint32_t value) {
    CDefNode *node = OwnerNode(owner);
    if (node != nullptr && node->Has(nfChannels)) {
        bool matched = false;
        node->SetChannelAttr(keyword, value, {}, matched);
    }
}

std::uint32_t AskFirstChannel(const CItemSeq *owner) {
    const std::uint32_t first = AskOwner(owner, kwChFrom);
    return first != kNoNumber ? first : AskOwner(owner, kwChNumber);
}

bool OwnerChannelsDone(const CItemSeq *owner) {
    const CDefNode *node = OwnerNode(owner);
    if (node == nullptr) {
        return false;
    }
    if (node->Has(nfChannels)) {
        return node->ChannelsDone();
    }
    const CDefNode *section = node->Has(nfKey) ? static_cast<const CKeyDef *>(node)->Section() : nullptr;
    return section != nullptr && section->Has(nfChannels) && section->ChannelsDone();
}

/// Changes a parameter of a range through the sheet data, which shows a refusal to the user.
bool Change(const CItemSeq *owner, std::uint32_t key, std::uint32_t keyword, const TParValue &old_value,
            const TParValue &new_value) {
    CParSheetData *data = SheetData(owner);
    return data != nullptr && data->ChangeChannelParameter(key, keyword, old_value, new_value);
}

/// A range for numbers that a node gets for the first time. That it may not be free isn't the edit's business.
void AddIfFree(const CItemSeq *owner, std::uint32_t first, std::uint32_t last) {
    CParSheetData *data = SheetData(owner);
    if (data != nullptr && first <= last) {
        data->AddChannelRangeIfFree(first, last, AskOwner(owner, kwChType), AskOwner(owner, kwChDirection));
    }
}

}  // namespace

/// What an edit does to a channel number.
struct CItem::TChannelEdit {
    std::uint32_t old_number = kNoNumber;
    TParValue new_value;  ///< pvNumber; pvUndefined if the value is taken away; pvNone if it doesn't read
    bool HadNumber() const { return old_number != kNoNumber; }
    bool TakenAway() const { return new_value.kind == TParKind::pvUndefined; }
};

bool CItem::GetChannelAttr(std::uint32_t keyword, std::uint32_t &value) {
    if (!HasRole(RoleOf(keyword))) {
        return false;
    }
    const TChannelAttributes *channel = Attributes().channel.get();
    TParValue record;
    if (IsNumberAttribute(keyword)) {
        GetValue(record);
        if (!record.IsNumber()) {
            return false;
        }
        value = channel != nullptr && channel->fixed_keyword == keyword ? channel->fixed_count : record.number;
        return true;
    }
    if (channel == nullptr) {
        return false;
    }
    const bool is_type = keyword == kwChType;
    const auto &variable = is_type ? channel->type_variable : channel->direction_variable;
    if (variable) {
        variable->GetValue(record);
    } else {
        GetValue(record);
    }
    return MapValue(is_type ? channel->type_map : channel->direction_map, record, value);
}

bool CItem::SetChannelAttr(std::uint32_t keyword, std::uint32_t number, std::string_view text, bool &matched) {
    matched = false;
    if (!HasRole(RoleOf(keyword))) {
        return false;
    }
    if (IsNumberAttribute(keyword)) {
        const TChannelAttributes *channel = Attributes().channel.get();
        matched = channel == nullptr || channel->fixed_keyword != keyword;
        return matched && SetValue(TParValue::Number(number));
    }
    matched = true;
    return SetValue(TParValue::Text(text));
}

void CItem::ParameterChanged(const CVariable *variable, const TParValue &value, bool & /*ok*/) {
    const TChannelAttributes *channel = Attributes().channel.get();
    if (channel == nullptr || (!channel->type_variable && !channel->direction_variable) || !OwnerChannelsDone(owner_)) {
        return;
    }
    const std::uint32_t first = AskFirstChannel(owner_);
    if (first == kNoNumber) {
        return;
    }
    const auto follow = [&](const std::unique_ptr<CVarRefItem> &reference, const TValueMap &map,
                            std::uint32_t keyword) {
        std::uint32_t code = 0;
        if (reference && variable != nullptr && reference->Variable() == variable && MapValue(map, value, code)) {
            Change(owner_, first, keyword, TParValue::Number(0), TParValue::Number(code));
        }
    };
    follow(channel->type_variable, channel->type_map, kwChType);
    follow(channel->direction_variable, channel->direction_map, kwChDirection);
}

/// Decides an edit of a channel number by the first role that the item has; decided stays false where the number has
/// no say, and the edit goes on to the words.
bool CItem::EditChannelNumber(const TChannelEdit &edit, bool &decided) {
    const TParValue old_value = TParValue::Number(edit.old_number);
    const std::uint32_t number = edit.new_value.number;
    decided = edit.HadNumber() || edit.new_value.IsNumber();
    if (HasRole(roleChNumber) || (!HasRole(roleChCount) && HasRole(roleChFrom))) {
        const bool by_count = HasRole(roleChNumber);
        if (edit.HadNumber() && edit.TakenAway()) {
            if (CParSheetData *data = SheetData(owner_)) {
                data->RemoveChannelRange(edit.old_number);
            }
            return true;
        }
        const std::uint32_t other = AskOwner(owner_, by_count ? kwChCount : kwChTo);
        if (!edit.HadNumber()) {
            if (edit.new_value.IsNumber()) {
                const std::uint32_t count = other == kNoNumber ? 1 : other;
                const std::uint32_t last = other == kNoNumber ? number : std::max(other, number);
                if (!by_count || count != 0) {
                    AddIfFree(owner_, number, by_count ? number + count - 1 : last);
                }
                if (!by_count && other != kNoNumber && number > other) {
                    TellOwner(owner_, kwChTo, number);
                }
            }
            return true;
        }
        const bool moved = Change(owner_, kNoNumber, by_count ? kwChNumber : kwChFrom, old_value, edit.new_value);
        if (moved && !by_count && edit.new_value.IsNumber() && number > other) {
            TellOwner(owner_, kwChTo, number);
        }
        return moved;
    }
    if (HasRole(roleChCount)) {
        const std::uint32_t first = AskOwner(owner_, kwChNumber);
        if (edit.HadNumber() && edit.TakenAway()) {
            return false;
        }
        if (first == kNoNumber || !edit.new_value.IsNumber()) {
            return true;
        }
        if (!edit.HadNumber()) {
            if (number != 0) {
                AddIfFree(owner_, first, first + number - 1);
            }
            return true;
        }
        return Change(owner_, first, kwChTo, TParValue::Number(first + edit.old_number - 1),
                      TParValue::Number(first + number - 1));
    }
    decided = true;
    const std::uint32_t first = AskOwner(owner_, kwChFrom);
    if (first == kNoNumber || edit.TakenAway()) {
        return false;
    }
    const bool moved = Change(owner_, first, kwChTo, old_value, edit.new_value);
    if (moved && edit.new_value.IsNumber() && number < first) {
        TellOwner(owner_, kwChFrom, number);
    }
    return moved;
}

/// The selection's text has to have a row, and the node channels.
bool CItem::EditChannelWord(std::uint32_t keyword, const TValueMap &map, TCellEditor &editor) {
    std::uint32_t code = 0;
    if (!MapValue(map, TParValue::Text(editor.ComboBox().Text()), code)) {
        return false;
    }
    const std::uint32_t first = AskFirstChannel(owner_);
    TParValue old_value;
    GetValue(old_value);
    return first != kNoNumber && Change(owner_, first, keyword, old_value, TParValue::Number(code));
}

bool CItem::CheckChannelEdit(TCellEditor &editor, bool accept) {
    if (!accept || owner_ == nullptr) {
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
