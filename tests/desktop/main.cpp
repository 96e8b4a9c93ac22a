#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>

#include "tests/desktop/person.h"

int main(int argc, char **argv) {
    const QTemporaryDir screen;
    UseScreenOf(screen.path(), 1600, 1200, 1);
    const QTemporaryDir state;
    const QByteArray given = qgetenv("KQ_STATE");
    qputenv("XDG_STATE_HOME", given.isEmpty() ? state.path().toLocal8Bit() : given);
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
