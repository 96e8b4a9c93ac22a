#pragma once

#include <cstdint>
#include <string>

#include "template/language/host_callback.h"
#include "tools/session/event_recorder.h"

/// The host of a session: names the files that the script gave and records what it is told.
class CScriptHost final : public CAbstractPdtIdeCallBack {
public:
    /// The paths of a driver's files.
    struct TFiles {
        std::string module;
        std::string pdt;
        std::string par;
        std::string dmf;
    };

    explicit CScriptHost(CEventRecorder &recorder) : recorder_(recorder) {}

    void SetFiles(TFiles files) { files_ = std::move(files); }
    void SetLanguage(std::uint32_t language) { language_ = language; }
    void SetModules(std::string directory) { modules_ = std::move(directory); }

    void ShowDriverHelp(std::uint32_t high, const char *name) override;
    void GetParFileName(std::uint32_t high, const char *name, std::uint32_t path_high, char *path) override;
    void GetDmfFileName(std::uint32_t high, const char *name, std::uint32_t path_high, char *path) override;
    void GetDllFileName(std::uint32_t high, const char *name, std::uint32_t path_high, char *path) override;
    void GetPdtFileName(std::uint32_t high, const char *name, std::uint32_t path_high, char *path) override;
    void FindPdtFile(std::uint32_t high, const char *name, std::uint32_t path_high, char *path) override;
    bool FindFirstModule(std::uint32_t name_high, char *name, std::uint32_t path_high, char *path) override;
    void GetModulesDir(std::uint32_t high, char *path) override;
    void NotifyDriverFiles(std::uint32_t dmf_high, const char *dmf_path, std::uint32_t par_high,
                           const char *par_path) override;
    void NotifyClosed() override;
    void GetLanguage(std::uint32_t &language) override { language = language_; }

private:
    static constexpr std::uint32_t kNoLanguage = 4;

    CEventRecorder &recorder_;
    TFiles files_;
    std::uint32_t language_ = kNoLanguage;
    std::string modules_;
};
