#pragma once

#include "platform/base/code_page.h"

/// The texts for users of the channel map and the table of channels.
namespace kq_drv::texts {

using namespace kq_base::literals;

// Reading and asking a channel map.
inline constexpr std::string_view kBadMapNumber = "Nesprávné číslo v mapovacím souboru"_cp;
inline constexpr std::string_view kBoundsReversed = "Horní mez rozsahu je větší než dolní mez"_cp;
inline constexpr std::string_view kUnknownType = "Neznámý typ"_cp;
inline constexpr std::string_view kTypeExpected = "Očekáváno jméno typu"_cp;
inline constexpr std::string_view kUnknownDirection = "Neznámý směr"_cp;
inline constexpr std::string_view kDirectionExpected = "Očekáváno jméno směru"_cp;
inline constexpr std::string_view kRedefined = "Číslo kanálu redefinováno"_cp;
inline constexpr std::string_view kTooManyBlocks = "Ovladač vypisuje příliš mnoho bloků kanálů"_cp;
inline constexpr std::string_view kNoMapMemory = "Nedostatek paměti"_cp;
inline constexpr std::string_view kNoMapFile = "Nenalezen mapovací soubor"_cp;
inline constexpr std::string_view kBadChannel = "Nesprávné číslo kanálu"_cp;
inline constexpr std::string_view kBadDirection = "Nesprávný směr kanálu"_cp;
inline constexpr std::string_view kBadType = "Nesprávný typ kanálu"_cp;

// Laying definitions over the table of channel ranges.
inline constexpr std::string_view kDefinedTwice = "Vícenásobná definice kanálu v PAR souboru "_cp;
inline constexpr std::string_view kDefinedTwiceFrom = "Vícenásobná definice kanálu v PAR souboru, kanály od:"_cp;
inline constexpr std::string_view kDefinedTwiceTo = " do:"_cp;
inline constexpr std::string_view kChannel = "kanál:"_cp;
inline constexpr std::string_view kOtherType = " chybný typ"_cp;
inline constexpr std::string_view kOtherDirection = " chybný směr"_cp;
inline constexpr std::string_view kUseRepair = " použijte volbu \"opravit DMF podle konfigurace\" z menu Nástroje."_cp;
inline constexpr std::string_view kMapDiffers = "Definice kanálů v PAR souboru nesouhlasí s definicí v DMF:"_cp;
inline constexpr std::string_view kMapOverlaps = "Kanály definované v DMF se překrývají: "_cp;
inline constexpr std::string_view kMapRepeats = "Kanály v mapovacím souboru ovladače definovany duplicitně:"_cp;
inline constexpr std::string_view kUndefined = "<nedefinován>"_cp;

}  // namespace kq_drv::texts
