#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "channels.h"
#include "driver/kq_def.h"
#include "parameters.h"
#include "recorder.h"
#include "step_clock.h"

namespace simulator {

/// What an operation answers; 0 is all well.
enum class TCode : std::uint32_t {
    kGood = 0,
    kUnknownChannel = 1,
    kWrongType = 2,
    kWrongDirection = 3,
    kNoBuffer = 4,
    kNoRecord = 5,
};

/// The bits of the status that comes with a value.
enum class TStatus : std::uint32_t {
    kAlarm = 1,   ///< the value has reached the alarm of its signal
    kForced = 2,  ///< the host has written it
};

/// The bytes of the buffer channel: the last 64 values of the first signal's first channel, the newest last, each as
/// a shortreal.
inline constexpr std::uint32_t kHistorySteps = 64;
inline constexpr std::uint32_t kHistorySize = kHistorySteps * sizeof(float);

/// One driver. Between two calls of Look it shows one and the same step.
class CSimulator {
public:
    bool ReadParameters(const char *path, TMistake &mistake);
    const CChannels &Channels() const { return channels_; }

    /// Nothing moves before this; then the host's start channel starts the steps.
    void Run() { ready_ = true; }
    void Stop();

    /// Goes to the present step.
    void Look();
    /// Did the record go well since the last Look?
    TCode Recorded() const { return recorded_; }

    /// Gives a channel's value in the form that the value's tag asks for. The value is untouched on failure.
    TCode Input(std::uint32_t channel, kq_def::TValue &value, std::uint32_t &status);
    TCode Output(std::uint32_t channel, const kq_def::TValue &value);

    /// May the host's memory of that size be the buffer of a channel?
    static bool AcceptsBuffer(std::uint32_t channel, std::uint32_t size);
    void SetBuffer(void *memory) { buffer_ = memory; }

    /// Answers the name of a signal, such as Signal1, with what it is; anything else with an empty text.
    std::string Answer(std::string_view question) const;

private:
    double SignalNow(const TBlock &block, std::uint32_t channel) const;
    TCode InputSignal(const TBlock &block, std::uint32_t channel, kq_def::TValue &value, std::uint32_t &status) const;
    TCode InputHistory(const kq_def::TValue &value) const;
    void Control(std::uint32_t channel);
    std::string Report() const;

    TParameters parameters_;
    CChannels channels_;
    CStepClock clock_;
    CRecorder recorder_;
    std::map<std::uint32_t, double> forced_;  ///< what the host has written, by channel
    bool ready_ = false;
    std::uint64_t step_ = 0;
    TCode recorded_ = TCode::kGood;
    void *buffer_ = nullptr;
};

/// The text of a code, in code page 1250; empty for a number that is none.
std::string_view CodeText(std::uint32_t code);

/// Puts a text into a value that brings its own room (kTagCountedText). If the room doesn't suffice the value asks for
/// more, and comes back.
void PutText(std::string_view text, kq_def::TValue &value);

}  // namespace simulator
