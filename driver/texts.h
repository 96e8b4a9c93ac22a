#pragma once

#include "platform/base/code_page.h"

/// The texts for users of driver access.
namespace kq_drv::texts {

using namespace kq_base::literals;

// Looking at a driver module and making a driver.
inline constexpr std::string_view kEntryMissing = " procedura nebyla nalezena v souboru "_cp;
inline constexpr std::string_view kNotADriver = "DLL ovladače nevyváží požadované rozhraní: "_cp;
inline constexpr std::string_view kNoMemory = "Nedostatek paměti"_cp;
inline constexpr std::string_view kNoDriverMade = " : Nelze vytvořit ovladač."_cp;

}  // namespace kq_drv::texts
