#pragma once

#include <string_view>

#include "platform/base/code_page.h"

/// The texts for users of the file operations: why one failed.
namespace kq_base::texts {

using namespace kq_base::literals;

inline constexpr std::string_view kNoSuchFile = "Soubor neexistuje"_cp;
inline constexpr std::string_view kIsDirectory = "Je to adresář, ne soubor"_cp;
inline constexpr std::string_view kPartIsNoDirectory = "Část cesty není adresář"_cp;
inline constexpr std::string_view kAccessDenied = "Přístup odepřen"_cp;
inline constexpr std::string_view kDiskIsReadOnly = "Disk je jen pro čtení"_cp;
inline constexpr std::string_view kDiskIsFull = "Disk je plný"_cp;
inline constexpr std::string_view kQuotaIsUsedUp = "Je vyčerpán prostor přidělený na disku"_cp;
inline constexpr std::string_view kFileIsTooLarge = "Soubor je příliš velký"_cp;
inline constexpr std::string_view kDiskError = "Chyba při čtení nebo zápisu na disk"_cp;
inline constexpr std::string_view kNameIsTooLong = "Název souboru je příliš dlouhý"_cp;
inline constexpr std::string_view kLinksGoInCircles = "Symbolické odkazy tvoří kruh"_cp;
inline constexpr std::string_view kFileIsInUse = "Soubor používá jiný program"_cp;
inline constexpr std::string_view kTooManyFiles = "Je otevřeno příliš mnoho souborů"_cp;
inline constexpr std::string_view kNobodyAtTheOtherEnd = "Na druhé straně roury nikdo není"_cp;
inline constexpr std::string_view kNoMemory = "Nedostatek paměti"_cp;
inline constexpr std::string_view kNoSuchDirectory = "Adresář neexistuje"_cp;
inline constexpr std::string_view kNoRegularFile = "Není to obyčejný soubor"_cp;
inline constexpr std::string_view kSystemError = "Chyba systému "_cp;

inline constexpr std::string_view kContentNotRestored = "; původní obsah se nepodařilo vrátit: "_cp;

}  // namespace kq_base::texts
