#include "desktop/kqconf/program.h"

#include <QGuiApplication>
#include <QScreen>
#include <cstdio>
#include <utility>

#include "desktop/kqconf/driver_session.h"

namespace kq_desktop {

CProgram::CProgram(TOptions options) : options_(std::move(options)) {
    kq_pdt::Init_();
    if (const QScreen *screen = QGuiApplication::primaryScreen()) {
        SetWorkArea(screen->availableGeometry().width(), screen->availableGeometry().height());
    }
}

int CProgram::Run() {
    QString error;
    const std::optional<TDriverFiles> files = FindDriverFiles(options_.files, error);
    if (!files) {
        std::fputs(QStringLiteral("kqconf: %1\n").arg(error).toUtf8().constData(), stderr);
        return 1;
    }
    return RunDriver(*files) ? 0 : 1;
}

bool CProgram::RunDriver(const TDriverFiles &files) {
    std::uint32_t language = 0;
    FindLanguage(options_.language, language);
    CDriverSession session(advice_, events_);
    if (!session.Open(files, language, options_.modules)) {
        std::fputs(QStringLiteral("kqconf: %1: soubor nelze otevřít\n").arg(files.par).toUtf8().constData(), stderr);
        return false;
    }
    session.Run();
    return true;
}

}  // namespace kq_desktop
