#pragma once

#include <QString>
#include <cstdint>
#include <functional>

#include "desktop/kqconf/driver_files.h"
#include "template/language/host_callback.h"

namespace kq_desktop {

/// The program as the host of the configurator: it knows where the files are, which language its user reads, and opens
/// the driver's documentation.
class CDesktopHost final : public CAbstractPdtIdeCallBack {
public:
    CDesktopHost(TDriverFiles files, std::uint32_t language, QString modules);

    /// Called when the configurator is about to save.
    std::function<void()> saving;

    void ShowDriverHelp(std::uint32_t high, const char *name) override;
    void GetParFileName(std::uint32_t high, const char *name, std::uint32_t path_high, char *path) override;
    void GetDmfFileName(std::uint32_t high, const char *name, std::uint32_t path_high, char *path) override;
    void GetDllFileName(std::uint32_t high, const char *name, std::uint32_t path_high, char *path) override;
    void GetPdtFileName(std::uint32_t high, const char *name, std::uint32_t path_high, char *path) override;
    void FindPdtFile(std::uint32_t high, const char *name, std::uint32_t path_high, char *path) override;
    bool FindFirstModule(std::uint32_t name_high, char *name, std::uint32_t path_high, char *path) override;
    bool FindNextModule(std::uint32_t name_high, char *name, std::uint32_t path_high, char *path) override;
    void GetModulesDir(std::uint32_t high, char *path) override;
    void NotifyDriverFiles(std::uint32_t dmf_high, const char *dmf_path, std::uint32_t par_high,
                           const char *par_path) override;
    void NotifyClosed() override {}
    void GetLanguage(std::uint32_t &language) override { language = language_; }

    /// The driver's documentation; empty without one.
    QString Documentation() const;

private:
    TDriverFiles files_;
    std::uint32_t language_;
    QString modules_;
};

}  // namespace kq_desktop
