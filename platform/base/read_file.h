#pragma once

#include <string>

namespace kq_base {

/// Reads a whole file, given by the file system's path. 0, or the reason for FileErrorText: EISDIR for a directory,
/// EFBIG above the largest size of a text, ENXIO for a pipe that nobody writes to. Never waits for the other end of a
/// pipe to be opened; what a pipe or a device delivers is limited to kMaxStreamSize.
int ReadFile(const std::string &path, std::string &content);

/// Bytes that are read from a pipe or a device at most.
inline constexpr std::size_t kMaxStreamSize = std::size_t{256} << 20U;

}  // namespace kq_base
