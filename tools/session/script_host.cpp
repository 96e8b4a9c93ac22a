#include "tools/session/script_host.h"

#include "platform/base/bounded_text.h"
#include "platform/base/files.h"
#include "platform/base/paths.h"

using kq_base::CopyToBuffer;
using kq_base::ViewOfPair;

void CScriptHost::ShowDriverHelp(std::uint32_t high, const char *name) {
    recorder_.Host("ShowDriverHelp", {ViewOfPair(high, name)});
}

void CScriptHost::GetParFileName(std::uint32_t /*high*/, const char * /*name*/, std::uint32_t path_high, char *path) {
    CopyToBuffer(files_.par, path_high, path);
}

void CScriptHost::GetDmfFileName(std::uint32_t /*high*/, const char * /*name*/, std::uint32_t path_high, char *path) {
    CopyToBuffer(files_.dmf, path_high, path);
}

void CScriptHost::GetDllFileName(std::uint32_t /*high*/, const char * /*name*/, std::uint32_t path_high, char *path) {
    CopyToBuffer(files_.module, path_high, path);
}

void CScriptHost::GetPdtFileName(std::uint32_t /*high*/, const char * /*name*/, std::uint32_t path_high, char *path) {
    CopyToBuffer(files_.pdt, path_high, path);
}

void CScriptHost::FindPdtFile(std::uint32_t high, const char *name, std::uint32_t path_high, char *path) {
    std::string found(ViewOfPair(high, name));
    std::string beside_pdt = kq_base::JoinPath(kq_base::DirectoryPart(files_.pdt), found);
    std::string in_modules = kq_base::JoinPath(modules_, found);
    kq_base::CDisk &disk = kq_base::CDisk::Current();
    if (!modules_.empty() && disk.Exists(in_modules)) {
        found = std::move(in_modules);
    } else if (disk.Exists(beside_pdt)) {
        found = std::move(beside_pdt);
    }
    CopyToBuffer(found, path_high, path);
}

bool CScriptHost::FindFirstModule(std::uint32_t /*name_high*/, char * /*name*/, std::uint32_t /*path_high*/,
                                  char * /*path*/) {
    return false;
}

void CScriptHost::GetModulesDir(std::uint32_t high, char *path) { CopyToBuffer(modules_, high, path); }

void CScriptHost::NotifyDriverFiles(std::uint32_t dmf_high, const char *dmf_path, std::uint32_t par_high,
                                    const char *par_path) {
    recorder_.Host("NotifyDriverFiles", {ViewOfPair(dmf_high, dmf_path), ViewOfPair(par_high, par_path)});
}

void CScriptHost::NotifyClosed() { recorder_.Host("NotifyClosed", {}); }
