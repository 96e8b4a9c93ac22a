#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/base/export.h"

namespace kq_base {

/// Reads a whole text as an unsigned decimal number of 32 bits: digits only, no sign, no blanks. False, with the number
/// untouched, for anything else and for numbers above 4294967295.
KQ_API bool ParseDecimal(std::string_view text, std::uint32_t &number);

/// The decimal digits of a number.
KQ_API std::string DecimalText(std::uint32_t number);

}  // namespace kq_base
