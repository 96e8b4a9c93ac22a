#pragma once

#include <string_view>

#include "platform/base/code_page.h"

/// The texts for users of everything that reads keywords: what was due, and the names of the token kinds.
namespace kq_pdt::texts {

using namespace kq_base::literals;

inline constexpr std::string_view kExpected = "Očekáván "_cp;
inline constexpr std::string_view kIdentifier = "identifikátor"_cp;
inline constexpr std::string_view kString = "řetězec"_cp;
inline constexpr std::string_view kNumber = "číslo"_cp;

}  // namespace kq_pdt::texts
