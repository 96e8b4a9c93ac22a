// What the walks do, in numbers. Let `saved` be a candidate's position less the number of the walk in which it is
// stepped there. Taking one more character costs a walk, so `saved` stays; a fork is stepped in the walk that made it,
// with the characters that it took at its start, so they are added to `saved`. It follows:
//
// - Of two candidates at the same position the one that saved more is stepped in an earlier walk. If both saved the
//   same, they are stepped in the same walk, in the order in which they joined the queue: first the one made in the
//   earlier walk, else the one whose parent was stepped first; children that one parent made at once stand with the
//   last item first. What a pattern begins with joined ahead of all forks.
// - Of the candidates in one item at one position only the one stepped first counts, since all of them go on alike. In
//   a string that is the one that saved most, and of several the one that began first: it joined first. It stays so up
//   to the end of the text or until one begins that saved more. The same holds in a number for each row of digits.
//   So a candidate counts over a run of positions that needs no walk through them.
// - What may be empty is passed over: the positions that a run offers to the next item are offered to the one behind
//   too, beside those of the item between. Here, too, only the one stepped first counts at each position.
//
// Whoever holds the end of the text behind the last item is stepped there first of its pattern, and wins in it.

#include "model/cut_search.h"

#include <algorithm>

#include "model/const_item.h"

