#include "platform/view/text_view.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/base/code_page.h"
#include "tests/support/memory_disk.h"
#include "tests/support/recording_peers.h"

namespace {

TEST(TextView, GeneratedTextGoesToTheEnd) {
    CTextView view;
    view.SetText("old");
    view.SetLineIndex(0, 0);
    view.Clear();
    view.InsertText("[Port]\r\n");
    view.SetLineIndex(0, 3);
    view.InsertText("  Baud");
    view.InsertChar('\0');
    EXPECT_EQ(view.Text(), std::string_view("[Port]\r\n  Baud\0", 15));
    EXPECT_EQ(view.CursorOffset(), 15U);
    const char *data = nullptr;
    std::uint32_t size = 0;
    view.GetTextBlock(data, size);
    EXPECT_EQ(std::string_view(data, size), view.Text());
}

TEST(TextView, ManySmallPiecesMakeALargeText) {
    CTextView view;
    const std::string line = std::string(99, 'x') + '\n';
    for (int piece = 0; piece < 1000000; ++piece) {
        view.InsertText(line);
    }
    EXPECT_EQ(view.Text().size(), 100000000U);
    EXPECT_EQ(view.CursorLine(), 1000000U);
}

TEST(TextView, TheSavedMarkFollowsChanges) {
    CMemoryDisk disk;
    CTextView view;
    std::string error;
    EXPECT_TRUE(view.IsSaved());
    view.Clear();
    view.InsertText("");
    view.SetText("");
    EXPECT_TRUE(view.IsSaved()) << "nothing changed";
    view.InsertChar('x');
    EXPECT_FALSE(view.IsSaved());
    EXPECT_TRUE(view.SaveToFile("Dir\\A.par", error));
    EXPECT_TRUE(view.IsSaved());
    EXPECT_EQ(disk.Content("dir/a.PAR"), "x");
    view.SetText("x");
    EXPECT_TRUE(view.IsSaved());
    view.SetText("y");
    EXPECT_FALSE(view.IsSaved());
    disk.Fail("b.par", "full");
    EXPECT_FALSE(view.SaveToFile("b.par", error));
    EXPECT_EQ(error, "full");
    EXPECT_FALSE(view.IsSaved());
    EXPECT_FALSE(view.LoadFromFile("c.par", error));
    EXPECT_EQ(view.Text(), "y") << "a load that fails changes nothing";
    EXPECT_FALSE(view.IsSaved());
    EXPECT_TRUE(view.LoadFromFile("dir/A.par", error));
    EXPECT_EQ(view.Text(), "x");
    EXPECT_TRUE(view.IsSaved());
    view.SetSaved(false);
    EXPECT_FALSE(view.IsSaved());
    view.Clear();
    view.SetSaved(true);
    EXPECT_TRUE(view.IsSaved());
}

TEST(TextView, TheCursorStaysInTheText) {
    CTextView view;
    view.SetText("ab\r\n\ncd\rx\n\r\nlast");
    constexpr std::uint32_t kLengths[] = {2, 0, 4, 0, 4};
    for (const std::uint32_t line : {0U, 1U, 2U, 3U, 4U, 5U, 0xFFFFFFFFU}) {
        for (const std::uint32_t column : {0U, 1U, 2U, 3U, 4U, 5U, 99U, 0xFFFFFFFFU}) {
            view.SetLineIndex(line, column);
            const std::uint32_t line_set = std::min(line, 4U);
            EXPECT_EQ(view.CursorLine(), line_set) << line << " " << column;
            EXPECT_EQ(view.CursorColumn(), std::min(column, kLengths[line_set])) << line << " " << column;
        }
    }
    view.Clear();
    view.SetLineIndex(3, 3);
    EXPECT_EQ(view.CursorOffset(), 0U);
}

TEST(TextView, ThePeerHearsOfEveryChange) {
    CRecordingFactory factory;
    CTextView view;
    view.MakePeers();
    view.InsertText("");
    view.InsertText("a");
    view.SetLineIndex(0, 0);
    view.FitCursor();
    view.AddColoredId("word", 7);
    EXPECT_EQ(view.ColoredIds().front().name, "word");
    EXPECT_EQ(view.ColoredIds().front().color, 7U);
    view.ClearColoredIdList();
    EXPECT_TRUE(view.ColoredIds().empty());
    using enum TViewChange;
    EXPECT_EQ(factory.Changes(), (std::vector{kContent, kCursor, kFitCursor, kColors, kColors}));
}

TEST(View, AChildThatEndsLeavesItsAreaToBeRepainted) {
    CRecordingFactory factory;
    CView parent;
    parent.MakePeers();
    auto child = std::make_unique<CTextView>();
    child->NewRect({1, 2, 30, 40});
    parent.Register(*child);
    EXPECT_NE(child->Peer(), nullptr);
    EXPECT_EQ(child->Parent(), &parent);
    factory.areas.clear();
    child.reset();
    EXPECT_TRUE(parent.Children().empty());
    EXPECT_EQ(factory.areas, (std::vector{TRect{1, 2, 30, 40}}));
}

TEST(View, MovesBetweenParentsAndOutlivesThem) {
    CView child;
    {
        CView first;
        CView second;
        first.Register(child);
        second.Register(child);
        EXPECT_TRUE(first.Children().empty());
        first.Forget(child);
        EXPECT_EQ(child.Parent(), &second);
    }
    EXPECT_EQ(child.Parent(), nullptr);
}

}  // namespace
