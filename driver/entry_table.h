#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

#include "driver/kq_driver.h"
#include "driver/kq_driver_w.h"

/// The entries of a driver module: the one list of them, which the proxy, the inspector and tools go through.
namespace kq_drv {

/// Whether a module needs an entry.
enum class TEntryNeed : std::uint8_t {
    kEitherWidth,  ///< needed to look at a module, in one of the two text widths
    kNeeded,       ///< needed in the module's text width, like one of each of the three groups that follow
    kOneOfSetUp,
    kOneOfInput,
    kOneOfOutput,
    kOptional,
    kDeviceSearch,  ///< optional, and no part of a driver: the module has these three for a configurator
};

// ENTRY(name, need, generation, texts). The order is that in which entries are looked up, and so that in which a
// missing one is reported; the members of a group follow each other. The generation is the one that an entry marks, 0
// for none. Texts says that the form of the entry depends on the text width.
#define KQ_DRIVER_ENTRIES(ENTRY)                     \
    ENTRY(GetDriverInfo, kEitherWidth, 0, true)      \
    ENTRY(Version, kEitherWidth, 0, false)           \
    ENTRY(Check, kEitherWidth, 0, true)              \
    ENTRY(MakeDriver, kNeeded, 0, false)             \
    ENTRY(DisposeDriver, kNeeded, 0, false)          \
    ENTRY(Init, kOneOfSetUp, 1, true)                \
    ENTRY(Init3, kOneOfSetUp, 3, true)               \
    ENTRY(ReadParameters, kOptional, 3, true)        \
    ENTRY(QueryErrorCode, kOptional, 0, true)        \
    ENTRY(EnumerateChannels, kOptional, 0, false)    \
    ENTRY(GetChannelDescription, kOptional, 0, true) \
    ENTRY(Run, kOptional, 0, false)                  \
    ENTRY(Stop, kOptional, 0, false)                 \
    ENTRY(Done, kNeeded, 0, false)                   \
    ENTRY(BufferInfo, kOptional, 0, false)           \
    ENTRY(SetBufferAddr, kOptional, 0, false)        \
    ENTRY(InputRequestStart, kOptional, 0, false)    \
    ENTRY(InputRequest, kNeeded, 0, false)           \
    ENTRY(InputRequestCompleted, kNeeded, 0, false)  \
    ENTRY(InputFinalized, kNeeded, 0, false)         \
    ENTRY(InputOOBDataQuery, kOptional, 0, false)    \
    ENTRY(OutputRequestStart, kOptional, 0, false)   \
    ENTRY(OutputRequestCompleted, kNeeded, 0, false) \
    ENTRY(OutputFinalized, kNeeded, 0, false)        \
    ENTRY(DriverProc, kNeeded, 0, false)             \
    ENTRY(GetInput, kOneOfInput, 1, false)           \
    ENTRY(GetInput2, kOneOfInput, 2, false)          \
    ENTRY(GetInput3, kOneOfInput, 3, false)          \
    ENTRY(OutputRequest, kOneOfOutput, 1, false)     \
    ENTRY(OutputRequest2, kOneOfOutput, 2, false)    \
    ENTRY(OutputRequest3, kOneOfOutput, 3, false)    \
    ENTRY(QueryProc, kOptional, 1, false)            \
    ENTRY(QueryProc3, kOptional, 3, false)

/// The entries that a proxy or an inspector calls, by their index in kEntryTable.
enum class TEntry : std::uint8_t {
#define KQ_ENUMERATOR(name, need, generation, texts) k##name,
    KQ_DRIVER_ENTRIES(KQ_ENUMERATOR)
#undef KQ_ENUMERATOR
        kCount
};

struct TEntryRow {
    const char *name;
    const char *wide_name;
    TEntryNeed need;
    std::uint8_t generation;
    bool texts;

    const char *NameIn(bool wide) const { return wide ? wide_name : name; }
};

inline constexpr std::array kEntryTable = {
#define KQ_ROW(name, need, generation, texts) TEntryRow{#name, #name "W", TEntryNeed::need, generation, texts},
    KQ_DRIVER_ENTRIES(KQ_ROW)
#undef KQ_ROW
        TEntryRow{"LoadModulesTree", "LoadModulesTreeW", TEntryNeed::kDeviceSearch, 0, true},
    TEntryRow{"PutModulesToPar", "PutModulesToPar", TEntryNeed::kDeviceSearch, 0, false},
    TEntryRow{"DoneTreeData", "DoneTreeData", TEntryNeed::kDeviceSearch, 0, false},
};

/// The function type of an entry in a module whose texts have this character.
template <TEntry Entry, typename TCharacter>
struct TEntryForm;
#define KQ_FORM_OF(name, need, generation, texts)  \
    template <>                                    \
    struct TEntryForm<TEntry::k##name, char> {     \
        using Type = KQ##name##Entry;              \
    };                                             \
    template <>                                    \
    struct TEntryForm<TEntry::k##name, char16_t> { \
        using Type = KQ##name##EntryW;             \
    };                                             \
    static_assert(std::is_same_v<KQ##name##Entry, KQ##name##EntryW> != (texts), "the form of " #name);
KQ_DRIVER_ENTRIES(KQ_FORM_OF)
#undef KQ_FORM_OF
#undef KQ_DRIVER_ENTRIES

using TEntryGroup = std::span<const TEntryRow>;

/// Does a driver need one of the group's entries in its own text width?
inline bool IsNeeded(TEntryGroup group) {
    return group.front().need >= TEntryNeed::kNeeded && group.front().need <= TEntryNeed::kOneOfOutput;
}

/// Gives the groups of entries in the order of the table to a function, an entry outside the three groups by itself,
/// until the function answers false. False then.
template <typename TVisit>
bool VisitEntryGroups(TVisit visit) {
    for (std::size_t first = 0; first < kEntryTable.size();) {
        const TEntryNeed need = kEntryTable[first].need;
        std::size_t count = 1;
        while (need >= TEntryNeed::kOneOfSetUp && need <= TEntryNeed::kOneOfOutput &&
               kEntryTable[first + count].need == need) {
            ++count;
        }
        if (!visit(TEntryGroup(kEntryTable).subspan(first, count))) {
            return false;
        }
        first += count;
    }
    return true;
}

/// The names of a group as messages have them: those of the module's width, or of both where either will do.
inline std::string GroupNames(TEntryGroup group, bool wide) {
    if (group.front().need == TEntryNeed::kEitherWidth) {
        return std::string(group.front().name).append(", ").append(group.front().wide_name);
    }
    std::string names;
    for (const TEntryRow &row : group) {
        names.append(names.empty() ? "" : ", ").append(row.NameIn(wide));
    }
    return names;
}

}  // namespace kq_drv
