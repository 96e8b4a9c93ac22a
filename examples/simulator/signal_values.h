#pragma once

#include <cstdint>
#include <string>

#include "parameters.h"

namespace simulator {

/// The value of one channel of a signal, counted from 0 in its block, at a step. It follows from these alone, so a
/// reset repeats everything, noise included. A square gives 0 or 1, all others something from 0 to the upper limit.
double SignalValue(const TParameters &parameters, const TSignal &signal, std::uint32_t channel, std::uint64_t step);

/// "sinus, perioda 200 kroků, meze 0 až 500, poplach od 450, šum 3 %", in code page 1250.
std::string SignalText(const TSignal &signal);

/// A value with two decimals and a decimal point, or without any if it is whole by its nature.
std::string ValueText(const TSignal &signal, double value);

}  // namespace simulator
