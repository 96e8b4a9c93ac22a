#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <utility>

#include "platform/base/pooled.h"

namespace kq_base {

/// A list that owns objects, for places where there are many lists and most are short: it costs two pointers, holds a
/// single element without further memory, and several where pooled objects lie.
template <class T>
class TSlimVector {
public:
    using TElement = std::unique_ptr<T>;

    TSlimVector() {}  // NOLINT(modernize-use-equals-default): the element in the union isn't initialised
    ~TSlimVector() {
        clear();
        Release(capacity_);
    }
    TSlimVector(const TSlimVector &) = delete;
    TSlimVector &operator=(const TSlimVector &) = delete;

    const TElement *begin() const { return capacity_ == 1 ? &single_ : elements_; }
    const TElement *end() const { return begin() + size_; }
    auto rbegin() const { return std::make_reverse_iterator(end()); }
    auto rend() const { return std::make_reverse_iterator(begin()); }
    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }
    const TElement &operator[](std::size_t index) const { return begin()[index]; }
    const TElement &front() const { return *begin(); }
    const TElement &back() const { return begin()[size_ - 1]; }

    /// Makes room for so many elements in all.
    void reserve(std::size_t count) {
        if (count <= capacity_) {
            return;
        }
        auto *elements = TPoolAllocator<TElement>().allocate(count);
        TElement *old = Begin();
        for (std::size_t index = 0; index < size_; ++index) {
            std::construct_at(elements + index, std::move(old[index]));
            std::destroy_at(old + index);
        }
        Release(std::exchange(capacity_, static_cast<std::uint32_t>(count)));
        elements_ = elements;
    }
    void push_back(TElement element) {
        if (size_ == capacity_) {
            reserve(2 * std::size_t{capacity_});
        }
        std::construct_at(Begin() + size_, std::move(element));
        ++size_;
    }
    /// Releases the elements, the first one first; the room for them stays.
    void clear() {
        TElement *elements = Begin();
        for (std::size_t count = std::exchange(size_, 0), index = 0; index < count; ++index) {
            std::destroy_at(elements + index);
        }
    }

private:
    TElement *Begin() { return capacity_ == 1 ? &single_ : elements_; }
    void Release(std::uint32_t capacity) {
        if (capacity != 1) {
            TPoolAllocator<TElement>().deallocate(elements_, capacity);
        }
    }

    union {
        TElement single_;
        TElement *elements_;
    };
    std::uint32_t size_ = 0;
    std::uint32_t capacity_ = 1;
};

}  // namespace kq_base
