#pragma once

#include "platform/base/code_page.h"

/// What the simulator says to people.
namespace simulator::texts {

using namespace kq_base::literals;

inline constexpr std::string_view kDriverInfo = "Simulátor signálů pro zkoušení aplikací, verze 3.0"_cp;

// Mistakes in the parameter file.
inline constexpr std::string_view kLine = "řádek "_cp;
inline constexpr std::string_view kNoFile = "Soubor parametrů nelze přečíst: "_cp;
inline constexpr std::string_view kNoSection = "Chybí sekce [Simulator]"_cp;
inline constexpr std::string_view kNoNumber = "hodnota má být číslo "_cp;
inline constexpr std::string_view kUpTo = " až "_cp;
inline constexpr std::string_view kUnknownWord = "neznámé slovo: "_cp;
inline constexpr std::string_view kTooMany = "přebytečná hodnota: "_cp;
inline constexpr std::string_view kBadSignal = "číslo signálu má být 1 až 99: "_cp;
inline constexpr std::string_view kSignalTwice = "signál je tu dvakrát: "_cp;
inline constexpr std::string_view kNoChannels = "kanály nelze přidělit od čísla "_cp;
inline constexpr std::string_view kChannelTwice = "kanál je už obsazen: "_cp;

// Codes.
inline constexpr std::string_view kUnknownChannel = "Simulátor takový kanál nemá"_cp;
inline constexpr std::string_view kWrongType = "Kanál simulátoru má jiný typ"_cp;
inline constexpr std::string_view kWrongDirection = "Kanál simulátoru má jiný směr"_cp;
inline constexpr std::string_view kNoBuffer = "Paměť pro kanál typu buffer nebyla simulátoru předána"_cp;
inline constexpr std::string_view kNoRecord = "Soubor záznamu nelze zapsat"_cp;

// Channels.
inline constexpr std::string_view kStart = "Řízení: start"_cp;
inline constexpr std::string_view kStop = "Řízení: stop"_cp;
inline constexpr std::string_view kStep = "Řízení: krok"_cp;
inline constexpr std::string_view kReset = "Řízení: nulování"_cp;
inline constexpr std::string_view kSteps = "Počet kroků"_cp;
inline constexpr std::string_view kReport = "Hlášení o všech signálech"_cp;
inline constexpr std::string_view kHistory = "Posledních 64 hodnot prvního signálu"_cp;

// Signals and the report on them.
inline constexpr std::string_view kSine = "sinus"_cp;
inline constexpr std::string_view kRamp = "pila"_cp;
inline constexpr std::string_view kSquare = "obdélník"_cp;
inline constexpr std::string_view kRandom = "náhoda"_cp;
inline constexpr std::string_view kSignal = "Signál "_cp;
inline constexpr std::string_view kPeriod = ", perioda "_cp;
inline constexpr std::string_view kPeriodUnit = " kroků"_cp;
inline constexpr std::string_view kDuty = ", střída "_cp;
inline constexpr std::string_view kLimits = ", meze 0 až "_cp;
inline constexpr std::string_view kAlarmFrom = ", poplach od "_cp;
inline constexpr std::string_view kNoise = ", šum "_cp;
inline constexpr std::string_view kReportAfter = "Hlášení simulátoru po kroku "_cp;
inline constexpr std::string_view kAlarm = "  poplach"_cp;

// The search.
inline constexpr std::string_view kSearching = "Hledá se na adrese "_cp;
inline constexpr std::string_view kOf = " z "_cp;
inline constexpr std::string_view kLeftOut = "(* Volná čísla signálů nebo kanálů nestačí pro: "_cp;
inline constexpr std::string_view kLastFound = "Poslední nalezené: "_cp;

}  // namespace simulator::texts
