// What scripts can't see of the window's work: the notice of a translation, the menu of steps, an editor that goes
// along.

#include <gtest/gtest.h>

#include "tests/support/configurator_window.h"

namespace {

constexpr std::uint32_t kSheet = CConfiguratorWindow::kSheetTab;
constexpr std::uint32_t kText = CConfiguratorWindow::kTextTab;

TEST(WindowFlows, NoticeIsShownWhileTheTextIsTranslated) {
    CWindowBench bench(kPdt, "[S]\n  v = x\n", kDmf);
    CView desktop;
    ASSERT_TRUE(bench.OpenEditor());
    desktop.Register(*bench.window);
    std::string seen;
    bench.watch = [&] {
        for (const CView *view : desktop.Children()) {
            const auto *window = dynamic_cast<const CWindow *>(view);
            seen += kq_base::ToUtf8(window->Title()) + (window->IsVisible() ? "+" : "-");
            seen += window == bench.window.get()
                        ? ""
                        : std::to_string(window->Rect().x) + " " + std::to_string(window->Rect().y) + " ";
        }
        seen += "; ";
    };
    EXPECT_FALSE(bench.Tab(kSheet));
    EXPECT_EQ(seen, "Zkoumadlo ovladače -Překlad+860 505 ; Zkoumadlo ovladače -; ") << "gone when the box comes";
}

TEST(WindowFlows, StepsAreTakenBackInSheetAndText) {
    CWindowBench bench(kPdt, kPar, kDmf);
    ASSERT_TRUE(bench.OpenSheet());
    CConfiguratorWindow &window = *bench.window;
    EXPECT_FALSE(bench.HasMenu(cmUndo));
    ASSERT_TRUE(bench.SetV("2"));
    EXPECT_TRUE(bench.HasMenu(cmUndo));
    bench.Command(cmSave);
    ASSERT_TRUE(bench.SetV("3"));
    EXPECT_TRUE(window.IsModified());
    bench.Command(cmUndo);
    EXPECT_FALSE(window.IsModified()) << "back at what was saved";
    EXPECT_TRUE(window.ParView().IsSaved());
    EXPECT_EQ(window.Sheet().ReadCell(bench.SectionTable(), 1, 2).text, "2");
    EXPECT_TRUE(window.UserUndo());
    EXPECT_TRUE(window.IsModified());
    EXPECT_EQ(window.Sheet().ReadCell(bench.SectionTable(), 1, 2).text, "1");
    EXPECT_FALSE(window.UserUndo());
    EXPECT_FALSE(bench.HasMenu(cmUndo));
    EXPECT_TRUE(bench.HasMenu(cmRedo));
    EXPECT_TRUE(window.UserRedo());
    EXPECT_FALSE(window.IsModified());
    // On the other tab the steps are those of the text; the way back begins a new history.
    ASSERT_TRUE(bench.Tab(kText));
    ASSERT_TRUE(window.ParView().UserReplace(2, 1, 0, " "));
    ProcessEvents();
    EXPECT_TRUE(bench.HasMenu(cmUndo));
    EXPECT_FALSE(bench.HasMenu(cmRedo));
    ASSERT_TRUE(bench.Tab(kSheet));
    EXPECT_FALSE(bench.HasMenu(cmUndo));
    EXPECT_TRUE(window.IsModified()) << "text that was typed and isn't in the file";
}

TEST(WindowFlows, DeletingARowTakesItsOpenEditorAlong) {
    CWindowBench bench(
        "def_section name = 'S'; required; def_key name = 'm'; multiple; par = number; end_key end_section",
        "[S]\n  m = 1\n  m = 2\n", kDmf);
    ASSERT_TRUE(bench.OpenSheet());
    CSheetView &sheet = bench.window->Sheet();
    const std::uint32_t table = bench.SectionTable();
    ASSERT_TRUE(bench.Type(sheet, table, 2, 2, "7"));
    bench.Command(cmDelete);
    EXPECT_EQ(sheet.RowCount(table), 1U);
    EXPECT_EQ(sheet.CellEditor(), nullptr);
    EXPECT_TRUE(bench.window->IsModified());
    // The value that was typed is no step of its own.
    EXPECT_TRUE(bench.window->UserUndo());
    EXPECT_EQ(sheet.RowCount(table), 2U);
    EXPECT_EQ(sheet.ReadCell(table, 2, 2).text, "2");
    EXPECT_EQ(sheet.Selection(), (CSheetView::TPosition{table, 2, 2}));
    EXPECT_FALSE(bench.window->IsModified());
    EXPECT_FALSE(bench.window->UserUndo());
    sheet.UserSizeColumn(table, 1, 99);
    sheet.DeleteTable(table);
    bench.window->Done();
    EXPECT_EQ(bench.settings.Paths().at("\\driver config tool\\Sheet").at("3.1"), 99) << "no table is left to have it";
}

}  // namespace
