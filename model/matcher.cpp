// Why merging is exact: candidates in the same item at the same position behave alike from there on, so of two the one
// that gets there in time first also wins first. "First" is the order of stepping, not that of joining the queue: a
// fork is stepped in the round that made it and so overtakes candidates that joined earlier. Two starts of the same
// item at the same position join in the order in which they were made, so there the first start counts.

#include "model/matcher.h"

#include <algorithm>
#include <utility>

#include "model/const_item.h"
#include "model/def_node.h"

namespace kq_pdt {

namespace {

bool HasVariableLength(TItemCode code) { return code == TItemCode::kNumber || code == TItemCode::kString; }

/// True if matching the item has effects, or depends on what variables hold at that moment.
bool Publishes(const CItem &item) {
    return item.IdVariable() != nullptr || item.Code() == TItemCode::kPlain || item.Code() == TItemCode::kDll;
}

}  // namespace

void CMatcher::Begin(std::string_view text) {
    text_ = text;
    patterns_.clear();
    stepped_ = false;
    silent_ = false;
}

void CMatcher::AddPattern(const CItemSeq &items, CDefNode *scope1, CDefNode *scope2) {
    bool with_scopes = false;
    for (const auto &item : items.Items()) {
        with_scopes = with_scopes || Publishes(*item);
    }
    patterns_.push_back({&items.Items(), scope1, scope2, 0, 0, with_scopes, false, kNone});
    stepped_ = stepped_ || with_scopes;
}

void CMatcher::Prepare(bool everything_cheaply) {
    std::size_t bits = 0;
    operations_.clear();
    for (TPattern &pattern : patterns_) {
        pattern.first = static_cast<std::uint32_t>(operations_.size());
        pattern.count = static_cast<std::uint32_t>(pattern.items->size());
        std::size_t variable_lengths = 0;
        for (const auto &item : *pattern.items) {
            TOperation operation{item.get(), item->Code(), false, '\0'};
            if (operation.code == TItemCode::kConst && item->Attributes().case_sensitive) {
                const std::string_view text = static_cast<const CConstItem &>(*item).Text();
                operation.begins_with = !text.empty();
                operation.character = text.empty() ? '\0' : text.front();
            }
            operations_.push_back(operation);
            variable_lengths += HasVariableLength(operation.code) ? 1 : 0;
        }
        pattern.publishes = pattern.with_scopes && !everything_cheaply;
        if (!pattern.publishes && variable_lengths > 1) {
            pattern.bits = static_cast<std::uint32_t>(bits);
            bits += 2 * pattern.items->size() * (text_.size() + 1);
        }
    }
    marks_.assign((bits + 63) / 64, 0);
    queue_.clear();
    pieces_.clear();
    loads_.clear();
    steps_ = 0;
    overrun_ = false;
}

/// CItem::Match, without the way through the virtual call where one character decides.
inline bool CMatcher::Match(const TOperation &operation, std::uint32_t position, TMatchStep &step) const {
    if (HasVariableLength(operation.code)) {
        step = {position + 1, false, true};
        return position < text_.size() &&
               (operation.code == TItemCode::kString || (text_[position] >= '0' && text_[position] <= '9'));
    }
    if (operation.begins_with && (position >= text_.size() || text_[position] != operation.character)) {
        step = {position, false, false};
        return false;
    }
    return operation.item->Match(text_, position, step);
}

/// True if no candidate was here before; always for patterns whose candidates can't meet.
bool CMatcher::Mark(const TPattern &pattern, bool starting, std::uint32_t item, std::uint32_t position) {
    if (pattern.bits == kNone) {
        return true;
    }
    const std::size_t rows = pattern.count;
    const std::size_t bit = pattern.bits + ((starting ? rows : 0) + item) * (text_.size() + 1) + position;
    const std::uint64_t mask = std::uint64_t{1} << (bit % 64);
    const bool fresh = (marks_[bit / 64] & mask) == 0;
    marks_[bit / 64] |= mask;
    return fresh;
}

void CMatcher::SearchCuts() {
    search_.Begin(text_);
    for (const TPattern &pattern : patterns_) {
        search_.AddPattern(*pattern.items);
    }
}

bool CMatcher::RunSilently() {
    silent_ = true;
    if (!stepped_) {
        SearchCuts();
        return search_.HasWinner();
    }
    Prepare(true);
    return Search();
}

bool CMatcher::Run() {
    if (!stepped_) {
        SearchCuts();
        return search_.Finish();
    }
    Prepare(false);
    const bool found = Search();
    if (!overrun_) {
        return found;
    }
    Prepare(true);
    return Search();
}

bool CMatcher::Search() {
    for (std::uint32_t pattern_index = 0; pattern_index < patterns_.size(); ++pattern_index) {
        const TPattern &pattern = patterns_[pattern_index];
        const CScopeGuard outer(pattern.with_scopes ? pattern.scope1 : nullptr);
        const CScopeGuard inner(pattern.with_scopes ? pattern.scope2 : nullptr);
        Start(pattern_index, 0, 0, kNone);
    }
    while (!queue_.empty()) {
        std::size_t kept = 0;
        for (std::size_t slot = 0; slot < queue_.size(); ++slot) {
            const TStep step = Step(slot);
            if (step == TStep::kMatched) {
                won_ = queue_[slot];
                return true;
            }
            if (overrun_) {
                return false;
            }
            if (step == TStep::kGoesOn) {
                queue_[kept++] = queue_[slot];
            } else {
                Drop(queue_[slot]);
            }
        }
        queue_.resize(kept);
    }
    return false;
}

/// Goes past the items that take nothing here and may do so; false at one that must take something and can't, or at the
/// end of the chain.
bool CMatcher::SkipEmpty(const TPattern &pattern, std::uint32_t &item, std::uint32_t position, TMatchStep &step) {
    for (; item < pattern.count && Mark(pattern, true, item, position); ++item) {
        if (Match(operations_[pattern.first + item], position, step)) {
            return true;
        }
        if (!step.may_be_empty) {
            return false;
        }
    }
    return false;
}

/// Clones what a candidate carries, and after it the item that it goes on in.
std::uint32_t CMatcher::Carry(CItem &item, std::uint32_t from) {
    TLoad load{std::make_unique<CItemSeq>()};
    if (from != kNone) {
        loads_[from].results->CloneInto(*load.results);
    }
    load.results->Append(item.Clone());
    loads_.push_back(std::move(load));
    ++steps_;
    return static_cast<std::uint32_t>(loads_.size() - 1);
}

void CMatcher::Drop(const TCandidate &candidate) {
    if (patterns_[candidate.pattern].publishes) {
        loads_[candidate.trace].results.reset();
    }
}

/// Starts a candidate in an item. Where an item may be empty, a candidate is started at once in the item after it, too,
/// and that fork joins the queue before the candidate that is being started; a chain of such forks is followed to its
/// end before the first of them goes on. The forks carry the clones made so far, without what these are about to take.
void CMatcher::Start(std::uint32_t pattern_index, std::uint32_t item, std::uint32_t position, std::uint32_t trace) {
    const TPattern &pattern = patterns_[pattern_index];
    const std::size_t begin = queue_.size();
    for (TMatchStep step; SkipEmpty(pattern, item, position, step); ++item) {
        const TOperation &operation = operations_[pattern.first + item];
        if (pattern.publishes) {
            trace = Carry(*operation.item, trace);
        } else {
            if (operation.code == TItemCode::kNumber && !silent_) {
                operation.item->ForceIntoRange();
            }
            pieces_.push_back({trace, position, item, position});
            trace = static_cast<std::uint32_t>(pieces_.size() - 1);
        }
        queue_.push_back({pattern_index, item, step.position, trace, step.complete});
        if (!step.may_be_empty || item + 1 == pattern.count) {
            break;
        }
    }
    std::reverse(queue_.begin() + static_cast<std::ptrdiff_t>(begin), queue_.end());
    for (std::size_t slot = begin; pattern.publishes && slot < queue_.size(); ++slot) {
        loads_[queue_[slot].trace].Clone().ParseValue(text_, position, queue_[slot].position);
    }
}

bool CMatcher::RestMayBeEmpty(const TPattern &pattern, std::uint32_t item) const {
    const auto first = operations_.begin() + pattern.first;
    return std::all_of(first + item + 1, first + pattern.count, [this](const TOperation &rest) {
        TMatchStep step;
        Match(rest, 0, step);
        return step.may_be_empty;
    });
}

/// One step of a candidate, inside its pattern's scopes.
CMatcher::TStep CMatcher::Step(std::size_t slot) {
    const TPattern &pattern = patterns_[queue_[slot].pattern];
    if (!pattern.with_scopes) {
        return StepInScope(pattern, slot);
    }
    if (pattern.publishes && ++steps_ > kMaxSteps) {
        overrun_ = true;
        return TStep::kFailed;
    }
    const CScopeGuard outer(pattern.scope1);
    const CScopeGuard inner(pattern.scope2);
    return StepInScope(pattern, slot);
}

CMatcher::TStep CMatcher::StepInScope(const TPattern &pattern, std::size_t slot) {
    const TCandidate candidate = queue_[slot];
    const bool has_next = candidate.item + 1 < pattern.count;
    if (candidate.position == text_.size()) {
        if (!has_next) {
            return TStep::kMatched;
        }
        if (!Mark(pattern, false, candidate.item, candidate.position)) {
            return TStep::kFailed;
        }
        if (RestMayBeEmpty(pattern, candidate.item)) {
            return TStep::kMatched;
        }
    } else if (!Mark(pattern, false, candidate.item, candidate.position)) {
        return TStep::kFailed;
    }
    if (has_next) {
        if (pattern.publishes) {
            loads_[candidate.trace].Clone().ForceIntoRange();  // whether a fork starts or not: it was tried
        }
        Start(candidate.pattern, candidate.item + 1, candidate.position, candidate.trace);
    }
    TMatchStep step;
    if (candidate.complete || !Match(operations_[pattern.first + candidate.item], candidate.position, step)) {
        return TStep::kFailed;
    }
    if (pattern.publishes) {
        loads_[candidate.trace].Clone().ParseValue(text_, candidate.position, step.position);
    }
    queue_[slot].position = step.position;
    queue_[slot].complete = step.complete;
    return TStep::kGoesOn;
}

const std::vector<TCut> &CMatcher::Cuts() {
    cuts_.clear();
    if (!stepped_) {
        search_.AppendCuts(*patterns_[search_.Winner()].items, cuts_);
        return cuts_;
    }
    if (patterns_[won_.pattern].publishes) {
        return cuts_;
    }
    std::uint32_t end = won_.position;
    for (std::uint32_t piece = won_.trace; piece != kNone; piece = pieces_[piece].previous) {
        cuts_.push_back({pieces_[piece].item, pieces_[piece].first, end});
        end = pieces_[piece].previous_end;
    }
    std::reverse(cuts_.begin(), cuts_.end());
    return cuts_;
}

std::unique_ptr<CItemSeq> CMatcher::TakeResults() {
    return stepped_ && patterns_[won_.pattern].publishes ? std::move(loads_[won_.trace].results) : BuildResults();
}

/// Makes the clones that the candidate would have carried.
std::unique_ptr<CItemSeq> CMatcher::BuildResults() {
    const TPattern &pattern = patterns_[Winner()];
    const CScopeGuard outer(pattern.with_scopes ? pattern.scope1 : nullptr);
    const CScopeGuard inner(pattern.with_scopes ? pattern.scope2 : nullptr);
    const auto &items = *pattern.items;
    auto results = std::make_unique<CItemSeq>();
    Cuts();
    for (std::size_t index = 0; index < cuts_.size(); ++index) {
        std::unique_ptr<CItem> clone = items[cuts_[index].item]->Clone();
        clone->ParsePiece(Piece(index));
        results->Append(std::move(clone));
    }
    return results;
}

/// The piece of a cut.
TMatchPiece CMatcher::Piece(std::size_t index) const {
    const TCut &cut = cuts_[index];
    const bool ends_pattern = cut.item + 1 == patterns_[Winner()].items->size();
    return {text_, cut.first, cut.end, index + 1 == cuts_.size(), ends_pattern};
}

bool CMatcher::LinesUp() { return !stepped_ && Cuts().size() == patterns_[Winner()].items->size(); }

void CMatcher::PutInto(const CItemSeq &items) {
    for (std::size_t index = 0; index < cuts_.size(); ++index) {
        items.Items()[index]->TakePiece(Piece(index));
    }
}

}  // namespace kq_pdt
