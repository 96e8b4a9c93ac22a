#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>

#include "driver/channels/channel_range_table.h"
#include "driver/channels/channel_transaction.h"
#include "driver/channels/range_tree.h"
#include "driver/channels/text_out.h"
#include "platform/view/text_view.h"
#include "tests/driver/channels/range_program.h"
#include "tests/driver/channels/reference_table.h"

namespace {

using namespace kq_pdt;
using kq_drv::CRangeTree;
using kq_drv::TRangeRecord;

/// Makes programs over few channels, so that everything meets everything.
class CGenerator {
public:
    explicit CGenerator(std::uint32_t seed) : random_(seed) {}

    std::uint32_t Below(std::uint32_t bound) { return static_cast<std::uint32_t>(random_() % bound); }
    std::string Number() {
        if (Below(40) == 0) {
            return std::to_string(0xFFFFFFFF - Below(3));
        }
        return std::to_string(Below(30));
    }
    std::string Type(bool open) { return Pick({"real", "real", "boolean", open ? "-" : "real"}); }
    std::string Direction(bool open) { return Pick({"input", "input", "output", open ? "-" : "input"}); }
    std::string Pick(std::vector<std::string> words) { return words[Below(static_cast<std::uint32_t>(words.size()))]; }
    std::string Statement() {
        const std::string kind = Type(true) + " " + Direction(true);
        switch (Below(12)) {
            case 0:
            case 1:
            case 2:
                return "def " + Bounds() + " " + kind + Pick({"", " x", " y"});
            case 3:
                return "fits " + Bounds() + " " + kind;
            case 4:
                return "append " + kind + Pick({" 0 ", " 1 "}) + Pick({"0", "1", "3"});
            case 5:
                return "remove " + Number();
            case 6:
                return Pick({"to ", "count "}) + Number() + " " + Number() + " " + Number();
            case 7:
                return "all " + Number() + " " + Bounds();
            case 8:
                return Pick({"type ", "direction "}) + Number() + " " + Type(true);
            case 9:
                // As a model does it, which knows what it defined.
                return "def " + Bounds() + " real input";
            default:
                return Pick({"from ", "number "}) + Number() + " " + Number();
        }
    }

private:
    std::string Bounds() {
        const std::uint32_t first = Below(30);
        return std::to_string(first) + " " + std::to_string(first + Below(9) - (Below(20) == 0 ? 1 : 0));
    }

    std::mt19937 random_;
};

void FillFromMap(CGenerator &generator, CChannelRangeTable &table, CReferenceTable &reference, std::string &trace) {
    for (std::uint32_t count = generator.Below(8); count > 0; --count) {
        CChannelRange range;
        range.first = generator.Below(30);
        range.last = range.first + generator.Below(6) - (generator.Below(10) == 0 && range.first > 2 ? 2 : 0);
        const std::string type = generator.Type(false);
        const std::string direction = generator.Direction(false);
        range.type = FindKeyword(type);
        range.direction = FindKeyword(direction);
        reference.Insert(range);
        trace += std::to_string(range.first) + " - " + std::to_string(range.last) + " " + type + " " + direction + " ";
    }
    table.LoadDmfText("begin " + trace);
    reference.CheckOverlaps();
}

/// Every lookup must find the same range, whatever it is.
void CompareLookups(const CChannelRangeTable &table, const CReferenceTable &reference) {
    for (std::uint32_t number = 0; number < 45; ++number) {
        CChannelRange ours;
        CChannelRange theirs;
        ASSERT_EQ(table.FindContaining(number, ours), reference.FindContaining(number, theirs)) << number;
        ASSERT_EQ(RangeText(ours), RangeText(theirs)) << number;
        ASSERT_EQ(table.FindByFirst(number, ours), reference.FindByFirst(number, theirs)) << number;
        ASSERT_EQ(RangeText(ours), RangeText(theirs)) << number;
    }
}

std::string DmfText(const CChannelRangeTable &table) {
    CTextView view;
    CTextOut out(&view);
    table.WriteDmfText(out);
    return std::string(view.Text());
}

/// A table and its reference, with transactions over the one and copies of the other.
class CRandomRun {
public:
    explicit CRandomRun(std::uint32_t seed) : generator_(seed) {
        table_.SetOwner(&our_owner_);
        reference_.SetOwner(&their_owner_);
        FillFromMap(generator_, table_, reference_, trace_);
    }

