// The channel side of an item: answering for channel attributes, and carrying a changed variable over to the table of
// channels.

#include "model/item.h"
#include "model/key_def.h"
#include "model/section_def.h"
#include "model/sheet_data.h"
#include "model/var_ref_item.h"

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

}  // namespace

CParSheetData *CItem::SheetData() const {
    return owner_ != nullptr && owner_->Node() != nullptr ? owner_->Node()->SheetData() : nullptr;
}

CDefNode *CItem::AskedNode() const { return owner_ != nullptr && owner_->IsPublished() ? owner_->Node() : nullptr; }

std::uint32_t CItem::AskNode(std::uint32_t keyword) const {
    std::uint32_t value = kNoNumber;
    CDefNode *node = AskedNode();
    if (node != nullptr && node->Has(nfChannels)) {
        node->GetChannelAttr(keyword, value);
    }
    return value;
}

std::uint32_t CItem::AskFirstChannel() const {
    const std::uint32_t first = AskNode(kwChFrom);
    return first != kNoNumber ? first : AskNode(kwChNumber);
}

bool CItem::NodeChannelsDone() const {
    const CDefNode *node = AskedNode();
    if (node == nullptr) {
        return false;
    }
    if (node->Has(nfChannels)) {
        return node->ChannelsDone();
    }
    const CDefNode *section = node->Has(nfKey) ? static_cast<const CKeyDef *>(node)->Section() : nullptr;
    return section != nullptr && section->Has(nfChannels) && section->ChannelsDone();
}

bool CItem::ChangeChannels(std::uint32_t key, std::uint32_t keyword, const TParValue &old_value,
                           const TParValue &new_value) {
    CParSheetData *data = SheetData();
    return data != nullptr && data->ChangeChannelParameter(key, keyword, old_value, new_value);
}

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
    if (channel == nullptr || (!channel->type_variable && !channel->direction_variable) || !NodeChannelsDone()) {
        return;
    }
    const std::uint32_t first = AskFirstChannel();
    if (first == kNoNumber) {
        return;
    }
    const auto follow = [&](const std::unique_ptr<CVarRefItem> &reference, const TValueMap &map,
                            std::uint32_t keyword) {
        std::uint32_t code = 0;
        if (reference && variable != nullptr && reference->Variable() == variable && MapValue(map, value, code)) {
            ChangeChannels(first, keyword, TParValue::Number(0), TParValue::Number(code));
        }
    };
    follow(channel->type_variable, channel->type_map, kwChType);
    follow(channel->direction_variable, channel->direction_map, kwChDirection);
}

}  // namespace kq_pdt
