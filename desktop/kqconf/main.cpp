#include <QApplication>

#include "desktop/kqconf/options.h"
#include "desktop/kqconf/program.h"
#include "platform/view/settings.h"

int main(int argc, char **argv) {
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("kqconf"));
    QApplication::setApplicationDisplayName(QString());
    QApplication::setDesktopFileName(QStringLiteral("kqconf"));
    // Views end by their own means, not with the last window that is closed.
    QApplication::setQuitOnLastWindowClosed(false);
    CFileSettings settings(CFileSettings::DefaultPath());
    SetSettingsStore(&settings);
    int exit_code = 0;
    if (const auto options = kq_desktop::ReadOptions(QApplication::arguments(), exit_code)) {
        exit_code = kq_desktop::CProgram(*options).Run();
    }
    SetSettingsStore(nullptr);
    return exit_code;
}
