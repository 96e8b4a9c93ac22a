#pragma once

#include "platform/base/code_page.h"

/// The model's texts for users.
namespace kq_pdt::texts {

using namespace kq_base::literals;

inline constexpr std::string_view kNoneText = "<nedefinován>"_cp;

inline constexpr std::string_view kUnknownSection = "Nerozpoznaná sekce: "_cp;
inline constexpr std::string_view kUnknownKey = "Nerozpoznaný parametr:"_cp;
inline constexpr std::string_view kUnknownKeyComment = "Nerozpoznaný parametr"_cp;
inline constexpr std::string_view kBadParameter = "Chybná definice parametru:"_cp;
inline constexpr std::string_view kValueOfParameter = "hodnota:"_cp;
inline constexpr std::string_view kMissingSection = "Chybí povinná sekce: "_cp;

inline constexpr std::string_view kNoChannelNumbers = "Chybí definice čísel kanálů v PDT."_cp;
inline constexpr std::string_view kNoChannelTo = "Chybí definice parametru ch_to v PDT."_cp;
inline constexpr std::string_view kZeroChannels = "Nulový počet kanálů."_cp;
inline constexpr std::string_view kBoundsReversed = "Horní index bloku kanálů je větší než dolní index."_cp;
inline constexpr std::string_view kBadChannelTitle = "Chybné číslo kanálu"_cp;
inline constexpr std::string_view kBadChannel = "Zadané číslo kanálu není platné."_cp;

inline constexpr std::string_view kCannotChange = "Hodnotu nelze změnit"_cp;
inline constexpr std::string_view kCannotCreate = "Nelze vytvořit kanál, chybná definice skupiny v PDT"_cp;

inline constexpr std::string_view kCannotOpenTemplate = "Nelze otevřít PDT soubor."_cp;
inline constexpr std::string_view kTemplateTooDeep = "Šablony modulů se načítají navzájem."_cp;
inline constexpr std::string_view kTemplateBoxTitle = "PDT"_cp;
inline constexpr std::string_view kTemplateBoxError = "Chyba při čtení definice PARu:"_cp;
inline constexpr std::string_view kTemplateBoxLine = " řádek:"_cp;
inline constexpr std::string_view kTemplateBoxPosition = " pozice:"_cp;

}  // namespace kq_pdt::texts
