#include "scanner/file_par_scanner.h"

#include "platform/base/files.h"

namespace par_scanner {

bool CFileParScanner::Init(const char *path, std::uint32_t source) {
    std::string error;
    if (path == nullptr || !kq_base::CDisk::Current().Read(path, content_, error)) {
        return false;
    }
    const bool read = CParScanner::Init(source);
    content_ = {};
    return read;
}

std::uint32_t CFileParScanner::GetDataSize() { return static_cast<std::uint32_t>(content_.size()); }

bool CFileParScanner::ReadBlockData(TStr0_ *buffer) {
    content_.copy(buffer, content_.size());
    return true;
}

}  // namespace par_scanner
