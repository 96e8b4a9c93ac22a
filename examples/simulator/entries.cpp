// What a host calls of a driver: each entry finds the driver of its handle and hands on. The header has the form of
// every entry; the declarations before the functions let the compiler compare.

#include <memory>
#include "channels.h"
#include "driver/kq_def.h"

#include "driver/kq_driver.h"
#include "driver/value_scalars.h"
#include "platform/base/bounded_text.h"
#include "simulator.h"
#include "texts.h"

using kq_def::TValue;
using simulator::TBlock;
using simulator::TCode;
using simulator::TMistake;

namespace {

constexpr std::uint32_t kVersion = 0x30000;

/// A driver and what is only there between the entries of one round.
struct TDriver {
    simulator::CSimulator simulator;
    TCode written = TCode::kGood;  ///< the first thing that went wrong in the output round
};

TDriver &DriverOf(void *handle) { return *static_cast<TDriver *>(handle); }

/// The answer of a round that ended with this result.
KQTruth Finalized(TCode result, std::uint32_t *code) {
    *code = static_cast<std::uint32_t>(result);
    return static_cast<KQTruth>(result == TCode::kGood);
}

}  // namespace

extern "C" {
KQ_DRIVER_ENTRY KQVersionEntry Version;
KQ_DRIVER_ENTRY KQGetDriverInfoEntry GetDriverInfo;
KQ_DRIVER_ENTRY KQCheckEntry Check;
KQ_DRIVER_ENTRY KQMakeDriverEntry MakeDriver;
KQ_DRIVER_ENTRY KQDisposeDriverEntry DisposeDriver;
KQ_DRIVER_ENTRY KQInit3Entry Init3;
KQ_DRIVER_ENTRY KQReadParametersEntry ReadParameters;
KQ_DRIVER_ENTRY KQQueryErrorCodeEntry QueryErrorCode;
KQ_DRIVER_ENTRY KQEnumerateChannelsEntry EnumerateChannels;
KQ_DRIVER_ENTRY KQGetChannelDescriptionEntry GetChannelDescription;
KQ_DRIVER_ENTRY KQRunEntry Run;
KQ_DRIVER_ENTRY KQStopEntry Stop;
KQ_DRIVER_ENTRY KQDoneEntry Done;
KQ_DRIVER_ENTRY KQBufferInfoEntry BufferInfo;
KQ_DRIVER_ENTRY KQSetBufferAddrEntry SetBufferAddr;
KQ_DRIVER_ENTRY KQInputRequestStartEntry InputRequestStart;
KQ_DRIVER_ENTRY KQInputRequestEntry InputRequest;
KQ_DRIVER_ENTRY KQInputRequestCompletedEntry InputRequestCompleted;
KQ_DRIVER_ENTRY KQInputFinalizedEntry InputFinalized;
KQ_DRIVER_ENTRY KQGetInput3Entry GetInput3;
KQ_DRIVER_ENTRY KQOutputRequestStartEntry OutputRequestStart;
KQ_DRIVER_ENTRY KQOutputRequest3Entry OutputRequest3;
KQ_DRIVER_ENTRY KQOutputRequestCompletedEntry OutputRequestCompleted;
KQ_DRIVER_ENTRY KQOutputFinalizedEntry OutputFinalized;
KQ_DRIVER_ENTRY KQDriverProcEntry DriverProc;
KQ_DRIVER_ENTRY KQQueryProc3Entry QueryProc3;
}

// The module.

std::uint32_t Version() { return kVersion; }

void GetDriverInfo(std::uint32_t high, char *text) { kq_base::CopyToBuffer(simulator::texts::kDriverInfo, high, text); }

/// It runs anywhere.
KQTruth Check(std::uint32_t, char *, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t) {
    return 1;
}

// The life of a driver.

void *MakeDriver() { return std::make_unique<TDriver>().release(); }

void DisposeDriver(void *driver) { const std::unique_ptr<TDriver> owner(static_cast<TDriver *>(driver)); }

/// All instances are alike, and the host is called for nothing.
void Init3(void *, std::uint32_t, std::uint32_t, const char *, void *, KQDriverCallbackEntry *) {}

/// With a mistake: its line, and a text that names section and key.
KQTruth ReadParameters(void *driver, std::uint32_t, const char *path, std::uint32_t error_high, char *error,
                       std::uint32_t *line, std::uint32_t *, std::uint32_t section_high, char *section) {
    TMistake mistake;
    if (DriverOf(driver).simulator.ReadParameters(path, mistake)) {
        return 1;
    }
    *line = mistake.line;
    kq_base::CopyToBuffer(mistake.text, error_high, error);
    kq_base::CopyToBuffer(mistake.section_and_key, section_high, section);
    return 0;
}

