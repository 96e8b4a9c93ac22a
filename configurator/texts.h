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

inline constexpr std::string_view kCondition = "Podmínka: "_cp;
inline constexpr std::string_view kPresentValues = ". Nyní: "_cp;
inline constexpr std::string_view kNoValue = "nedefinován"_cp;
inline constexpr std::string_view kNewChannelValue = "nové číslo kanálu"_cp;
inline constexpr std::string_view kTrue = "pravda"_cp;
inline constexpr std::string_view kFalse = "nepravda"_cp;
inline constexpr std::string_view kOfRow = ", řádek "_cp;
inline constexpr std::string_view kOfSection = ", sekce "_cp;

inline constexpr std::string_view kRowNotWritten = "Řádek nemá žádnou hodnotu k zápisu, v souboru nebude"_cp;
inline constexpr std::string_view kRowWithoutName = "Řádek nemá název, pod kterým by se načetl"_cp;
inline constexpr std::string_view kRowBroken =
    "Text obsahuje znaky, které soubor neudrží: apostrof, závorku, komentář nebo konec řádku"_cp;
inline constexpr std::string_view kRowNameLong = "Název je příliš dlouhý, ostatní řádky sekce by se nenačetly"_cp;
inline constexpr std::string_view kRowNameUnknown = "Název se ze souboru načte jinak, než je v šabloně"_cp;
inline constexpr std::string_view kRowNameTaken =
    "Stejný název má i jiný parametr šablony, hodnoty se načtou do něj"_cp;
inline constexpr std::string_view kRowOverwritten = "Stejný název má i jiný řádek, jeho hodnoty tyto přepíšou"_cp;
inline constexpr std::string_view kValueEmpty = " je prázdná a není volitelná"_cp;
inline constexpr std::string_view kValueRefused = " se ze souboru nenačte, text nevyhovuje šabloně: "_cp;
inline constexpr std::string_view kValueDiffers = " se ze souboru načte jako "_cp;
inline constexpr std::string_view kValueSeparated = " (mezera a čárka oddělují hodnoty)"_cp;
inline constexpr std::string_view kValueWord = "Hodnota"_cp;

}  // namespace kq_pdt::texts
