#include "platform/os/module_names.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>

#include <cstdint>
#include <limits>

#include "platform/base/descriptor.h"

namespace kq_os {

bool CModuleNames::Open(const std::string &path) {
    Close();
    const kq_base::CDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
    struct stat status = {};
    if (!file.IsOpen() || fstat(file.Number(), &status) != 0 || !S_ISREG(status.st_mode) || status.st_size <= 0 ||
        static_cast<std::uint64_t>(status.st_size) > std::numeric_limits<std::size_t>::max()) {
        return false;
    }
    const auto size = static_cast<std::size_t>(status.st_size);
    void *memory = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file.Number(), 0);
    if (memory == MAP_FAILED) {
        return false;
    }
    memory_ = memory;
    size_ = size;
    if (!symbols_.Open({static_cast<const char *>(memory_), size_})) {
        Close();
        return false;
    }
    return true;
}

void CModuleNames::Close() {
    if (memory_ != nullptr) {
        symbols_.Open({});
        munmap(memory_, size_);
        memory_ = nullptr;
    }
}

}  // namespace kq_os
