#pragma once

#include "platform/base/code_page.h"

/// The configurator's texts for users.
namespace kq_pdt::texts {

using namespace kq_base::literals;

// The window: menus, buttons, tabs.

inline constexpr std::string_view kWindowTitle = "Zkoumadlo ovladače "_cp;
inline constexpr std::string_view kConfigurationMenu = "Konfigurace"_cp;
inline constexpr std::string_view kToolsMenu = "Nástroje"_cp;
inline constexpr std::string_view kHelpMenu = "Nápověda"_cp;
inline constexpr std::string_view kEditMenu = "Úpravy"_cp;
inline constexpr std::string_view kApply = "Použít"_cp;
inline constexpr std::string_view kSave = "Uložit"_cp;
inline constexpr std::string_view kClose = "Uzavřít"_cp;
inline constexpr std::string_view kSearchDevices = "Vyhledat zařízení"_cp;
inline constexpr std::string_view kRepairDmf = "Opravit DMF podle konfigurace"_cp;
inline constexpr std::string_view kDriverHelp = "Popis ovladače"_cp;
inline constexpr std::string_view kUndo = "Zpět"_cp;
inline constexpr std::string_view kRedo = "Znovu"_cp;
inline constexpr std::string_view kInsert = "Vložit"_cp;
inline constexpr std::string_view kAdd = "Přidat"_cp;
inline constexpr std::string_view kDelete = "Odstranit"_cp;
inline constexpr std::string_view kSheetTab = "Parametry"_cp;
inline constexpr std::string_view kTextTab = "Textový editor"_cp;
inline constexpr std::string_view kChannelsTitle = "Definované kanály"_cp;

// Opening.

inline constexpr std::string_view kOpenErrorTitle = "Chyba při otevírání souboru"_cp;
inline constexpr std::string_view kCannotOpenPar = "Nelze otevřít parametrický soubor ovladače."_cp;
inline constexpr std::string_view kParTitle = "Parametrický soubor"_cp;
inline constexpr std::string_view kCreatePar = "Vytvořit nový parametrický soubor?"_cp;
inline constexpr std::string_view kCannotOpenDmf = "Nelze otevřít mapovací soubor ovladače."_cp;
inline constexpr std::string_view kDmfTitle = "Mapovací soubor"_cp;
inline constexpr std::string_view kCreateDmf = "Vytvořit nový mapovací soubor?"_cp;
inline constexpr std::string_view kCannotCreateDmf = "Nelze vytvořit mapovací soubor ovladače."_cp;

// Translating.

inline constexpr std::string_view kTranslateTitle = "Překlad"_cp;
inline constexpr std::string_view kTranslating = "Překládají se data..."_cp;
inline constexpr std::string_view kErrorTitle = "Chyba"_cp;
inline constexpr std::string_view kOneError = "Při překladu nalezena chyba!"_cp;
inline constexpr std::string_view kManyErrors = "Při překladu nalezeny chyby!"_cp;
inline constexpr std::string_view kNotReadFromLine = "Text od řádku "_cp;
inline constexpr std::string_view kNotRead = " se nečte"_cp;
inline constexpr std::string_view kUndefinedTitle = "Neúplná definice kanálů"_cp;
inline constexpr std::string_view kUndefined1 = "Některé kanály namají definovaný typ nebo směr."_cp;
inline constexpr std::string_view kUndefined2 = "Pokud konfiguraci ovladače uložíte, nebude možné spustit aplikaci."_cp;
inline constexpr std::string_view kUndefined3 = "Pokračovat v ukládání?"_cp;

// Saving and closing.

inline constexpr std::string_view kCannotSaveTitle = "Nelze uložit"_cp;
inline constexpr std::string_view kCannotSaveDmf = "Nelze uložit mapovací soubor."_cp;
inline constexpr std::string_view kCannotSavePar = "Nelze uložit parametrický soubor."_cp;
inline constexpr std::string_view kUnsavedTitle = "Neuloženo"_cp;
inline constexpr std::string_view kUnsaved = "Neuložená konfigurace ovladače"_cp;
inline constexpr std::string_view kSaveNow = "Uložit nyní?"_cp;

// Repair.

inline constexpr std::string_view kRepairTitle = "Opravit DMF podle konfigurace?"_cp;
inline constexpr std::string_view kRepair1 =
    "Definice kanálů v mapovacím souboru bude nastavena podle aktuální konfigurace ovladače."_cp;
inline constexpr std::string_view kRepair2 =
    "Všechny nadbytečné kanály budou smazány, pokud takové kanály používáte v aplikaci nebude možné ji spustit!"_cp;
inline constexpr std::string_view kRepair3 = "Chcete skutečně pokračovat?"_cp;
inline constexpr std::string_view kReadErrorTitle = "Chyba při čtení konfigurace"_cp;
inline constexpr std::string_view kRepairFailed = "Oprava mapovacího souboru nebyla dokončena."_cp;
inline constexpr std::string_view kErrorsInPar = "V parametrech ovladače jsou chyby!"_cp;

// Device search.

inline constexpr std::string_view kSearching = "Vyhledávají se zařízení..."_cp;
inline constexpr std::string_view kSearchIsEnding = "Vyčkejte na dokončení vyhledávání."_cp;
inline constexpr std::string_view kCancel = "Storno"_cp;
inline constexpr std::string_view kNothingFound = "Nenalezeno žádné zařízení."_cp;
inline constexpr std::string_view kSearchFailed = "Vyhledání zařízení nebylo možné dokončit."_cp;

// Sheet, channels table and the steps in them.

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
inline constexpr std::string_view kStepText = "Úprava textu"_cp;
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
