#include "signal_values.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <numbers>

#include "texts.h"

namespace simulator {

namespace {

/// Mixes the bits of a number so that neighbours have nothing in common.
std::uint64_t Mixed(std::uint64_t number) {
    number += 0x9E3779B97F4A7C15U;
    number = (number ^ (number >> 30U)) * 0xBF58476D1CE4E5B9U;
    number = (number ^ (number >> 27U)) * 0x94D049BB133111EBU;
    return number ^ (number >> 31U);
}

std::uint64_t RandomNumber(const TParameters &parameters, const TSignal &signal, std::uint32_t channel,
                           std::uint64_t step) {
    const std::uint64_t source = (std::uint64_t{signal.number} << 32U) | channel;
    return Mixed(Mixed(Mixed(parameters.seed) ^ source) ^ step);
}

/// Which part of its period a channel has passed, from 0 to 1. The channels of a block follow each other.
double Phase(const TSignal &signal, std::uint32_t channel, std::uint64_t step) {
    const double phase = static_cast<double>(step % signal.period) / signal.period +
                         static_cast<double>(channel % signal.count) / signal.count;
    return phase - std::floor(phase);
}

}  // namespace

double SignalValue(const TParameters &parameters, const TSignal &signal, std::uint32_t channel, std::uint64_t step) {
    const std::uint64_t random = RandomNumber(parameters, signal, channel, step);
    if (signal.shape == TShape::kRandom) {
        return static_cast<double>(random % (std::uint64_t{signal.upper} + 1));
    }
    const double chance = static_cast<double>(random >> 11U) / static_cast<double>(std::uint64_t{1} << 53U);
    const double phase = Phase(signal, channel, step);
    if (signal.shape == TShape::kSquare) {
        const bool on = phase * 100 < signal.duty;
        const bool disturbed = chance * 100 < signal.noise;
        return on != disturbed ? 1 : 0;
    }
    const double part = signal.shape == TShape::kRamp ? phase : (1 + std::sin(2 * std::numbers::pi * phase)) / 2;
    const double noise = (2 * chance - 1) * signal.noise / 100;
    return std::clamp(part + noise, 0.0, 1.0) * signal.upper;
}

std::string SignalText(const TSignal &signal) {
    constexpr std::array kShapes = {texts::kSine, texts::kRamp, texts::kSquare, texts::kRandom};
    std::string text(kShapes[static_cast<std::size_t>(signal.shape)]);
    const auto add = [&text](std::string_view before, std::uint32_t number, std::string_view after) {
        text.append(before).append(std::to_string(number)).append(after);
    };
    if (signal.shape != TShape::kRandom) {
        add(texts::kPeriod, signal.period, texts::kPeriodUnit);
    }
    if (signal.shape == TShape::kSquare) {
        add(texts::kDuty, signal.duty, " %");
    } else {
        add(texts::kLimits, signal.upper, "");
    }
    if (signal.alarm != 0) {
        add(texts::kAlarmFrom, signal.alarm, "");
    }
    if (signal.noise != 0) {
        add(texts::kNoise, signal.noise, " %");
    }
    return text;
}

std::string ValueText(const TSignal &signal, double value) {
    const bool whole = signal.shape == TShape::kSquare || signal.shape == TShape::kRandom;
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.*f", whole ? 0 : 2, value);
    return text.data();
}

}  // namespace simulator
