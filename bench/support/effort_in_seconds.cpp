/// Effort is time of the processor. It also grows where memory no longer fits into a cache, so there is no limit.

#include <ctime>

#include "bench/support/effort.h"

namespace kq_bench {

const TEffort kEffort{"ms", 1e-3, 3, 2, false};

double Effort() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

}  // namespace kq_bench
