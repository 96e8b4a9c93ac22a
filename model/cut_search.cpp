// What the rounds do, in numbers. Let `saved` be a candidate's position less the number of the round in which it is
// stepped there. Taking one more character costs a round, so `saved` stays; a fork is stepped in the round that made
// it, with the characters that it took at its start, so they are added to `saved`. It follows:
//
// - Of two candidates at the same position the one that saved more is stepped in an earlier round. If both saved the
//   same, they are stepped in the same round, in the order in which they joined the queue: first the one made in the
//   earlier round, else the one whose parent was stepped first; of children that one parent made at once the one in
//   the last item comes first. What a pattern begins with joined before all forks.
// - Of the candidates in one item at one position only the one stepped first counts, since all of them go on alike. In
//   a string that is the one that saved most, and of several the one that began first: it joined first. It stays so up
//   to the end of the text or until one begins that saved more. The same holds in a number for each row of digits.
//   So a candidate counts over a run of positions that needn't be stepped through.
// - What may be empty is passed over: the positions that a run offers to the next item are offered to the item after it
//   too, beside those of the item between. Here, too, only the one stepped first counts at each position.
//
// The candidate that holds the end of the text after the last item is stepped there first of its pattern, and wins in
// it.

#include "model/cut_search.h"

#include <algorithm>

#include "model/const_item.h"

