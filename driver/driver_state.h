#pragma once

#include <cstdint>
#include <memory>

#include "driver/component_helper.h"
#include "driver/driver_entries.h"
#include "driver/text_room.h"
#include "platform/base/bounded_text.h"

namespace kq_drv {

/// Which form of an entry serves a value, by its generation.
enum class TForm : std::uint8_t { kNone, kFirst, kSecond, kThird };

/// What a proxy holds. A copy has the same driver and the same rooms for strings.
struct TDriverState {
    // First what a value passes by. The forms are settled when the driver is made, and say kNone as long as there is
    // none.
    void *driver = nullptr;
    KQOutputRequest3Entry *stamped_output = nullptr;  ///< of generation 3 or 2, whose forms are the same; null without
    TForm input = TForm::kNone;
    TForm output = TForm::kNone;
    TForm query = TForm::kNone;
    CDriverEntries entries;  ///< also what was found before an entry that is missing

    std::shared_ptr<CTextRoom<char>> room;  ///< of the two rooms only the one of the module's width is ever there
    std::shared_ptr<CTextRoom<char16_t>> wide_room;

    void *module = nullptr;
    CDriverComponentDLLHelper helper;
    std::uint32_t instance = 0;
    kq_base::TBoundedText<63> name;

    /// Calls an entry with the driver and what follows, if the module has it and there is a driver; else gives what an
    /// entry of that form would give as 0.
    template <TEntry Entry, typename TCharacter = char, typename... TArguments>
    auto Forward(TArguments... arguments) const {
        auto *const entry = entries.Get<Entry, TCharacter>();
        using TResult = decltype(entry(driver, arguments...));
        return Reaches<Entry>() ? entry(driver, arguments...) : TResult();
    }
    /// Would Forward call?
    template <TEntry Entry>
    bool Reaches() const {
        return entries.Get<Entry>() != nullptr && driver != nullptr;
    }
    /// Are the texts of the module, in which there is a driver, 16 bits wide?
    bool IsWide() const { return wide_room != nullptr; }

    /// Leaves the driver; from now on no operation reaches it.
    void Forget() {
        driver = nullptr;
        stamped_output = nullptr;
        input = output = query = TForm::kNone;
        room = nullptr;
        wide_room = nullptr;
    }

    /// Calls with the room of the driver's width. False without one.
    template <typename TUse>
    bool UseRoom(TUse use) const {
        return wide_room != nullptr ? use(*wide_room) : room != nullptr && use(*room);
    }
};

}  // namespace kq_drv
