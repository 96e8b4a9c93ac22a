#include "report.h"

#include <algorithm>

#include "signal_values.h"
#include "texts.h"

namespace simulator {

namespace {

constexpr std::size_t kNumberWidth = 10;
constexpr std::size_t kValueWidth = 12;
constexpr std::size_t kBarWidth = 50;

std::string RightAligned(const std::string &text, std::size_t width) {
    return std::string(width - std::min(text.size(), width), ' ') + text;
}

std::string Bar(const TSignal &signal, double value) {
    const double full = signal.shape == TShape::kSquare ? 1 : signal.upper;
    const auto length = static_cast<std::size_t>(value / full * kBarWidth);
    return std::string(length, '#') + std::string(kBarWidth - length, '.');
}

}  // namespace

std::string ReportText(const TParameters &parameters, std::uint64_t step) {
    std::string text = std::string(texts::kReportAfter) + std::to_string(step) + "\n";
    for (const TSignal &signal : parameters.signals) {
        text.append(texts::kSignal).append(std::to_string(signal.number)).append(": ");
        text.append(SignalText(signal)).append("\n");
        for (std::uint32_t channel = 0; channel < signal.count; ++channel) {
            const double value = SignalValue(parameters, signal, channel, step);
            text += RightAligned(std::to_string(signal.first + channel), kNumberWidth) +
                    RightAligned(ValueText(signal, value), kValueWidth) + "  " + Bar(signal, value);
            text.append(signal.alarm != 0 && value >= signal.alarm ? texts::kAlarm : "").append("\n");
        }
    }
    return text;
}

}  // namespace simulator
