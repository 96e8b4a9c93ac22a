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
/// time, definitions laid by recursion and their pieces found afterwards. Slow, and with nothing in common with ours
/// but the words of its reports.
class CReferenceTable {
public:
    void SetOwner(kq_pdt::CChannelRangeOwner *owner) { owner_ = owner; }
    void Insert(const kq_pdt::CChannelRange &range) { Insert(CRange{range}); }
    void CheckOverlaps();
    bool AddDefined(std::uint32_t first, std::uint32_t last, std::uint32_t type, std::uint32_t direction,
                    std::string_view name);
    bool DefineIfFits(std::uint32_t first, std::uint32_t last, std::uint32_t type, std::uint32_t direction);
    bool AppendRange(std::uint32_t type, std::uint32_t direction, std::uint32_t &first, std::uint32_t &last,
                     bool defined, std::uint32_t count);
    void RemoveRange(std::uint32_t first);
    bool ChangeParameter(std::uint32_t key, std::uint32_t keyword, const TParValue &old_value,
                         const TParValue &new_value);
    bool GetRow(std::uint32_t row, kq_pdt::CChannelRange &range) const { return Get(row, range); }
    bool FindContaining(std::uint32_t number, kq_pdt::CChannelRange &range) const {
        return Get(Containing(number), range);
    }
    bool FindByFirst(std::uint32_t first, kq_pdt::CChannelRange &range) const { return Get(ByFirst(first), range); }

private:
    static constexpr std::uint32_t kNone = kq_pdt::kUndefinedCode;

    struct CRange : kq_pdt::CChannelRange {
        bool laid = false;  ///< by the definition that is being laid
    };

    void Insert(const CRange &range) {
        std::size_t at = 0;
        while (at < ranges_.size() && ranges_[at].first <= range.first) {
            ++at;
        }
        ranges_.insert(ranges_.begin() + static_cast<std::ptrdiff_t>(at), range);
    }
    bool Get(std::size_t at, kq_pdt::CChannelRange &range) const {
        if (at >= ranges_.size()) {
            return false;
        }
        range = static_cast<const kq_pdt::CChannelRange &>(ranges_[at]);
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
        range.laid = true;
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
    static bool Shares(const CRange &range, std::uint32_t first, std::uint32_t last) {
        return std::max(range.first, first) <= std::min(range.last, last);
    }
    void InsertPiece(std::uint32_t first, std::uint32_t last, std::uint32_t type, std::uint32_t direction,
                     std::string_view name);
    void LayUpward(std::uint32_t first, std::uint32_t last, std::uint32_t type, std::uint32_t direction,
                   std::string_view name);
    bool ReportTwice(std::uint32_t first, std::uint32_t last) const;
    bool ReportClash(const CRange &range, std::uint32_t first, bool type) const;
    bool Lay(std::uint32_t first, std::uint32_t last, std::uint32_t type, std::uint32_t direction,
             std::string_view name);
    bool LayFromFirst(std::size_t at, std::uint32_t first, std::uint32_t last, std::uint32_t type,
                      std::uint32_t direction, std::string_view name);
    bool LayFromLast(std::size_t at, std::uint32_t first, std::uint32_t last, std::uint32_t type,
                     std::uint32_t direction, std::string_view name);
    /// Connects what a definition has laid.
    void MarkPieces();
    std::size_t BlockStart(std::uint32_t first) const;
    /// For each range whether it belongs to the block that starts there.
    std::vector<bool> Block(std::size_t start) const;
    /// Who has to give way to new bounds: ranges below the block down to the first, above it up to the last, or all
    /// within both.
    enum class TWay { kNone, kDown, kUp, kWithin };
    bool Move(std::size_t start, TWay way, bool shifts, std::int64_t first, std::int64_t last);
    bool ChangeLast(std::size_t start, std::int64_t old_last, std::int64_t last);

    std::vector<CRange> ranges_;
    kq_pdt::CChannelRangeOwner *owner_ = nullptr;
};
