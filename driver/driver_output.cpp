// Values to the driver, and questions with their answers.

#include "driver/counted_answer.h"
#include "driver/driver_proxy.h"
#include "driver/driver_state.h"

namespace kq_drv {
namespace {

using kq_def::TValue;

bool HoldsString(const TValue &value) { return value.tag == kq_def::kTagDString; }

/// One call of OutputRequest, but for the value.
struct TOutputCall {
    std::uint32_t channel;
    std::uint32_t status;
    kq_def::TUTCStamp *stamp;
};

inline void CallEntry(const TDriverState &state, const TOutputCall &call, const TValue &value) {
    if (state.stamped_output != nullptr) {
        state.stamped_output(state.driver, call.channel, value, call.status, call.stamp);
    } else {
        state.entries.Get<TEntry::kOutputRequest>()(state.driver, call.channel, value);
    }
}

/// False if memory is short.
template <typename TCharacter>
bool OutputString(const TDriverState &state, CTextRoom<TCharacter> &room, const TOutputCall &call,
                  const TDStringA *string) {
    if (state.output == TForm::kThird) {
        TValue counted;
        if (!room.ForDriver(string, CTextRoom<TCharacter>::TRole::kIn, counted)) {
            return false;
        }
        CallEntry(state, call, counted);
    } else {
        TShortText<TCharacter> text(ViewOf(string));
        CallEntry(state, call, ShortTextValue(text.Data()));
    }
    return true;
}

/// A string, any value to a driver of generation 1, and any without a driver. A function of its own, so that the
/// scalars of other drivers don't pay for its frame.
[[gnu::noinline]] bool OutputOther(const TDriverState &state, std::uint32_t &code, std::uint32_t channel, TValue value,
                                   std::uint32_t status, kq_def::TUTCStamp *stamp) {
    if (state.output == TForm::kNone) {
        code = kNoOutputRequest;
        return false;
    }
    if (!HoldsString(value)) {
        CallEntry(state, {channel, status, stamp}, value);
        return true;
    }
    const bool done = state.UseRoom([&](auto &room) {
        return OutputString(state, room, {channel, status, stamp}, ValueDString(value));
    });
    if (!done) {
        code = kRoomNotGrown;
    }
    return done;
}

/// A question or answer with a string in it, to a driver of generation 3. A value without a string passes as it is.
template <typename TCharacter>
void QueryCounted(const TDriverState &state, CTextRoom<TCharacter> &room, std::uint32_t &code, TValue in, TValue *out) {
    using TRole = typename CTextRoom<TCharacter>::TRole;
    if (HoldsString(in) && !room.ForDriver(ValueDString(in), TRole::kIn, in)) {
        code = kRoomNotGrown;
        return;
    }
    if (!HoldsString(*out)) {
        state.entries.Get<TEntry::kQueryProc3>()(state.driver, in, *out, out);
        return;
    }
    TValue present;
    if (!room.ForDriver(ValueDString(*out), TRole::kOut, present)) {
        code = kRoomNotGrown;
        return;
    }
    TakeCountedAnswer(room, code, out, [&](TValue *record) {
        state.entries.Get<TEntry::kQueryProc3>()(state.driver, in, present, record);
    });
}

/// The same to a driver of generation 1, which writes its answer over the present text.
template <typename TCharacter>
void QueryShort(const TDriverState &state, CTextRoom<TCharacter> &room, std::uint32_t &code, TValue in, TValue *out) {
    TShortText<TCharacter> in_text(ViewOf(ValueDString(in)));
    if (HoldsString(in)) {
        in = ShortTextValue(in_text.Data());
    }
    if (!HoldsString(*out)) {
        state.entries.Get<TEntry::kQueryProc>()(state.driver, in, out);
        return;
    }
    TShortText<TCharacter> out_text(ViewOf(ValueDString(*out)));
    TValue record = ShortTextValue(out_text.Data());
    state.entries.Get<TEntry::kQueryProc>()(state.driver, in, &record);
    if (record.GetField<const TCharacter *>(TValue::kDStringAt) != out_text.Data()) {
        code = kForeignText;
        return;
    }
    if (!room.Deliver(out_text.View(), out)) {
        code = kRoomNotGrown;
    }
}

}  // namespace

bool CDriver::OutputRequest(std::uint32_t &code, std::uint32_t channel, TValue value, std::uint32_t status,
                            kq_def::TUTCStamp *stamp) {
    const TDriverState &state = *state_;
    if (state.stamped_output == nullptr || HoldsString(value)) {
        return OutputOther(state, code, channel, value, status, stamp);
    }
    state.stamped_output(state.driver, channel, value, status, stamp);
    return true;
}

bool CDriver::QueryProc(std::uint32_t &code, TValue in, TValue *out) {
    const TDriverState &state = *state_;
    const bool third = state.query == TForm::kThird;
    if (state.query == TForm::kNone) {
        code = kNoQueryProc;
        return false;
    }
    if (!HoldsString(in) && !HoldsString(*out)) {
        if (third) {
            state.entries.Get<TEntry::kQueryProc3>()(state.driver, in, *out, out);
        } else {
            state.entries.Get<TEntry::kQueryProc>()(state.driver, in, out);
        }
        return true;
    }
    code = 0;
    state.UseRoom([&](auto &room) {
        third ? QueryCounted(state, room, code, in, out) : QueryShort(state, room, code, in, out);
        return true;
    });
    return code == 0;
}

}  // namespace kq_drv
