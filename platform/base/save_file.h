#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/base/export.h"

namespace kq_base {

/// Replaces the content of a file, given by the file system's path, where it is: no temporary file is created, links
/// are followed, mode and owner stay. An equal content isn't written. Until the new one is on the disk the old one is
/// held, and put back if anything fails; a file that was only created for the save is removed then. False gives the
/// reason in a text for users. Devices and pipes simply get the bytes.
KQ_API bool SaveFile(const std::string &path, std::string_view content, std::string &error);

/// An open file as a save sees it. Each operation gives 0 or an error number.
class KQ_API CSaveTarget {
public:
    virtual ~CSaveTarget();
    /// Writes all bytes from an offset on; a failure may have written some.
    virtual int WriteAt(std::uint64_t offset, std::string_view bytes) = 0;
    /// Cuts the file to a size, or extends it with zeros.
    virtual int Resize(std::uint64_t size) = 0;
    /// Returns once everything written is on the disk, with any failure that the disk reports late.
    virtual int Sync() = 0;
};

/// How overwriting a file ended.
struct TSaveResult {
    int error = 0;          ///< 0, or why the new content couldn't be written
    int restore_error = 0;  ///< 0, or why the old content couldn't be put back either
};

/// Changes the content of a file from old_content, which it must have, to content.
KQ_API TSaveResult Overwrite(CSaveTarget &file, std::string_view old_content, std::string_view content);

}  // namespace kq_base
