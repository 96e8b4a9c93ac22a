#include "template/language/host_callback.h"

#include <cassert>

#include "template/language/languages.h"

// A host has to override the operations below that assert; the others it may leave out.

void CAbstractPdtIdeCallBack::ShowDriverHelp(std::uint32_t /*high*/, const char * /*name*/) { assert(false); }

void CAbstractPdtIdeCallBack::GetParFileName(std::uint32_t /*high*/, const char * /*name*/, std::uint32_t /*path_high*/,
                                             char * /*path*/) {
    assert(false);
}

void CAbstractPdtIdeCallBack::GetDmfFileName(std::uint32_t /*high*/, const char * /*name*/, std::uint32_t /*path_high*/,
                                             char * /*path*/) {
    assert(false);
}

void CAbstractPdtIdeCallBack::GetDllFileName(std::uint32_t /*high*/, const char * /*name*/, std::uint32_t /*path_high*/,
                                             char * /*path*/) {
    assert(false);
}

void CAbstractPdtIdeCallBack::GetPdtFileName(std::uint32_t /*high*/, const char * /*name*/, std::uint32_t /*path_high*/,
                                             char * /*path*/) {
    assert(false);
}

void CAbstractPdtIdeCallBack::FindPdtFile(std::uint32_t /*high*/, const char * /*name*/, std::uint32_t /*path_high*/,
                                          char * /*path*/) {
    assert(false);
}

bool CAbstractPdtIdeCallBack::FindFirstModule(std::uint32_t /*name_high*/, char * /*name*/, std::uint32_t /*path_high*/,
                                              char * /*path*/) {
    assert(false);
    return false;
}

bool CAbstractPdtIdeCallBack::FindNextModule(std::uint32_t /*name_high*/, char * /*name*/, std::uint32_t /*path_high*/,
                                             char * /*path*/) {
    assert(false);
    return false;
}

void CAbstractPdtIdeCallBack::GetModulesDir(std::uint32_t /*high*/, char * /*path*/) { assert(false); }

void CAbstractPdtIdeCallBack::NotifyDriverFiles(std::uint32_t /*dmf_high*/, const char * /*dmf_path*/,
                                                std::uint32_t /*par_high*/, const char * /*par_path*/) {}

void CAbstractPdtIdeCallBack::NotifyClosed() {}

void CAbstractPdtIdeCallBack::GetLanguage(std::uint32_t & /*language*/) {}

namespace kq_pdt {

namespace {

CAbstractPdtIdeCallBack *host_callback = nullptr;

}  // namespace

CAbstractPdtIdeCallBack *HostCallback() { return host_callback; }

void SetHostCallback(CAbstractPdtIdeCallBack *callback) { host_callback = callback; }

bool IsCurrentLanguage(std::string_view tag) {
    if (host_callback == nullptr) {
        return false;
    }
    auto language = static_cast<std::uint32_t>(kLanguages.size());
    host_callback->GetLanguage(language);
    return language < kLanguages.size() && tag == kLanguages[language];
}

}  // namespace kq_pdt
