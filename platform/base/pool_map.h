#pragma once

#include <functional>
#include <unordered_map>
#include <utility>

#include "platform/base/pooled.h"

namespace kq_base {

/// A hash table whose entries lie where pooled objects lie, in the order in which they came in.
template <class Key, class T>
using TPoolMap =
    std::unordered_map<Key, T, std::hash<Key>, std::equal_to<Key>, TPoolAllocator<std::pair<const Key, T>>>;

}  // namespace kq_base
