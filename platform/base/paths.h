#pragma once

#include <string>
#include <string_view>

#include "platform/base/export.h"

/// Library paths: bytes in code page 1250 with `/` or `\` between the names. These operations work on the text alone
/// and keep the separators that they find.
namespace kq_base {

/// The directory's path, a separator unless it ends with one, and the name. An empty directory gives the name alone.
KQ_API std::string JoinPath(std::string_view directory, std::string_view name);
/// What precedes the last separator, without it; empty if there is none. The root stays "/".
KQ_API std::string_view DirectoryPart(std::string_view path);
/// What follows the last separator; the whole path if there is none.
KQ_API std::string_view FileNamePart(std::string_view path);
/// The path with another extension, which is given without its dot; a file name without one gets it. A dot in a
/// directory's name doesn't count.
KQ_API std::string ChangeExtension(std::string_view path, std::string_view extension);

/// True if a name matches a pattern in which `*` stands for any characters and `?` for any one. Case doesn't count.
KQ_API bool MatchesPattern(std::string_view name, std::string_view pattern);

}  // namespace kq_base
