#include "tools/driver/module_file.h"

#include <dlfcn.h>
#include <elf.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "platform/base/file_system_name.h"
#include "tools/console/diagnostics.h"
#include "tools/console/files.h"

namespace {

constexpr const char *kNoModule = "this isn't a module, or only a part of one";

/// The first bytes of a module's file, which say what processor it is for.
struct TModuleHead {
    std::array<unsigned char, EI_NIDENT> identity{};
    std::uint16_t type = 0;
    std::uint16_t machine = 0;
};

TModuleHead ReadHead(std::ifstream stream) {
    TModuleHead head;
    stream.read(reinterpret_cast<char *>(&head), sizeof(head));
    return head;
}

/// Why a module can't run here whatever it holds; empty for one of this processor, and for a file that is no module.
std::string ProcessorReason(const std::string &name) {
    const TModuleHead head = ReadHead(std::ifstream(kq_base::LocateFile(name), std::ios::binary));
    const TModuleHead own = ReadHead(std::ifstream("/proc/self/exe", std::ios::binary));
    if (std::memcmp(head.identity.data(), ELFMAG, SELFMAG) != 0 || own.machine == 0) {
        return "";
    }
    if (head.identity[EI_CLASS] != own.identity[EI_CLASS]) {
        return head.identity[EI_CLASS] == ELFCLASS32 ? "the module is built for 32 bits, this program for 64"
                                                     : "the module is built for 64 bits, this program for 32";
    }
    const bool same = head.identity[EI_DATA] == own.identity[EI_DATA] && head.machine == own.machine;
    return same ? "" : "the module is built for another processor";
}

/// What the system said when it refused a module, without the path at the beginning. A path with bytes that aren't
/// UTF-8 stays out of the text that way.
std::string SystemReason(const std::string &name) {
    const char *const said = dlerror();
    std::string reason = said != nullptr ? said : "the system doesn't load it";
    const std::string prefix = kq_base::LocateFile(name) + ": ";
    const std::size_t start = reason.find(prefix);
    return start == std::string::npos ? reason : reason.substr(start + prefix.size());
}

}  // namespace

bool CheckReadable(TConsole &console, const std::string &name) {
    if (name == kStandardInput) {
        PrintError(console, "<stdin>", "a file is needed here; standard input won't do");
        return false;
    }
    const std::string located = kq_base::LocateFile(name);
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(located, error);
    if (!error && !std::filesystem::is_regular_file(status)) {
        PrintError(console, name, "this isn't a plain file");
        return false;
    }
    errno = 0;
    if (!std::ifstream(located, std::ios::binary)) {
        PrintError(console, name, errno != 0 ? std::strerror(errno) : "it can't be read");
        return false;
    }
    return true;
}

bool CModuleFile::OpenNames(const std::string &name) {
    module_ = kq_os::LoadLibraryExA(name, kq_os::kDontResolveReferences);
    return module_ != nullptr;
}

bool CModuleFile::Load(const std::string &name, std::string &reason) {
    const bool is_module = CModuleFile().OpenNames(name);
    reason = ProcessorReason(name);
    if (reason.empty() && !is_module) {
        reason = kNoModule;
    }
    if (reason.empty()) {
        dlerror();
        module_ = kq_os::LoadLibraryA(name);
        reason = module_ != nullptr ? "" : SystemReason(name);
    }
    return module_ != nullptr;
}
