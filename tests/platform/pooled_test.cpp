#include "platform/base/pooled.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <random>
#include <thread>
#include <vector>

namespace {

struct TObject : kq_base::CPooled {
    std::uint64_t value = 0;
};

/// Objects of two threads, released in any order by both and by a third, keep their values and leave no chunk in use
/// but those that a thread has at hand.
TEST(Pooled, ObjectsOfSeveralThreads) {
    constexpr std::size_t kCount = 100'000;
    constexpr std::size_t kAtHand = std::size_t{2} * 65536;
    const std::size_t before = kq_base::CPooled::HeldBytes();
    std::vector<std::unique_ptr<TObject>> objects(2 * kCount);
    std::vector<kq_base::TPoolVector<std::uint64_t>> arrays(kCount);
    const auto create = [&](std::size_t begin, std::size_t end) {
        for (std::size_t at = begin; at < end; ++at) {
            objects[at] = std::make_unique<TObject>();
            objects[at]->value = at;
            arrays[at / 2].resize(at / 2 % 200, at);
        }
    };
    std::thread other(create, 0, kCount);
    create(kCount, 2 * kCount);
    other.join();
    std::shuffle(objects.begin() + kCount / 2, objects.end(), std::mt19937(7));
    std::uint64_t sum = 0;
    const auto release = [](auto begin, auto end, std::uint64_t &total) {
        for (; begin != end; ++begin) {
            total += (*begin)->value;
            begin->reset();
        }
    };
    std::uint64_t other_sum = 0;
    std::thread third([&] { release(objects.begin(), objects.begin() + kCount, other_sum); });
    release(objects.begin() + kCount, objects.end(), sum);
    third.join();
    EXPECT_EQ(sum + other_sum, std::uint64_t{kCount} * (2 * kCount - 1));
    arrays.clear();
    EXPECT_LE(kq_base::CPooled::HeldBytes(), before + kAtHand);
}

}  // namespace
