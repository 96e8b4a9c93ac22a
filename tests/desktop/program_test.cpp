// kqconf as a program: its options, a save that fails, a process that is killed, the start page, its pictures.

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QDropEvent>
#include <QElapsedTimer>
#include <QListWidget>
#include <QMainWindow>
#include <QMimeData>
#include <QProcess>
#include <QStatusBar>
#include <QTest>
#include <QTextBrowser>
#include <QTreeView>
#include <set>

#include "desktop/kqconf/start_page.h"
#include "desktop/kqconf/text_files.h"
#include "desktop/peers/icons.h"
#include "desktop/peers/qt_peer.h"
#include "tests/desktop/checker.h"
#include "tests/desktop/person.h"

namespace {

using namespace kq_desktop;

const QString kExamples = QStringLiteral(KQ_SOURCE_DIR "/examples/");

struct TResult {
    int code = -1;
    QString out;
    QString error;
};

TResult RunProgram(const QStringList &arguments) {
    QProcess process;
    process.start(QStringLiteral(KQ_KQCONF), arguments);
    process.waitForFinished(20000);
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

TEST(Kqconf, SaysWhatIsWrongWithItsArguments) {
    struct TCase {
        QStringList arguments;
        int code;
        const char *said;
    };
    const std::vector<TCase> cases = {
        {{QStringLiteral("--version")}, 0, "kqconf 1"},
        {{QStringLiteral("--help")}, 0, "--language"},
        {{QStringLiteral("--nonsense")}, 2, "nonsense"},
        {{QStringLiteral("a.par"), QStringLiteral("b.par")}, 2, "jen jeden"},
        {{QStringLiteral("--language"), QStringLiteral("XX"), QStringLiteral("a.par")}, 2, "XX"},
        {{QStringLiteral("nowhere.pdt")}, 1, "neexistuje"},
        {{QStringLiteral("nowhere.txt")}, 1, "nelze otevřít"},
        {{kExamples + QStringLiteral("modbus/modbus_errors.par")}, 1, "--pdt"},
    };
    for (const TCase &call : cases) {
        const TResult result = RunProgram(call.arguments);
        EXPECT_EQ(result.code, call.code) << call.said;
        EXPECT_TRUE((call.code == 0 ? result.out : result.error).contains(QString::fromUtf8(call.said))) << call.said;
    }
}

TEST(Kqconf, AFailedSaveLeavesACopy) {
    const QTemporaryDir state;
    qputenv("XDG_STATE_HOME", state.path().toLocal8Bit());
    const QDir copies(state.filePath(QStringLiteral("kqconf/recovery")));
    CPerson person;
    ASSERT_TRUE(person.Open(kExamples + QStringLiteral("modbus"), QStringLiteral("modbus.par")));
    person.Press(Qt::Key_2, Qt::ControlModifier);
    person.Type(QStringLiteral("(* lost? *)"));
    // A folder in the file's place can't be written by anybody, whatever their rights.
    const QString par = person.Path(QStringLiteral("modbus.par"));
    QFile::remove(par);
    QDir().mkpath(par + QStringLiteral("/x"));
    person.Answer({QStringLiteral("Ano"), QStringLiteral("Přepsat"), QStringLiteral("OK")});
    EXPECT_TRUE(person.CloseAndRun());
    ASSERT_EQ(copies.entryList({QStringLiteral("*.par")}).size(), 1)
        << person.Boxes().join(QLatin1Char('|')).toStdString();
    const auto kept = ReadFile(copies.filePath(copies.entryList({QStringLiteral("*.par")}).first()));
    EXPECT_TRUE(kept->startsWith("(* lost? *)"));
}

/// The other process of the test below: works on a file and never saves.
TEST(Kqconf, DISABLED_WorksUntilItIsKilled) {
    CPerson person;
    ASSERT_TRUE(person.Open(kExamples + QStringLiteral("modbus"), QStringLiteral("modbus.par")));
    person.Press(Qt::Key_2, Qt::ControlModifier);
    person.Type(QStringLiteral("(* killed *)"));
    QTest::qWait(60000);
}

TEST(Kqconf, AKilledProcessLeavesItsWorkNotTwoSecondsOld) {
    const QTemporaryDir state;
    QProcess other;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("KQ_STATE"), state.path());
    other.setProcessEnvironment(environment);
    other.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--gtest_also_run_disabled_tests"),
                                                          QStringLiteral("--gtest_filter=*WorksUntilItIsKilled")});
    const QDir copies(state.filePath(QStringLiteral("kqconf/recovery")));
    QByteArray kept;
    for (int round = 0; round < 200 && !kept.startsWith("(* killed *)"); ++round) {
        QTest::qWait(100);
        const QStringList found = copies.entryList({QStringLiteral("*.par")});
        kept = found.isEmpty() ? QByteArray() : ReadFile(copies.filePath(found.first())).value_or("");
    }
    other.kill();
    other.waitForFinished();
    EXPECT_TRUE(kept.startsWith("(* killed *)"));
    EXPECT_EQ(copies.entryList({QStringLiteral("*.par")}).size(), 1);
}

