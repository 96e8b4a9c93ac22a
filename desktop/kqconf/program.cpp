#include "desktop/kqconf/program.h"

#include <QGuiApplication>
#include <QMessageBox>
#include <QScreen>
#include <cstdio>
#include <utility>

#include "desktop/kqconf/driver_session.h"
#include "desktop/kqconf/start_page.h"
#include "desktop/kqconf/text_files.h"

namespace kq_desktop {

CProgram::CProgram(TOptions options) : options_(std::move(options)) {
    kq_pdt::Init_();
    FindLanguage(options_.language, language_);
    if (const QScreen *screen = QGuiApplication::primaryScreen()) {
        SetWorkArea(screen->availableGeometry().width(), screen->availableGeometry().height());
    }
}

int CProgram::Run() {
    if (options_.files.file.isEmpty()) {
        options_.files.file = CStartPage::Ask();
    }
    bool opened = false;
    while (!options_.files.file.isEmpty()) {
        QString error;
        const std::optional<TDriverFiles> files = FindDriverFiles(options_.files, error);
        if (!files || !RunDriver(*files, error)) {
            std::fputs(QStringLiteral("kqconf: %1\n").arg(error).toUtf8().constData(), stderr);
            if (!opened) {
                return 1;
            }
            // Who chose the file from a menu looks at no terminal.
            QMessageBox::critical(nullptr, QStringLiteral("Soubor nelze otevřít"), error);
            options_.files = {CStartPage::Ask(), {}, {}, {}};
            continue;
        }
        opened = true;
    }
    return 0;
}

/// Opens a driver and runs its window; afterwards `options_` names what is to be opened next.
bool CProgram::RunDriver(const TDriverFiles &files, QString &error) {
    CDriverSession session(advice_, events_);
    if (!session.Open(files, language_, options_.modules)) {
        error = QStringLiteral("%1: soubor nelze otevřít").arg(files.par);
        return false;
    }
    AddRecentFile(files.par);
    options_.files = session.Run();
    language_ = session.Language();
    return true;
}

}  // namespace kq_desktop