    void Run() {
        for (int step = 0; step < 40; ++step) {
            // Rows read on both sides of a change: nothing may be left of where the reading was.
            CChannelRange range;
            const std::uint32_t row = generator_.Below(8);
            table_.GetRow(row, range);
            Step();
            CChannelRange wanted;
            const bool there = reference_.GetRow(row + 1, wanted);
            ASSERT_EQ(table_.GetRow(row + 1, range), there) << trace_;
            ASSERT_TRUE(!there || RangeText(range) == RangeText(wanted)) << trace_;
            ASSERT_EQ(TableText(table_), TableText(reference_)) << trace_;
            ASSERT_EQ(our_owner_.reports, their_owner_.reports) << trace_;
        }
        while (!open_.empty()) {
            End(false);
        }
        CompareLookups(table_, reference_);
        ASSERT_FALSE(testing::Test::HasFatalFailure()) << trace_;
    }

private:
    struct TOpen {
        std::unique_ptr<CChannelTransaction> transaction;
        CReferenceTable before;
        std::string dmf;
    };

    void Step() {
        const std::uint32_t choice = generator_.Below(10);
        if (choice == 0 && open_.size() < 3) {
            trace_ += "\nbegin";
            open_.push_back({std::make_unique<CChannelTransaction>(table_), reference_, DmfText(table_)});
        } else if (choice == 1 && !open_.empty()) {
            End(generator_.Below(2) == 0);
        } else if (choice == 2 && generator_.Below(4) == 0) {
            Reload();
        } else {
            const std::string statement = generator_.Statement();
            trace_ += "\n" + statement;
            ASSERT_EQ(CRangeProgram(table_, statement).Run(), CRangeProgram(reference_, statement).Run()) << trace_;
        }
    }

    void Reload() {
        trace_ += "\nload";
        reference_ = {};
        reference_.SetOwner(&their_owner_);
        CChannelRange range;
        range.type = kwReal;
        range.direction = kwInput;
        std::string text = "begin";
        for (std::uint32_t first = 2; first < 20; first += 3) {
            range.first = first;
            range.last = first + 1;
            reference_.Insert(range);
            text += " " + std::to_string(first) + " - " + std::to_string(first + 1) + " real input";
        }
        table_.LoadDmfText(text + " 90 - 91 buffer in");
    }

    void End(bool commit) {
        TOpen open = std::move(open_.back());
        open_.pop_back();
        trace_ += commit ? "\ncommit" : "\nroll back";
        if (commit) {
            open.transaction->Commit();
            return;
        }
        open.transaction->RollBack();
        reference_ = open.before;
        ASSERT_EQ(TableText(table_), TableText(reference_)) << trace_;
        ASSERT_EQ(DmfText(table_), open.dmf) << trace_;
    }

    CGenerator generator_;
    CRecordingOwner our_owner_;
    CRecordingOwner their_owner_;
    CChannelRangeTable table_;
    CReferenceTable reference_;
    std::string trace_;
    std::vector<TOpen> open_;
};

TEST(ChannelRangeTableAgainstReference, RandomPrograms) {
    for (std::uint32_t seed = 0; seed < 1500; ++seed) {
        CRandomRun(seed).Run();
        ASSERT_FALSE(HasFatalFailure()) << seed;
    }
}

/// Definitions over a driver map as a reading lays them and edits make and change them. Written and read again, and the
/// definitions laid over it, the table must be the same and have nothing to say.
class CEditRun {
public:
    explicit CEditRun(std::uint32_t seed) : generator_(seed) {
        std::string map = "begin";
        for (std::uint32_t first = generator_.Below(4); first < 30; first += 1 + generator_.Below(5)) {
            const std::uint32_t last = first + generator_.Below(4);
            map += " " + std::to_string(first) + " - " + std::to_string(last) + " " + generator_.Type(false) + " input";
            first = last;
        }
        table_.LoadDmfText(map);
        trace_ = map;
    }

