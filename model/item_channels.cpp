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

/// The key if it stands for channels, otherwise its section if that does.
CDefNode *CItem::AskedNode() const {
    CDefNode *node = owner_ != nullptr && owner_->IsPublished() ? owner_->Node() : nullptr;
    if (node != nullptr && node->Has(nfKey) && !node->Has(nfChannels)) {
        CSectionDef *section = static_cast<CKeyDef *>(node)->Section();
        return section != nullptr && section->Has(nfChannels) ? section : node;
    }
    return node;
}

std::uint32_t CItem::AskNode(std::uint32_t keyword) const {
    std::uint32_t value = kNoNumber;
    CDefNode *node = AskedNode();
    if (node != nullptr && node->Has(nfChannels)) {
        node->GetChannelAttr(keyword, value);
    }
    return value;
}

bool CItem::NodeChannelsDone() const {
    const CDefNode *node = AskedNode();
    return node != nullptr && node->Has(nfChannels) && node->ChannelsDone();
}

void CItem::FollowWords() {
    if (CDefNode *node = AskedNode(); node != nullptr && (Attributes().roles & ~std::uint32_t{roleReadAll}) != 0) {
        node->FollowWords();
    }
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
    const auto read = [&] { IsEnabled() ? GetValue(record) : GetInitialValue(record); };
    if (IsNumberAttribute(keyword)) {
        read();
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
        read();
    }
    return MapValue(is_type ? channel->type_map : channel->direction_map, record, value);
}

/// Does a reading leave the number as it is, in its range or not? It pulls those of names, and those after which a
/// pattern goes on.
bool CItem::KeepsAnyNumber() const {
    const CDefNode *node = owner_ != nullptr ? owner_->Node() : nullptr;
    const bool in_name = node != nullptr && node->Names() != nullptr && &node->Names()->Items() == owner_;
    return node != nullptr && !in_name && owner_->Items().back().get() == this;
}

bool CItem::SetChannelAttr(std::uint32_t keyword, std::uint32_t number, std::string_view text, bool &matched) {
    if (!HasRole(RoleOf(keyword))) {
        return false;
    }
    if (IsNumberAttribute(keyword)) {
        const TChannelAttributes *channel = Attributes().channel.get();
        if (channel != nullptr && channel->fixed_keyword == keyword) {
            return false;
        }
        matched = true;
        const bool fits = keyword == kwChCount || IsInRange(number) || KeepsAnyNumber();
        if (!fits || !SetValue(TParValue::Number(number))) {
            return false;
        }
        PublishValue(TParValue::Number(number));
        return true;
    }
    matched = true;
    return SetValue(TParValue::Text(text));
}

void CItem::ParameterChanged(const CVariable *variable, const TParValue &value, bool & /*ok*/) {
    const TChannelAttributes *channel = Attributes().channel.get();
    if (channel == nullptr || (!channel->type_variable && !channel->direction_variable) || !NodeChannelsDone() ||
        AskedNode()->RangeFirst() == kNoNumber) {
        return;
    }
    const std::uint32_t first = AskedNode()->RangeFirst();
    const auto follow = [&](const std::unique_ptr<CVarRefItem> &reference, const TValueMap &map,
                            std::uint32_t keyword) {
        std::uint32_t code = 0;
        if (reference && variable != nullptr && reference->Variable() == variable && MapValue(map, value, code)) {
            ChangeChannels(first, keyword, TParValue(), TParValue::Number(code));
        }
    };
    follow(channel->type_variable, channel->type_map, kwChType);
    follow(channel->direction_variable, channel->direction_map, kwChDirection);
    FollowWords();
}

}  // namespace kq_pdt
