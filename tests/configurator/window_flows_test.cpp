// Translating, saving, repair and taking steps back.

#include <gtest/gtest.h>

#include "tests/support/configurator_window.h"

namespace {

constexpr TBoxAnswer kYes = TBoxAnswer::kYes;
constexpr TBoxAnswer kNo = TBoxAnswer::kNo;
constexpr std::uint32_t kSheet = CConfiguratorWindow::kSheetTab;
constexpr std::uint32_t kText = CConfiguratorWindow::kTextTab;

const std::string kUndefined =
    "box Neúplná definice kanálů|Některé kanály namají definovaný typ nebo směr.|Pokud konfiguraci ovladače uložíte,"
    " nebude možné spustit aplikaci.|Pokračovat v ukládání? ?";

TEST(WindowFlows, SavingWritesChannelsFirstAndStopsWhereItFails) {
    const auto cannot = [](const char *which, const char *path) {
        return std::string("box Nelze uložit|Nelze uložit ") + which + " soubor.|" + path + "|Plny disk !";
    };
    struct TCase {
        std::uint32_t tab;
        const char *failing;
        std::uint32_t command;
        std::string log;
    };
    const TCase cases[] = {
        {kSheet, "", cmSave, "save d.dmf\nsave d.par"},
        {kSheet, "", cmApply, "save d.dmf\nsave d.par\nclosed"},
        {kSheet, "d.dmf", cmApply, "fail d.dmf\n" + cannot("mapovací", "d.dmf")},
        {kSheet, "d.par", cmApply, "save d.dmf\nfail d.par\n" + cannot("parametrický", "d.par")},
        {kText, "", cmApply, "save d.dmf\nsave d.par\nclosed"},
        {kText, "d.dmf", cmApply, "fail d.dmf\n" + cannot("mapovací", "d.dmf") + "\nsave d.par"},
        {kText, "d.par", cmApply, "save d.dmf\nfail d.par\n" + cannot("parametrický", "d.par")},
    };
    for (const TCase &row : cases) {
        SCOPED_TRACE(&row - cases);
        CWindowBench bench(kPdt, kPar, kDmf);
        ASSERT_TRUE(bench.Create());
        ASSERT_TRUE(bench.Tab(row.tab));
        if (row.tab == kSheet) {
            // Still in its editor when the command comes.
            ASSERT_TRUE(bench.Type(bench.window->Sheet(), bench.SectionTable(), 1, 2, "3"));
        } else {
            ASSERT_TRUE(bench.window->ParView().UserReplace(2, 7, 1, "3"));
        }
        bench.TakeLog();
        bench.disk.Fail(row.failing, "Plny disk");
        bench.Command(row.command);
        EXPECT_EQ(bench.TakeLog(), "files d.dmf d.par\n" + row.log);
        EXPECT_FALSE(bench.window->IsModified()) << "also after a failure";
        const bool par_saved = row.log.find("save d.par") != std::string::npos;
        EXPECT_EQ(bench.File(CWindowBench::kPar).find("= 3") != std::string::npos, par_saved);
        EXPECT_EQ(bench.window->ParView().IsSaved(), par_saved);
    }
}

TEST(WindowFlows, WhatCouldNotBeReadIsNotOverwrittenByNothing) {
    CWindowBench bench(kPdt, kPar, kDmf);
    bench.disk.Fail(CWindowBench::kPar, "Vadny disk");
    bench.disk.Fail(CWindowBench::kDmf, "Vadny disk");
    ASSERT_TRUE(bench.OpenEditor());
    bench.disk.Fail(CWindowBench::kPar, "");
    bench.disk.Fail(CWindowBench::kDmf, "");
    bench.TakeLog();
    bench.Command(cmSave);
    EXPECT_EQ(bench.TakeLog(),
              "box Nelze uložit|Nelze uložit mapovací soubor.|d.dmf|Vadny disk !\n"
              "box Nelze uložit|Nelze uložit parametrický soubor.|d.par|Vadny disk !");
    ASSERT_TRUE(bench.window->ParView().UserReplace(1, 1, 0, kPar));
    bench.answers = {kYes};
    ASSERT_TRUE(bench.Tab(kSheet));
    bench.Command(cmSave);
    EXPECT_EQ(bench.TakeLog(), kUndefined + "\nbox Nelze uložit|Nelze uložit mapovací soubor.|d.dmf|Vadny disk !");
    EXPECT_EQ(bench.File(CWindowBench::kDmf), kDmf);
}

TEST(WindowFlows, TranslationShowsWhatItMeets) {
    const auto box = [](const char *text) { return std::string("box Chyba||") + text + "| !"; };
    struct TCase {
        const char *par;
        std::string log;
        std::string rows;
        std::uint32_t tab;
        std::size_t current;
        std::uint32_t line;  ///< of the cursor, from 0
        std::uint32_t sections;
    };
    const TCase cases[] = {
        {kPar, "", "", kSheet, 0, 0, 1},
        {"[S]\n  v = x\n  k = 5\n", box("Při překladu nalezena chyba!"), "E Chybná definice parametru:v hodnota:x\n",
         kText, 1, 1, 0},
        {"[S]\n\n  v = x\n  k = y\n", box("Při překladu nalezeny chyby!"),
         "E Chybná definice parametru:v hodnota:x\nE Chybná definice parametru:k hodnota:y\n", kText, 1, 2, 0},
        {"[X]\n[S]\n  v = 1\n  k = 5\n", "", "W Nerozpoznaná sekce: X\n", kSheet, 0, 0, 2},
        {"lost\n[S]\n  v = 1\n  k = 5\n(* open\n[S2]\n", "", "W Text od řádku 1 se nečte\nW Text od řádku 5 se nečte\n",
         kSheet, 0, 0, 1},
    };
    for (const TCase &row : cases) {
        SCOPED_TRACE(&row - cases);
        CWindowBench bench(kPdt, row.par, kDmf);
        ASSERT_TRUE(bench.OpenEditor());
        EXPECT_EQ(bench.Tab(kSheet), row.tab == kSheet);
        EXPECT_EQ(bench.TakeLog(), row.log);
        EXPECT_EQ(bench.Rows(), row.rows);
        EXPECT_EQ(bench.MessagesShown(), !row.rows.empty());
        EXPECT_EQ(bench.window->Tabs().ActiveTabIndex(), row.tab);
        EXPECT_EQ(bench.HasMenu(cmRepairDmf), row.tab == kText);
        EXPECT_EQ(bench.window->CurrentMessage(), row.current);
        EXPECT_EQ(bench.window->ParView().CursorLine(), row.line);
        EXPECT_EQ(bench.window->Sheet().RowCount(1), row.sections);
        EXPECT_EQ(bench.window->ParView().Text(), row.par);
    }
}

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

TEST(WindowFlows, MessagesLeadToTheirPlaceInTheText) {
    CWindowBench bench(kPdt, "[S]\n\n  v = x\n  k = y\n", kDmf);
    ASSERT_TRUE(bench.OpenEditor());
    bench.Command(CConfiguratorWindow::kNextMessageKey, ecKeyDown);
    EXPECT_EQ(bench.window->CurrentMessage(), 0U) << "an empty list";
    bench.Tab(kSheet);
    const std::vector<std::pair<std::size_t, std::uint32_t>> steps = {{2, 3}, {1, 2}, {2, 3}};
    for (const auto &[current, line] : steps) {
        bench.Command(CConfiguratorWindow::kNextMessageKey, ecKeyDown);
        EXPECT_EQ(bench.window->CurrentMessage(), current);
        EXPECT_EQ(bench.window->Messages().SelectedRow(), current);
        EXPECT_EQ(bench.window->ParView().CursorLine(), line);
    }
    EXPECT_TRUE(bench.window->Messages().UserChoose(1));
    ProcessEvents();
    EXPECT_EQ(bench.window->CurrentMessage(), 1U);
    EXPECT_EQ(bench.window->ParView().CursorLine(), 2U);
    EXPECT_TRUE(bench.window->ParView().IsSelected());
}

TEST(WindowFlows, UndefinedChannelsHaveToBeConfirmed) {
    CWindowBench bench(kPdt, kPar, "");
    ASSERT_TRUE(bench.OpenSheet());
    bench.answers = {kNo, kNo, kYes};
    EXPECT_FALSE(bench.Tab(kText));
    EXPECT_TRUE(bench.window->IsHighlighting());
    EXPECT_EQ(bench.window->Channels().Selection(), (CSheetView::TPosition{1, 1, 1}));
    bench.Command(cmApply);
    EXPECT_EQ(bench.TakeLog(), kUndefined + "\n" + kUndefined);
    EXPECT_TRUE(bench.Tab(kText));
    EXPECT_EQ(bench.window->DockedToolBox(), &bench.window->TextToolBox());
    EXPECT_EQ(bench.window->DmfView().Text(), "begin\r\nend.\r\n");
    EXPECT_TRUE(bench.window->IsHighlighting());
    bench.Tab(kSheet);
    EXPECT_FALSE(bench.window->IsHighlighting());
    EXPECT_EQ(bench.window->Channels().Selection(), CSheetView::TPosition());
    ASSERT_TRUE(bench.SetCell(bench.window->Channels(), 1, 1, 3, "real"));
    ASSERT_TRUE(bench.SetCell(bench.window->Channels(), 1, 1, 4, "input"));
    EXPECT_TRUE(bench.window->IsModified());
    EXPECT_TRUE(bench.Tab(kText));
    EXPECT_FALSE(bench.window->ParView().IsSaved()) << "what was changed on tab 1 is unsaved on tab 2";
}

TEST(WindowFlows, TemplateThatNoLongerCompilesLeavesTheText) {
    CWindowBench bench(kPdt, kPar, kDmf);
    ASSERT_TRUE(bench.OpenEditor());
    bench.Write(CWindowBench::kPdt, "def_section name = 5");
    EXPECT_FALSE(bench.Tab(kSheet));
    EXPECT_EQ(bench.TakeLog(), "");
    EXPECT_EQ(bench.window->Messages().Rows().size(), 2U);
    EXPECT_TRUE(bench.MessagesShown());
    EXPECT_FALSE(bench.window->Tabs().Tabs()[0].enabled);
}

TEST(WindowFlows, RepairTakesTheChannelsOfTheTextAlone) {
    const std::string question =
        "box Opravit DMF podle konfigurace?|Definice kanálů v mapovacím souboru bude nastavena podle aktuální "
        "konfigurace ovladače.|Všechny nadbytečné kanály budou smazány, pokud takové kanály používáte v aplikaci "
        "nebude možné ji spustit!|Chcete skutečně pokračovat? ?";
    const char *const pdt =
        "def_section name = 'S'; required; def_key name = 'k'; channels; par = number { ch_number; ch_count = 1; "
        "ch_type = real;"
        " ch_direction = input }; end_key end_section";
    struct TCase {
        const char *par;
        std::vector<TBoxAnswer> answers;
        std::string log;
        const char *dmf;
    };
    const char *const old_dmf = "begin\n  1 - 20 real input\nend.\n";
    const TCase cases[] = {
        {"[S]\n  k = 5\n", {kNo}, question, old_dmf},
        {"[S]\n  k = 5\n", {}, question, old_dmf},
        {"[S]\n  k = 5\n", {kYes}, question, "5"},
        {"[S]\n  k = x\n",
         {kYes},
         question +
             "\nbox Chyba při čtení konfigurace|Oprava mapovacího souboru nebyla dokončena.|V parametrech ovladače "
             "jsou chyby!| !",
         old_dmf},
    };
    for (const TCase &row : cases) {
        SCOPED_TRACE(&row - cases);
        CWindowBench bench(pdt, row.par, old_dmf);
        ASSERT_TRUE(bench.OpenEditor());
        bench.answers = row.answers;
        bench.Command(cmRepairDmf);
        EXPECT_EQ(bench.TakeLog(), row.log);
        const std::string dmf(bench.window->DmfView().Text());
        if (row.dmf == std::string("5")) {
            EXPECT_NE(dmf.find("5 real input"), std::string::npos) << dmf;
            EXPECT_EQ(dmf.find("20"), std::string::npos) << dmf;
        } else {
            EXPECT_EQ(dmf, row.dmf);
        }
        EXPECT_EQ(bench.MessagesShown(), row.par == std::string("[S]\n  k = x\n"));
        bench.Command(cmClose);
        EXPECT_EQ(bench.TakeLog(), "") << "a repair alone isn't asked about";
    }
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
}

}  // namespace
