#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "driver/channels/channel_range.h"
#include "driver/channels/channel_range_owner.h"
#include "driver/channels/texts.h"
#include "platform/base/par_value.h"

/// The rules of the table of channel ranges as plainly as they can be put: a list in order, walked from its start each
/// time, definitions laid by recursion. Slow, and with nothing in common with ours but the words of its reports.
class CReferenceTable {
public:
    using CRange = kq_pdt::CChannelRange;

    void SetOwner(kq_pdt::CChannelRangeOwner *owner) { owner_ = owner; }
    void Insert(const CRange &range) {
        std::size_t at = 0;
        while (at < ranges_.size() && ranges_[at].first <= range.first) {
            ++at;
        }
        ranges_.insert(ranges_.begin() + static_cast<std::ptrdiff_t>(at), range);
    }
    void CheckOverlaps();
    bool AddDefined(std::uint32_t first, std::uint32_t last, std::uint32_t type, std::uint32_t direction,
                    std::string_view name);
    bool AddIfFree(std::uint32_t first, std::uint32_t last, std::uint32_t type, std::uint32_t direction);
    void AppendRange(std::uint32_t type, std::uint32_t direction, std::uint32_t &first, std::uint32_t &last,
                     bool defined, std::uint32_t count);
    void RemoveRange(std::uint32_t first) {
        if (const std::size_t at = ByFirst(first); at < ranges_.size()) {
            Erase(at);
        }
    }
    bool ChangeParameter(std::uint32_t key, std::uint32_t keyword, const TParValue &old_value,
                         const TParValue &new_value);
    bool GetRow(std::uint32_t row, CRange &range) const { return Get(row, range); }
    bool FindContaining(std::uint32_t number, CRange &range) const { return Get(Containing(number), range); }
    bool FindByFirst(std::uint32_t first, CRange &range) const { return Get(ByFirst(first), range); }

private:
    static constexpr std::uint32_t kNone = kq_pdt::kUndefinedCode;

    bool Get(std::size_t at, CRange &range) const {
        if (at >= ranges_.size()) {
            return false;
        }
        range = ranges_[at];
        return true;
    }
    std::size_t Containing(std::uint32_t number) const {
        std::size_t at = 0;
        while (at < ranges_.size() && !(ranges_[at].first <= number && number <= ranges_[at].last)) {
            ++at;
        }
        return at;
    }
    std::size_t ByFirst(std::uint32_t first) const {
        std::size_t at = 0;
        while (at < ranges_.size() && ranges_[at].first != first) {
            ++at;
        }
        return at;
    }
    void Erase(std::size_t at) { ranges_.erase(ranges_.begin() + static_cast<std::ptrdiff_t>(at)); }
    static void TakeOver(CRange &range, std::uint32_t type, std::uint32_t direction, std::string_view name) {
        range.defined = true;
        range.name = name;
        range.typeFree = type == kNone;
        range.directionFree = direction == kNone;
    }
    static bool Clash(std::uint32_t asked, std::uint32_t there) {
        return asked != kNone && there != kNone && asked != there;
    }
    static bool Unlike(const CRange &range, const CRange &taker) {
        return range.defined || (range.type != taker.type && range.type != kNone) ||
               (range.direction != taker.direction && range.direction != kNone);
    }
    bool ReportTwice(std::uint32_t first, std::uint32_t last) const;
    bool ReportClash(const CRange &range, std::uint32_t first, bool type) const;
    bool LayFromFirst(std::size_t at, std::uint32_t first, std::uint32_t last, std::uint32_t type,
                      std::uint32_t direction, std::string_view name);
    bool LayFromLast(std::size_t at, std::uint32_t first, std::uint32_t last, std::uint32_t type,
                     std::uint32_t direction, std::string_view name);
    bool MoveWhole(std::size_t at, std::uint32_t first, std::uint32_t last);
    bool MoveBound(std::size_t at, bool up, std::uint32_t edge, std::uint32_t first, std::uint32_t last);

    std::vector<CRange> ranges_;
    kq_pdt::CChannelRangeOwner *owner_ = nullptr;
};
