// The channels of a node. A node gets its block in one of two ways: registering lays down what a text defines,
// committing makes a new one after all others. A node does either once in its life, and it counts as done even if that
// ended in an error.

#include "model/def_node.h"
#include "model/sheet_data.h"
#include "model/texts.h"

namespace kq_pdt {

void CDefNode::GetChannelAttr(std::uint32_t keyword, std::uint32_t &value) {
    const CScopeGuard scope(this);
    if (!names_ || !names_->Items().GetChannelAttr(keyword, value)) {
        value = kNoNumber;
    }
}

bool CDefNode::SetChannelAttr(std::uint32_t keyword, std::uint32_t number, std::string_view text, bool &matched) {
    const CScopeGuard scope(this);
    matched = false;
    return names_ && names_->Items().SetChannelAttr(keyword, number, text, matched);
}

bool CDefNode::HasUndefinedChannelNumber() const { return names_ && names_->Items().HasUndefinedChannelNumber(); }

std::uint32_t CDefNode::FirstChannel() {
    std::uint32_t first = kNoNumber;
    GetChannelAttr(kwChFrom, first);
    if (first == kNoNumber) {
        GetChannelAttr(kwChNumber, first);
    }
    return first;
}

void CDefNode::RegisterGroupItems() {
    for (const auto &group : groups_) {
        group->Define();
    }
}

void CDefNode::RegisterChannels() {
    const CScopeGuard scope(this);
    RegisterGroupItems();
    RegisterOwnChannels();
}

bool CDefNode::ReadChannelBounds(std::uint32_t &first, std::uint32_t &last) {
    const auto report = [this](std::string_view text) {
        sheet_data_->ReportError(text);
        return false;
    };
    GetChannelAttr(kwChFrom, first);
    if (first == kNoNumber) {
        std::uint32_t count = kNoNumber;
        GetChannelAttr(kwChNumber, first);
        GetChannelAttr(kwChCount, count);
        if (first == kNoNumber || count == kNoNumber) {
            return report(texts::kNoChannelNumbers);
        }
        if (count == 0) {
            return report(texts::kZeroChannels);
        }
        last = first + count - 1;
        return last != kNoNumber;
    }
    GetChannelAttr(kwChTo, last);
    if (last == kNoNumber) {
        return report(texts::kNoChannelTo);
    }
    if (first > last) {
        return report(texts::kBoundsReversed);
    }
    return true;
}

void CDefNode::RegisterOwnChannels() {
    if (!Has(nfChannels) || channels_done_) {
        return;
    }
    channels_done_ = true;
    std::uint32_t first = kNoNumber;
    std::uint32_t last = kNoNumber;
    if (!ReadChannelBounds(first, last)) {
        return;
    }
    std::uint32_t type = kUndefinedCode;
    std::uint32_t direction = kUndefinedCode;
    GetChannelAttr(kwChType, type);
    GetChannelAttr(kwChDirection, direction);
    sheet_data_->AddUnnamedChannelRange(first, last, type, direction);
}

bool CDefNode::CommitChannels() {
    const CScopeGuard scope(this);
    for (const auto &group : groups_) {
        if (!group->Define()) {
            return false;
        }
    }
    if (!Has(nfChannels) || channels_done_) {
        return true;
    }
    channels_done_ = true;
    if (HasUndefinedChannelNumber()) {
        return true;
    }
    std::uint32_t type = kUndefinedCode;
    std::uint32_t direction = kUndefinedCode;
    GetChannelAttr(kwChType, type);
    GetChannelAttr(kwChDirection, direction);
    std::uint32_t first = 0;
    std::uint32_t last = 0;
    sheet_data_->AppendChannelRange(type, direction, first, last, true);
    bool matched = false;
    std::uint32_t present = kNoNumber;
    GetChannelAttr(kwChFrom, present);
    if (present != kNoNumber) {
        SetChannelAttr(kwChFrom, first, {}, matched);
        SetChannelAttr(kwChTo, last, {}, matched);
        return true;
    }
    SetChannelAttr(kwChNumber, first, {}, matched);
    SetChannelAttr(kwChCount, 1, {}, matched);
    if (!matched) {
        // No item took the count, so the template fixes it, and the range has to grow to it.
        std::uint32_t count = kNoNumber;
        GetChannelAttr(kwChCount, count);
        count = count == kNoNumber ? 1 : count;
        sheet_data_->ChangeChannelParameter(first, kwChTo, TParValue::Number(1), TParValue::Number(first + count - 1));
    }
    return true;
}

void CDefNode::RemoveOwnChannels() {
    if (Has(nfChannels) && channels_done_) {
        if (const std::uint32_t first = FirstChannel(); first != kNoNumber) {
            sheet_data_->RemoveChannelRange(first);
        }
    }
}

void CDefNode::SelectChannel() {
    if (Has(nfChannels)) {
        if (const std::uint32_t first = FirstChannel(); first != kNoNumber) {
            sheet_data_->SelectChannelRange(first);
        }
    }
}

}  // namespace kq_pdt
