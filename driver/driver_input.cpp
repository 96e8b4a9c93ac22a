// Values from the driver. Strings cross in the proxy's room, whose address the driver has no business to change.

#include "driver/counted_answer.h"
#include "driver/driver_proxy.h"
#include "driver/driver_state.h"

namespace kq_drv {
namespace {

using kq_def::TValue;

/// One call of GetInput, but for the value.
struct TInputCall {
    std::uint32_t &code;
    std::uint32_t channel;
    std::uint32_t &status;
    kq_def::TUTCStamp *stamp;
};

/// Lets the driver fill a value, in the form that it has. The status is left alone if the driver has none to give.
inline void CallEntry(const TDriverState &state, const TInputCall &call, TValue *value) {
    if (state.input == TForm::kThird) {
        state.entries.Get<TEntry::kGetInput3>()(state.driver, call.channel, value, &call.status, call.stamp,
                                                &call.code);
    } else if (state.input == TForm::kSecond) {
        state.entries.Get<TEntry::kGetInput2>()(state.driver, call.channel, value, &call.status, call.stamp);
    } else {
        state.entries.Get<TEntry::kGetInput>()(state.driver, call.channel, value);
    }
}

/// How much of a driver's text of generation 1 or 2 is read, whatever room it has.
constexpr std::size_t kShortInputLimit = 1023;

template <typename TCharacter>
bool InputString(const TDriverState &state, CTextRoom<TCharacter> &room, const TInputCall &call, TValue *value) {
    if (state.input == TForm::kThird) {
        return TakeCountedAnswer(room, call.code, value, [&](TValue *record) { CallEntry(state, call, record); });
    }
    *room.Data() = 0;  // or a driver that writes nothing would answer with the text of another channel
    TValue record = ShortTextValue(room.Data());
    CallEntry(state, call, &record);
    if (record.GetField<TCharacter *>(TValue::kDStringAt) != room.Data()) {
        call.code = kForeignText;
        return false;
    }
    if (!room.Deliver(kq_base::UpToTerminator(room.Data(), kShortInputLimit), value)) {
        call.code = kRoomNotGrown;
        return false;
    }
    return true;
}

bool InputBuffer(const TDriverState &state, const TInputCall &call, TValue *value) {
    const auto *memory = value->GetField<const void *>(TValue::kBufferAt);
    CallEntry(state, call, value);
    if (value->GetField<const void *>(TValue::kBufferAt) != memory) {
        call.code = kForeignBuffer;
        return false;
    }
    return true;
}

/// What isn't a scalar, and any value without a driver. A function of its own, so that scalars don't pay for its frame.
[[gnu::noinline]] bool InputOther(const TDriverState &state, std::uint32_t &code, std::uint32_t channel, TValue *value,
                                  std::uint32_t &status, kq_def::TUTCStamp *stamp) {
    const TInputCall call = {code, channel, status, stamp};
    bool done = false;
    if (state.input == TForm::kNone) {
        code = kNoGetInput;
    } else if (value->tag == kq_def::kTagBuffer) {
        done = InputBuffer(state, call, value);
    } else {
        done = state.UseRoom([&](auto &room) { return InputString(state, room, call, value); });
    }
    if (!done) {
        *value = TValue();
    }
    return code == 0;
}

}  // namespace

bool CDriver::GetInput(std::uint32_t &code, std::uint32_t channel, TValue *value, std::uint32_t &status,
                       kq_def::TUTCStamp *stamp) {
    constexpr std::uint32_t kNoStatus = 500;  // a driver of generation 1 has none to give
    const TDriverState &state = *state_;
    code = 0;
    if (value->tag == kq_def::kTagDString || value->tag == kq_def::kTagBuffer || state.input == TForm::kNone) {
        return InputOther(state, code, channel, value, status, stamp);
    }
    if (state.input == TForm::kFirst) {
        status = kNoStatus;
    }
    CallEntry(state, {code, channel, status, stamp}, value);
    return code == 0;
}

}  // namespace kq_drv
