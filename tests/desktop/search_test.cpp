// The search for devices with the simulator's module: progress window, tree of what was found, what comes of it.

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <ctime>

#include "desktop/peers/advice.h"
#include "desktop/peers/peer_factory.h"
#include "desktop/peers/qt_peer.h"
#include "platform/view/menu_bar.h"
#include "platform/view/tree_viewer.h"
#include "platform/view/window.h"
#include "tests/desktop/checker.h"
#include "tests/desktop/person.h"

namespace {

class CSearchDesk : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(person.Open(QStringLiteral(KQ_BINARY_DIR "/examples/simulator"), QStringLiteral("simulator.par")));
        QObject::connect(&timer, &QTimer::timeout, &timer, [this] { Act(); });
        timer.start(20);
    }
    /// Chooses the menu item and runs the window's loop until the search is over.
    void Search() {
        QTimer::singleShot(0, &timer, [this] { person.Press(Qt::Key_D, Qt::ControlModifier); });
        person.RunUntil([this] { return over; });
    }
    void Act() {
        auto *window = qobject_cast<QMainWindow *>(QApplication::activeModalWidget());
        if (window == nullptr) {
            // There is none for a moment between progress and tree.
            over = seen_progress && ++looks > 5;
            return;
        }
        looks = 0;
        if (auto *tree = window->findChild<QTreeWidget *>()) {
            Choose(*window, *tree);
        } else if (auto *button = window->findChild<QPushButton *>()) {
            seen_progress = true;
            EXPECT_EQ(Unnamed(*window).toStdString(), "");
            elapsed = window->findChild<QLabel *>(QStringLiteral("elapsed"))->text();
            person.Look(QStringLiteral("progress"));
            if (cancels) {
                QTest::keyClick(button, Qt::Key_Space);
            }
        }
    }
    void Choose(QMainWindow &window, QTreeWidget &tree) {
        if (!marked.isEmpty() || !window.isActiveWindow()) {
            return;
        }
        EXPECT_TRUE(tree.hasFocus());
        found = tree.topLevelItemCount();
        EXPECT_EQ(Unnamed(window).toStdString(), "");
        // The first device: below the group that begins the tree.
        QTest::keyClick(&tree, Qt::Key_Home);
        QTest::keyClick(&tree, Qt::Key_Down);
        QTest::keyClick(&tree, Qt::Key_Space);
        marked = tree.currentItem()->text(0);
        person.Look(QStringLiteral("devices"));
        if (others_write) {
            QFile file(person.Path(QStringLiteral("simulator.par")));
            ASSERT_TRUE(file.open(QFile::Append) && file.write("(* other *)\r\n") > 0);
        }
        confirms ? QTest::keyClick(&window, Qt::Key_Return, Qt::ControlModifier)
                 : QTest::keyClick(&tree, Qt::Key_Escape);
    }

    CPerson person;
    QTimer timer;
    bool cancels = false;
    bool confirms = true;
    bool others_write = false;
    bool seen_progress = false;
    bool over = false;
    int looks = 0;
    int found = 0;
    QString marked;
    QString elapsed;
};

TEST_F(CSearchDesk, WhatIsMarkedGoesIntoTheParameters) {
    Search();
    EXPECT_TRUE(seen_progress);
    EXPECT_TRUE(elapsed.startsWith(QStringLiteral("Uplynulý čas: 0:")));
    EXPECT_GT(found, 0);
    EXPECT_EQ(marked, QStringLiteral("Teploměr pece"));
    EXPECT_TRUE(person.Main().isWindowModified());
    person.Look(QStringLiteral("taken"));
    person.Press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(person.FileText(QStringLiteral("simulator.par")).count(QStringLiteral("[Signal")), 4);
}

/// What was marked isn't saved yet, so nobody asks about the file.
TEST_F(CSearchDesk, WhatIsMarkedIsTakenThoughOthersChangeTheFile) {
    others_write = true;
    Search();
    EXPECT_TRUE(person.Main().isWindowModified());
}

TEST_F(CSearchDesk, ClosingTheTreeChangesNothing) {
    confirms = false;
    Search();
    EXPECT_GT(found, 0);
    EXPECT_FALSE(person.Main().isWindowModified());
}

TEST_F(CSearchDesk, CancellingEndsTheSearch) {
    cancels = true;
    Search();
    EXPECT_EQ(found, 0);
    EXPECT_FALSE(person.Main().isWindowModified());
}

/// A driver may report thousands of devices, one by one, to a tree that is shown.
TEST(TreeOfDevices, TakesTimeInProportionToItsItems) {
    const auto fill = [](std::uint32_t count) {
        kq_desktop::CPeerAdvice advice;
        const kq_desktop::CQtPeerFactory factory(advice);
        CWindow window;
        CTreeViewerPane pane;
        window.Init({0, 0, 300, 250}, 0, {}, nullptr, nullptr);
        window.Register(pane);
        window.SetVisible(true);
        const std::clock_t begin = std::clock();
        TTreeItem *group = nullptr;
        for (std::uint32_t item = 0; item < count; ++item) {
            if (item % 100 == 0) {
                group = &pane.AddItem(nullptr, "group", kTreeItemHasMark, item);
            }
            pane.UserTag(pane.AddItem(group, "device", kTreeItemHasMark, count + item), true);
            if (item % 500 == 0) {
                QCoreApplication::processEvents();
            }
        }
        const std::clock_t end = std::clock();
        const auto &tree = *static_cast<QTreeWidget *>(kq_desktop::CQtPeer::Of(&pane)->Widget());
        EXPECT_EQ(tree.topLevelItemCount(), static_cast<int>(count / 100));
        EXPECT_EQ(tree.topLevelItem(7)->childCount(), 100);
        EXPECT_TRUE(tree.topLevelItem(7)->isExpanded());
        return end - begin;
    };
    const std::clock_t few = fill(1000);
    const std::clock_t many = fill(10000);
    EXPECT_LT(many, 40 * few) << few;
}

}  // namespace
