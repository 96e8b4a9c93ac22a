// Why merging is exact: candidates in the same item at the same place behave alike from there on, so of two the one
// that gets there in time first also wins first. "First" is the order of stepping, not that of joining the queue: a
// fork is stepped in the walk that made it and so overtakes candidates that joined earlier. Two starts of the same item
// at the same place join in the order in which they were made, so there the first start counts.

#include "model/matcher.h"

#include <algorithm>
#include <utility>

#include "model/def_node.h"

namespace kq_pdt {

namespace {

bool HasVariableLength(const CItem &item) {
    return item.Code() == TItemCode::kNumber || item.Code() == TItemCode::kString;
}

/// True if matching the item has effects, or depends on what variables hold at that moment.
bool Publishes(const CItem &item) {
    return item.IdVariable() != nullptr || item.Code() == TItemCode::kPlain || item.Code() == TItemCode::kDll;
}

/// Feeds a piece to a clone as the walk through the text would: a number's digits one at a time where they may not all
/// fit. last tells that the piece ends the text, so nothing was cloned behind it any more.
void TakePiece(CItem &clone, std::string_view text, std::uint32_t first, std::uint32_t end, bool last, bool has_next) {
    constexpr std::uint32_t kSafeDigits = 9;
    if (clone.Code() != TItemCode::kNumber || end - first <= kSafeDigits) {
        clone.ParseValue(text, first, end);
        if (!last) {
            clone.ForceIntoRange();
        }
        return;
    }
    for (std::uint32_t digit = first; digit < end; ++digit) {
        if (digit != first && has_next) {
            clone.ForceIntoRange();
        }
        clone.ParseValue(text, digit, digit + 1);
    }
    if (!last) {
        clone.ForceIntoRange();
    }
}

}  // namespace

void CMatcher::Begin(std::string_view text) {
    text_ = text;
    patterns_.clear();
    queue_.clear();
    pieces_.clear();
    won_ = TCandidate();
}

void CMatcher::AddPattern(const CItemSeq &items, CDefNode *scope1, CDefNode *scope2) {
    patterns_.push_back({&items.Items(), scope1, scope2, false, false, kNone});
}

void CMatcher::Prepare(bool everything_cheaply) {
    std::size_t bits = 0;
    for (TPattern &pattern : patterns_) {
        const auto &items = *pattern.items;
        pattern.with_scopes =
            std::any_of(items.begin(), items.end(), [](const auto &item) { return Publishes(*item); });
        pattern.publishes = pattern.with_scopes && !everything_cheaply;
        pattern.bits = kNone;
        const bool can_meet =
            std::count_if(items.begin(), items.end(), [](const auto &item) { return HasVariableLength(*item); }) > 1;
        if (!pattern.publishes && can_meet) {
            pattern.bits = static_cast<std::uint32_t>(bits);
            bits += 2 * items.size() * (text_.size() + 1);
        }
    }
    marks_.assign((bits + 63) / 64, 0);
    queue_.clear();
    pieces_.clear();
    steps_ = 0;
    overrun_ = false;
}

/// True if nobody was here before; always for patterns whose candidates can't meet.
bool CMatcher::Mark(const TPattern &pattern, bool starting, std::uint32_t item, std::uint32_t position) {
    if (pattern.bits == kNone) {
        return true;
    }
    const std::size_t rows = pattern.items->size();
    const std::size_t bit = pattern.bits + ((starting ? rows : 0) + item) * (text_.size() + 1) + position;
    const std::uint64_t mask = std::uint64_t{1} << (bit % 64);
    const bool fresh = (marks_[bit / 64] & mask) == 0;
    marks_[bit / 64] |= mask;
    return fresh;
}

bool CMatcher::Run() {
    Prepare(false);
    const bool found = Search();
    if (!overrun_) {
        return found;
    }
    Prepare(true);
    return Search();
}

bool CMatcher::Search() {
    for (std::uint32_t place = 0; place < patterns_.size(); ++place) {
        TCandidate started;
        if (!patterns_[place].items->empty() && Start(place, 0, 0, nullptr, kNone, started)) {
            queue_.push_back(std::move(started));
        }
    }
    while (!queue_.empty()) {
        std::size_t kept = 0;
        for (std::size_t place = 0; place < queue_.size(); ++place) {
            const TStep step = Step(place);
            if (step == TStep::kMatched) {
                won_ = std::move(queue_[place]);
                winner_ = won_.pattern;
                return true;
            }
            if (overrun_) {
                return false;
            }
            if (step == TStep::kGoesOn) {
                if (kept != place) {
                    queue_[kept] = std::move(queue_[place]);
                }
                ++kept;
            }
        }
        queue_.resize(kept);
    }
    return false;
}

/// Goes past the items that take nothing here and may do so; false at one that must take something and can't, or at the
/// end of the chain.
bool CMatcher::SkipEmpty(const TPattern &pattern, std::uint32_t &item, std::uint32_t position, TMatchStep &step) {
    const auto &items = *pattern.items;
    for (; item < items.size() && Mark(pattern, true, item, position); ++item) {
        if (items[item]->Match(text_, position, step)) {
            return true;
        }
        if (!step.may_be_empty) {
            return false;
        }
    }
    return false;
}

/// Starts a candidate in an item. An item that may be empty leaves its place at once also to the one behind it, and
/// that fork joins the queue ahead of the candidate that is being started; a chain of such forks is followed to its end
/// before the first of them goes on. The forks carry the clones made so far, without what these are about to take.
bool CMatcher::Start(std::uint32_t pattern_place, std::uint32_t item, std::uint32_t position, const CItemSeq *results,
                     std::uint32_t piece, TCandidate &started) {
    const TPattern &pattern = patterns_[pattern_place];
    const auto &items = *pattern.items;
    const CScopeGuard outer(pattern.with_scopes ? pattern.scope1 : nullptr);
    const CScopeGuard inner(pattern.with_scopes ? pattern.scope2 : nullptr);
    const std::size_t base = starting_.size();
    for (TMatchStep step; SkipEmpty(pattern, item, position, step); ++item) {
        TCandidate candidate;
        candidate.pattern = pattern_place;
        candidate.item = item;
        candidate.position = step.position;
        candidate.complete = step.complete;
        if (pattern.publishes) {
            candidate.results = std::make_unique<CItemSeq>();
            if (results != nullptr) {
                results->CloneInto(*candidate.results);
            }
            candidate.results->Append(items[item]->Clone());
            candidate.clone = candidate.results->Items().back().get();
        } else {
            items[item]->ForceIntoRange();
            pieces_.push_back({piece, position, item, position});
            piece = static_cast<std::uint32_t>(pieces_.size() - 1);
            candidate.piece = piece;
        }
        starting_.push_back(std::move(candidate));
        results = starting_.back().results.get();
        if (!step.may_be_empty || item + 1 == items.size()) {
            break;
        }
    }
    for (std::size_t place = starting_.size(); place > base; --place) {
        TCandidate &candidate = starting_[place - 1];
        if (candidate.clone != nullptr) {
            candidate.clone->ParseValue(text_, position, candidate.position);
        }
        if (place - 1 != base) {
            queue_.push_back(std::move(candidate));
        }
    }
    const bool any = starting_.size() > base;
    if (any) {
        started = std::move(starting_[base]);
    }
    starting_.resize(base);
    return any;
}

bool CMatcher::RestMayBeEmpty(const TPattern &pattern, std::uint32_t item) const {
    const auto &items = *pattern.items;
    return std::all_of(items.begin() + item + 1, items.end(), [this](const auto &rest) {
        TMatchStep step;
        rest->Match(text_, 0, step);
        return step.may_be_empty;
    });
}

CMatcher::TStep CMatcher::Step(std::size_t place) {
    const std::uint32_t pattern_place = queue_[place].pattern;
    const TPattern &pattern = patterns_[pattern_place];
    const std::uint32_t item = queue_[place].item;
    const std::uint32_t position = queue_[place].position;
    const bool has_next = item + 1 < pattern.items->size();
    if (position == text_.size() && !has_next) {
        return TStep::kMatched;
    }
    if (pattern.publishes && (++steps_ > kMaxSteps || queue_.size() > kMaxWaiting)) {
        overrun_ = true;
        return TStep::kFailed;
    }
    if (!Mark(pattern, false, item, position)) {
        return TStep::kFailed;
    }
    const CScopeGuard outer(pattern.with_scopes ? pattern.scope1 : nullptr);
    const CScopeGuard inner(pattern.with_scopes ? pattern.scope2 : nullptr);
    if (position == text_.size() && RestMayBeEmpty(pattern, item)) {
        return TStep::kMatched;
    }
    if (has_next) {
        TCandidate fork;
        const CItemSeq *results = queue_[place].results.get();
        if (Start(pattern_place, item + 1, position, results, queue_[place].piece, fork)) {
            queue_.push_back(std::move(fork));
        }
    }
    TMatchStep step;
    if (queue_[place].complete || !(*pattern.items)[item]->Match(text_, position, step)) {
        return TStep::kFailed;
    }
    TCandidate &candidate = queue_[place];
    candidate.position = step.position;
    candidate.complete = step.complete;
    if (candidate.clone != nullptr) {
        candidate.clone->ParseValue(text_, position, step.position);
    }
    return TStep::kGoesOn;
}

std::unique_ptr<CItemSeq> CMatcher::TakeResults() {
    std::unique_ptr<CItemSeq> results = won_.results ? std::move(won_.results) : BuildResults(won_);
    won_ = TCandidate();
    return results;
}

/// Makes the clones that the candidate would have carried.
std::unique_ptr<CItemSeq> CMatcher::BuildResults(const TCandidate &winner) {
    struct TTaken {
        std::uint32_t item;
        std::uint32_t first;
        std::uint32_t end;
    };
    std::vector<TTaken> taken;
    std::uint32_t end = winner.position;
    for (std::uint32_t place = winner.piece; place != kNone; place = pieces_[place].previous) {
        taken.push_back({pieces_[place].item, pieces_[place].first, end});
        end = pieces_[place].previous_end;
    }
    const TPattern &pattern = patterns_[winner.pattern];
    const CScopeGuard outer(pattern.with_scopes ? pattern.scope1 : nullptr);
    const CScopeGuard inner(pattern.with_scopes ? pattern.scope2 : nullptr);
    const auto &items = *pattern.items;
    auto results = std::make_unique<CItemSeq>();
    for (auto piece = taken.rbegin(); piece != taken.rend(); ++piece) {
        const bool last = piece + 1 == taken.rend();
        const bool has_next = piece->item + 1 < items.size();
        std::unique_ptr<CItem> clone = items[piece->item]->Clone();
        TakePiece(*clone, text_, piece->first, piece->end, last, has_next);
        results->Append(std::move(clone));
    }
    return results;
}

}  // namespace kq_pdt
