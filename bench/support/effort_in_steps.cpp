/// Effort is a number of steps. All other files of the program are compiled so that each basic block says that it runs:
/// that is one step. What the C library does to memory in one call counts as one step each 16 bytes. Whatever else the
/// machine does, and whether or not the input fits into its caches, steps differ from run to run by less than a
/// thousandth, since hash tables of addresses do. They leave out what happens inside the allocator, the standard
/// library's own binary and the system.

#include <cstddef>
#include <cstdint>

#include "bench/support/effort.h"

namespace {

std::uint64_t steps = 0;

void Count(std::size_t bytes) { steps += bytes / 16; }

}  // namespace

// The names are the compiler's and the linker's (--wrap).
extern "C" {

void __sanitizer_cov_trace_pc();
void *__real_memcpy(void *to, const void *from, std::size_t size);
void *__real_memmove(void *to, const void *from, std::size_t size);
void *__real_memset(void *to, int byte, std::size_t size);
int __real_memcmp(const void *left, const void *right, std::size_t size);
void *__real_memchr(const void *from, int byte, std::size_t size);
void *__wrap_memcpy(void *to, const void *from, std::size_t size);
void *__wrap_memmove(void *to, const void *from, std::size_t size);
void *__wrap_memset(void *to, int byte, std::size_t size);
int __wrap_memcmp(const void *left, const void *right, std::size_t size);
void *__wrap_memchr(const void *from, int byte, std::size_t size);

void __sanitizer_cov_trace_pc() { ++steps; }

void *__wrap_memcpy(void *to, const void *from, std::size_t size) {
    Count(size);
    return __real_memcpy(to, from, size);
}

void *__wrap_memmove(void *to, const void *from, std::size_t size) {
    Count(size);
    return __real_memmove(to, from, size);
}

void *__wrap_memset(void *to, int byte, std::size_t size) {
    Count(size);
    return __real_memset(to, byte, size);
}

int __wrap_memcmp(const void *left, const void *right, std::size_t size) {
    Count(size);
    return __real_memcmp(left, right, size);
}

void *__wrap_memchr(const void *from, int byte, std::size_t size) {
    void *found = __real_memchr(from, byte, size);
    Count(found == nullptr ? size
                           : static_cast<std::size_t>(static_cast<char *>(found) - static_cast<const char *>(from)));
    return found;
}
}

namespace kq_bench {

const TEffort kEffort{"thousand steps", 1e3, 1, 4e9, true};

double Effort() { return static_cast<double>(steps); }

}  // namespace kq_bench