void Run(void *driver) { DriverOf(driver).simulator.Run(); }

void Stop(void *driver) { DriverOf(driver).simulator.Stop(); }

void Done(void *driver) { DriverOf(driver).simulator.Stop(); }

// What there is to know.

KQTruth QueryErrorCode(void *, std::uint32_t code, std::uint32_t high, char *text) {
    const std::string_view known = simulator::CodeText(code);
    kq_base::CopyToBuffer(known, high, text);
    return static_cast<KQTruth>(!known.empty());
}

/// The cookie counts the blocks that have been listed.
KQTruth EnumerateChannels(void *driver, unsigned long *cookie, std::uint32_t *type, std::uint32_t *direction,
                          std::uint32_t *first, std::uint32_t *count, std::uint8_t *flag) {
    const auto &blocks = DriverOf(driver).simulator.Channels().Blocks();
    if (*cookie >= blocks.size()) {
        return 0;
    }
    const TBlock &block = blocks[(*cookie)++];
    *type = block.type;
    *direction = block.direction;
    *first = block.first;
    *count = block.count;
    *flag = 0;
    return 1;
}

KQTruth GetChannelDescription(void *driver, std::uint32_t channel, std::uint32_t high, char *text,
                              std::uint32_t section_high, char *section) {
    const TBlock *const block = DriverOf(driver).simulator.Channels().Find(channel);
    if (block == nullptr) {
        return 0;
    }
    kq_base::CopyToBuffer(simulator::CChannels::Description(*block, channel), high, text);
    const std::string name = block->signal != nullptr ? "Signal" + std::to_string(block->signal->number) : "";
    kq_base::CopyToBuffer(name, section_high, section);
    return 1;
}

// Buffers: the numbers are the channel, a direction that doesn't matter, and the size in bytes.

KQTruth BufferInfo(void *, std::uint32_t channel, std::uint8_t, std::uint32_t size) {
    return static_cast<KQTruth>(simulator::CSimulator::AcceptsBuffer(channel, size));
}

void SetBufferAddr(void *driver, std::uint32_t, void *memory) { DriverOf(driver).simulator.SetBuffer(memory); }

// Input. All values of a round are of the same step.

void InputRequestStart(void *driver) { DriverOf(driver).simulator.Look(); }

void InputRequest(void *, std::uint32_t) {}

void InputRequestCompleted(void *) {}

KQTruth InputFinalized(void *driver, std::uint32_t, std::uint32_t *code) {
    return Finalized(DriverOf(driver).simulator.Recorded(), code);
}

void GetInput3(void *driver, std::uint32_t channel, KQValue *value, std::uint32_t *status, KQUTCStamp *,
               std::uint32_t *code) {
    TValue given(*value);
    *code = static_cast<std::uint32_t>(DriverOf(driver).simulator.Input(channel, given, *status));
    *value = given;
}

// Output. A code can only be given at the end of the round.

void OutputRequestStart(void *driver) { DriverOf(driver).written = TCode::kGood; }

void OutputRequest3(void *driver, std::uint32_t channel, KQValue value, std::uint32_t, KQUTCStamp *) {
    const TCode code = DriverOf(driver).simulator.Output(channel, TValue(value));
    if (DriverOf(driver).written == TCode::kGood) {
        DriverOf(driver).written = code;
    }
}

void OutputRequestCompleted(void *) {}

KQTruth OutputFinalized(void *driver, std::uint32_t, std::uint32_t *code) {
    return Finalized(DriverOf(driver).written, code);
}

// Questions.

void DriverProc(void *, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t) {}

/// A text is the name of a signal, and asks what it is. A number of tag longcard is a channel, and asks for its value.
void QueryProc3(void *driver, KQValue in, KQValue, KQValue *out) {
    auto &simulator = DriverOf(driver).simulator;
    const TValue question(in);
    TValue answer(*out);
    if (question.tag == kq_def::kTagLongcard) {
        std::uint32_t status = 0;
        simulator.Input(question.GetField<std::uint32_t>(kq_def::kScalarAt), answer, status);
    } else if (question.tag == kq_def::kTagCountedText && answer.tag == kq_def::kTagCountedText) {
        const std::string_view name(question.GetField<const char *>(TValue::kCharactersAt),
                                    question.GetField<std::uint32_t>(TValue::kCountAt));
        simulator::PutText(simulator.Answer(name), answer);
    }
    *out = answer;
}
