// The sheet under real keys and clicks.

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QMainWindow>
#include <QStatusBar>
#include <QTest>
#include <QTreeView>
#include <random>
#include <tuple>
#include <utility>
#include <vector>

#include "desktop/peers/sheet_model.h"
#include "tests/desktop/checker.h"
#include "tests/desktop/person.h"

namespace {

using kq_desktop::CSheetModel;

const QString kExamples = QStringLiteral(KQ_SOURCE_DIR "/examples/");

class CSheetDesk : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(person.Open(kExamples + QStringLiteral("modbus"), QStringLiteral("modbus.par")));
        person.Sheet().expandAll();
        person.Settle();
        Check();
    }
    void Check() { EXPECT_EQ(Compare(person).toStdString(), ""); }
    QString Cell(const QString &row, int column) {
        for (QModelIndex index = person.Sheet().model()->index(0, 0); index.isValid();
             index = person.Sheet().indexBelow(index)) {
            if (index.data().toString() == row) {
                return index.siblingAtColumn(column).data().toString();
            }
        }
        return QStringLiteral("(no such row)");
    }

    CPerson person;
};

TEST_F(CSheetDesk, ValuesAreEditedByKeys) {
    for (const auto &[row, value] :
         {std::pair("Line", "7"), std::pair("Port", "COM5"), std::pair("N\u00e1zev", "Pump")}) {
        SCOPED_TRACE(row);
        ASSERT_TRUE(person.ClickCell(person.Sheet(), QString::fromUtf8(row), 1));
        person.Press(Qt::Key_F2);
        ASSERT_NE(person.Window().Sheet().CellEditor(), nullptr);
        person.Press(Qt::Key_A, Qt::ControlModifier);
        person.Type(QLatin1String(value));
        person.Press(Qt::Key_Return);
        EXPECT_EQ(person.Window().Sheet().CellEditor(), nullptr);
        EXPECT_EQ(Cell(QString::fromUtf8(row), 1), QLatin1String(value));
        EXPECT_TRUE(person.Main().isWindowModified());
        Check();
    }
    for (int step = 0; step < 3; ++step) {
        person.Press(Qt::Key_Z, Qt::ControlModifier);
        Check();
    }
    EXPECT_FALSE(person.Main().isWindowModified());
    EXPECT_EQ(Cell(QStringLiteral("Line"), 1), QStringLiteral("1"));
}

/// A number out of range stays open.
TEST_F(CSheetDesk, EscapeLeavesTheValueAndTabGoesOn) {
    for (const auto &[row, typed, value] : {std::tuple("Line", "99999\r", "1"), std::tuple("Port", "X", "COM3")}) {
        ASSERT_TRUE(person.ClickCell(person.Sheet(), QLatin1String(row), 1));
        person.Press(Qt::Key_F2);
        person.Type(QLatin1String(typed));
        EXPECT_NE(person.Window().Sheet().CellEditor(), nullptr);
        person.Press(Qt::Key_Escape);
        EXPECT_EQ(person.Window().Sheet().CellEditor(), nullptr);
        EXPECT_EQ(Cell(QLatin1String(row), 1), QLatin1String(value));
    }
    EXPECT_FALSE(person.Main().isWindowModified());
    person.Press(Qt::Key_F2);
    person.Press(Qt::Key_Tab);
    ASSERT_NE(person.Window().Sheet().CellEditor(), nullptr);
    EXPECT_EQ(person.Sheet().currentIndex().siblingAtColumn(0).data().toString(), QStringLiteral("Rychlost"));
    person.Press(Qt::Key_Escape);
    EXPECT_EQ(person.Window().Sheet().CellEditor(), nullptr);
    EXPECT_EQ(person.Window().UndoName(), "");
    person.Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("19200"));
    person.Press(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("Rychlost\t19200\t"));
    Check();
}

TEST_F(CSheetDesk, SectionsAreAddedAndDeleted) {
    const std::uint32_t rows = person.Window().Sheet().RowCount(1);
    QTreeView &sheet = person.Sheet();
    const QModelIndex last = sheet.model()->index(sheet.model()->rowCount() - 1, 0);
    ASSERT_TRUE(last.data(CSheetModel::kAddRole).toBool());
    sheet.setCurrentIndex(last);
    person.Settle();
    person.Press(Qt::Key_Return);
    ASSERT_NE(person.Window().Sheet().CellEditor(), nullptr);
    person.Press(Qt::Key_Down);
    person.Press(Qt::Key_Return);
    EXPECT_EQ(person.Window().Sheet().RowCount(1), rows + 1);
    Check();
    sheet.setCurrentIndex(sheet.model()->index(static_cast<int>(rows), 0));
    person.Settle();
    person.Press(Qt::Key_Delete);
    EXPECT_EQ(person.Window().Sheet().RowCount(1), rows);
    Check();
    person.Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(person.Window().Sheet().RowCount(1), rows + 1);
    Check();
}

