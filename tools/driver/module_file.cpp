#include "tools/driver/module_file.h"

#include <dlfcn.h>

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

/// The place of the byte in a module's file that tells its word size, and its values.
constexpr std::size_t kClassAt = 4;
constexpr char kClass32 = 1;
constexpr char kClassHere = sizeof(void *) == 4 ? kClass32 : 2;

std::string WordSizeReason(const std::string &name) {
    std::array<char, kClassAt + 1> head{};
    std::ifstream file(kq_base::LocateFile(name), std::ios::binary);
    file.read(head.data(), head.size());
    if (head[kClassAt] == kClassHere) {
        return "";
    }
    return head[kClassAt] == kClass32 ? "the module is built for 32 bits, this program for 64"
                                      : "the module is built for 64 bits, this program for 32";
}

/// What the system said when it refused a module, without the path that it puts ahead. A path with bytes that aren't
/// UTF-8 stays out of the text that way.
std::string SystemReason(const std::string &name) {
    const char *const told = dlerror();
    std::string reason = told != nullptr ? told : "the system doesn't load it";
    const std::string ahead = kq_base::LocateFile(name) + ": ";
    const std::size_t at = reason.find(ahead);
    return at == std::string::npos ? reason : reason.substr(at + ahead.size());
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
    if (!CModuleFile().OpenNames(name)) {
        reason = kNoModule;
        return false;
    }
    reason = WordSizeReason(name);
    if (reason.empty()) {
        dlerror();
        module_ = kq_os::LoadLibraryA(name);
        reason = module_ != nullptr ? "" : SystemReason(name);
    }
    return module_ != nullptr;
}