    void Run() {
        for (int step = 0; step < 30; ++step) {
            const std::string before = TableText(table_);
            const bool done = Step();
            ASSERT_TRUE(done || TableText(table_) == before) << trace_;
            const std::string text = DmfText(table_);
            table_.Settle();
            ASSERT_EQ(DmfText(table_), text) << trace_;
            CRecordingOwner owner;
            CChannelRangeTable fresh;
            fresh.SetOwner(&owner);
            fresh.LoadDmfText(text);
            for (const TBlock &block : blocks_) {
                fresh.AddDefined(block.first, block.last, block.type, kwInput, block.name);
            }
            ASSERT_EQ(owner.reports, "") << trace_ << "\n" << TableText(table_);
            ASSERT_EQ(TableText(fresh), TableText(table_)) << trace_;
        }
    }

private:
    struct TBlock {
        std::uint32_t first, last, type;
        std::string name = {};
    };

    /// As a reading does, but where blocks overlap.
    bool Lay(const TBlock &block) {
        CChannelTransaction transaction(table_);
        if (std::any_of(blocks_.begin(), blocks_.end(),
                        [&](const TBlock &other) { return other.first <= block.last && block.first <= other.last; }) ||
            !table_.AddDefined(block.first, block.last, block.type, kwInput, block.name)) {
            return false;
        }
        transaction.Commit();
        blocks_.push_back(block);
        return true;
    }

    bool Step() {
        const std::uint32_t first = generator_.Below(40);
        const std::uint32_t last = first + generator_.Below(9);
        const std::uint32_t type = generator_.Below(3) == 0 ? kwBoolean : kwReal;
        trace_ += "\n" + std::to_string(first) + " " + std::to_string(last) + " " + std::to_string(type);
        const std::uint32_t choice = generator_.Below(blocks_.empty() ? 2 : 9);
        if (choice == 0) {
            return Lay({first, last, type, generator_.Below(2) == 0 ? "x" : ""});
        }
        if (choice == 1) {
            const bool done = table_.DefineIfFits(first, last, type, kwInput);
            if (done) {
                blocks_.push_back({first, last, type});
            }
            return done;
        }
        const std::uint32_t index = generator_.Below(static_cast<std::uint32_t>(blocks_.size()));
        TBlock &block = blocks_[index];
        trace_ += " " + std::to_string(choice) + " of " + std::to_string(block.first);
        if (choice > 2 && !block.name.empty()) {
            return false;
        }
        if (choice == 2) {
            table_.RemoveRange(block.first);
            blocks_.erase(blocks_.begin() + index);
            return true;
        }
        const std::uint32_t other_type = block.type == kwReal ? kwBoolean : kwReal;
        const std::uint32_t steps = block.last - block.first;
        const struct {
            std::uint32_t keyword, from, to;
            TBlock after;
        } edits[] = {
            {kwChFrom, block.first, first, {first, std::max(first, block.last), block.type}},
            {kwChTo, block.last, last, {std::min(last, block.first), last, block.type}},
            {kwChCount, steps + 1, last - first + 1, {block.first, block.first + last - first, block.type}},
            {kwChNumber, block.first, first, {first, first + steps, block.type}},
            {kwAll, first, last, {first, last, block.type}},
            {kwChType, block.type, other_type, {block.first, block.last, other_type}},
        };
        const auto &[keyword, from, to, after] = edits[choice - 3];
        const bool done = table_.ChangeParameter(block.first, keyword, TParValue::Number(from), TParValue::Number(to));
        block = done ? after : block;
        return done;
    }

