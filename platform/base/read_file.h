#pragma once

#include <string>

namespace kq_base {

/// Reads a whole file, given by the file system's path. 0, or the reason for FileErrorText: EISDIR for a directory,
/// EFBIG above the largest size of a text, ENXIO for a pipe that nobody writes to. Never waits for somebody to open the
/// other end of a pipe; what comes out of one, or of a device, is limited to kMaxStreamSize.
int ReadFile(const std::string &path, std::string &content);

inline constexpr std::size_t kMaxStreamSize = std::size_t{256} << 20U;

}  // namespace kq_base
