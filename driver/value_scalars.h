#pragma once

#include <cstdint>
#include <type_traits>

#include "driver/kq_def.h"

/// How drivers and hosts lay the scalars of a TValue: the value at byte 4 of the record, lowest byte first, all further
/// bytes zero.
///
///     boolean             1 byte, 0 or 1
///     shortcard shortint  2 bytes
///     cardinal  integer   4 bytes
///     longcard  longint   8 bytes
///     shortreal           4 bytes, IEEE 754
///     real                8 bytes, IEEE 754
namespace kq_def {

inline constexpr std::size_t kScalarAt = 4;

/// What goes with a scalar tag.
template <TValueTag Tag>
struct TScalarOf;
template <>
struct TScalarOf<kTagBoolean> {
    using Type = bool;
};
template <>
struct TScalarOf<kTagShortcard> {
    using Type = std::uint16_t;
};
template <>
struct TScalarOf<kTagCardinal> {
    using Type = std::uint32_t;
};
template <>
struct TScalarOf<kTagLongcard> {
    using Type = std::uint64_t;
};
template <>
struct TScalarOf<kTagShortint> {
    using Type = std::int16_t;
};
template <>
struct TScalarOf<kTagInteger> {
    using Type = std::int32_t;
};
template <>
struct TScalarOf<kTagLongint> {
    using Type = std::int64_t;
};
template <>
struct TScalarOf<kTagShortreal> {
    using Type = float;
};
template <>
struct TScalarOf<kTagReal> {
    using Type = double;
};

template <TValueTag Tag>
using TScalar = typename TScalarOf<Tag>::Type;

/// A value of that tag, made of a scalar.
template <TValueTag Tag>
TValue ScalarValue(TScalar<Tag> scalar) {
    TValue value;
    value.tag = Tag;
    value.PutField(kScalarAt, scalar);
    return value;
}

/// The scalar of a value that has that tag. A boolean is true if its byte isn't 0.
template <TValueTag Tag>
TScalar<Tag> ScalarIn(const TValue &value) {
    if constexpr (Tag == kTagBoolean) {
        return value.GetField<std::uint8_t>(kScalarAt) != 0;
    } else {
        return value.GetField<TScalar<Tag>>(kScalarAt);
    }
}

/// Calls a visitor with the tag of a scalar, as a std::integral_constant, so that it can use the two above. False, and
/// no call, for any other tag.
template <typename TVisitor>
bool VisitScalarTag(std::uint32_t tag, TVisitor &&visitor) {
    const auto visit = [&visitor]<TValueTag Tag>(std::integral_constant<TValueTag, Tag> constant) {
        visitor(constant);
        return true;
    };
    switch (tag) {
        case kTagBoolean:
            return visit(std::integral_constant<TValueTag, kTagBoolean>());
        case kTagShortcard:
            return visit(std::integral_constant<TValueTag, kTagShortcard>());
        case kTagCardinal:
            return visit(std::integral_constant<TValueTag, kTagCardinal>());
        case kTagLongcard:
            return visit(std::integral_constant<TValueTag, kTagLongcard>());
        case kTagShortint:
            return visit(std::integral_constant<TValueTag, kTagShortint>());
        case kTagInteger:
            return visit(std::integral_constant<TValueTag, kTagInteger>());
        case kTagLongint:
            return visit(std::integral_constant<TValueTag, kTagLongint>());
        case kTagShortreal:
            return visit(std::integral_constant<TValueTag, kTagShortreal>());
        case kTagReal:
            return visit(std::integral_constant<TValueTag, kTagReal>());
        default:
            return false;
    }
}

}  // namespace kq_def
