#include <gtest/gtest.h>

#include <algorithm>

#include "driver/channels/channel_range_table.h"
#include "driver/channels/text_out.h"
#include "platform/view/text_view.h"
#include "tests/driver/channels/range_program.h"
#include "tests/support/memory_disk.h"

namespace {

using namespace kq_pdt;

/// The entries of a written map, separated by `; `, without its first and last line.
std::string Written(const CChannelRangeTable &table) {
    CTextView view;
    CTextOut out(&view);
    table.WriteDmfText(out);
    std::string text(view.Text());
    EXPECT_EQ(text.rfind("begin\r\n", 0), 0U) << text;
    EXPECT_EQ(text.substr(text.size() - 6), "end.\r\n");
    text = text.substr(7, text.size() - 13);
    std::string entries;
    for (std::size_t end = 0; (end = text.find("\r\n")) != std::string::npos; text.erase(0, end + 2)) {
        EXPECT_EQ(text.substr(0, 2), "  ");
        entries += (entries.empty() ? "" : "; ") + text.substr(2, end - 2);
    }
    return entries;
}

TEST(TableReader, WhatItTakesAndWhatIsKeptAside) {
    struct {
        const char *text;
        const char *table;
        const char *written;
        std::uint32_t stop_line;
    } cases[] = {
        {"", "", "", 0},
        {"1 real input", "", "", 0},
        {"begin end.", "", "", 0},
        {"begin\n  1 - 8 boolean input\n  9 real output\n  12 string bidirectional\nend.\n",
         "1-8 boolean input; 9-9 real output; 12-12 string bidirectional",
         "1 - 8 boolean input; 9 real output; 12 string bidirectional", 0},
        {"x begin 5 - 5 real input (* 6 real input *) 3 - real input", "3-3; 5-5", "3 real input; 5 real input", 0},
        {"begin 8 - 5 real input", "8-5", "8 - 5 real input", 0},
        {"begin 1 real input end. 2 real input label ; 3 real input", "1-1; 2-2; 3-3",
         "1 real input; 2 real input; 3 real input", 0},
        {"begin 1 real input 'open\n 2 real input", "1-1", "1 real input", 0},
        // What neither reader takes is gone.
        {"begin\n1 real input\n2 float input\n3 real input", "1-1", "1 real input", 3},
        {"begin 1 real input 1.5 real input 3 real input", "1-1", "1 real input", 1},
        {"begin 1 real input 4294967296 real input", "1-1", "1 real input", 1},
        {"begin 1 real input 2 - 4294967296 real input", "1-1", "1 real input", 1},
        {"begin 1 real input 3..5 real input", "1-1", "1 real input", 1},
        {"begin\n1 real input\n1 - 8 real", "1-1", "1 real input", 3},
        // What only the map's reader takes is kept, to its first error and no further.
        {"begin\n5 real input\n7 buffer input\n3 real input\nend.", "5-5", "5 real input; 3 real input; 7 buffer input",
         3},
        {"begin 5 Real input 7 buffer b 9 string out end. 10 real input", "",
         "5 real input; 7 buffer bidirectional; 9 string output", 1},
        {"begin 5 real in 7 real input 8 label input 9 real input", "", "5 real input; 7 real input", 1},
        {"begin 5 - 9 buffer input 7 buffer input 8 real input", "", "5 - 9 buffer input", 1},
        {"begin 7 buffer input 5 - 9 buffer output", "", "5 - 9 buffer output", 1},
        {"begin 2 - 4 real input 1 - 9 buffer output 12 buffer output", "2-4",
         "2 - 4 real input; 1 buffer output; 5 - 9 buffer output; 12 buffer output", 1},
        {"begin 0 - 4294967295 buffer input", "", "0 - 4294967295 buffer input", 1},
        {"begin 4294967295 real input 4294967290 - 4294967295 buffer input", "4294967295-4294967295",
         "4294967295 real input; 4294967290 - 4294967294 buffer input", 1},
        // A text in capitals has no begin for the table.
        {"\nBEGIN\n1 REAL INPUT\nEND.", "", "1 real input", 2},
        {"Begin of file: begin 1 real input", "1-1", "1 real input", 0},
        {"BEGIN 1 real input begin\n2 real input 3 buffer input", "2-2", "2 real input; 1 real input; 3 buffer input",
         1},
    };
    for (const auto &wanted : cases) {
        SCOPED_TRACE(wanted.text);
        CChannelRangeTable table;
        table.AddDefinedUnnamed(1, 3, kwLongint, kwInput);
        EXPECT_TRUE(table.LoadDmfText(wanted.text));
        EXPECT_EQ(TableText(table), wanted.table);
        EXPECT_EQ(Written(table), wanted.written);
        EXPECT_EQ(table.DmfStopLine(), wanted.stop_line);
    }
}

TEST(TableReader, Overlaps) {
    const std::string cut = "Definice kanálů v PAR souboru nesouhlasí s definicí v DMF:\n";
    const std::string error = "E:Kanály definované v DMF se překrývají: |";
    const std::string warning = "W:Kanály v mapovacím souboru ovladače definovany duplicitně:|";
    struct {
        const char *entries;
        const char *table;
        std::string reports;
    } cases[] = {
        {"1 - 5 real input 3 - 8 boolean input", "1-2; 3-8 boolean input", error + "3 - 5" + cut},
        {"1 - 5 real input 3 - 8 real output", "1-2; 3-8 real output", error + "3 - 5" + cut},
        {"1 - 5 real input 3 - 8 real input", "1-5; 3-8", warning + "3 - 5\n"},
        {"5 real input 5 real input", "5-5; 5-5", warning + "5 - 5\n"},
        {"5 real input 5 boolean input", "5-4; 5-5 boolean input", error + "5 - 5" + cut},
        {"0 - 3 real input 0 boolean input 1 real input", "0-3; 0-0 boolean input; 1-1", error + "0 - 3" + cut},
        {"1 - 9 real input 2 - 3 boolean input 5 real input", "1-1; 2-3 boolean input; 5-5", error + "2 - 9" + cut},
        {"1 - 9 real input 2 real input 5 boolean input", "1-9; 2-2; 5-5 boolean input", warning + "2 - 9\n"},
        {"1 - 4 real input 5 boolean input", "1-4; 5-5 boolean input", ""},
    };
    for (const auto &wanted : cases) {
        SCOPED_TRACE(wanted.entries);
        CRecordingOwner owner;
        CChannelRangeTable table;
        table.SetOwner(&owner);
        table.LoadDmfText("begin " + std::string(wanted.entries));
        EXPECT_EQ(TableText(table), wanted.table);
        EXPECT_EQ(owner.reports, wanted.reports);
        EXPECT_GE(owner.changes, 1U);
    }
}

TEST(TableWriter, FollowsTheTable) {
    CChannelRangeTable table;
    table.LoadDmfText("begin 1 - 3 real input 5 - 20 buffer input 30 Real b");
    // What is open isn't written, but holds its channels all the same.
    CRangeProgram(table, "def 8 9 real output; def 12 12 - output; def 19 25 boolean input; type 1 label").Run();
    EXPECT_EQ(Written(table),
              "8 - 9 real output; 19 - 25 boolean input; 5 - 7 buffer input; 10 - 11 buffer input; "
              "13 - 18 buffer input; 30 real bidirectional");
    CRangeProgram(table, "remove 8; remove 19; type 1 integer").Run();
    EXPECT_EQ(Written(table), "1 - 3 integer input; 5 - 11 buffer input; 13 - 20 buffer input; 30 real bidirectional");
    table.Clear();
    EXPECT_EQ(Written(table), "");
    EXPECT_EQ(table.DmfStopLine(), 0U);
}

TEST(TableWriter, SavesThroughTheDisk) {
    CMemoryDisk disk;
    CChannelRangeTable table;
    CTextView view;
    view.SetText("begin 2 - 3 real output");
    EXPECT_TRUE(table.LoadDmfText(view));
    std::string error;
    EXPECT_TRUE(table.SaveDmf("a.dmf", error));
    EXPECT_EQ(disk.Content("a.dmf"), "begin\r\n  2 - 3 real output\r\nend.\r\n");
    disk.Fail("a.dmf", "Disk je plný.");
    EXPECT_FALSE(table.SaveDmf("a.dmf", error));
    EXPECT_EQ(error, "Disk je plný.");
}

TEST(TextOut, LinesAndHeads) {
    CTextView view;
    CTextOut out;
    out.WriteLine("no view");
    out.Attach(&view);
    out.SectionLine("Port");
    out.KeyHead("Baud");
    out.Insert("9600");
    out.Newline();
    out.WriteLine("end.");
    EXPECT_EQ(view.Text(), "[Port]\r\n  Baud = 9600\r\nend.\r\n");
    for (const std::size_t length : {249U, 250U, 251U, 255U}) {
        view.Clear();
        out.KeyHead(std::string(length, 'k'));
        EXPECT_EQ(view.Text(), ("  " + std::string(length, 'k') + " = ").substr(0, 255));
        view.Clear();
        out.WriteLine(std::string(length + 5, 'k'));
        EXPECT_EQ(view.Text(), std::string(std::min<std::size_t>(length + 5, 255), 'k') + "\r\n");
    }
}

}  // namespace
