// The window as a whole: text, messages, closing, and what keeps work from being lost.

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFrame>
#include <QHeaderView>
#include <QLabel>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QSplitter>
#include <QTabWidget>
#include <QTest>
#include <QTextBlock>
#include <QTextLayout>
#include <QTimer>
#include <QTreeView>
#include <tuple>

#include "desktop/kqconf/changes_dialog.h"
#include "desktop/kqconf/line_diff.h"
#include "desktop/kqconf/recovery.h"
#include "desktop/kqconf/text_files.h"
#include "desktop/peers/qt_peer.h"
#include "tests/desktop/checker.h"
#include "tests/desktop/person.h"

namespace {

using namespace kq_desktop;

const QString kExamples = QStringLiteral(KQ_SOURCE_DIR "/examples/");

class CSessionDesk : public testing::Test {
protected:
    void SetUp() override {
        qputenv("XDG_STATE_HOME", state.path().toLocal8Bit());
        ASSERT_TRUE(person.Open(kExamples + QStringLiteral("modbus"), QStringLiteral("modbus.par")));
    }
    void Check() { EXPECT_EQ(Compare(person).toStdString(), ""); }
    void ToText() { person.Press(Qt::Key_2, Qt::ControlModifier); }
    void ToSheet() { person.Press(Qt::Key_1, Qt::ControlModifier); }
    QStringList Copies() const {
        return QDir(state.filePath(QStringLiteral("kqconf/recovery")))
            .entryList({QStringLiteral("*.par")}, QDir::Files);
    }
    bool IsNoticeShown(const char *key) const {
        const auto *bar = person.Main().findChild<QFrame *>(QStringLiteral("notice-%1").arg(QLatin1String(key)));
        return bar != nullptr && bar->isVisible();
    }

