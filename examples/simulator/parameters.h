#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// What the parameter file says, in the form that simulator.pdt declares.
namespace simulator {

enum class TShape : std::uint8_t { kSine, kRamp, kSquare, kRandom };

/// A section `[SignalN]`: a block of channels that show the same signal, each a little later than the one before.
struct TSignal {
    std::uint32_t number = 0;
    std::uint32_t line = 0;  ///< of the section's header
    TShape shape = TShape::kSine;
    std::uint32_t period = 50;  ///< steps
    std::uint32_t duty = 50;    ///< percent of a period in which a square is on
    std::uint32_t upper = 100;  ///< the values lie between 0 and this
    std::uint32_t alarm = 0;    ///< from this value on there is an alarm; 0 for never
    std::uint32_t noise = 0;    ///< percent
    bool writable = false;
    std::uint32_t count = 1;  ///< channels
    std::uint32_t first = 0;  ///< the first channel's number; 0 if the file leaves it open
};

struct TParameters {
    std::uint32_t step = 100;     ///< milliseconds
    std::uint32_t report = 1000;  ///< milliseconds between two reports
    bool noise = false;
    std::uint32_t seed = 4711;
    std::string record_file = "signals.txt";  ///< empty: nothing is recorded
    std::uint32_t record_every = 10;          ///< steps
    std::vector<TSignal> signals;
};

/// Why a parameter file can't be used.
struct TMistake {
    std::uint32_t line = 0;  ///< from 1; 0 for the file as a whole
    std::string text;        ///< for people, with the line
    std::string section_and_key;
};

/// Reads a parameter file and gives every signal its channels. Sections and keys of other names are passed over; values
/// that are left out are those of the template. False with the first mistake.
bool ReadParameters(const char *path, TParameters &parameters, TMistake &mistake);

}  // namespace simulator
