#include "desktop/kqconf/driver_session.h"

#include "desktop/kqconf/options.h"
#include "desktop/kqconf/window_advice.h"
#include "desktop/peers/event_source.h"
#include "desktop/peers/text.h"

namespace kq_desktop {

CDriverSession::CDriverSession(CWindowAdvice &advice, CQtEventSource &events) : advice_(advice), events_(events) {}

CDriverSession::~CDriverSession() {
    events_.idle = nullptr;
    advice_.handle_command = nullptr;
    advice_.leaving_tab = nullptr;
    if (host_ != nullptr) {
        host_->saving = nullptr;
    }
    frame_.reset();
    if (window_ != nullptr) {
        window_->Done();
    }
    advice_.SetWindow(nullptr);
}

bool CDriverSession::Open(const TDriverFiles &files, std::uint32_t language, const QString &modules) {
    language_ = language;
    host_ = std::make_unique<CDesktopHost>(files, language, modules);
    const std::string name = FromQt(files.name);
    window_.reset(
        CreateDriverConfigurator(static_cast<std::uint32_t>(name.size()), name.c_str(), host_.get(), &configurator_));
    if (window_ == nullptr) {
        return false;
    }
    advice_.SetWindow(window_.get());
    window_->SetVisible(true);
    frame_ = std::make_unique<CSessionFrame>(*window_, files, language);
    const TNamedFiles same = {files.par, files.module, files.pdt, files.dmf};
    frame_->open_file = [this](const QString &path) { OpenNext({path, {}, {}, {}}); };
    frame_->change_language = [this, same](std::uint32_t chosen) {
        if (OpenNext(same)) {
            language_ = chosen;
            KeepLanguage(chosen);
        }
    };
    frame_->Safety().reload = [this, same] { OpenNext(same); };
    host_->saving = [this] { frame_->Safety().Saving(); };
    advice_.handle_command = [this](std::uint32_t command) { return frame_->HandleCommand(command); };
    advice_.leaving_tab = [this] { frame_->LeavingTab(); };
    events_.idle = [this] { frame_->Refresh(); };
    configurator_->ReadViewSettings();
    return true;
}

bool CDriverSession::OpenNext(const TNamedFiles &files) {
    if (!configurator_->QueryClose()) {
        return false;
    }
    next_ = files;
    MakeEvent(*window_, ecCommand, kEndLoop);
    return true;
}

TNamedFiles CDriverSession::Run() {
    window_->Exec();
    frame_->Safety().Closing();
    return next_;
}

}  // namespace kq_desktop
