#include <gtest/gtest.h>

#include "configurator/geometry.h"
#include "tests/support/configurator_window.h"

namespace {

const char *const kPdt =
    "keywords = 'ON'; def_section name = 'S'; required;"
    " def_key name = 'v'; par = number { range_from = 1; range_to = 9 }; end_key"
    " def_key name = 'k'; channels; par = number { ch_number; ch_count = 1 }; end_key end_section";
const char *const kPar = "[S]\n  v = 1\n  k = 5\n";
const char *const kDmf = "begin\n  5 real input\nend.\n";

constexpr TBoxAnswer kYes = TBoxAnswer::kYes;
constexpr TBoxAnswer kNo = TBoxAnswer::kNo;
constexpr TBoxAnswer kCancel = TBoxAnswer::kCancel;
constexpr std::uint32_t kSheet = CConfiguratorWindow::kSheetTab;
constexpr std::uint32_t kText = CConfiguratorWindow::kTextTab;

const std::string kUnsaved = "box Neuloženo|Neuložená konfigurace ovladače|Uložit nyní?| ?";
const std::string kUndefined =
    "box Neúplná definice kanálů|Některé kanály namají definovaný typ nebo směr.|Pokud konfiguraci ovladače uložíte,"
    " nebude možné spustit aplikaci.|Pokračovat v ukládání? ?";

/// The id of the table below row 1 of table 1.
std::uint32_t SectionTable(CWindowBench &bench) { return bench.window->Sheet().SubTable(1, 1); }

bool SetV(CWindowBench &bench, std::string_view value) {
    return bench.SetCell(bench.window->Sheet(), SectionTable(bench), 1, 2, value);
}

TEST(Geometry, StoredPositionCountsIfItIsWholeAndVisible) {
    using kq_pdt::TOpener;
    struct TCase {
        TOpener opener;
        std::vector<std::pair<const char *, int>> stored;
        TRect rect;
        bool maximized;
    };
    constexpr TRect kCentred = {610, 290, 700, 500};
    const TCase cases[] = {
        {TOpener::kCaller, {}, kCentred, false},
        {TOpener::kCaller, {{"WinX", 0}, {"WinY", -5}, {"WinW", 8}, {"WinD", 9}}, {0, -5, 8, 9}, false},
        {TOpener::kHost, {{"WinX", 1}, {"WinY", 1}, {"WinW", 8}, {"WinD", 9}}, kCentred, false},
        {TOpener::kHost, {{"WinMax", 1}}, kCentred, true},
        {TOpener::kHost, {{"WinMax", 0}, {"WinX", 1}, {"WinY", 1}, {"WinW", 8}, {"WinD", 9}}, {1, 1, 8, 9}, false},
        {TOpener::kHost, {{"WinMax", 1}, {"WinX", 0}, {"WinY", 1}, {"WinW", 8}, {"WinD", 9}}, kCentred, true},
        {TOpener::kHost, {{"WinMax", 0}, {"WinX", 1}, {"WinY", 0}, {"WinW", 8}, {"WinD", 9}}, kCentred, false},
        {TOpener::kCaller, {{"WinMax", 1}, {"WinX", 1}, {"WinY", 1}, {"WinW", 8}}, kCentred, false},
        {TOpener::kCaller, {{"WinX", 1719}, {"WinY", 979}, {"WinW", 8}, {"WinD", 9}}, {1719, 979, 8, 9}, false},
        {TOpener::kCaller, {{"WinX", 1720}, {"WinY", 1}, {"WinW", 8}, {"WinD", 9}}, kCentred, false},
        {TOpener::kCaller, {{"WinX", 1}, {"WinY", 980}, {"WinW", 8}, {"WinD", 9}}, kCentred, false},
    };
    for (const TCase &row : cases) {
        SCOPED_TRACE(&row - cases);
        CMemorySettings settings;
        CSettingsStore *former = SetSettingsStore(&settings);
        for (const auto &[name, value] : row.stored) {
            settings.Write("\\driver config tool", name, value);
        }
        const kq_pdt::TGeometry geometry = kq_pdt::ReadGeometry(row.opener);
        SetSettingsStore(former);
        EXPECT_EQ(geometry.rect, row.rect);
        EXPECT_EQ(geometry.maximized, row.maximized);
    }
}

TEST(Window, OpeningAsksAndTellsOfEachFileInTurn) {
    const std::string par_fails =
        "box Chyba při otevírání souboru|Nelze otevřít parametrický soubor ovladače.|d.par| !";
    const std::string dmf_fails = "box Chyba při otevírání souboru|Nelze otevřít mapovací soubor ovladače.|d.dmf| !";
    const std::string new_par = "box Parametrický soubor|Vytvořit nový parametrický soubor?|d.par| !";
    const std::string new_dmf = "box Mapovací soubor|Vytvořit nový mapovací soubor?|d.dmf| !";
    const std::string no_dmf = "box Chyba při otevírání souboru|Nelze vytvořit mapovací soubor ovladače.|d.dmf| !";
    enum class TState : std::uint8_t { kThere, kMissing, kBroken, kMissingAndReadOnly };
    using enum TState;
    struct TCase {
        TState par;
        TState dmf;
        std::vector<TBoxAnswer> answers;
        std::string log;
        bool opened;
    };
    const TCase cases[] = {
        {kThere, kThere, {}, "", true},
        {kBroken, kBroken, {}, par_fails + "\n" + dmf_fails, false},
        {kMissing, kMissing, {kNo, kNo}, new_par + "\n" + new_dmf, false},
        {kMissing, kMissing, {kYes, kYes}, new_par + "\nsave d.par\n" + new_dmf + "\nsave d.dmf", true},
        {kMissing, kThere, {kYes}, new_par + "\nsave d.par", true},
        {kMissingAndReadOnly, kThere, {kYes}, new_par + "\nfail d.par\n" + par_fails, false},
        {kThere, kMissingAndReadOnly, {kYes}, new_dmf + "\nfail d.dmf\n" + no_dmf, false},
    };
    for (const TCase &row : cases) {
        SCOPED_TRACE(&row - cases);
        for (const bool host : {false, true}) {
            CWindowBench bench(kPdt, kPar, kDmf);
            const auto prepare = [&bench](const char *path, TState state) {
                std::string error;
                if (state == kMissing || state == kMissingAndReadOnly) {
                    bench.disk.Delete(path, error);
                }
                if (state == kBroken || state == kMissingAndReadOnly) {
                    bench.disk.Fail(path, "Vadny disk");
                }
            };
            prepare(CWindowBench::kPar, row.par);
            prepare(CWindowBench::kDmf, row.dmf);
            bench.answers = row.answers;
            EXPECT_EQ(host ? bench.Create() : bench.OpenEditor(), row.opened || !host);
            const std::string asked = host ? "par?\ndmf?\ndll?\npdt?" : "";
            const std::string log = row.log.empty() || !host ? row.log : "\n" + row.log;
            EXPECT_EQ(bench.TakeLog(), asked + log + (host && row.opened ? "\nfiles d.dmf d.par" : ""));
            EXPECT_EQ(bench.configurator != nullptr, host && row.opened);
            if (bench.window != nullptr) {
                EXPECT_EQ(bench.window->Tabs().ActiveTabIndex(), kText);
                EXPECT_EQ(bench.window->DockedToolBox(), &bench.window->TextToolBox());
                EXPECT_EQ(kq_base::ToUtf8(bench.window->Title()),
                          host ? "Zkoumadlo ovladače Linka" : "Zkoumadlo ovladače ");
                EXPECT_FALSE(bench.HasMenu(cmSearchDevices));
                EXPECT_TRUE(bench.HasMenu(cmRepairDmf));
                EXPECT_FALSE(bench.MessagesShown());
            }
        }
    }
}

TEST(Window, DriverThatListsItsChannelsHasNoDriverMap) {
    CWindowBench bench(kPdt, kPar, kDmf);
    bench.module = KQ_BINARY_DIR "/examples/simulator/simulator.dll";
    bench.Write(KQ_BINARY_DIR "/examples/simulator/simulator.pdt", kPdt);
    std::string error;
    bench.disk.Delete(CWindowBench::kDmf, error);
    ASSERT_TRUE(bench.OpenSheet());
    EXPECT_TRUE(bench.HasMenu(cmSearchDevices));
    bench.Command(cmSave);
    EXPECT_EQ(bench.TakeLog(), "save d.par") << "nor is an undefined channel asked about";
    EXPECT_EQ(bench.window->DmfView().Text(), "");
}

TEST(Window, TemplateWithoutChannelsSavesTheParameterFileAlone) {
    CWindowBench bench(
        "no_channels; def_section name = 'S'; required; def_key name = 'v'; par = number; end_key"
        " end_section",
        "[S]\n  v = 1\n", kDmf);
    ASSERT_TRUE(bench.OpenSheet());
    EXPECT_FALSE(bench.window->SheetSplitter().IsPaneShown(CSplitterPane::TPane::kLower));
    bench.Command(cmSave);
    EXPECT_EQ(bench.TakeLog(), "save d.par");
}

TEST(Window, BrokenTemplateLeavesTheTextAlone) {
    CWindowBench bench("def_section name = 5", kPar, kDmf);
    ASSERT_TRUE(bench.Create());
    const std::string rows = bench.Rows();
    EXPECT_TRUE(rows.starts_with("E Chyba při čtení definice PARu:d.pdt\nE ")) << rows;
    EXPECT_NE(rows.find(" řádek:1 pozice:"), std::string::npos) << rows;
    EXPECT_TRUE(bench.MessagesShown());
    EXPECT_FALSE(bench.Tab(kSheet));
    bench.TakeLog();
    bench.configurator->ReadViewSettings();
    EXPECT_EQ(bench.window->Tabs().ActiveTabIndex(), kText);
    bench.Command(cmSave);
    EXPECT_EQ(bench.TakeLog(), "files d.dmf d.par\nsave d.dmf\nsave d.par");
}

TEST(Window, OneAtATimeAndTheHostsConfiguratorOutlivesIt) {
    CWindowBench bench(kPdt, kPar, kDmf);
    CAbstractDriverConfigurator *untouched = nullptr;
    EXPECT_EQ(CreateDriverConfigurator(0, "", nullptr, &untouched), nullptr);
    ASSERT_TRUE(bench.Create());
    bench.TakeLog();
    EXPECT_EQ(CreateDriverConfigurator(0, "", &bench, &untouched), nullptr);
    EXPECT_EQ(OpenEditor({}, {}, {}), nullptr);
    EXPECT_EQ(bench.TakeLog(), "") << "no question to the host";
    bench.window->Done();
    bench.window->Done();
    EXPECT_EQ(kq_pdt::HostCallback(), nullptr);
    EXPECT_TRUE(bench.configurator->QueryClose());
    bench.configurator->ReadViewSettings();
    EXPECT_EQ(bench.settings.Paths().at("\\driver config tool"),
              (CMemorySettings::TValues{
                  {"InPar", 0}, {"WinD", 500}, {"WinMax", 0}, {"WinW", 700}, {"WinX", 610}, {"WinY", 290}}));
    EXPECT_TRUE(bench.Create());
}

TEST(Window, ViewSettingsChooseTabAndColours) {
    CWindowBench bench(kPdt, kPar, kDmf);
    bench.settings.Write("\\text editor", "number color", 7);
    bench.settings.Write("\\text editor", "system keyword color", 8);
    ASSERT_TRUE(bench.Create());
    EXPECT_TRUE(bench.window->ParView().ColoredIds().empty());
    bench.configurator->ReadViewSettings();
    EXPECT_EQ(bench.window->Tabs().ActiveTabIndex(), kSheet);
    EXPECT_EQ(bench.window->DockedToolBox(), &bench.window->SheetToolBox());
    EXPECT_FALSE(bench.HasMenu(cmRepairDmf));
    EXPECT_EQ(bench.window->ParView().number_color, 7U);
    ASSERT_EQ(bench.window->ParView().ColoredIds().size(), 1U);
    EXPECT_EQ(bench.window->ParView().ColoredIds()[0].color, 8U);
    bench.window->Done();
    EXPECT_EQ(bench.settings.Paths().at("\\driver config tool").at("InPar"), 1);
}

TEST(Window, MaximisedOnceWhenFirstShown) {
    CWindowBench bench(kPdt, kPar, kDmf);
    bench.settings.Write("\\driver config tool", "WinMax", 1);
    ASSERT_TRUE(bench.Create());
    EXPECT_FALSE(bench.window->IsMaximized());
    bench.window->SetVisible(true);
    EXPECT_TRUE(bench.window->IsMaximized());
    bench.window->UserMaximize(false);
    bench.window->SetVisible(true);
    EXPECT_FALSE(bench.window->IsMaximized());
}

TEST(Window, ClosingAsksForWhatIsUnsaved) {
    enum class TEdit : std::uint8_t { kNone, kCommitted, kOpenEditor, kText };
    struct TCase {
        TEdit edit;
        std::vector<TBoxAnswer> answers;
        std::string log;
        bool closes;
    };
    const std::string saving = "\nfiles d.dmf d.par\nsave d.dmf\nsave d.par";
    const TCase cases[] = {
        {TEdit::kNone, {}, "", true},
        {TEdit::kCommitted, {kCancel}, kUnsaved, false},
        {TEdit::kCommitted, {kNo}, kUnsaved, true},
        {TEdit::kCommitted, {kYes}, kUnsaved + saving, true},
        {TEdit::kOpenEditor, {kYes}, kUnsaved + saving, true},
        {TEdit::kText, {kCancel}, kUnsaved, false},
        {TEdit::kText, {kYes}, kUnsaved + saving, true},
    };
    for (const TCase &row : cases) {
        SCOPED_TRACE(&row - cases);
        for (const bool host : {false, true}) {
            CWindowBench bench(kPdt, kPar, kDmf);
            ASSERT_TRUE(bench.Create());
            if (row.edit == TEdit::kText) {
                ASSERT_TRUE(bench.window->ParView().UserReplace(2, 7, 1, "2"));
            } else {
                ASSERT_TRUE(bench.Tab(kSheet));
            }
            if (row.edit == TEdit::kCommitted) {
                ASSERT_TRUE(SetV(bench, "2"));
            } else if (row.edit == TEdit::kOpenEditor) {
                ASSERT_TRUE(bench.Type(bench.window->Sheet(), SectionTable(bench), 1, 2, "2"));
            }
            bench.TakeLog();
            bench.answers = row.answers;
            if (host) {
                EXPECT_EQ(bench.configurator->QueryClose(), row.closes);
                EXPECT_EQ(bench.TakeLog(), row.log);
            } else {
                bench.Command(cmClose);
                EXPECT_EQ(bench.TakeLog(), row.log + (row.closes ? row.log.empty() ? "closed" : "\nclosed" : ""));
            }
            for (const bool answer : bench.asked_while_box_up) {
                EXPECT_FALSE(answer) << "a box is up";
            }
            const bool saved = row.log.ends_with(saving);
            EXPECT_EQ(bench.File(CWindowBench::kPar).find("= 2") != std::string::npos, saved);
        }
    }
}

TEST(Window, LoopEndsOnlyAfterClosingWasConfirmed) {
    CWindowBench bench(kPdt, kPar, kDmf);
    ASSERT_TRUE(bench.OpenEditor());
    MakeEvent(*bench.window, ecCommand, kCloseLoop);
    MakeEvent(*bench.window, ecCommand, cmClose);
    EXPECT_EQ(bench.window->Exec(), kCloseLoop);
    bench.window.reset();
    ASSERT_TRUE(bench.OpenEditor());
    MakeEvent(*bench.window, ecCommand, kEndLoop);
    EXPECT_EQ(bench.window->Exec(), kEndLoop);
}

TEST(Window, SavingWritesChannelsFirstAndStopsWhereItFails) {
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
            ASSERT_TRUE(bench.Type(bench.window->Sheet(), SectionTable(bench), 1, 2, "3"));
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

TEST(Window, WhatCouldNotBeReadIsNotOverwrittenByNothing) {
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

TEST(Window, TranslationShowsWhatItMeets) {
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

TEST(Window, NoticeIsShownWhileTheTextIsTranslated) {
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

TEST(Window, MessagesLeadToTheirPlaceInTheText) {
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

TEST(Window, UndefinedChannelsHaveToBeConfirmed) {
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

TEST(Window, TemplateThatNoLongerCompilesLeavesTheText) {
    CWindowBench bench(kPdt, kPar, kDmf);
    ASSERT_TRUE(bench.OpenEditor());
    bench.Write(CWindowBench::kPdt, "def_section name = 5");
    EXPECT_FALSE(bench.Tab(kSheet));
    EXPECT_EQ(bench.TakeLog(), "");
    EXPECT_EQ(bench.window->Messages().Rows().size(), 2U);
    EXPECT_TRUE(bench.MessagesShown());
    EXPECT_FALSE(bench.window->Tabs().Tabs()[0].enabled);
}

TEST(Window, RepairTakesTheChannelsOfTheTextAlone) {
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

TEST(Window, StepsAreTakenBackInSheetAndText) {
    CWindowBench bench(kPdt, kPar, kDmf);
    ASSERT_TRUE(bench.OpenSheet());
    CConfiguratorWindow &window = *bench.window;
    EXPECT_FALSE(bench.HasMenu(cmUndo));
    ASSERT_TRUE(SetV(bench, "2"));
    EXPECT_TRUE(bench.HasMenu(cmUndo));
    bench.Command(cmSave);
    ASSERT_TRUE(SetV(bench, "3"));
    EXPECT_TRUE(window.IsModified());
    bench.Command(cmUndo);
    EXPECT_FALSE(window.IsModified()) << "back at what was saved";
    EXPECT_TRUE(window.ParView().IsSaved());
    EXPECT_EQ(window.Sheet().ReadCell(SectionTable(bench), 1, 2).text, "2");
    EXPECT_TRUE(window.UserUndo());
    EXPECT_TRUE(window.IsModified());
    EXPECT_EQ(window.Sheet().ReadCell(SectionTable(bench), 1, 2).text, "1");
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

TEST(Window, DeletingARowTakesItsOpenEditorAlong) {
    CWindowBench bench(
        "def_section name = 'S'; required; def_key name = 'm'; multiple; par = number; end_key end_section",
        "[S]\n  m = 1\n  m = 2\n", kDmf);
    ASSERT_TRUE(bench.OpenSheet());
    CSheetView &sheet = bench.window->Sheet();
    const std::uint32_t table = SectionTable(bench);
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

TEST(Window, EventsOfTheModelAndOfTheHost) {
    CWindowBench bench(kPdt, kPar, kDmf);
    ASSERT_TRUE(bench.Create());
    ASSERT_TRUE(bench.Tab(kSheet));
    bench.TakeLog();
    bench.Command(cmDriverHelp);
    EXPECT_EQ(bench.TakeLog(), "help Linka");
    bench.Command(kCloseLoop);
    EXPECT_EQ(bench.TakeLog(), "") << "closing wasn't confirmed";
    bench.Command(0x3EA);
    EXPECT_EQ(bench.window->Sheet().RowCount(1), 1U);
    EXPECT_FALSE(bench.window->IsModified());
    bench.Command(0x3EB);
    EXPECT_TRUE(bench.window->IsModified());
    EXPECT_FALSE(bench.window->ParView().IsSaved());
    bench.window->Done();
    bench.Command(cmClose);
    EXPECT_EQ(bench.TakeLog(), "") << "the window has ended";
}

}  // namespace
