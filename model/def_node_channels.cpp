// The channels of a node. A node gets its block in one of two ways: registering lays down what a text defines,
// committing makes a new one after all others. A node does either once in its life, and it counts as done even if that
// ended in an error.

#include "model/def_node.h"
#include "model/journal.h"
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

void CDefNode::RegisterGroupItems() {
    for (const auto &group : groups_) {
        group->Define();
    }
}

void CDefNode::ReconsiderChannels() {
    const CScopeGuard scope(this);
    for (const auto &group : groups_) {
        group->Reconsider();
    }
    FollowWords();
}

void CDefNode::RegisterChannels() {
    const CScopeGuard scope(this);
    RegisterGroupItems();
    RegisterOwnChannels();
}

std::string_view CDefNode::ReadChannelBounds(std::uint32_t &first, std::uint32_t &last) {
    const auto fail = [&](std::string_view error) {
        first = kNoNumber;
        last = kNoNumber;
        return error;
    };
    GetChannelAttr(kwChFrom, first);
    if (first != kNoNumber) {
        GetChannelAttr(kwChTo, last);
        if (last == kNoNumber) {
            return fail(texts::kNoChannelTo);
        }
        return first > last ? fail(texts::kBoundsReversed) : std::string_view();
    }
    std::uint32_t count = kNoNumber;
    GetChannelAttr(kwChNumber, first);
    GetChannelAttr(kwChCount, count);
    if (first == kNoNumber || count == kNoNumber) {
        return fail(texts::kNoChannelNumbers);
    }
    if (count == 0) {
        return fail(texts::kZeroChannels);
    }
    last = first + count - 1;
    return last == kNoNumber ? fail({}) : std::string_view();
}

/// A number that may be missing and is missing makes no block.
void CDefNode::RegisterOwnChannels() {
    if (!Has(nfChannels) || channels_done_) {
        return;
    }
    channels_done_ = true;
    if (HasUndefinedChannelNumber()) {
        return;
    }
    std::uint32_t first = kNoNumber;
    std::uint32_t last = kNoNumber;
    const std::string_view error = ReadChannelBounds(first, last);
    if (!error.empty()) {
        sheet_data_->ReportError(error);
    }
    if (first == kNoNumber) {
        return;
    }
    std::uint32_t type = kUndefinedCode;
    std::uint32_t direction = kUndefinedCode;
    GetChannelAttr(kwChType, type);
    GetChannelAttr(kwChDirection, direction);
    if (sheet_data_->AddUnnamedChannelRange(first, last, type, direction)) {
        SetRangeFirst(first);
    }
}

void CDefNode::FollowChannels(bool &ok) {
    if (!Has(nfChannels) || !channels_done_) {
        return;
    }
    const CScopeGuard scope(this);
    if (HasUndefinedChannelNumber()) {
        RemoveRange();
        return;
    }
    std::uint32_t first = kNoNumber;
    std::uint32_t last = kNoNumber;
    std::uint32_t type = kUndefinedCode;
    std::uint32_t direction = kUndefinedCode;
    ReadChannelBounds(first, last);
    GetChannelAttr(kwChType, type);
    GetChannelAttr(kwChDirection, direction);
    if (range_first_ == kNoNumber) {
        ok = first != kNoNumber && sheet_data_->DefineChannelRange(first, last, type, direction) && ok;
        SetRangeFirst(first);
        return;
    }
    if (first == kNoNumber ||
        !sheet_data_->ChangeChannelParameter(range_first_, kwAll, TParValue::Number(first), TParValue::Number(last))) {
        ok = false;
        return;
    }
    SetRangeFirst(first);
    FollowWords();
}

void CDefNode::FollowWords() {
    if (range_first_ == kNoNumber) {
        return;
    }
    const CScopeGuard scope(this);
    std::uint32_t type = kUndefinedCode;
    std::uint32_t direction = kUndefinedCode;
    GetChannelAttr(kwChType, type);
    GetChannelAttr(kwChDirection, direction);
    sheet_data_->Ranges().SetKind(range_first_, type, direction);
}

bool CDefNode::TakeNumber(std::uint32_t keyword, std::uint32_t number) {
    bool matched = false;
    return SetChannelAttr(keyword, number, {}, matched) || !matched;
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
    CJournal::Keep(channels_done_);
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
    if (!sheet_data_->AppendChannelRange(type, direction, first, last, true)) {
        sheet_data_->ShowBadChannel();
        return false;
    }
    SetRangeFirst(first);
    std::uint32_t present = kNoNumber;
    GetChannelAttr(kwChFrom, present);
    const bool by_bounds = present != kNoNumber;
    if (by_bounds ? !TakeNumber(kwChFrom, first) || !TakeNumber(kwChTo, last) : !TakeNumber(kwChNumber, first)) {
        RemoveRange();
        sheet_data_->ShowBadChannel();
        return false;
    }
    if (by_bounds) {
        FollowWords();
        return true;
    }
    bool matched = false;
    SetChannelAttr(kwChCount, 1, {}, matched);
    if (!matched) {
        // No item took the count, so the template fixes it, and the range has to grow to it.
        std::uint32_t count = kNoNumber;
        GetChannelAttr(kwChCount, count);
        count = count == kNoNumber ? 1 : count;
        if (!sheet_data_->ChangeChannelParameter(first, kwChCount, TParValue::Number(1), TParValue::Number(count))) {
            return false;
        }
    }
    // A number that was put into an item may pick another word.
    FollowWords();
    return true;
}

void CDefNode::SetRangeFirst(std::uint32_t first) {
    CJournal::Keep(range_first_);
    range_first_ = first;
}

void CDefNode::RemoveRange() {
    if (range_first_ != kNoNumber) {
        sheet_data_->RemoveChannelRange(range_first_);
        SetRangeFirst(kNoNumber);
    }
}

void CDefNode::SelectChannel() {
    if (range_first_ != kNoNumber) {
        sheet_data_->SelectChannelRange(range_first_);
    }
}

}  // namespace kq_pdt