    CGenerator generator_;
    CChannelRangeTable table_;
    std::vector<TBlock> blocks_;
    std::string trace_;
};

TEST(ChannelRangeTable, EditsReadBackAsTheyWereWritten) {
    for (std::uint32_t seed = 0; seed < 500; ++seed) {
        CEditRun(seed).Run();
        ASSERT_FALSE(HasFatalFailure()) << seed;
    }
}

/// Ranges in a plain list, in the order that the tree promises.
class CRangeList {
public:
    void Insert(const TRangeRecord &record) {
        const auto starts_below = [](std::uint32_t first, const TRangeRecord &other) { return first < other.first; };
        ranges.insert(std::upper_bound(ranges.begin(), ranges.end(), record.first, starts_below), record);
    }
    std::vector<TRangeRecord> ranges;
};

void CompareTree(const CRangeTree &tree, const CRangeList &list) {
    ASSERT_EQ(tree.Size(), list.ranges.size());
    CRangeTree::CPosition position = tree.Begin();
    for (std::uint32_t row = 0; row < tree.Size(); ++row, tree.Next(position)) {
        ASSERT_FALSE(tree.IsEnd(position));
        ASSERT_EQ(tree.RowOf(position), row);
        ASSERT_EQ(tree.At(tree.AtRow(row)).note, list.ranges[row].note);
        ASSERT_EQ(tree.At(position).first, list.ranges[row].first);
        ASSERT_EQ(tree.LastAt(position), list.ranges[row].last);
        ASSERT_EQ(tree.At(position).note, list.ranges[row].note);
    }
    ASSERT_TRUE(tree.IsEnd(position));
}

/// The first range that answers yes must be the one that the tree finds.
template <class TTest>
void ExpectFirst(const CRangeTree &tree, const CRangeList &list, bool found, const CRangeTree::CPosition &position,
                 TTest test) {
    const auto wanted = std::find_if(list.ranges.begin(), list.ranges.end(), test);
    ASSERT_EQ(found, wanted != list.ranges.end());
    if (found) {
        ASSERT_EQ(tree.At(position).note, wanted->note);
    }
}

void CompareSearches(const CRangeTree &tree, const CRangeList &list, std::uint32_t number) {
    CRangeTree::CPosition position = tree.FirstEndingFrom(number);
    ExpectFirst(tree, list, !tree.IsEnd(position), position, [&](const auto &range) { return range.last >= number; });
    const bool starts = tree.FindByFirst(number, position);
    ExpectFirst(tree, list, starts, position, [&](const auto &range) { return range.first == number; });
    const bool holds = tree.FindContaining(number, position);
    const auto contains = [&](const auto &range) { return range.first <= number && number <= range.last; };
    ExpectFirst(tree, list, holds, position, contains);
    TRangeRecord record;
    ASSERT_EQ(tree.FindContaining(number, record), holds);
    ASSERT_TRUE(!holds || record.note == tree.At(position).note);
}

/// Grows and shrinks a tree of some levels: numbers far apart or crowded, with or without overlaps.
void RunTree(std::uint32_t seed, std::uint32_t numbers, std::uint32_t length) {
    std::mt19937 random(seed);
    CRangeTree tree;
    CRangeList list;
    std::uint32_t note = 0;
    for (const std::uint32_t share : {90U, 40U, 65U, 5U}) {  // of a hundred steps those that insert
        for (int step = 0; step < 6000; ++step) {
            const std::uint32_t row =
                list.ranges.empty() ? 0 : static_cast<std::uint32_t>(random() % list.ranges.size());
            const auto first = static_cast<std::uint32_t>(random() % numbers);
            const TRangeRecord record = {first, first + static_cast<std::uint32_t>(random() % length), 1, 2, ++note};
            if (random() % 100 < share) {
                list.Insert(record);
                CRangeTree::CPosition near = tree.AtRow(row);
                if (note % 2 == 0) {
                    tree.Insert(near, record);
                    ASSERT_EQ(tree.At(near).note, note);
                } else {
                    tree.Insert(record);
                }
            } else if (!list.ranges.empty() && random() % 4 == 0) {
                list.ranges[row].last = record.last;
                tree.SetLast(tree.AtRow(row), record.last);
            } else if (!list.ranges.empty()) {
                list.ranges.erase(list.ranges.begin() + row);
                tree.Erase(tree.AtRow(row));
            }
            if (step % 50 == 0) {
                CompareSearches(tree, list, static_cast<std::uint32_t>(random() % numbers));
                ASSERT_FALSE(testing::Test::HasFatalFailure()) << seed;
            }
        }
        CompareTree(tree, list);
        ASSERT_FALSE(testing::Test::HasFatalFailure()) << seed;
    }
}

TEST(RangeTree, AgainstAList) {
    RunTree(1, 0xFFFFFFF0, 1);
    RunTree(2, 1000000, 100);
    RunTree(3, 1000000, 200000);
    RunTree(4, 50, 10);
}

}  // namespace
