#pragma once

#include <cstdint>
#include <string>

#include "parameters.h"

namespace simulator {

/// The simulator's report at a step, in code page 1250: for each signal what it is, and for each of its channels the
/// value that the signal has there, with a bar. Values that a host has written don't show: they are the host's.
std::string ReportText(const TParameters &parameters, std::uint64_t step);

}  // namespace simulator