TEST(Kqconf, TheStartPageTakesAKeyAClickAndAFile) {
    AddRecentFile(QStringLiteral("/a/one.par"));
    AddRecentFile(QStringLiteral("/a/two.par"));
    CStartPage page;
    auto &recent = *page.findChild<QListWidget *>();
    for (const char *chosen : {"/a/one.par", "/a/two.par", "/a/dropped.pdt"}) {
        page.show();
        page.activateWindow();
        QApplication::processEvents();
        if (chosen[3] == 'o') {
            QTest::keyClick(page.focusWidget(), Qt::Key_Tab);
            QTest::keyClick(page.focusWidget(), Qt::Key_Down);
            QTest::keyClick(page.focusWidget(), Qt::Key_Return);
        } else if (chosen[3] == 't') {
            QTest::mouseClick(recent.viewport(), Qt::LeftButton, {}, recent.visualItemRect(recent.item(0)).center());
        } else {
            QMimeData file;
            file.setUrls({QUrl(QStringLiteral("file:///a/dropped.pdt"))});
            QDragEnterEvent enter({9, 9}, Qt::CopyAction, &file, Qt::LeftButton, {});
            QDropEvent drop({9, 9}, Qt::CopyAction, &file, Qt::LeftButton, {});
            EXPECT_TRUE(QApplication::sendEvent(&page, &enter) && enter.isAccepted());
            QApplication::sendEvent(&page, &drop);
        }
        EXPECT_EQ(page.Chosen().toStdString(), chosen);
        EXPECT_FALSE(page.isVisible());
    }
}

TEST(Kqconf, TheDriversDocumentationIsOpened) {
    CPerson person;
    ASSERT_TRUE(person.Open(kExamples + QStringLiteral("modbus"), QStringLiteral("modbus.par")));
    person.Press(Qt::Key_F1);
    EXPECT_TRUE(person.Boxes().value(0).contains(QStringLiteral("není popis")));
    const QString path = person.Path(QStringLiteral("modbus.txt"));
    ASSERT_TRUE(WritePrivately(path, "about"));
    QTextBrowser browser;
    QDesktopServices::setUrlHandler(QStringLiteral("file"), &browser, "setSource");
    person.Press(Qt::Key_F1);
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
    EXPECT_EQ(browser.source(), QUrl::fromLocalFile(path));
}

/// A picture is loaded once, and is to be seen whatever the palette becomes later.
TEST(Icons, FollowThePalette) {
    const QPalette before = QApplication::palette();
    const QIcon icon = LoadIcon(QStringLiteral("close"));
    for (const auto &[page, text] : {std::pair(Qt::white, Qt::black), std::pair(Qt::black, Qt::white)}) {
        QPalette palette(page);
        palette.setColor(QPalette::WindowText, text);
        QApplication::setPalette(palette);
        for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Disabled}) {
            const QImage drawn = icon.pixmap(QSize(24, 24), 2, mode).toImage();
            std::set<QRgb> colors;
            for (int pixel = 0; pixel < 48 * 48; ++pixel) {
                colors.insert(drawn.pixel(pixel % 48, pixel / 48));
            }
            EXPECT_EQ(colors.contains(QColor(text).rgb()), mode == QIcon::Normal);
            EXPECT_EQ(colors.contains(qRgb(0xD6, 0x45, 0x45)), mode == QIcon::Normal);
        }
    }
    QApplication::setPalette(before);
}

/// What those who don't see the window are told of it.
TEST(Kqconf, EverythingHasANameForThoseWhoDontSee) {
    CPerson person;
    ASSERT_TRUE(person.Open(kExamples + QStringLiteral("modbus"), QStringLiteral("modbus.par")));
    const auto check = [&person] { EXPECT_EQ(Unnamed(person.Main()).toStdString(), ""); };
    person.Press(Qt::Key_1, Qt::ControlModifier);
    person.Sheet().expandAll();
    for (const char *row : {"Line", "Rychlost", "Port", "<p\u0159idat>"}) {
        SCOPED_TRACE(row);
        ASSERT_TRUE(person.ClickCell(person.Sheet(), QString::fromUtf8(row), *row == '<' ? 0 : 1));
        const QString said = person.Sheet().currentIndex().data(Qt::AccessibleDescriptionRole).toString();
        EXPECT_EQ(said.contains(QStringLiteral(", lze upravit")), *row != '<') << said.toStdString();
        person.Press(Qt::Key_F2);
        ASSERT_NE(person.Window().Sheet().CellEditor(), nullptr);
        check();
        EXPECT_TRUE(CQtPeer::Of(person.Window().Sheet().CellEditor())
                        ->Widget()
                        ->accessibleName()
                        .startsWith(QString::fromUtf8(row)));
        person.Press(Qt::Key_Escape);
    }
    ASSERT_TRUE(person.ClickCell(person.Sheet(), QStringLiteral("IP"), 1));
    QAccessibleInterface *cell = QAccessible::queryAccessibleInterface(&person.Sheet())->focusChild();
    ASSERT_NE(cell, nullptr);
    EXPECT_EQ(cell->role(), QAccessible::TreeItem);
    EXPECT_TRUE(cell->state().focused);
    EXPECT_EQ(cell->text(QAccessible::Name), QStringLiteral("nepřístupné"));
    EXPECT_TRUE(person.Main().statusBar()->accessibleName().contains(QStringLiteral("%transport%")));
    const QString description = cell->text(QAccessible::Description);
    EXPECT_TRUE(description.startsWith(QStringLiteral("IP, Hodnota. ")) &&
                description.contains(QStringLiteral("%transport%")))
        << description.toStdString();
    person.Press(Qt::Key_2, Qt::ControlModifier);
    person.Press(Qt::Key_H, Qt::ControlModifier);
    check();
    CStartPage start;
    EXPECT_EQ(Unnamed(start).toStdString(), "");
}

}  // namespace
