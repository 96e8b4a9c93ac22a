#pragma once

#include "platform/base/code_page.h"

/// The configurator's texts for users.
namespace kq_pdt::texts {

using namespace kq_base::literals;

inline constexpr std::string_view kAddRow = "<přidat>"_cp;
inline constexpr std::string_view kSectionsColumn = "Sekce parametrů"_cp;
inline constexpr std::string_view kParameterColumn = "Parametr"_cp;
inline constexpr std::string_view kValueColumn = "Hodnota"_cp;
inline constexpr std::string_view kCommentColumn = "Popis"_cp;

inline constexpr std::string_view kNoChannels = "Nedefinovány žádné kanály"_cp;
inline constexpr std::string_view kFirstColumn = "Dolní index"_cp;
inline constexpr std::string_view kLastColumn = "Horní index"_cp;
inline constexpr std::string_view kTypeColumn = "Datový typ"_cp;
inline constexpr std::string_view kDirectionColumn = "Směr"_cp;

inline constexpr std::string_view kStepValue = "Změna hodnoty"_cp;
inline constexpr std::string_view kStepAddSection = "Přidání sekce"_cp;
inline constexpr std::string_view kStepAddKey = "Přidání parametru"_cp;
inline constexpr std::string_view kStepDeleteSection = "Odstranění sekce"_cp;
inline constexpr std::string_view kStepDeleteKey = "Odstranění parametru"_cp;
inline constexpr std::string_view kStepChannel = "Změna kanálu"_cp;

}  // namespace kq_pdt::texts
