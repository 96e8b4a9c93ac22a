#pragma once

#include <cstdint>

#include "driver/driver_proxy.h"
#include "driver/text_room.h"

namespace kq_drv {

/// Takes a string from a driver of generation 3: the call gives it a record with the room for the text, and it leaves
/// the text's length there, or null and the size that it needs. Then it is called again, once, with that much room. The
/// text goes to the value. False with a code, the driver's or one of TDriverCode.
template <typename TCharacter, typename TCall>
bool TakeCountedAnswer(CTextRoom<TCharacter> &room, std::uint32_t &code, kq_def::TValue *value, TCall call) {
    for (bool retried = false;; retried = true) {
        kq_def::TValue record = CountedValue(room.Data(), room.Capacity());
        call(&record);
        if (code != 0) {
            return false;
        }
        const auto count = record.GetField<std::uint32_t>(kq_def::TValue::kCountAt);
        const auto *text = record.GetField<const TCharacter *>(kq_def::TValue::kCharactersAt);
        if (text != nullptr) {
            // A count above the room would be text that isn't in the room either.
            if (text != room.Data() || count > room.Capacity()) {
                code = kForeignText;
                return false;
            }
            if (!room.Deliver({text, count}, value)) {
                code = kRoomNotGrown;
                return false;
            }
            return true;
        }
        if (retried || !room.Grow(count)) {
            code = retried ? kRoomTwice : kRoomNotGrown;
            return false;
        }
    }
}

}  // namespace kq_drv
