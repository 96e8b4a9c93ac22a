#pragma once

#include <string>
#include <string_view>

#include "platform/base/export.h"

/// The border between library paths and the file system.
///
/// The file system's names are UTF-8 as a rule, the library's are code page 1250. The library reads a name
/// in one of two ways: if its bytes are valid UTF-8 (plain ASCII is, Czech letters in code page 1250 practically
/// never are), it is the file system's name unchanged; otherwise it is code page 1250. If no file has that name, the
/// other reading is tried. So names from templates, from the file system and from a command line all find their file,
/// even one whose name the code page can't show or that isn't valid UTF-8. Each name of a path is read by itself.
namespace kq_base {

/// The library's form of a name from the file system: code page 1250 where it leads back to the same name, else the
/// bytes as they are.
KQ_API std::string FromFileSystem(std::string_view name);

/// The file system's path of a library path. The file's name is looked for as written, then ignoring case in the same
/// directory (of several, the first in byte order); names of directories as written only. Without such a file the path
/// is the one under which it should be made.
KQ_API std::string LocateFile(std::string_view path);

}  // namespace kq_base
