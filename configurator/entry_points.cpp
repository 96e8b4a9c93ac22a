// The ways into the configurator, and the state that the library has once: one window, its configurator object, and
// the host's callback.

#include <array>
#include <cassert>
#include <cstring>
#include <utility>

#include "configurator/geometry.h"
#include "configurator/kq_pdt.h"
#include "configurator/window_state.h"
#include "driver/driver_proxy.h"
#include "platform/base/bounded_text.h"
#include "platform/base/paths.h"
#include "scanner/par_scanner.h"

namespace {

/// The event that tells the toolkit of a window's new icon.
constexpr std::uint32_t kIconChanged = 40;

class CDriverConfigurator final : public CAbstractDriverConfigurator {
public:
    /// Null unlinks.
    void Link(CConfiguratorWindow *window) { window_ = window; }

    bool QueryClose() override { return window_ == nullptr || TConfiguratorAccess::Session(*window_).HostQueryClose(); }
    void ReadViewSettings() override {
        if (window_ != nullptr) {
            TConfiguratorAccess::Session(*window_).ReadSettings();
        }
    }

private:
    CConfiguratorWindow *window_ = nullptr;
};

CConfiguratorWindow *open_window = nullptr;

/// A host may ask it still when its window is gone, so it stays until the next one.
CDriverConfigurator &Configurator() {
    static CDriverConfigurator configurator;
    return configurator;
}

using TPathBuffer = std::array<char, kq_base::TPathText::kBound + 1>;

kq_base::TPathText PathOf(const TPathBuffer &buffer) {
    return kq_base::TPathText(kq_base::ViewOfPair(kq_base::TPathText::kBound, buffer.data()));
}

/// Asks the host for one of the driver's files.
kq_base::TPathText AskPath(CAbstractPdtIdeCallBack &callback,
                           void (CAbstractPdtIdeCallBack::*question)(std::uint32_t, const char *, std::uint32_t,
                                                                     char *),
                           std::uint32_t name_high, const char *name) {
    TPathBuffer path = {};
    (callback.*question)(name_high, name, kq_base::TPathText::kBound, path.data());
    return PathOf(path);
}

}  // namespace

bool CAbstractDriverConfigurator::QueryClose() {
    assert(false);
    return true;
}

void CAbstractDriverConfigurator::ReadViewSettings() {}

std::unique_ptr<CConfiguratorWindow> TConfiguratorAccess::Create() {
    std::unique_ptr<CConfiguratorWindow> window(new CConfiguratorWindow);
    open_window = window.get();
    return window;
}

void kq_pdt::WindowEnded(const CConfiguratorWindow &window) {
    if (open_window == &window) {
        open_window = nullptr;
        Configurator().Link(nullptr);
    }
}

CConfiguratorWindow *OpenEditor(TDriverPath module, TDriverPath par, TDriverPath dmf) {
    if (open_window != nullptr) {
        return nullptr;
    }
    const kq_base::TPathText module_path = PathOf(module.text);
    kq_pdt::TOpening opening;
    opening.module = kq_os::LoadLibraryA(module_path.View());
    opening.pdt_path = kq_base::ChangeExtension(module_path.View(), "PDT");
    opening.par_path = PathOf(par.text);
    opening.dmf_path = PathOf(dmf.text);
    opening.rect = kq_pdt::ReadGeometry(kq_pdt::TOpener::kCaller).rect;
    std::unique_ptr<CConfiguratorWindow> window = TConfiguratorAccess::Create();
    TConfiguratorAccess::Session(*window).Open(opening);
    return window.release();
}

CConfiguratorWindow *CreateDriverConfigurator(std::uint32_t name_high, const char *name,
                                              CAbstractPdtIdeCallBack *callback,
                                              CAbstractDriverConfigurator **configurator) {
    if (callback == nullptr || open_window != nullptr) {
        return nullptr;
    }
    kq_pdt::TOpening opening;
    opening.name = kq_base::ViewOfPair(name_high, name);
    opening.par_path = AskPath(*callback, &CAbstractPdtIdeCallBack::GetParFileName, name_high, name);
    opening.dmf_path = AskPath(*callback, &CAbstractPdtIdeCallBack::GetDmfFileName, name_high, name);
    const kq_base::TPathText module_path =
        AskPath(*callback, &CAbstractPdtIdeCallBack::GetDllFileName, name_high, name);
    opening.pdt_path = AskPath(*callback, &CAbstractPdtIdeCallBack::GetPdtFileName, name_high, name);
    opening.module = kq_os::LoadLibraryA(module_path.View());
    opening.callback = callback;
    const kq_pdt::TGeometry geometry = kq_pdt::ReadGeometry(kq_pdt::TOpener::kHost);
    opening.rect = geometry.rect;

    std::unique_ptr<CConfiguratorWindow> window = TConfiguratorAccess::Create();
    Configurator().Link(window.get());
    *configurator = &Configurator();
    if (!TConfiguratorAccess::Session(*window).Open(opening)) {
        *configurator = nullptr;
        return nullptr;
    }
    window->SetWinIcon(icLibrary, icLibrary);
    Send(*window, ecNotice, kIconChanged);
    if (geometry.maximized) {
        TConfiguratorAccess::Session(*window).MaximizeWhenShown();
    }
    return window.release();
}

namespace kq_pdt {

kq_os::HMODULE HThisDLLInstance = kq_os::GetModuleHandleA("kq_pdt.dll");

void Init_() {
    static bool initialised = false;
    if (std::exchange(initialised, true)) {
        return;
    }
    par_scanner::Init_();
    kq_drv::Init_();
    kq_pdt_::Init_();
    SetHostCallback(nullptr);
}

}  // namespace kq_pdt

namespace kq_pdt_ {

// Pictures are files of the desktop, which loads them when it shows them.
void Init_() {}

}  // namespace kq_pdt_
