// A day's work at the window without the mouse, step by step. With KQ_PICTURES=FOLDER each step leaves a picture.

#include <gtest/gtest.h>

#include <QApplication>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QStatusBar>
#include <QTest>
#include <QTextBlock>
#include <QTimer>
#include <QTreeView>

#include "tests/desktop/checker.h"
#include "tests/desktop/person.h"

namespace {

class CStory : public testing::Test {
protected:
    void Step(const QString &name) {
        EXPECT_EQ(Compare(person).toStdString(), "") << name.toStdString();
        person.Look(name);
    }
    void Press(int key, int times = 1) {
        for (int time = 0; time < times; ++time) {
            person.Press(key);
        }
    }
    void Ctrl(int key) { person.Press(key, Qt::ControlModifier); }
    QString Dmf() { return QString::fromStdString(std::string(person.Window().DmfView().Text())); }
    QString Current(int column) const {
        return person.Sheet().currentIndex().siblingAtColumn(column).data().toString();
    }
    /// Presses a key until the row with a name is reached.
    void GoTo(int key, const QString &row) {
        for (int step = 0; step < 100 && Current(0) != row; ++step) {
            Press(key);
        }
        ASSERT_EQ(Current(0), row);
    }
    /// Takes the entry of the open list that is so many steps below the first one.
    void TakeFromList(int steps) {
        Press(Qt::Key_Home);
        Press(Qt::Key_Down, steps);
        Press(Qt::Key_Return);
    }
    /// Edits cells from the present one on, going on by Tab.
    void Fill(const QStringList &cells) {
        Press(Qt::Key_F2);
        for (const QString &cell : cells) {
            person.Type(cell);
            Press(Qt::Key_Tab);
        }
        Press(Qt::Key_Escape);
    }

    /// Finds a word in the text and types another one over it.
    void Replace(const char *word, const char *other) {
        Ctrl(Qt::Key_F);
        person.Type(QLatin1String(word));
        Press(Qt::Key_Return);
        Press(Qt::Key_Escape);
        person.Type(QLatin1String(other));
    }

    CPerson person;
};

TEST_F(CStory, AStationIsAddedAndAMistakeMended) {
    ASSERT_TRUE(person.Open(QStringLiteral(KQ_SOURCE_DIR "/examples/modbus"), QStringLiteral("modbus.par")));
    person.Main().resize(960, 680);
    Step(QStringLiteral("opened"));

    // Another baud rate.
    GoTo(Qt::Key_Down, QStringLiteral("Line1"));
    Press(Qt::Key_Return);
    GoTo(Qt::Key_Down, QStringLiteral("Sériový port"));
    Press(Qt::Key_Return);
    GoTo(Qt::Key_Down, QStringLiteral("Rychlost"));
    Press(Qt::Key_Right);
    person.Press(Qt::Key_Down, Qt::AltModifier);
    person.Look(QStringLiteral("baud-rates"));
    TakeFromList(2);
    EXPECT_EQ(Current(1), QStringLiteral("38400"));
    Step(QStringLiteral("baud-rate"));

    // Why the network address is dim.
    GoTo(Qt::Key_Down, QStringLiteral("Adresa v síti"));
    Press(Qt::Key_Left);
    Press(Qt::Key_Return);
    GoTo(Qt::Key_Down, QStringLiteral("IP"));
    Press(Qt::Key_Right);
    EXPECT_TRUE(person.Main().statusBar()->currentMessage().contains(QStringLiteral("%transport%")));
    Press(Qt::Key_F2);
    EXPECT_EQ(person.Window().Sheet().CellEditor(), nullptr);
    Step(QStringLiteral("dim"));

    // A station with two blocks of registers.
    Press(Qt::Key_End);
    Press(Qt::Key_Return);
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    person.Look(QStringLiteral("sections"));
    TakeFromList(1);
    Press(Qt::Key_Right);
    GoTo(Qt::Key_Down, QStringLiteral("Station"));
    Press(Qt::Key_Right);
    Fill({QStringLiteral("3")});
    GoTo(Qt::Key_Down, QStringLiteral("<přidat>"));
    Step(QStringLiteral("station"));
    for (const char *block : {"H 100 50 53 F R", "C 7 54 55 B W"}) {
        Press(Qt::Key_Return);
        ASSERT_NE(QApplication::activePopupWidget(), nullptr);
        Press(Qt::Key_Return);
        Press(Qt::Key_Right, 3);
        person.Look(QStringLiteral("block"));
        Fill(QString::fromLatin1(block).split(QLatin1Char(' ')));
        Step(QStringLiteral("block-filled"));
        GoTo(Qt::Key_Down, QStringLiteral("<přidat>"));
    }

    // A mistake in the text, found and mended; then the driver map follows the parameters.
    Ctrl(Qt::Key_2);
    Replace("EVEN", "EVAN");
    Ctrl(Qt::Key_Home);
    Step(QStringLiteral("mistake"));
    Ctrl(Qt::Key_1);
    EXPECT_EQ(person.Window().Tabs().ActiveTabIndex(), CConfiguratorWindow::kTextTab);
    Ctrl(Qt::Key_Home);
    Press(Qt::Key_F8);
    EXPECT_TRUE(person.Text().textCursor().block().text().contains(QStringLiteral("COM3")));
    EXPECT_EQ(person.Text().extraSelections().last().cursor.selectedText(), QStringLiteral("EVAN"));
    Step(QStringLiteral("found"));
    Replace("EVAN", "EVEN");
    person.Answer({QStringLiteral("Ano")});
    Ctrl(Qt::Key_R);
    EXPECT_TRUE(person.Boxes().last().startsWith(QStringLiteral("Definice kanálů v mapovacím souboru")));
    EXPECT_FALSE(Dmf().contains(QStringLiteral("real input"))) << Dmf().toStdString();
    Step(QStringLiteral("repaired"));
    Ctrl(Qt::Key_1);
    Step(QStringLiteral("sheet"));
    Ctrl(Qt::Key_S);
    EXPECT_FALSE(person.Main().isWindowModified());
    Step(QStringLiteral("saved"));
    QTest::keyClick(person.Focus(), Qt::Key_W, Qt::ControlModifier);
    person.Run();
    EXPECT_TRUE(
        person.FileText(QStringLiteral("modbus.dmf")).contains(QStringLiteral("50 - 53 shortreal bidirectional")));
    const QString par = person.FileText(QStringLiteral("modbus.par"));
    EXPECT_TRUE(par.contains(QStringLiteral("38400, 8, EVEN, 1")) && par.contains(QStringLiteral("[Station3]")) &&
                par.count(QStringLiteral("Block")) == 9)
        << par.toStdString();
}

}  // namespace
