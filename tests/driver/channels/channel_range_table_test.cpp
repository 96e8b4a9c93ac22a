#include "driver/channels/channel_range_table.h"

#include <gtest/gtest.h>

#include <array>

#include "driver/channels/channel_transaction.h"
#include "tests/driver/channels/range_program.h"

namespace {

using namespace kq_pdt;

const char *const kTwice = "E:Vícenásobná definice kanálu v PAR souboru, kanály od:";
const char *const kRepair = " použijte volbu \"opravit DMF podle konfigurace\" z menu Nástroje.\n";

struct TCase {
    const char *dmf;      ///< entries of a driver map
    const char *program;  ///< what happens then
    const char *results;
    const char *table;
    std::string reports;
};

class CTableCases : public testing::Test {
protected:
    void Check(const std::vector<TCase> &cases) {
        for (std::size_t row = 0; row < cases.size(); ++row) {
            const TCase &wanted = cases[row];
            SCOPED_TRACE(std::to_string(row) + ": " + wanted.program);
            CRecordingOwner owner;
            CChannelRangeTable table;
            table.LoadDmfText("begin " + std::string(wanted.dmf) + " end.");
            table.SetOwner(&owner);
            EXPECT_EQ(CRangeProgram(table, wanted.program).Run(), wanted.results);
            EXPECT_EQ(TableText(table), wanted.table);
            EXPECT_EQ(owner.reports, wanted.reports);
        }
    }
};

using CAddDefined = CTableCases;
using CDefineIfFits = CTableCases;
using CChangeParameter = CTableCases;
using CAppendAndRemove = CTableCases;

TEST_F(CAddDefined, WhereARangeHoldsTheFirstChannel) {
    Check({
        {"", "def 5 4 real input", "+", "", ""},
        {"", "def 4 6 real input x", "+", "4-6 D 'x'", ""},
        {"4 - 6 real input", "def 4 6 - input", "+", "4-6 Dt", ""},
        {"1 - 10 real input", "def 4 6 real input x", "+", "1-3; 4-6 D 'x'; 7-10 'x'", ""},
        {"4 - 6 real input", "def 4 9 - - x", "+", "4-6 Dtd 'x'; 7-9 - - Dtdc", ""},
        // The rest goes the same way again, through whatever it meets.
        {"1 - 2 real input 4 - 5 real input 7 real input", "def 1 9 real input x", "+",
         "1-2 D 'x'; 3-3 Dc; 4-5 Dc; 6-6 Dc; 7-7 Dc; 8-9 Dc", ""},
        {"1 - 2 real input 3 - 5 real input 6 - 8 real input", "def 2 7 real input x", "+",
         "1-1; 2-2 D 'x'; 3-5 Dc; 6-7 Dc; 8-8", ""},
        {"4294967290 - 4294967295 real input", "def 4294967293 4294967295 real input", "+",
         "4294967290-4294967292; 4294967293-4294967295 D", ""},
        {"", "append - - 0 4; def 2 4 real input", "1-4 +", "1-1 - - td; 2-4 - - D", ""},
    });
}

TEST_F(CAddDefined, WhereARangeHoldsOnlyTheLastChannel) {
    Check({
        // No comparison on this way.
        {"5 - 8 real input", "def 3 6 boolean input x", "+", "3-4 boolean input D; 5-6 Dc 'x'; 7-8 'x'", ""},
        // The channel at the range's start becomes defined, with type and direction as free as the definition's.
        {"5 - 8 real input", "def 3 5 - - x", "+", "3-4 - - Dtd; 5-5 Dtdc 'x'; 6-8", ""},
        {"5 real input", "def 3 5 - - x", "+", "3-4 - - Dtd; 5-5 Dtdc 'x'", ""},
        {"2 - 3 real input 5 - 8 real input", "def 1 6 real input x", "+", "1-1 D; 2-3 Dc; 4-4 Dc; 5-6 Dc 'x'; 7-8 'x'",
         ""},
        {"3 real input", "def 1 5 boolean output x", "+", "1-5 boolean output D 'x'", ""},
        {"3 real input 5 boolean input 7 - 8 real input", "def 1 9 real - x", "+",
         "1-2 real - Dd 'x'; 3-3 Ddc; 4-6 real - Ddc; 7-8 Ddc; 9-9 real - Ddc", ""},
        // A defined one inside isn't noticed, nor are others then.
        {"3 real input", "def 5 5 boolean input; def 1 6 real input", "+ +", "1-6 D; 3-3; 5-5 boolean input D", ""},
    });
}

TEST_F(CAddDefined, Refuses) {
    const std::string no_match = "E:Definice kanálů v PAR souboru nesouhlasí s definicí v DMF:|kanál:4";
    Check({
        {"1 - 10 real input", "def 4 6 boolean input x", "-", "1-10", no_match + " chybný typ" + kRepair},
        {"1 - 10 real input", "def 4 6 - output", "-", "1-10", no_match + " chybný směr" + kRepair},
        {"", "def 3 5 real input; def 5 7 real input", "+ -", "3-5 D", kTwice + std::string("5 do:|7\n")},
        {"", "def 3 5 real input; def 4 4 boolean input", "+ -", "3-5 D",
         "E:Vícenásobná definice kanálu v PAR souboru |kanál:4\n"},
        {"", "def 3 5 - -; def 5 7 real input", "+ -", "3-5 - - Dtd", kTwice + std::string("5 do:|7\n")},
        // Pieces that were laid stay.
        {"1 - 3 real input 4 boolean input", "def 1 4 real input x", "-", "1-3 D 'x'; 4-4 boolean input",
         no_match + " chybný typ" + kRepair},
        {"5 - 6 real input", "def 3 4 real input; def 2 5 real input x", "+ -", "3-4 D; 5-5 D 'x'; 6-6",
         kTwice + std::string("2 do:|4\n")},
    });
}

TEST_F(CAppendAndRemove, Cases) {
    Check({
        {"2 real input 10 real input", "append real input 1 2", "11-12", "2-2; 10-10; 11-12 D", ""},
        {"4294967290 real input", "append real input 1 5; append real input 1 4; append - - 1 1; append - - 1 0",
         "- 4294967291-4294967294 - -", "4294967290-4294967290; 4294967291-4294967294 D", ""},
        {"4294967295 real input", "append - - 1 1", "-", "4294967295-4294967295", ""},
        {"5 real input 7 real input", "remove 6; remove 5", "+ +", "7-7", ""},
    });
}

/// Numbers given in an edit: over undefined ranges that fit, else nothing and no report.
TEST_F(CDefineIfFits, Cases) {
    Check({
        {"", "fits 1 4 - input; fits 5 5 real -", "+ +", "1-4 - input Dt; 5-5 real - Dd", ""},
        {"1 - 4 real input 6 boolean input", "fits 3 6 - input", "+",
         "1-2; 3-4 Dt; 5-5 - input Dtc; 6-6 boolean input Dtc", ""},
        // One inside becomes a piece, so that no written ranges overlap.
        {"3 real input", "fits 1 5 real input; remove 3; to 1 5 6; remove 1", "+ + + +", "", ""},
        {"1 - 2 real input", "append - - 0 4; fits 2 4 real input", "3-6 +", "1-1; 2-2 D; 3-4 Dc; 5-6 - - td", ""},
        {"5 boolean input", "fits 1 9 real input; fits 5 5 - output; fits 1 4 - -; fits 3 6 - -; fits 6 9 - -",
         "- - + - +", "1-4 - - Dtd; 5-5 boolean input; 6-9 - - Dtd", ""},
        {"", "def 5 5 - -; fits 1 9 real input; fits 4 3 - -", "+ - -", "5-5 - - Dtd", ""},
        {"", "fits 4294967295 4294967295 - -; fits 0 4294967294 real input", "- +", "0-4294967294 D", ""},
    });
}

/// A block that the driver map splits is changed and removed as a whole.
TEST_F(CChangeParameter, APiecedBlock) {
    const char *const kMap = "1 - 2 real input 3 - 4 real input 9 real input 11 boolean input";
    const std::string upper = "; 9-9; 11-11 boolean input";
    const auto table = [&](const char *pieces) { return pieces + upper; };
    const std::vector<std::array<std::string, 3>> cases = {
        {"type 1 boolean; direction 1 output", "+ +",
         table("1-2 boolean output D; 3-4 boolean output Dc; 5-6 boolean output Dc")},
        {"remove 3; remove 5", "+ +", table("1-2 D; 3-4 Dc; 5-6 Dc")},
        {"remove 1", "+", upper.substr(2)},
        // Nobody reaches a block through a piece that continues.
        {"type 3 boolean; to 3 6 7; from 3 4; number 5 20; all 5 20 21", "- - - - -", table("1-2 D; 3-4 Dc; 5-6 Dc")},
        {"to 1 6 7", "+", table("1-2 D; 3-4 Dc; 5-7 Dc")},
        {"to 1 6 9", "+", "1-2 D; 3-4 Dc; 5-9 Dc; 11-11 boolean input"},
        {"to 1 6 4; to 1 4 1", "+ +", table("1-1 D")},
        {"count 1 6 3; count 1 3 7", "+ +", table("1-2 D; 3-7 Dc")},
        {"to 1 6 0", "+", table("0-0 D")},
        {"from 1 0", "+", table("0-2 D; 3-4 Dc; 5-6 Dc")},
        {"from 1 3; from 3 5", "+ +", table("5-6 D")},
        {"from 1 9", "+", "9-9 D; 11-11 boolean input"},
        {"number 1 5", "+", "5-6 D; 7-8 Dc; 9-10 Dc; 11-11 boolean input"},
        {"number 1 6; number 1 11", "- -", table("1-2 D; 3-4 Dc; 5-6 Dc")},
        {"all 1 20 29", "+", upper.substr(2) + "; 20-21 D; 22-23 Dc; 24-29 Dc"},
        {"all 1 0 0", "+", table("0-0 D")},
        {"all 1 4294967293 4294967294", "+", upper.substr(2) + "; 4294967293-4294967294 D"},
    };
    for (const auto &[program, results, wanted] : cases) {
        Check({{kMap, ("def 1 6 real input; " + program).c_str(), ("+ " + results).c_str(), wanted.c_str(), ""}});
    }
    Check({
        // What was laid above the place of a refusal doesn't continue anything.
        {"5 - 6 real input 7 - 8 real input", "def 3 4 real input; def 2 8 real input; remove 7", "+ - +",
         "3-4 D; 5-6 D; 7-8 Dc", kTwice + std::string("2 do:|4\n")},
        {"5 - 6 real input", "def 3 4 real input; def 2 5 real input; to 5 5 6", "+ - +", "3-4 D; 5-6 D",
         kTwice + std::string("2 do:|4\n")},
        // Nor does it take the hold from a piece of another definition that starts at the same number.
        {"20 - 25 real input 20 - 23 real input", "def 19 21 real input; def 15 22 real input", "+ -",
         "19-19 D; 20-21 Dc; 20-22 D; 22-25; 23-23", kTwice + std::string("15 do:|19\n")},
        // Ranges that come to start at one number keep their order.
        {"9 - 13 real input 10 - 11 real input", "def 0 0 real input; from 0 10", "+ +", "10-10 D; 11-13; 11-11", ""},
        // A definition laid over a range keeps its hold when both come to start at one number.
        {"3 real input", "def 5 5 real input; def 1 6 real input; from 1 3; from 3 4; remove 4", "+ + + + +",
         "3-3; 5-5 D", ""},
    });
}

/// Numbers that can't be leave everything as it was, undefined ranges on the way as well.
TEST_F(CChangeParameter, BoundsThatCannotBe) {
    for (const char *const program :
         {"count 5 4 0", "count 5 4 4294967291", "to 5 8 4294967295", "to 5 3 4", "from 5 4294967295", "all 5 9 8",
          "all 5 1 4294967295", "number 5 4294967292", "count 6 1 2"}) {
        Check({{"1 real input 5 - 8 real input 9 real input", program, "-", "1-1; 5-8; 9-9", ""}});
    }
    Check({
        {"5 - 8 real input", "to 5 8 4294967294; count 5 4294967290 4294967289", "+ +", "5-4294967293", ""},
        {"0 real input", "count 0 0 2; count 0 2 1", "+ +", "0-0", ""},
        {"0 real input", "def 1 1 real input; count 0 0 2", "+ -", "0-0; 1-1 D", ""},
    });
}

TEST_F(CChangeParameter, OneBound) {
    const char *const kRow = "5 - 8 real input 12 - 14 real input 15 - 16 real input";
    Check({
        // ch_from: down clears ranges of the same kind, up shrinks or walks on.
        {kRow, "def 15 16 real input; from 15 13", "+ +", "5-8; 12-12; 13-16 D", ""},
        {kRow, "def 15 16 real input; from 15 0", "+ +", "0-16 D", ""},
        {kRow, "def 5 8 real input; from 15 8", "+ -", "5-8 D; 12-14; 15-16", ""},
        {"1 - 3 boolean input 5 real input", "from 5 3", "-", "1-3 boolean input; 5-5", ""},
        {"5 real input", "append - - 0 1; from 6 5", "6-6 -", "5-5; 6-6 - - td", ""},
        {kRow, "from 5 10", "+", "10-10; 12-14; 15-16", ""},
        {kRow, "from 5 14", "+", "14-14; 15-16", ""},
        {kRow, "def 12 14 real input; from 5 12", "+ -", "5-8; 12-14 D; 15-16", ""},
        // ch_to: the way up doesn't compare kinds.
        {"5 - 8 real input 10 - 12 boolean output", "to 5 8 12", "+", "5-12", ""},
        {"5 - 8 real input 10 - 12 real input", "def 10 12 real input; to 5 8 20", "+ -", "5-8; 10-12 D", ""},
        {kRow, "to 5 8 6", "+", "5-6; 12-14; 15-16", ""},
        {kRow, "def 5 8 real input; to 12 14 7", "+ -", "5-8 D; 12-14; 15-16", ""},
    });
}

TEST_F(CChangeParameter, TheWholeRange) {
    const char *const kRow = "5 - 8 real input 12 - 14 real input 15 - 16 real input";
    Check({
        {kRow, "number 5 20", "+", "12-14; 15-16; 20-23", ""},
        {kRow, "number 15 8", "+", "8-9; 12-14", ""},
        {kRow, "def 12 14 real input; number 5 10", "+ -", "5-8; 12-14 D; 15-16", ""},
        {"5 real input 9 boolean input", "number 5 9", "-", "5-5; 9-9 boolean input", ""},
        {kRow, "number 5 4294967291", "+", "12-14; 15-16; 4294967291-4294967294", ""},
        // A group that moved both bounds; equal values don't stop it.
        {kRow, "all 12 13 13", "+", "5-8; 13-13; 15-16", ""},
        {kRow, "def 5 5 real input; all 12 5 9", "+ -", "5-5 D; 6-8; 12-14; 15-16", ""},
        {"5 real output 7 real input", "all 7 5 6", "-", "5-5 real output; 7-7", ""},
        {kRow, "type 5 boolean; direction 12 output; type 15 -; type 6 real", "+ + + -",
         "5-8 boolean input; 12-14 real output; 15-16 - input", ""},
    });
}

TEST(ChangeParameterValues, OnlyNumbersCount) {
    CChannelRangeTable table;
    table.LoadDmfText("begin 5 - 8 real input");
    const TParValue text = TParValue::Text("6");
    const TParValue unknown = TParValue::Undefined();
    for (const std::uint32_t keyword : {kwChFrom, kwChTo, kwChNumber, kwChType, kwChDirection, kwChCount, kwReadAll}) {
        EXPECT_TRUE(table.ChangeParameter(5, keyword, TParValue::Number(5), text)) << keyword;
        EXPECT_TRUE(table.ChangeParameter(5, keyword, unknown, unknown)) << keyword;
        EXPECT_TRUE(table.ChangeParameter(99, keyword, TParValue::Number(7), TParValue::Number(7))) << keyword;
    }
    EXPECT_TRUE(table.ChangeParameter(5, kwChFrom, unknown, TParValue::Number(6)));
    EXPECT_TRUE(table.ChangeParameter(5, kwChTo, text, TParValue::Number(6)));
    EXPECT_EQ(TableText(table), "5-8");
}

TEST(ChannelRangeTable, Cells) {
    CChannelRangeTable table;
    table.LoadDmfText("begin 5 - 8 real input 20 boolean output");
    CRangeProgram(table, "def 5 6 real input Tlak; append - input 1 2; def 30 30 - -; append - - 0 1").Run();
    struct {
        std::uint32_t row, column;
        const char *text;
        std::uint32_t color, highlighted, background;
        bool editable;
    } cells[] = {
        {0, 1, "5", 0, 0, 1, false},
        {0, 3, "real", 0, 0, 1, false},
        {0, 5, "Tlak", 0, 0, 1, false},
        {1, 1, "7", 0x7F7F7F, 0x7F7F7F, 1, false},
        {3, 3, "<nedefinován>", 0xFF0000, 0xFFFFFF, 0xFF, true},
        {3, 4, "input", 0, 0, 1, false},
        {4, 4, "<nedefinován>", 0xFF0000, 0xFFFFFF, 0xFF, true},
    };
    for (const auto &cell : cells) {
        SCOPED_TRACE(std::to_string(cell.row) + "," + std::to_string(cell.column));
        kq_base::TText text;
        std::uint32_t color = 1;
        std::uint32_t background = 1;
        ASSERT_TRUE(table.GetCellText(cell.row, cell.column, text, color, background, false));
        EXPECT_EQ(kq_base::ToUtf8(text.View()), cell.text);
        EXPECT_EQ(color, cell.color);
        EXPECT_EQ(background, 1U);
        ASSERT_TRUE(table.GetCellText(cell.row, cell.column, text, color, background, true));
        EXPECT_EQ(color, cell.highlighted);
        EXPECT_EQ(background, cell.background);
        EXPECT_EQ(table.IsCellEditable(cell.row, cell.column), cell.editable);
    }
    kq_base::TText text;
    std::uint32_t color = 1;
    EXPECT_FALSE(table.GetCellText(6, 1, text, color, color, false));
    EXPECT_FALSE(table.IsCellEditable(6, 3));

    table.SetCellText(3, 3, "longint");
    table.SetCellText(4, 4, "output");
    table.SetCellText(4, 3, "Real");
    table.SetCellText(0, 5, "real");
    table.SetCellText(6, 3, "real");
    EXPECT_EQ(TableText(table),
              "5-6 D 'Tlak'; 7-8; 20-20 boolean output; 21-22 longint input Dt; "
              "30-30 - output Dtd; 31-31 - - td");
    // A word of the language that is no type can be stored, but shows as unknown.
    table.SetCellText(0, 3, "label");
    table.GetCellText(0, 3, text, color, color, false);
    EXPECT_EQ(kq_base::ToUtf8(text.View()), "<nedefinován>");
}

TEST(ChannelRangeTable, RowsAndUndefinedRanges) {
    CRecordingOwner owner;
    CChannelRangeTable table;
    table.SetOwner(&owner);
    table.LoadDmfText("begin 5 real input 5 real input 9 real output 7 integer input");
    EXPECT_EQ(table.RowCount(), 4U);
    table.SelectRow(9);
    EXPECT_EQ(owner.selected, 4U);
    table.SelectRow(5);
    EXPECT_EQ(owner.selected, 1U);
    table.SelectRow(6);
    EXPECT_EQ(owner.selected, 1U);
    CRangeProgram(table, "def 6 6 real input; def 4 8 real input; from 4 5").Run();
    table.SelectRow(5);
    EXPECT_EQ(owner.selected, 3U);
    table.LoadDmfText("begin 5 real input 5 real input 9 real output 7 integer input");
    CChannelRange range;
    for (const std::uint32_t row : {3U, 0U, 1U, 1U, 2U, 3U, 2U}) {
        ASSERT_TRUE(table.GetRow(row, range));
        EXPECT_EQ(range.first, (std::array{5U, 5U, 7U, 9U}[row]));
    }
    EXPECT_FALSE(table.GetRow(4, range));
    table.GetRow(0, range);
    table.RemoveRange(5);
    ASSERT_TRUE(table.GetRow(1, range));
    EXPECT_EQ(range.first, 7U);

    std::uint32_t row = 77;
    EXPECT_FALSE(table.HasUndefined());
    EXPECT_FALSE(table.FirstUndefinedRow(row));
    CRangeProgram(table, "append real - 1 1; direction 7 name").Run();
    EXPECT_TRUE(table.FirstUndefinedRow(row));
    EXPECT_EQ(row, 1U);
    CRangeProgram(table, "direction 7 input").Run();
    EXPECT_TRUE(table.FirstUndefinedRow(row));
    EXPECT_EQ(row, 3U);
    ASSERT_TRUE(table.GetRow(0, range));
    const CChannelTransaction keeps_what_was_read(table);
    table.Clear();
    EXPECT_EQ(table.RowCount(), 0U);
    EXPECT_FALSE(table.GetRow(1, range));
}

TEST(ChannelRangeTable, TellsWhatChanged) {
    CRecordingOwner owner;
    CChannelRangeTable table;
    table.SetOwner(&owner);
    struct {
        const char *program;
        bool news;
    } steps[] = {
        {"def 1 3 real input", true},
        {"def 3 5 real input", false},
        {"fits 5 6 real input", true},
        {"fits 5 6 real input", false},
        {"append real input 1 1", true},
        {"remove 5", true},
        {"remove 5", false},
        {"to 1 3 4", false},
    };
    for (const auto &step : steps) {
        owner.changes = 0;
        CRangeProgram(table, step.program).Run();
        EXPECT_EQ(owner.changes != 0, step.news) << step.program;
    }
}

TEST(ChannelTransaction, EndsOnceAndTellsWhatItUndoes) {
    CRecordingOwner owner;
    CChannelRangeTable table;
    table.SetOwner(&owner);
    table.LoadDmfText("begin 5 - 8 real input 9 buffer in");
    const auto run = [&](const char *program) { CRangeProgram(table, program).Run(); };
    {
        CChannelTransaction outer(table);
        {
            CChannelTransaction inner(table);
            run("from 5 6");
            owner.changes = 0;
            inner.Commit();
            inner.RollBack();
            EXPECT_FALSE(inner.IsOpen());
        }
        EXPECT_EQ(owner.changes, 0U);
        EXPECT_EQ(TableText(table), "6-8");
        table.LoadDmfText("begin 1 real input x");
        EXPECT_EQ(table.DmfStopLine(), 0U);
        owner.changes = 0;
    }
    EXPECT_EQ(owner.changes, 1U);
    EXPECT_EQ(TableText(table), "5-8");
    EXPECT_EQ(table.DmfStopLine(), 1U);
    { const CChannelTransaction nothing(table); }
    EXPECT_EQ(owner.changes, 1U);
}

/// A definition over as many ranges as this takes as many steps; they must not pile up.
TEST(ChannelRangeTable, ADefinitionOverManyRanges) {
    constexpr std::uint32_t kRanges = 200000;
    CChannelRangeTable table;
    std::uint32_t first = 0;
    std::uint32_t last = 0;
    for (std::uint32_t range = 0; range < kRanges; ++range) {
        table.AppendRange(kwReal, kwInput, first, last, false, 2);
    }
    EXPECT_TRUE(table.AddDefined(2, last + 1, kwReal, kwInput, "x"));
    EXPECT_EQ(table.RowCount(), kRanges + 2);
    CChannelRange range;
    for (std::uint32_t row = 1; table.GetRow(row, range); ++row) {
        ASSERT_TRUE(range.defined);
    }
}

}  // namespace
