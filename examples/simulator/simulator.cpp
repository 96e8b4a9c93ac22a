#include "simulator.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "channel_numbers.h"
#include "driver/value_scalars.h"
#include "report.h"
#include "signal_values.h"
#include "texts.h"

using kq_def::TValue;

namespace simulator {

namespace {

constexpr std::uint32_t Bit(TStatus status) { return static_cast<std::uint32_t>(status); }

bool HasType(const TBlock &block, const TValue &value) {
    return value.tag == (block.type == kq_def::kTagDString ? kq_def::kTagCountedText : block.type);
}

}  // namespace

bool CSimulator::ReadParameters(const char *path, TMistake &mistake) {
    if (!simulator::ReadParameters(path, parameters_, mistake)) {
        parameters_ = {};
        channels_ = {};
        return false;
    }
    channels_ = CChannels(parameters_);
    clock_ = CStepClock(parameters_.step);
    recorder_ = CRecorder(parameters_, path);
    forced_.clear();
    step_ = 0;
    return true;
}

void CSimulator::Stop() {
    clock_.Stop();
    ready_ = false;
}

void CSimulator::Look() {
    step_ = clock_.Steps();
    recorded_ = recorder_.Advance(parameters_, step_) ? TCode::kGood : TCode::kNoRecord;
}

double CSimulator::SignalNow(const TBlock &block, std::uint32_t channel) const {
    const auto forced = forced_.find(channel);
    return forced != forced_.end() ? forced->second
                                   : SignalValue(parameters_, *block.signal, channel - block.first, step_);
}

TCode CSimulator::Input(std::uint32_t channel, TValue &value, std::uint32_t &status) {
    const TBlock *const block = channels_.Find(channel);
    if (block == nullptr) {
        return TCode::kUnknownChannel;
    }
    if (block->direction == kq_def::kDirectionOutput) {
        return TCode::kWrongDirection;
    }
    if (!HasType(*block, value)) {
        return TCode::kWrongType;
    }
    status = 0;
    if (block->signal != nullptr) {
        return InputSignal(*block, channel, value, status);
    }
    if (channel == kHistoryChannel) {
        return InputHistory(value);
    }
    if (channel == kReportChannel) {
        PutText(Report(), value);
    } else {
        value = kq_def::ScalarValue<kq_def::kTagLongcard>(step_);
    }
    return TCode::kGood;
}

TCode CSimulator::InputSignal(const TBlock &block, std::uint32_t channel, TValue &value, std::uint32_t &status) const {
    const double now = SignalNow(block, channel);
    switch (block.type) {
        case kq_def::kTagBoolean:
            value = kq_def::ScalarValue<kq_def::kTagBoolean>(now != 0);
            break;
        case kq_def::kTagInteger:
            value = kq_def::ScalarValue<kq_def::kTagInteger>(static_cast<std::int32_t>(now));
            break;
        default:
            value = kq_def::ScalarValue<kq_def::kTagShortreal>(static_cast<float>(now));
            break;
    }
    status = forced_.contains(channel) ? Bit(TStatus::kForced) : 0;
    if (block.signal->alarm != 0 && now >= block.signal->alarm) {
        status |= Bit(TStatus::kAlarm);
    }
    return TCode::kGood;
}

TCode CSimulator::InputHistory(const TValue &value) const {
    if (buffer_ == nullptr || value.GetField<void *>(TValue::kBufferAt) != buffer_) {
        return TCode::kNoBuffer;
    }
    std::array<float, kHistorySteps> history{};
    if (!parameters_.signals.empty()) {
        const auto known = static_cast<std::size_t>(std::min<std::uint64_t>(step_ + 1, kHistorySteps));
        for (std::size_t back = 0; back < known; ++back) {
            history[kHistorySteps - 1 - back] =
                static_cast<float>(SignalValue(parameters_, parameters_.signals.front(), 0, step_ - back));
        }
    }
    std::memcpy(buffer_, history.data(), kHistorySize);
    return TCode::kGood;
}

TCode CSimulator::Output(std::uint32_t channel, const TValue &value) {
    const TBlock *const block = channels_.Find(channel);
    if (block == nullptr) {
        return TCode::kUnknownChannel;
    }
    if (block->direction == kq_def::kDirectionInput) {
        return TCode::kWrongDirection;
    }
    if (!HasType(*block, value)) {
        return TCode::kWrongType;
    }
    if (block->signal == nullptr) {
        if (ready_ && kq_def::ScalarIn<kq_def::kTagBoolean>(value)) {
            Control(channel);
        }
        return TCode::kGood;
    }
    kq_def::VisitScalarTag(value.tag, [this, channel, &value](auto tag) {
        forced_[channel] = static_cast<double>(kq_def::ScalarIn<tag()>(value));
    });
    return TCode::kGood;
}

void CSimulator::Control(std::uint32_t channel) {
    switch (channel) {
        case kStartChannel:
            clock_.Start();
            break;
        case kStopChannel:
            clock_.Stop();
            break;
        case kStepChannel:
            clock_.Step();
            break;
        default:
            clock_.Reset();
            forced_.clear();
            break;
    }
}

bool CSimulator::AcceptsBuffer(std::uint32_t channel, std::uint32_t size) {
    return channel == kHistoryChannel && size >= kHistorySize;
}

std::string CSimulator::Answer(std::string_view question) const {
    for (const TSignal &signal : parameters_.signals) {
        if (question == "Signal" + std::to_string(signal.number)) {
            return SignalText(signal);
        }
    }
    return "";
}

std::string CSimulator::Report() const {
    const std::uint32_t every = std::max(parameters_.report / parameters_.step, 1U);
    return ReportText(parameters_, step_ - step_ % every);
}

std::string_view CodeText(std::uint32_t code) {
    switch (static_cast<TCode>(code)) {
        case TCode::kUnknownChannel:
            return texts::kUnknownChannel;
        case TCode::kWrongType:
            return texts::kWrongType;
        case TCode::kWrongDirection:
            return texts::kWrongDirection;
        case TCode::kNoBuffer:
            return texts::kNoBuffer;
        case TCode::kNoRecord:
            return texts::kNoRecord;
        default:
            return {};
    }
}

void PutText(std::string_view text, TValue &value) {
    const auto room = value.GetField<std::uint32_t>(TValue::kCountAt);
    value.PutField(TValue::kCountAt, static_cast<std::uint32_t>(text.size()));
    if (text.size() > room) {
        value.PutField<void *>(TValue::kCharactersAt, nullptr);
        return;
    }
    std::memcpy(value.GetField<char *>(TValue::kCharactersAt), text.data(), text.size());
}

}  // namespace simulator
