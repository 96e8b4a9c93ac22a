#pragma once

#include <cstdint>
#include <string>

#include "parameters.h"

namespace simulator {

/// Writes the values of all signals to a file, a line for each step whose number is a multiple of what the parameters
/// say: the step, then all channels of all signals, parted by semicolons. Of several such steps between two looks at
/// the simulator only the last is written. The file is made with the first line, and grows from run to run.
class CRecorder {
public:
    CRecorder() = default;
    /// The file's name counts from the folder of the parameter file.
    CRecorder(const TParameters &parameters, const char *par_path);

    /// Tells how far the simulation has come. False if a line couldn't be written.
    bool Advance(const TParameters &parameters, std::uint64_t step);

private:
    std::string path_;
    std::uint64_t last_ = 0;  ///< the step of the last line
};

}  // namespace simulator
