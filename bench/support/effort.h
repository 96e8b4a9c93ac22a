#pragma once

/// What growth.cpp measures: each program made from it links one of the files that say what effort is.

namespace kq_bench {

struct TEffort {
    const char *unit;
    double units;    ///< how much one unit is
    int rounds;      ///< each input is measured as often, and the least counts
    double longest;  ///< an input that takes more is the last one of its family
    bool limited;    ///< a family that grows too fast is a failure
};

extern const TEffort kEffort;

/// All effort of the process so far.
double Effort();

}  // namespace kq_bench
