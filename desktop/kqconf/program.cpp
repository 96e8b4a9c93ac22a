#include "desktop/kqconf/program.h"

#include <QGuiApplication>
#include <QScreen>
#include <cstdio>
#include <memory>
#include <utility>

#include "desktop/kqconf/host.h"
#include "desktop/kqconf/session_frame.h"
#include "desktop/peers/text.h"

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
    CDesktopHost host(files, language, options_.modules);
    CAbstractDriverConfigurator *configurator = nullptr;
    const std::string name = FromQt(files.name);
    const std::unique_ptr<CConfiguratorWindow> window(
        CreateDriverConfigurator(static_cast<std::uint32_t>(name.size()), name.c_str(), &host, &configurator));
    if (window == nullptr) {
        std::fputs(QStringLiteral("kqconf: %1: soubor nelze otevřít\n").arg(files.par).toUtf8().constData(), stderr);
        return false;
    }
    advice_.SetWindow(window.get());
    window->SetVisible(true);
    {
        CSessionFrame frame(*window);
        events_.idle = [&frame] { frame.Refresh(); };
        configurator->ReadViewSettings();
        window->Exec();
        events_.idle = nullptr;
    }
    window->Done();
    advice_.SetWindow(nullptr);
    return true;
}

}  // namespace kq_desktop