/// Rows of one column on the way don't change the column that a person goes along.
TEST_F(CSheetDesk, UpAndDownKeepTheColumn) {
    ASSERT_TRUE(person.ClickCell(person.Sheet(), QStringLiteral("Prodleva [ms]"), 1));
    const auto press_until = [this](int key, const QString &row) {
        for (int step = 0; step < 20 && person.Sheet().currentIndex().siblingAtColumn(0).data().toString() != row;
             ++step) {
            person.Press(key);
        }
        return person.Sheet().currentIndex().column();
    };
    EXPECT_EQ(press_until(Qt::Key_Down, QStringLiteral("Line2")), 0);
    EXPECT_EQ(press_until(Qt::Key_Down, QStringLiteral("Druh linky")), 1);
    EXPECT_EQ(press_until(Qt::Key_Up, QStringLiteral("Line2")), 0);
    EXPECT_EQ(press_until(Qt::Key_Up, QStringLiteral("Prodleva [ms]")), 1);
    person.Press(Qt::Key_Left);
    EXPECT_EQ(press_until(Qt::Key_Down, QStringLiteral("Druh linky")), 0);
    Check();
}

TEST_F(CSheetDesk, FindGoesThroughTheTree) {
    person.Sheet().collapseAll();
    person.Press(Qt::Key_F, Qt::ControlModifier);
    person.Type(QStringLiteral("chiller"));
    person.Press(Qt::Key_Return);
    EXPECT_EQ(person.Sheet().currentIndex().data().toString(), QStringLiteral("Chiller"));
    Check();
}

/// Whatever keys are pressed, in whatever order, the widgets show what the views hold. KQ_SEEDS sets how many orders.
TEST(Desk, RandomKeysLeaveTheWidgetsInStep) {
    constexpr int kSteps = 250;
    constexpr int kAlt = static_cast<int>(Qt::AltModifier);
    constexpr int kCtrl = static_cast<int>(Qt::ControlModifier);
    const std::vector<int> keys = {
        Qt::Key_Down,      Qt::Key_Down,      Qt::Key_Up,          Qt::Key_Right,     Qt::Key_Right,
        Qt::Key_Left,      Qt::Key_PageDown,  Qt::Key_Home,        Qt::Key_End,       Qt::Key_F2,
        Qt::Key_Return,    Qt::Key_Return,    Qt::Key_Tab,         Qt::Key_Backtab,   Qt::Key_Escape,
        Qt::Key_Delete,    Qt::Key_Backspace, Qt::Key_2,           Qt::Key_X,         Qt::Key_F3,
        Qt::Key_F6,        Qt::Key_F8,        kAlt | Qt::Key_Down, kCtrl | Qt::Key_Z, kCtrl | Qt::Key_Y,
        kCtrl | Qt::Key_1, kCtrl | Qt::Key_2, kCtrl | Qt::Key_R,   kCtrl | Qt::Key_S, kCtrl | Qt::Key_F};
    const int seeds = std::max(qEnvironmentVariableIntValue("KQ_SEEDS"), 1);
    for (int seed = 1; seed <= seeds; ++seed) {
        for (const char *example : {"modbus", "meters", "simulator"}) {
            std::mt19937 random(static_cast<unsigned>(seed));
            CPerson person;
            ASSERT_TRUE(
                person.Open(kExamples + QLatin1String(example), QLatin1String(example) + QLatin1String(".par")));
            for (int step = 0; step < kSteps; ++step) {
                person.Answer({random() % 2 != 0 ? QStringLiteral("Ano") : QStringLiteral("Ne")});
                const auto key = QKeyCombination::fromCombined(keys[random() % keys.size()]);
                person.Press(key.key(), key.keyboardModifiers());
                ASSERT_EQ(Compare(person).toStdString(), "") << example << ", seed " << seed << ", step " << step;
            }
        }
    }
}

}  // namespace