    QTemporaryDir state;
    CPerson person;
};

TEST_F(CSessionDesk, TypingInTheTextIsTheViewsText) {
    ToText();
    person.Press(Qt::Key_End, Qt::ControlModifier);
    person.Type(QStringLiteral("[Line3]"));
    person.Main().grab();
    const auto colored = person.Text().textCursor().block().layout()->formats();
    ASSERT_EQ(colored.size(), 1);
    EXPECT_EQ(colored.first().length, 7);
    person.Press(Qt::Key_Return);
    person.Press(Qt::Key_Backspace);
    person.Press(Qt::Key_Left, Qt::ShiftModifier);
    person.Press(Qt::Key_Delete);
    Check();
    EXPECT_NE(person.Window().ParView().Text().find("[Line3"), std::string_view::npos);
    EXPECT_TRUE(person.Main().isWindowModified());
    for (int step = 0; step < 12 && person.Window().ParView().CanUndo(); ++step) {
        person.Press(Qt::Key_Z, Qt::ControlModifier);
        Check();
    }
    EXPECT_EQ(person.Window().ParView().Text().find("Line3"), std::string_view::npos);
}

TEST_F(CSessionDesk, LineEndsOfTwoCharactersStay) {
    ToText();
    person.Window().ParView().UserReplaceAt(0, person.Window().ParView().Text().size(), "[A]\r\nb = 1\r\n");
    person.Settle();
    Check();
    person.Press(Qt::Key_End);
    person.Press(Qt::Key_Return);
    person.Type(QStringLiteral("x"));
    person.Press(Qt::Key_Home, Qt::ControlModifier);
    person.Press(Qt::Key_Down, Qt::ShiftModifier);
    person.Press(Qt::Key_Delete);
    Check();
    EXPECT_EQ(person.Window().ParView().Text(), "b = 1\r\n\r\nx");
}

TEST_F(CSessionDesk, SavingWritesTheFilesAndLeavesNoCopy) {
    ToText();
    person.Type(QStringLiteral("(* x *)"));
    QTest::qWait(1300);
    person.Settle();
    EXPECT_EQ(Copies().size(), 1);
    person.Press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(person.FileText(QStringLiteral("modbus.par")).startsWith(QStringLiteral("(* x *)")));
    EXPECT_FALSE(person.Main().isWindowModified());
    QTest::qWait(1300);
    person.Settle();
    EXPECT_TRUE(Copies().isEmpty());
}

TEST_F(CSessionDesk, WhatThePersonArrangedIsKept) {
    ToSheet();
    person.Main().setGeometry(40, 30, 820, 640);
    person.Sheet().expandAll();
    person.Sheet().header()->resizeSection(1, 191);
    person.Settle();
    const auto height = [](CSplitterPane &panes) {
        return static_cast<QSplitter *>(CQtPeer::Of(&panes)->Widget())->sizes().last();
    };
    const auto press = [this, &height](CSplitterPane &panes, Qt::Key key) {
        person.Press(key, Qt::ControlModifier | Qt::ShiftModifier);
        return height(panes);
    };
    CSplitterPane &sheet_panes = person.Window().SheetSplitter();
    CSplitterPane &panes = person.Window().WindowSplitter();
    auto *handle = static_cast<QSplitter *>(CQtPeer::Of(&sheet_panes)->Widget())->handle(1);
    QTest::mousePress(handle, Qt::LeftButton, Qt::NoModifier, QPoint(2, 2));
    QTest::mouseMove(handle, QPoint(2, 2 - 31));
    QTest::mouseRelease(handle, Qt::LeftButton, Qt::NoModifier, QPoint(2, 2 - 31));
    constexpr int kStep = 24;
    const int dragged = height(sheet_panes);
    EXPECT_EQ(press(sheet_panes, Qt::Key_Up), dragged + kStep);
    ToText();
    person.Window().ParView().UserReplaceAt(0, 0, "[Nowhere]\r\n");
    ToSheet();
    ASSERT_TRUE(panes.IsPaneShown(CSplitterPane::TPane::kLower));
    person.Press(Qt::Key_F6);
    person.Press(Qt::Key_F6);
    // Up to the end; the first key back has an effect.
    int most = 0;
    while (press(panes, Qt::Key_Up) > most) {
        most = height(panes);
    }
    const int messages = press(panes, Qt::Key_Down);
    EXPECT_EQ(messages, most - kStep);
    const int channels = height(sheet_panes);
    // A pane that isn't shown while the window grows comes back as large as it was.
    person.Reopen(QStringLiteral("modbus.par"));
    EXPECT_EQ(person.Main().geometry(), QRect(40, 30, 820, 640));
    EXPECT_EQ(person.Window().Tabs().ActiveTabIndex(), CConfiguratorWindow::kSheetTab);
    person.Main().resize(820, 760);
    person.Sheet().expandAll();
    person.Settle();
    EXPECT_EQ(person.Sheet().columnWidth(1), 191);
    EXPECT_NEAR(person.Channels().parentWidget()->parentWidget()->height(), channels, 2);
    ToText();
    person.Window().ParView().UserReplaceAt(0, 0, "[Nowhere]\r\n");
    ToSheet();
    EXPECT_NEAR(CQtPeer::Of(&person.Window().Messages())->Widget()->height(), messages, 2);
}

/// The menu by its letters; the window then ends to open anew.
TEST_F(CSessionDesk, LabelsFollowTheChosenLanguage) {
    for (const auto &[letter, label] :
         {std::pair(Qt::Key_A, "Serial port"), std::pair(Qt::Key_E, "S\u00e9riov\u00fd port")}) {
        SCOPED_TRACE(label);
        person.Press(Qt::Key_S, Qt::AltModifier);
        person.Press(Qt::Key_J);
        QTest::keyClick(person.Focus(), letter);
        EXPECT_EQ(person.Run().file, person.Path(QStringLiteral("modbus.par")));
        person.Reopen(QStringLiteral("modbus.par"));
        person.Sheet().expandAll();
        EXPECT_TRUE(person.ClickCell(person.Sheet(), QString::fromUtf8(label), 0));
    }
}

/// A row that wouldn't read back: the bar says it at a save, and leads there; F8 does as well.
TEST_F(CSessionDesk, RowsThatWouldNotReadBackAreSaid) {
    ToSheet();
    person.Sheet().expandAll();
    ASSERT_TRUE(person.ClickCell(person.Sheet(), QStringLiteral("Port"), 1));
    const QModelIndex row = person.Sheet().currentIndex().siblingAtColumn(0).parent();
    ASSERT_TRUE(row.data(Qt::DecorationRole).isNull());
    person.Press(Qt::Key_F2);
    person.Press(Qt::Key_Delete);
    person.Press(Qt::Key_Return);
    EXPECT_FALSE(row.data(Qt::DecorationRole).isNull());
    EXPECT_FALSE(row.data(Qt::AccessibleDescriptionRole).toString().isEmpty());
    EXPECT_FALSE(IsNoticeShown("problems"));
    person.Press(Qt::Key_S, Qt::ControlModifier);
    ASSERT_TRUE(IsNoticeShown("problems"));
    person.Look(QStringLiteral("problems"));
    person.Press(Qt::Key_F6);
    person.Press(Qt::Key_F6);
    EXPECT_EQ(static_cast<QAbstractButton *>(person.Focus())->text(), QStringLiteral("&Přejít na první"));
    for (const auto &[key, modifiers] : {std::pair(Qt::Key_P, Qt::AltModifier), {Qt::Key_F8, Qt::NoModifier}}) {
        person.Sheet().setFocus();
        person.Press(Qt::Key_Home);
        person.Press(key, modifiers);
        // A button is shown pressed for a moment.
        QTest::qWait(150);
        person.Settle();
        EXPECT_EQ(person.Sheet().currentIndex().siblingAtColumn(0).data().toString().toStdString(),
                  row.data().toString().toStdString());
    }
    Check();
}

TEST_F(CSessionDesk, ATemplateThatDoesNotCompileIsWhyTheSheetIsDisabled) {
    QFile file(person.Path(QStringLiteral("modbus.pdt")));
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write("def_section name = ;");
    file.close();
    person.Reopen(QStringLiteral("modbus.par"));
    const auto &tabs = *static_cast<QTabWidget *>(CQtPeer::Of(&person.Window().Tabs())->Widget());
    EXPECT_FALSE(tabs.isTabEnabled(0));
    EXPECT_TRUE(tabs.tabToolTip(0).startsWith(QStringLiteral("Chyba při čtení definice PARu:")));
}

TEST_F(CSessionDesk, CopiesOfAnEndedSessionAreOffered) {
    {
        CRecovery left(person.Path(QStringLiteral("modbus.par")));
        ASSERT_TRUE(left.Keep({"[Line9]\n", "", false}));
        const QString own = QDir(state.filePath(QStringLiteral("kqconf/recovery"))).filePath(Copies().first());
        EXPECT_EQ(QFile::permissions(own) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
        // A process that isn't there any more has left it.
        QFile::rename(own, QString(own).replace(QString::number(QCoreApplication::applicationPid()),
                                                QStringLiteral("999999999")));
    }
    person.Reopen(QStringLiteral("modbus.par"));
    ASSERT_TRUE(IsNoticeShown("recovery"));
    auto *bar = person.Main().findChild<QFrame *>(QStringLiteral("notice-recovery"));
    bar->findChildren<QAbstractButton *>().first()->click();
    person.Settle();
    EXPECT_EQ(person.Window().ParView().Text(), "[Line9]\n");
    EXPECT_TRUE(person.Main().isWindowModified());
    EXPECT_FALSE(IsNoticeShown("recovery"));
    EXPECT_EQ(Copies().size(), 1);
}

TEST_F(CSessionDesk, AFileChangedByOthersIsSaidAndNotOverwrittenUnasked) {
    QFile file(person.Path(QStringLiteral("modbus.par")));
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write("[Other]\n");
    file.close();
    QTest::qWait(1300);
    EXPECT_TRUE(IsNoticeShown("disk"));
    person.Answer({QStringLiteral("Zrušit")});
    person.Press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(person.FileText(QStringLiteral("modbus.par")), QStringLiteral("[Other]\n"));
    person.Answer({QStringLiteral("Přepsat")});
    person.Press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(person.FileText(QStringLiteral("modbus.par")).contains(QStringLiteral("[Line1]")))
        << person.Boxes().join(QLatin1Char('|')).toStdString();
}

/// Each way to answer the question at closing: what is in the file afterwards, and whether a copy is left.
TEST_F(CSessionDesk, ClosingAsks) {
    struct TCase {
        const char *answer;
        bool ends;
        bool saved;
    };
    for (const TCase &way : {TCase{"Zrušit", false, false}, TCase{"Ne", true, false}, TCase{"Ano", true, true}}) {
        SCOPED_TRACE(way.answer);
        person.Reopen(QStringLiteral("modbus.par"));
        ToText();
        person.Type(QStringLiteral("(* closing *)"));
        person.Answer({QString::fromUtf8(way.answer)});
        EXPECT_EQ(person.CloseAndRun(), way.ends);
        EXPECT_EQ(person.FileText(QStringLiteral("modbus.par")).startsWith(QStringLiteral("(* closing *)")), way.saved);
        person.End();
        EXPECT_TRUE(!way.ends || Copies().isEmpty());
    }
}

/// With the letter of an option that is added, and an offset at which four characters are selected: they are replaced
/// only if they are what is looked for.
TEST_F(CSessionDesk, TheTextIsSearchedAndReplacedByTheOptions) {
    ToText();
    CTextView &view = person.Window().ParView();
    for (const auto &[option, selected, one, all] :
         {std::tuple(Qt::Key_F12, 5U, "pump X\r\nXs pump", "X X\r\nXs X"),
          std::tuple(Qt::Key_L, 5U, "pump Pump\r\nXs pump", "X Pump\r\nXs X"),
          std::tuple(Qt::Key_C, 11U, "pump Pump\r\npumps X", "X Pump\r\npumps X")}) {
        view.UserReplaceAt(0, view.Text().size(), "pump Pump\r\npumps pump");
        view.UserSelect(selected, selected + 4);
        person.Press(Qt::Key_H, Qt::ControlModifier);
        person.Press(option, Qt::AltModifier);
        QTest::qWait(150);
        person.Press(Qt::Key_H, Qt::ControlModifier);
        person.Type(QStringLiteral("pump\tX\r\r"));
        EXPECT_EQ(view.Text(), std::string_view(one));
        person.Press(Qt::Key_E, Qt::AltModifier);
        QTest::qWait(150);
        EXPECT_EQ(view.Text(), std::string_view(all));
        person.Press(Qt::Key_Escape);
    }
    QTimer::singleShot(50, &person.Main(), [this] {
        QTest::keyClick(person.Focus(), Qt::Key_2);
        QTest::keyClick(person.Focus(), Qt::Key_Return);
    });
    person.Press(Qt::Key_G, Qt::ControlModifier);
    EXPECT_EQ(view.CursorLine(), 1U);
    Check();
}

TEST_F(CSessionDesk, ChannelsGetTypeAndDirectionAndTheComparisonShowsWhatChanges) {
    const QTemporaryDir folder;
    for (const auto &[name, text] :
         {std::pair("t.pdt",
                    "def_section name = 'S'; def_key name = 'K'; label = 'Block'; channels; par = number { ch_number; "
                    "default = 1 };"
                    "par = number { ch_count; default = 1 }; par = options { option = 'real'; option = 'open';"
                    "ch_type 'real' = real; ch_direction 'real' = input }; end_key end_section"),
          std::pair("t.par", "(* by hand *)\r\n[S]\r\n  K = 1, 2, open\r\n"),
          std::pair("t.dmf", "begin\r\nend.\r\n")}) {
        ASSERT_TRUE(WritePrivately(folder.filePath(QLatin1String(name)), text));
    }
    ASSERT_TRUE(person.Open(folder.path(), QStringLiteral("t.par")));
    ToSheet();
    QImage icon;
    for (QLabel *label : person.Main().findChildren<QLabel *>()) {
        icon =
            label->text().endsWith(QStringLiteral(" kan\u00e1ly")) ? label->grab(QRect(0, 0, 20, 20)).toImage() : icon;
    }
    EXPECT_FALSE(icon.isNull() || icon.allGray());
    person.Sheet().expandAll();
    ASSERT_TRUE(person.ClickCell(person.Sheet(), QStringLiteral("Block"), 2));
    person.Type(QStringLiteral("5"));
    person.Press(Qt::Key_Return);
    person.Press(Qt::Key_F6);
    person.Press(Qt::Key_Down);
    person.Press(Qt::Key_Right);
    for (const char *entry : {"boolean", "input"}) {
        person.Press(Qt::Key_Right);
        person.Press(Qt::Key_Down, Qt::AltModifier);
        person.Type(QString(QLatin1Char(*entry)));
        person.Press(Qt::Key_Return);
        EXPECT_EQ(person.Channels().currentIndex().data().toString(), QLatin1String(entry));
    }
    QString said;
    QTimer::singleShot(50, &person.Main(), [this, &said] {
        for (const QLabel *label : QApplication::activeModalWidget()->findChildren<QLabel *>()) {
            said += label->text();
        }
        for (const QPlainTextEdit *page : QApplication::activeModalWidget()->findChildren<QPlainTextEdit *>()) {
            said += page->toPlainText();
        }
        QTest::keyClick(person.Focus(), Qt::Key_Escape);
    });
    person.Press(Qt::Key_D, Qt::ControlModifier | Qt::ShiftModifier);
    for (const char *part :
         {"(1): (* by hand *)", "\u2212   K = 1, 2, open", "+   K  = 1, 5, open", "+   1 - 5 boolean input"}) {
        EXPECT_TRUE(said.contains(QString::fromUtf8(part))) << part << " isn't in " << said.toStdString();
    }
}

TEST(LineDiff, FindsTheFewestDifferences) {
    for (const auto &[from, to, equal] :
         {std::tuple("abc", "abc", 3), std::tuple("abc", "ac", 2), std::tuple("ac", "abc", 2), std::tuple("", "ab", 0),
          std::tuple("ab", "", 0), std::tuple("abcabba", "cbabac", 4)}) {
        const QStringList before = QString::fromLatin1(from).split(QString(), Qt::SkipEmptyParts);
        const QStringList after = QString::fromLatin1(to).split(QString(), Qt::SkipEmptyParts);
        int kept = 0;
        QString rebuilt;
        for (const TDiffLine &line : CompareLines(before, after)) {
            kept += line.kind == TDiffLine::TKind::kEqual ? 1 : 0;
            rebuilt += line.kind == TDiffLine::TKind::kRemoved ? QString() : line.text;
        }
        EXPECT_EQ(rebuilt.toStdString(), to);
        EXPECT_EQ(kept, equal) << from;
    }
}

TEST(Comments, AreFoundOutsideOfQuotes) {
    EXPECT_EQ(CommentsOf(QStringLiteral("(* a *)\nx = '(* no *)'\ny = 1 (* b (* c *) *)\nz = it's (* d\n*)")),
              QStringList({QStringLiteral("(* a *)"), QStringLiteral("(* b (* c *) *)")}));
}

}  // namespace
