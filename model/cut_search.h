#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "model/item_list.h"

namespace kq_pdt {

class CConstItem;

/// The characters of one item: from first up to but not including end.
struct TCut {
    std::uint32_t item = 0;
    std::uint32_t first = 0;
    std::uint32_t end = 0;
};

/// Finds the winner of a match in which nothing publishes and no variable shows, without following the candidates one
/// character at a time. The winner, its cuts and the numbers that a match pulls into their ranges are those of the
/// rounds that CMatcher describes; cut_search.cpp says why.
///
///     search.Begin(text);
///     for (...) search.AddPattern(items);
///     if (search.Finish()) { search.Winner(); search.AppendCuts(items_of_the_winner, cuts); }
class CCutSearch {
public:
    /// Begins a search; the text and the items of all patterns have to live until its end.
    void Begin(std::string_view text);
    void AddPattern(const CItemSeq::TItems &items);
    /// True if a pattern matches the whole text; numbers that the match pulls into their ranges are pulled.
    bool Finish();
    /// The same without a change to any item.
    bool HasWinner() const { return winner_ != kNone; }
    /// The index of the pattern that won, in the order of adding.
    std::uint32_t Winner() const { return winning_pattern_; }
    /// Appends a piece for each item of the winning pattern that took part, in order.
    void AppendCuts(const CItemSeq::TItems &items, std::vector<TCut> &cuts) const;

private:
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    /// A candidate in one item, over the positions where it is the first of all candidates in this item: after
    /// `start`, where it began to take characters, from `first` to `last`.
    struct TRun {
        std::uint32_t parent;  ///< the run that it forked from; kNone for where a pattern begins
        std::uint32_t item;    ///< for the beginning of a pattern the pattern's index
        std::uint32_t start;
        std::uint32_t first;
        std::uint32_t last;
        std::uint32_t saved;  ///< position less the number of the round in which the candidate is stepped there

        /// The round that made it.
        std::uint32_t Made() const { return first - saved; }
    };

    /// The run that offers the positions from `first` to `last` to the next item.
    struct TOffer {
        std::uint32_t first;
        std::uint32_t last;
        std::uint32_t run;
    };

    /// The runs of one number.
    struct TNumberRuns {
        CItem *item;
        std::uint32_t begin;
        std::uint32_t end;
    };

    void FollowItems(const CItemSeq::TItems &items, std::uint32_t item, std::uint32_t pattern);
    void RunItem(CItem &item, std::uint32_t index, bool is_last);
    void Compete(std::uint32_t run, std::uint32_t last, std::uint32_t pattern);
    void Start(const TOffer &offer, std::uint32_t item, std::uint32_t start, std::uint32_t length, std::uint32_t last);
    void RunString(std::uint32_t item);
    void RunNumber(std::uint32_t item);
    void RunConst(const CConstItem &item, std::uint32_t index, bool is_last);
    void RunOther(CItem &item, std::uint32_t index);
    void SortByPosition(std::uint32_t begin);
    void MergeOffers(std::uint32_t begin);
    bool IsSteppedBefore(std::uint32_t left, std::uint32_t right) const;
    bool JoinedEarlier(std::uint32_t left, std::uint32_t right) const;
    bool BeginsEarlier(std::uint32_t left, std::uint32_t right) const;
    bool IsMadeInTime(const TRun &run) const;
    bool BeginsAt(const CItem &item, std::uint32_t position) const;
    static bool IsBegin(const TRun &run) { return run.parent == kNone; }
    bool IsDigitAt(std::uint32_t position) const { return text_[position] >= '0' && text_[position] <= '9'; }
    std::uint32_t Length() const { return static_cast<std::uint32_t>(text_.size()); }
    std::uint32_t RunCount() const { return static_cast<std::uint32_t>(runs_.size()); }

    std::string_view text_;
    std::vector<TRun> runs_;
    std::vector<TOffer> offers_;
    std::vector<TOffer> merged_;
    std::vector<TNumberRuns> numbers_;
    std::uint32_t patterns_ = 0;
    std::uint32_t winner_ = kNone;
    std::uint32_t winning_pattern_ = 0;
};

}  // namespace kq_pdt
