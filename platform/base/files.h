#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/base/export.h"

namespace kq_base {

/// The library's seam to the file system. Paths are library paths (platform/base/paths.h): code page 1250, either
/// separator, a file's name in any case. Where an operation fails it says why in a Czech text for users, without the
/// path.
class KQ_API CDisk {
public:
    /// The most bytes that a file may have to be read.
    static constexpr std::uint32_t kMaxSize = 0xFFFFFFFF;

    virtual ~CDisk();

    /// Reads a whole file. A directory, a file above kMaxSize and a pipe that nobody writes to are failures; content
    /// is unspecified then.
    virtual bool Read(std::string_view path, std::string &content, std::string &error) = 0;
    /// Replaces a file's content as a whole, or creates the file. On failure the old content stays.
    virtual bool Save(std::string_view path, std::string_view content, std::string &error) = 0;
    /// Removes a file.
    virtual bool Delete(std::string_view path, std::string &error) = 0;
    /// True for anything that the path names, directories included.
    virtual bool Exists(std::string_view path) = 0;
    /// True for a directory, also through a link.
    virtual bool IsDirectory(std::string_view path) = 0;
    /// The names of the files in a directory that match a pattern with `*` and `?`, such as "*.dll", whatever their
    /// case; sorted by their bytes in capitals.
    virtual bool List(std::string_view directory, std::string_view pattern, std::vector<std::string> &names,
                      std::string &error) = 0;

    /// The disk that the library works on: the real one, unless a test has installed another one.
    static CDisk &Current();
    /// Installs a disk, not owned; null brings the real one back.
    static void Replace(CDisk *disk);
};

}  // namespace kq_base
