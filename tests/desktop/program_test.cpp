// kqconf as a program: its options, a save that fails, a process that is killed.

#include <gtest/gtest.h>

#include <QAccessible>
#include <QDir>
#include <QElapsedTimer>
#include <QMainWindow>
#include <QProcess>
#include <QTest>
#include <QTreeView>

#include "desktop/kqconf/text_files.h"
#include "tests/desktop/person.h"

namespace {

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
    ASSERT_EQ(copies.entryList({QStringLiteral("*.par")}).size(), 1) << person.Boxes().join(QLatin1Char('|')).toStdString();
    const auto kept = kq_desktop::ReadFile(copies.filePath(copies.entryList({QStringLiteral("*.par")}).first()));
    EXPECT_TRUE(kept->startsWith("(* lost? *)"));
}

/// What those who don't see the window are told of it.
TEST(Kqconf, EverythingHasANameForThoseWhoDontSee) {
    CPerson person;
    ASSERT_TRUE(person.Open(kExamples + QStringLiteral("modbus"), QStringLiteral("modbus.par")));
    for (const QWidget *widget : {static_cast<const QWidget *>(&person.Sheet()),
                                  static_cast<const QWidget *>(&person.Channels())}) {
        QAccessibleInterface *spoken = QAccessible::queryAccessibleInterface(const_cast<QWidget *>(widget));
        ASSERT_NE(spoken, nullptr);
        EXPECT_FALSE(spoken->text(QAccessible::Name).isEmpty());
        EXPECT_EQ(spoken->role(), QAccessible::Tree);
    }
    person.Sheet().expandAll();
    ASSERT_TRUE(person.ClickCell(person.Sheet(), QStringLiteral("IP"), 1));
    QAccessibleInterface *tree = QAccessible::queryAccessibleInterface(&person.Sheet());
    QAccessibleInterface *cell = tree->focusChild();
    ASSERT_NE(cell, nullptr);
    EXPECT_EQ(cell->text(QAccessible::Name), QStringLiteral("nepřístupné"));
    EXPECT_FALSE(cell->text(QAccessible::Description).isEmpty());
}

}  // namespace
