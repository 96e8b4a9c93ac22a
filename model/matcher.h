#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "model/cut_search.h"

namespace kq_pdt {

class CDefNode;

/// Decides which pattern a text belongs to, and cuts it into the pieces of the pattern's items.
///
/// A pattern is a chain of items. A number or a string may end at any character, so all ways of cutting are followed at
/// once, in candidates that step together, one character a round; the first candidate that reaches the end of the text
/// wins. Candidates wait in a queue and are stepped from its head: those of the first pattern first, a fork after all
/// that wait, but a fork made at the start of an item before the candidate that made it.
///
///     matcher.Begin(text);
///     for (...) matcher.AddPattern(items, section, nullptr);
///     if (matcher.Run()) { matcher.Winner(); results = matcher.TakeResults(); }
///
/// While an item takes characters its clone publishes what it has so far, so where something publishes or a variable
/// shows, every way of cutting is followed step by step, up to kMaxSteps steps and forks in all. Patterns beside such
/// ones that don't publish themselves are followed without clones, and of candidates in the same item at the same
/// position only the one stepped first goes on: they would do the same from there on. Beyond kMaxSteps the publishing
/// patterns, too, are followed this way, so that only the winner publishes. Where nothing publishes and no variable
/// shows at all, CCutSearch finds the same winner without a step.
///
/// So an item gets its characters in one of three ways:
/// - CItem::ParseValue, step by step: a candidate's clone takes the characters from first up to but not including end
///   as its value or a further part of it, and publishes what it has so far. False if it takes nothing.
/// - CItem::ParsePiece, for results: a fresh clone takes the piece of the winner, with the value that the steps would
///   have left in it. The steps differ from one call of ParseValue where a value was cloned on the way: a number too
///   large is pulled into its range at each fork, and a string no longer counts as given.
/// - CItem::TakePiece, without results: an item that publishes nothing takes the piece itself, and has afterwards the
///   value that it would have after cloning, ParsePiece of the clone and CopyValue from it.
class CMatcher {
public:
    static constexpr std::uint32_t kMaxSteps = 10'000;

    /// Begins a match; the text has to live until its end.
    void Begin(std::string_view text);
    /// Adds a pattern. The scopes are in force around each step, scope1 the outer one; they may be absent. A pattern
    /// without items matches nothing.
    void AddPattern(const CItemSeq &items, CDefNode *scope1, CDefNode *scope2);
    /// Runs the match; true if a pattern matched the whole text.
    bool Run();
    /// The same without any effect: nothing is published and no item changes. Afterwards only Winner and Cuts may be
    /// asked for.
    bool RunSilently();
    /// The index of the pattern that won, in the order of adding.
    std::size_t Winner() const { return stepped_ ? won_.pattern : search_.Winner(); }
    /// Where the winner was cut: a piece for each item that took part, in order. Empty if the winner's candidates
    /// carried clones.
    const std::vector<TCut> &Cuts();
    /// Clones of the items that took part, each with its piece. An item that took nothing may be missing, so results
    /// don't always line up with the pattern. To be called at most once, and before the pattern's items change.
    std::unique_ptr<CItemSeq> TakeResults();
    /// True if results have a clone for each item of the winning pattern, and nothing publishes or shows a variable:
    /// then items can do without results.
    bool LinesUp();
    /// If the match lines up, does to items what CopyValues from the results would do: the items of the winning
    /// pattern, or fresh clones of them.
    void PutInto(const CItemSeq &items);

private:
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    /// An item, with what most often decides whether it accepts a character.
    struct TOperation {
        CItem *item;
        TItemCode code;
        bool begins_with;  ///< the item accepts nothing that doesn't begin with this character
        char character;
    };

    struct TPattern {
        const CItemSeq::TItems *items;
        CDefNode *scope1;
        CDefNode *scope2;
        std::uint32_t first;  ///< its first operation
        std::uint32_t count;
        bool with_scopes;    ///< matching depends on variables, or changes them
        bool publishes;      ///< candidates carry clones
        std::uint32_t bits;  ///< where its marks begin; kNone if no two candidates can meet
    };

    /// What a candidate without clones remembers of one item: where it began, and where the one before it ended.
    struct TPiece {
        std::uint32_t previous = kNone;
        std::uint32_t previous_end = 0;
        std::uint32_t item = 0;
        std::uint32_t first = 0;
    };

    struct TCandidate {
        std::uint32_t pattern = 0;
        std::uint32_t item = 0;
        std::uint32_t position = 0;
        std::uint32_t trace = kNone;  ///< its piece, or its load if it carries clones
        bool complete = false;
    };

    /// The clones of a candidate whose pattern publishes; the last one is that of its item.
    struct TLoad {
        std::unique_ptr<CItemSeq> results;

        CItem &Clone() const { return *results->Items().back(); }
    };

    enum class TStep { kGoesOn, kFailed, kMatched };

    void Prepare(bool everything_cheaply);
    bool Search();
    void SearchCuts();
    bool Match(const TOperation &operation, std::uint32_t position, TMatchStep &step) const;
    bool SkipEmpty(const TPattern &pattern, std::uint32_t &item, std::uint32_t position, TMatchStep &step);
    void Start(std::uint32_t pattern_index, std::uint32_t item, std::uint32_t position, std::uint32_t trace);
    std::uint32_t Carry(CItem &item, std::uint32_t from);
    TStep Step(std::size_t slot);
    TStep StepInScope(const TPattern &pattern, std::size_t slot);
    void Drop(const TCandidate &candidate);
    bool RestMayBeEmpty(const TPattern &pattern, std::uint32_t item) const;
    bool Mark(const TPattern &pattern, bool starting, std::uint32_t item, std::uint32_t position);
    std::unique_ptr<CItemSeq> BuildResults();
    TMatchPiece Piece(std::size_t index) const;

    std::string_view text_;
    CCutSearch search_;
    bool silent_ = false;   ///< items stay as they are
    bool stepped_ = false;  ///< a pattern publishes or shows a variable, so won_ will hold the winner and not search_
    std::vector<TPattern> patterns_;
    std::vector<TCandidate> queue_;
    std::vector<TOperation> operations_;
    std::vector<TPiece> pieces_;
    std::vector<TLoad> loads_;
    std::vector<std::uint64_t> marks_;
    std::vector<TCut> cuts_;
    TCandidate won_;
    std::uint32_t steps_ = 0;  ///< and forks, of candidates that carry clones
    bool overrun_ = false;
};

}  // namespace kq_pdt