namespace kq_pdt {

namespace {

/// The first place of a part at a position from first to last, or npos.
std::size_t FindPart(std::string_view text, std::string_view part, bool case_sensitive, std::uint32_t first,
                     std::uint32_t last) {
    if (case_sensitive && first < last) {
        const std::size_t place = text.substr(first, last - first + part.size()).find(part);
        return place == std::string_view::npos ? place : place + first;
    }
    for (; first <= last; ++first) {
        if (StandsAt(text, first, part, case_sensitive)) {
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
    runs_.push_back({kNone, pattern, 0, 0, 0, 0});
    offers_.clear();
    offers_.push_back({0, 0, RunCount() - 1});
    for (std::uint32_t item = 0; item < items.size() && !offers_.empty(); ++item) {
        RunItem(*items[item], item, item + 1 == items.size());
    }
    if (offers_.empty() || offers_.back().last != Length() || runs_[offers_.back().run].parent == kNone) {
        return;
    }
    if (winner_ == kNone || IsAhead(offers_.back().run, winner_)) {
        winner_ = offers_.back().run;
        winning_pattern_ = pattern;
    }
}

void CCutSearch::RunItem(CItem &item, std::uint32_t place, bool is_last) {
    const std::uint32_t begin = RunCount();
    switch (item.Code()) {
        case TItemCode::kString:
            RunString(place);
            MergeOffers(begin);
            return;
        case TItemCode::kNumber:
            RunNumber(place);
            numbers_.push_back({&item, begin, RunCount()});
            MergeOffers(begin);
            return;
        case TItemCode::kConst:
            RunConst(static_cast<const CConstItem &>(item), place, is_last);
            break;
        default:
            RunOther(item, place);
            SortByPosition(begin);
            break;
    }
    offers_.clear();
    for (std::uint32_t run = begin; run < RunCount(); ++run) {
        offers_.push_back({runs_[run].first, runs_[run].last, run});
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
        for (std::uint32_t place = offer.first; place < limit; place = end) {
            if (place < end) {
                if (runs_[offer.run].saved + 1 <= runs_.back().saved) {
                    continue;
                }
                runs_.back().last = place;
            } else {
                while (place < limit && !IsDigitAt(place)) {
                    ++place;
                }
                if (place == limit) {
                    break;
                }
                for (end = place + 1; end < Length() && IsDigitAt(end);) {
                    ++end;
                }
            }
            Start(offer, item, place, 1, end);
        }
    }
}

void CCutSearch::RunConst(const CConstItem &item, std::uint32_t place, bool is_last) {
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
            Start(offer, place, start, length, start + length);
            first = start + 1;
        }
    }
}

/// Items that take what they take at once.
void CCutSearch::RunOther(CItem &item, std::uint32_t place) {
    for (const TOffer &offer : offers_) {
        for (std::uint32_t start = offer.first; start <= offer.last; ++start) {
            TMatchStep step;
            if (item.Match(text_, start, step)) {
                Start(offer, place, start, step.position - start, step.position);
            }
        }
    }
}

/// Pieces of different length may end in disorder, and at the same place.
void CCutSearch::SortByPosition(std::uint32_t begin) {
    std::stable_sort(runs_.begin() + begin, runs_.end(),
                     [](const TRun &left, const TRun &right) { return left.first < right.first; });
    std::uint32_t kept = begin;
    for (std::uint32_t run = begin; run < RunCount(); ++run) {
        if (kept == begin || runs_[kept - 1].first != runs_[run].first) {
            runs_[kept++] = runs_[run];
        } else if (IsAhead(run, kept - 1)) {
            runs_[kept - 1] = runs_[run];
        }
    }
    runs_.resize(kept);
}

/// The runs from begin on, those of an item that may be empty, beside what was offered to it.
void CCutSearch::MergeOffers(std::uint32_t begin) {
    if (begin == RunCount()) {
        return;
    }
    merged_.clear();
    auto offer = offers_.begin();
    std::uint32_t run = begin;
    for (std::uint32_t place = 0; offer != offers_.end() || run != RunCount();) {
        const std::uint32_t offer_first = offer != offers_.end() ? std::max(offer->first, place) : kNone;
        const std::uint32_t run_first = run != RunCount() ? std::max(runs_[run].first, place) : kNone;
        const std::uint32_t first = std::min(offer_first, run_first);
        std::uint32_t last = 0;
        std::uint32_t holder = 0;
        if (offer_first == run_first) {
            last = std::min(offer->last, runs_[run].last);
            holder = IsAhead(offer->run, run) ? offer->run : run;
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
        place = last + 1;
        if (offer != offers_.end() && offer->last < place) {
            ++offer;
        }
        if (run != RunCount() && runs_[run].last < place) {
            ++run;
        }
    }
    std::swap(offers_, merged_);
}

/// Of two candidates at the same position, the one that is stepped first.
bool CCutSearch::IsAhead(std::uint32_t left, std::uint32_t right) const {
    return runs_[left].saved != runs_[right].saved ? runs_[left].saved > runs_[right].saved
                                                   : JoinedEarlier(left, right);
}

/// Of two candidates in the queue, the one that stands ahead.
bool CCutSearch::JoinedEarlier(std::uint32_t left, std::uint32_t right) const {
    for (;;) {
        const TRun &one = runs_[left];
        const TRun &other = runs_[right];
        if (one.parent == kNone || other.parent == kNone) {
            return one.parent == kNone && (other.parent != kNone || one.item < other.item);
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

bool CCutSearch::IsMadeBeforeTheEnd(const TRun &run) const {
    if (winner_ == kNone || runs_[run.parent].parent == kNone) {
        return true;
    }
    const std::uint32_t last_walk = Length() - runs_[winner_].saved;
    return run.Made() != last_walk ? run.Made() < last_walk : JoinedEarlier(run.parent, winner_);
}

bool CCutSearch::Finish() {
    for (const TNumberRuns &number : numbers_) {
        const auto begin = runs_.begin() + number.begin;
        const auto end = runs_.begin() + number.end;
        if (std::any_of(begin, end, [this](const TRun &run) { return IsMadeBeforeTheEnd(run); })) {
            number.item->ForceIntoRange();
        }
    }
    return winner_ != kNone;
}

void CCutSearch::AppendCuts(const CItemSeq::TItems &items, std::vector<TCut> &cuts) const {
    const std::size_t begin = cuts.size();
    std::uint32_t end = Length();
    for (std::uint32_t place = winner_; runs_[place].parent != kNone; place = runs_[place].parent) {
        const TRun &run = runs_[place];
        cuts.push_back({run.item, run.start, end});
        end = run.start;
        const TRun &parent = runs_[run.parent];
        const std::uint32_t behind = parent.parent == kNone ? 0 : parent.item + 1;
        for (std::uint32_t item = run.item; item-- > behind;) {
            if (BeginsAt(*items[item], run.start)) {
                cuts.push_back({item, run.start, run.start});
            }
        }
    }
    std::reverse(cuts.begin() + static_cast<std::ptrdiff_t>(begin), cuts.end());
}

/// True if an item that may be empty could take the character here: passing it over leaves a piece without characters.
bool CCutSearch::BeginsAt(const CItem &item, std::uint32_t position) const {
    return position < Length() && (item.Code() == TItemCode::kString || IsDigitAt(position));
}

}  // namespace kq_pdt