namespace kq_pdt {

namespace {

bool MayBeEmpty(const CItem &item) { return item.Code() == TItemCode::kString || item.Code() == TItemCode::kNumber; }

/// The first position from first to last at which the text has a part, or npos.
std::size_t FindPart(std::string_view text, std::string_view part, bool case_sensitive, std::uint32_t first,
                     std::uint32_t last) {
    if (case_sensitive && first < last) {
        const std::size_t position = text.substr(first, last - first + part.size()).find(part);
        return position == std::string_view::npos ? position : position + first;
    }
    for (; first <= last; ++first) {
        if (HasPartAt(text, first, part, case_sensitive)) {
            return first;
        }
    }
    return std::string_view::npos;
}

}  // namespace

void CCutSearch::Begin(std::string_view text) {
    text_ = text;
    runs_.clear();
    numbers_.clear();
    patterns_ = 0;
    winner_ = kNone;
}

void CCutSearch::AddPattern(const CItemSeq::TItems &items) {
    const std::uint32_t pattern = patterns_++;
    std::uint32_t item = 0;
    std::uint32_t position = 0;
    for (; item < items.size() && items[item]->Code() == TItemCode::kConst; ++item) {
        const auto &constant = static_cast<const CConstItem &>(*items[item]);
        const std::string_view part = constant.Text();
        if (!HasPartAt(text_, position, part, constant.Attributes().case_sensitive)) {
            return;
        }
        position += static_cast<std::uint32_t>(part.size());
    }
    runs_.push_back({kNone, pattern, item, position, position, position});
    if (item == items.size()) {
        Compete(RunCount() - 1, position, pattern);
        return;
    }
    offers_.clear();
    offers_.push_back({position, position, RunCount() - 1});
    FollowItems(items, item, pattern);
}

/// Follows what the offers lead to in the items from the given one on.
void CCutSearch::FollowItems(const CItemSeq::TItems &items, std::uint32_t item, std::uint32_t pattern) {
    for (; !offers_.empty(); ++item) {
        const std::uint32_t begin = RunCount();
        const bool is_last = item + 1 == items.size();
        RunItem(*items[item], item, is_last);
        if (!MayBeEmpty(*items[item])) {
            offers_.clear();
        }
        if (is_last) {
            if (!offers_.empty()) {
                Compete(offers_.back().run, offers_.back().last, pattern);
            }
            if (begin != RunCount()) {
                Compete(RunCount() - 1, runs_.back().last, pattern);
            }
            return;
        }
        MergeOffers(begin);
    }
}

/// Lets a run that holds positions up to last win, if these reach the end of the text and it took something.
void CCutSearch::Compete(std::uint32_t run, std::uint32_t last, std::uint32_t pattern) {
    if (last != Length() || (IsBegin(runs_[run]) && runs_[run].start == 0)) {
        return;
    }
    if (winner_ == kNone || IsSteppedBefore(run, winner_)) {
        winner_ = run;
        winning_pattern_ = pattern;
    }
}

void CCutSearch::RunItem(CItem &item, std::uint32_t index, bool is_last) {
    const std::uint32_t begin = RunCount();
    switch (item.Code()) {
        case TItemCode::kString:
            RunString(index);
            break;
        case TItemCode::kNumber:
            RunNumber(index);
            if (begin != RunCount()) {
                numbers_.push_back({&item, begin, RunCount()});
            }
            break;
        case TItemCode::kConst:
            RunConst(static_cast<const CConstItem &>(item), index, is_last);
            break;
        default:
            RunOther(item, index);
            SortByPosition(begin);
            break;
    }
}

void CCutSearch::Start(const TOffer &offer, std::uint32_t item, std::uint32_t start, std::uint32_t length,
                       std::uint32_t last) {
    runs_.push_back({offer.run, item, start, start + length, last, runs_[offer.run].saved + length});
}

void CCutSearch::RunString(std::uint32_t item) {
    const std::uint32_t begin = RunCount();
    for (const TOffer &offer : offers_) {
        const bool leads = RunCount() == begin || runs_[offer.run].saved + 1 > runs_.back().saved;
        if (leads && offer.first < Length()) {
            if (RunCount() != begin) {
                runs_.back().last = offer.first;
            }
            Start(offer, item, offer.first, 1, Length());
        }
    }
}

void CCutSearch::RunNumber(std::uint32_t item) {
    std::uint32_t end = 0;  // of the digits that the last run takes
    for (const TOffer &offer : offers_) {
        const std::uint32_t limit = std::min(offer.last + 1, Length());
        for (std::uint32_t position = offer.first; position < limit; position = end) {
            if (position < end) {
                if (runs_[offer.run].saved + 1 <= runs_.back().saved) {
                    continue;
                }
                runs_.back().last = position;
            } else {
                while (position < limit && !IsDigitAt(position)) {
                    ++position;
                }
                if (position == limit) {
                    break;
                }
                for (end = position + 1; end < Length() && IsDigitAt(end);) {
                    ++end;
                }
            }
            Start(offer, item, position, 1, end);
        }
    }
}

void CCutSearch::RunConst(const CConstItem &item, std::uint32_t index, bool is_last) {
    const std::string_view part = item.Text();
    if (part.size() > text_.size()) {
        return;
    }
    const bool case_sensitive = item.Attributes().case_sensitive;
    const auto length = static_cast<std::uint32_t>(part.size());
    const std::uint32_t furthest = Length() - length;
    for (const TOffer &offer : offers_) {
        const std::uint32_t last = std::min(offer.last, furthest);
        std::uint32_t first = is_last ? std::max(offer.first, furthest) : offer.first;
        while (first <= last) {
            const std::size_t found = FindPart(text_, part, case_sensitive, first, last);
            if (found == std::string_view::npos) {
                break;
            }
            const auto start = static_cast<std::uint32_t>(found);
            Start(offer, index, start, length, start + length);
            first = start + 1;
        }
    }
}

/// Items that take what they take at once.
void CCutSearch::RunOther(CItem &item, std::uint32_t index) {
    for (const TOffer &offer : offers_) {
        for (std::uint32_t start = offer.first; start <= offer.last; ++start) {
            TMatchStep step;
            if (item.Match(text_, start, step)) {
                Start(offer, index, start, step.position - start, step.position);
            }
        }
    }
}

/// Pieces of different length may end in disorder, and at the same position.
void CCutSearch::SortByPosition(std::uint32_t begin) {
    std::stable_sort(runs_.begin() + begin, runs_.end(),
                     [](const TRun &left, const TRun &right) { return left.first < right.first; });
    std::uint32_t kept = begin;
    for (std::uint32_t run = begin; run < RunCount(); ++run) {
        if (kept == begin || runs_[kept - 1].first != runs_[run].first) {
            runs_[kept++] = runs_[run];
        } else if (IsSteppedBefore(run, kept - 1)) {
            runs_[kept - 1] = runs_[run];
        }
    }
    runs_.resize(kept);
}

/// The runs from begin on beside what was offered so far.
void CCutSearch::MergeOffers(std::uint32_t begin) {
    if (begin == RunCount()) {
        return;
    }
    if (offers_.empty() || offers_.back().last < runs_[begin].first) {
        for (std::uint32_t run = begin; run < RunCount(); ++run) {
            offers_.push_back({runs_[run].first, runs_[run].last, run});
        }
        return;
    }
    merged_.clear();
    auto offer = offers_.begin();
    std::uint32_t run = begin;
    for (std::uint32_t position = 0; offer != offers_.end() || run != RunCount();) {
        const std::uint32_t offer_first = offer != offers_.end() ? std::max(offer->first, position) : kNone;
        const std::uint32_t run_first = run != RunCount() ? std::max(runs_[run].first, position) : kNone;
        const std::uint32_t first = std::min(offer_first, run_first);
        std::uint32_t last = 0;
        std::uint32_t holder = 0;
        if (offer_first == run_first) {
            last = std::min(offer->last, runs_[run].last);
            holder = IsSteppedBefore(offer->run, run) ? offer->run : run;
        } else if (offer_first < run_first) {
            last = std::min(offer->last, run_first - 1);
            holder = offer->run;
        } else {
            last = std::min(runs_[run].last, offer_first - 1);
            holder = run;
        }
        if (!merged_.empty() && merged_.back().run == holder && merged_.back().last + 1 == first) {
            merged_.back().last = last;
        } else {
            merged_.push_back({first, last, holder});
        }
        position = last + 1;
        if (offer != offers_.end() && offer->last < position) {
            ++offer;
        }
        if (run != RunCount() && runs_[run].last < position) {
            ++run;
        }
    }
    std::swap(offers_, merged_);
}

/// True if, of two candidates at the same position, left is stepped first.
bool CCutSearch::IsSteppedBefore(std::uint32_t left, std::uint32_t right) const {
    return runs_[left].saved != runs_[right].saved ? runs_[left].saved > runs_[right].saved
                                                   : JoinedEarlier(left, right);
}

/// True if left joined the queue before right.
bool CCutSearch::JoinedEarlier(std::uint32_t left, std::uint32_t right) const {
    for (;;) {
        const TRun &one = runs_[left];
        const TRun &other = runs_[right];
        if (IsBegin(one) || IsBegin(other)) {
            return BeginsEarlier(left, right);
        }
        if (one.Made() != other.Made()) {
            return one.Made() < other.Made();
        }
        if (one.parent == other.parent) {
            return one.item > other.item;
        }
        left = one.parent;
        right = other.parent;
    }
}

/// The same where at least one is the beginning of a pattern. All constants that a pattern begins with are passed in
/// the first round, one after the other, so the one with fewer generations before it comes first.
bool CCutSearch::BeginsEarlier(std::uint32_t left, std::uint32_t right) const {
    if (runs_[left].Made() != runs_[right].Made()) {
        return runs_[left].Made() < runs_[right].Made();
    }
    std::uint32_t left_depth = 0;
    for (; !IsBegin(runs_[left]); left = runs_[left].parent) {
        ++left_depth;
    }
    std::uint32_t right_depth = 0;
    for (; !IsBegin(runs_[right]); right = runs_[right].parent) {
        ++right_depth;
    }
    left_depth += runs_[left].start;
    right_depth += runs_[right].start;
    return left_depth != right_depth ? left_depth < right_depth : runs_[left].item < runs_[right].item;
}

/// True if a match would have made the run's candidate before it ended.
bool CCutSearch::IsMadeInTime(const TRun &run) const {
    if (winner_ == kNone || (IsBegin(runs_[run.parent]) && runs_[run.parent].start == 0)) {
        return true;
    }
    const std::uint32_t last_walk = Length() - runs_[winner_].saved;
    return run.Made() != last_walk ? run.Made() < last_walk : JoinedEarlier(run.parent, winner_);
}

bool CCutSearch::Finish() {
    for (const TNumberRuns &number : numbers_) {
        std::uint32_t run = number.begin;
        while (run < number.end && !IsMadeInTime(runs_[run])) {
            ++run;
        }
        if (run < number.end) {
            number.item->ForceIntoRange();
        }
    }
    return winner_ != kNone;
}

void CCutSearch::AppendCuts(const CItemSeq::TItems &items, std::vector<TCut> &cuts) const {
    const std::size_t begin = cuts.size();
    std::uint32_t end = Length();
    std::uint32_t run_index = winner_;
    for (; !IsBegin(runs_[run_index]); run_index = runs_[run_index].parent) {
        const TRun &run = runs_[run_index];
        cuts.push_back({run.item, run.start, end});
        end = run.start;
        const TRun &parent = runs_[run.parent];
        const std::uint32_t first_between = IsBegin(parent) ? parent.start : parent.item + 1;
        for (std::uint32_t item = run.item; item-- > first_between;) {
            if (BeginsAt(*items[item], run.start)) {
                cuts.push_back({item, run.start, run.start});
            }
        }
    }
    for (std::uint32_t item = runs_[run_index].start; item-- > 0;) {
        const std::size_t length = static_cast<const CConstItem &>(*items[item]).Text().size();
        const std::uint32_t first = end - static_cast<std::uint32_t>(length);
        cuts.push_back({item, first, end});
        end = first;
    }
    std::reverse(cuts.begin() + static_cast<std::ptrdiff_t>(begin), cuts.end());
}

/// True if an item that may be empty could take the character here: passing it over leaves a piece without characters.
bool CCutSearch::BeginsAt(const CItem &item, std::uint32_t position) const {
    return position < Length() && (item.Code() == TItemCode::kString || IsDigitAt(position));
}

}  // namespace kq_pdt
