#pragma once

#include <cstdint>
#include <memory>

#include "driver/component_helper.h"
#include "driver/driver_entries.h"
#include "driver/text_room.h"
#include "platform/base/bounded_text.h"

namespace kq_drv {

/// Which form of an entry serves a value, by its generation.
enum class TEntryForm : std::uint8_t { kNone, kFirst, kSecond, kThird };

/// What a proxy holds. A copy has the same driver and the same rooms for strings.
struct TDriverState {
    // First what a value passes by. The forms are settled when the driver is made, and say kNone as long as there is
    // none.
    void *driver = nullptr;
    TEntryForm input = TEntryForm::kNone;
    TEntryForm output = TEntryForm::kNone;
    TEntryForm query = TEntryForm::kNone;
    TDriverEntries entries;  ///< also what was found ahead of an entry that is missing

    std::shared_ptr<CTextRoom<char>> room;  ///< of the two rooms only the one of the module's width is ever there
    std::shared_ptr<CTextRoom<char16_t>> wide_room;

    void *module = nullptr;
    CDriverComponentDLLHelper helper;
    std::uint32_t instance = 0;
    kq_base::TBoundedText<63> name;

    /// Calls an entry with the driver and what follows, if the module has it and there is a driver; else gives what an
    /// entry of that form would give as 0.
    template <typename TResult, typename... TParameters, typename... TArguments>
    TResult Forward(TResult (*entry)(void *, TParameters...), TArguments... arguments) const {
        return Reaches(entry) ? entry(driver, arguments...) : TResult();
    }
    /// Would Forward call?
    template <typename TForm>
    bool Reaches(TForm *entry) const {
        return entry != nullptr && driver != nullptr;
    }

    /// Calls with the room of the driver's width. False without one.
    template <typename TUse>
    bool UseRoom(TUse use) const {
        return wide_room != nullptr ? use(*wide_room) : room != nullptr && use(*room);
    }
};

}  // namespace kq_drv
