#pragma once

#include <string>

#include "platform/base/export.h"

namespace kq_base {

/// Reasons beside the error numbers of the operating system, which are all above 0.
inline constexpr int kErrorNoDirectory = -1;  ///< the directory that is to hold the file
inline constexpr int kErrorNotAFile = -2;     ///< a socket, a disk device

/// Why an operation on a file failed, for users: the text of an error number or of one of the reasons above.
KQ_API std::string FileErrorText(int error_number);

}  // namespace kq_base
