#pragma once

#include <string_view>

#include "platform/base/code_page.h"
#include "template/language/texts.h"

/// The texts for users of the template compiler.
namespace kq_pdt::texts {

using namespace kq_base::literals;

inline constexpr std::string_view kExpectedOneOf = "Očekáváno jedno z "_cp;
inline constexpr std::string_view kNoChannelsHere = "V tomto PARu nelze definovat kanály"_cp;
inline constexpr std::string_view kUndeclared = "Nedefinovaný identifikátor."_cp;
inline constexpr std::string_view kSecondDependOn = "Vic jak jeden depend_on"_cp;
inline constexpr std::string_view kBadGroup = "Chybná definice channels_group"_cp;
inline constexpr std::string_view kFunctionExpected = "Očekávána funkce"_cp;
inline constexpr std::string_view kBadVersion = "Chybná verze kq_pdt.dll"_cp;
inline constexpr std::string_view kAmbiguous = "Nejednoznačný výraz, použijte závorky"_cp;
inline constexpr std::string_view kTooComplex = "Příliš složitý výraz"_cp;

}  // namespace kq_pdt::texts
