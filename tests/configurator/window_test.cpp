#include <gtest/gtest.h>

#include "configurator/geometry.h"
#include "configurator/window_state.h"
#include "tests/support/configurator_window.h"

namespace {

constexpr TBoxAnswer kYes = TBoxAnswer::kYes;
constexpr TBoxAnswer kNo = TBoxAnswer::kNo;
constexpr TBoxAnswer kCancel = TBoxAnswer::kCancel;
constexpr std::uint32_t kSheet = CConfiguratorWindow::kSheetTab;
constexpr std::uint32_t kText = CConfiguratorWindow::kTextTab;

const std::string kUnsaved = "box Neuloženo|Neuložená konfigurace ovladače|Uložit nyní?| ?";

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
        const char *failing = "";
    };
    const std::string cannot =
        "\nfiles d.dmf d.par\nfail d.dmf\nbox Nelze uložit|Nelze uložit mapovací soubor.|d.dmf|Plny disk !\nsave d.par";
    const std::string saving = "\nfiles d.dmf d.par\nsave d.dmf\nsave d.par";
    const TCase cases[] = {
        {TEdit::kNone, {}, "", true},
        {TEdit::kCommitted, {kCancel}, kUnsaved, false},
        {TEdit::kCommitted, {kNo}, kUnsaved, true},
        {TEdit::kCommitted, {kYes}, kUnsaved + saving, true},
        {TEdit::kOpenEditor, {kYes}, kUnsaved + saving, true},
        {TEdit::kCommitted, {kYes}, kUnsaved + cannot, true, "d.dmf"},
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
                ASSERT_TRUE(bench.SetV("2"));
            } else if (row.edit == TEdit::kOpenEditor) {
                ASSERT_TRUE(bench.Type(bench.window->Sheet(), bench.SectionTable(), 1, 2, "2"));
            }
            bench.TakeLog();
            bench.disk.Fail(row.failing, "Plny disk");
            bench.deletes_when_closed = true;
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
            const bool saved = row.log.ends_with("save d.par");
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
    EXPECT_FALSE(bench.MessagesShown());
    kq_pdt::CWindowSession &session = TConfiguratorAccess::Session(*bench.window);
    session.AddError("refused", "", 0);
    EXPECT_TRUE(bench.MessagesShown()) << "nobody else shows what an edit reports";
    session.ClearMessages();
    EXPECT_EQ(bench.Rows(), "");
    EXPECT_TRUE(bench.MessagesShown());
    session.ShowHint(std::string(600, 'x'));
    EXPECT_EQ(bench.window->StatusText(), std::string(511, 'x'));
    bench.window->Done();
    bench.Command(cmClose);
    EXPECT_EQ(bench.TakeLog(), "") << "the window has ended";
}

}  // namespace
