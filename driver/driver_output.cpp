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
    if (state.output == EForm::kThird) {
        state.entries.Get<TEntry::kOutputRequest3>()(state.driver, call.channel, value, call.status, call.stamp);
    } else if (state.output == EForm::kSecond) {
        state.entries.Get<TEntry::kOutputRequest2>()(state.driver, call.channel, value, call.status, call.stamp);
    } else {
        state.entries.Get<TEntry::kOutputRequest>()(state.driver, call.channel, value);
    }
}

template <typename TCharacter>
void OutputString(const TDriverState &state, CTextRoom<TCharacter> &room, const TOutputCall &call,
                  const TDStringA *string) {
    if (state.output == EForm::kThird) {
        const auto text = room.ForDriver(string, room.kIn);
        CallEntry(state, call, CountedValue(text.data(), text.size()));
    } else {
        TShortText<TCharacter> text(ViewOf(string));
        CallEntry(state, call, ShortTextValue(text.Data()));
    }
}

/// A string, and any value without a driver. A function of its own, so that other values don't pay for its frame.
[[gnu::noinline]] bool OutputOther(const TDriverState &state, std::uint32_t &code, std::uint32_t channel, TValue value,
                                   std::uint32_t status, kq_def::TUTCStamp *stamp) {
    if (state.output == EForm::kNone) {
        code = kNoOutputRequest;
        return false;
    }
    return state.UseRoom([&](auto &room) {
        OutputString(state, room, {channel, status, stamp}, ValueDString(value));
        return true;
    });
}

/// A question or answer with a string in it, to a driver of generation 3. A place without a string passes as it is.
template <typename TCharacter>
void QueryCounted(const TDriverState &state, CTextRoom<TCharacter> &room, std::uint32_t &code, TValue in, TValue *out) {
    if (HoldsString(in)) {
        const auto text = room.ForDriver(ValueDString(in), room.kIn);
        in = CountedValue(text.data(), text.size());
    }
    if (!HoldsString(*out)) {
        state.entries.Get<TEntry::kQueryProc3>()(state.driver, in, *out, out);
        return;
    }
    const auto text = room.ForDriver(ValueDString(*out), room.kOut);
    const TValue present = CountedValue(text.data(), text.size());
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
    room.Deliver(out_text.View(), out);
}

}  // namespace

bool CDriver::OutputRequest(std::uint32_t &code, std::uint32_t channel, TValue value, std::uint32_t status,
                            kq_def::TUTCStamp *stamp) {
    const TDriverState &state = *state_;
    if (HoldsString(value) || state.output == EForm::kNone) {
        return OutputOther(state, code, channel, value, status, stamp);
    }
    CallEntry(state, {channel, status, stamp}, value);
    return true;
}

bool CDriver::QueryProc(std::uint32_t &code, TValue in, TValue *out) {
    const TDriverState &state = *state_;
    const bool third = state.query == EForm::kThird;
    if (state.query == EForm::kNone) {
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
