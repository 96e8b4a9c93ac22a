#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QTemporaryDir state;
    const QByteArray given = qgetenv("KQ_STATE");
    qputenv("XDG_STATE_HOME", given.isEmpty() ? state.path().toLocal8Bit() : given);
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
