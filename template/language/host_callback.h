#pragma once

#include <cstdint>
#include <string_view>

#include "platform/base/export.h"

/// What an integrated environment implements for the library: where a driver's files are, which language its users read
/// and which modules there are. Every text is a pair: the highest valid index (or a length) and a pointer; an out
/// text is terminated within its bound. All calls come on the thread that called the library.
class KQ_API CAbstractPdtIdeCallBack {
public:
    virtual ~CAbstractPdtIdeCallBack() = default;

    /// Shows the help of a driver.
    virtual void ShowDriverHelp(std::uint32_t high, const char *name);
    /// Each fills in the path of one of the driver's files.
    virtual void GetParFileName(std::uint32_t high, const char *name, std::uint32_t path_high, char *path);
    virtual void GetDmfFileName(std::uint32_t high, const char *name, std::uint32_t path_high, char *path);
    virtual void GetDllFileName(std::uint32_t high, const char *name, std::uint32_t path_high, char *path);
    virtual void GetPdtFileName(std::uint32_t high, const char *name, std::uint32_t path_high, char *path);
    /// Turns the bare name of a module's template into a path that can be opened.
    virtual void FindPdtFile(std::uint32_t high, const char *name, std::uint32_t path_high, char *path);
    /// Lists modules beyond those of GetModulesDir, one a call. The path buffer comes with a directory; true leaves the
    /// full path of one more module in it. The caller splits that into name and directory before the next call.
    virtual bool FindFirstModule(std::uint32_t name_high, char *name, std::uint32_t path_high, char *path);
    virtual bool FindNextModule(std::uint32_t name_high, char *name, std::uint32_t path_high, char *path);
    /// Fills in the directory whose modules `dll` values offer.
    virtual void GetModulesDir(std::uint32_t high, char *path);
    /// The files that a session works on: at a successful opening and before every save.
    virtual void NotifyDriverFiles(std::uint32_t dmf_high, const char *dmf_path, std::uint32_t par_high,
                                   const char *par_path);
    /// The window is about to end.
    virtual void NotifyClosed();
    /// Gives the index of the language in kLanguages (languages.h). Any other index matches no language tag.
    virtual void GetLanguage(std::uint32_t &language);
};

namespace kq_pdt {

/// The host of the session that is open, or none. The library serves one session at a time.
KQ_API CAbstractPdtIdeCallBack *HostCallback();
KQ_API void SetHostCallback(CAbstractPdtIdeCallBack *callback);

/// True if a language tag of a template is the host's language. Without a host no tag is.
bool IsCurrentLanguage(std::string_view tag);

}  // namespace kq_pdt
