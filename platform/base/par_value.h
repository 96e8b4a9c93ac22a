#pragma once

#include <cstdint>
#include <string_view>

#include "platform/base/bounded_text.h"

/// What a TParValue holds. The codes are those that other modules of the runtime use.
enum class TParKind : std::uint32_t {
    pvNone = 0,          ///< nothing: the result of an expression over unlike kinds
    pvText = 1,          ///< a text
    pvNumber = 2,        ///< an unsigned number of 32 bits
    pvBool = 6,          ///< a truth value
    pvNewChannel = 100,  ///< only inside a variable: it takes a new channel number when it is first read
    pvUndefined = 101,   ///< not known yet
};

/// The number that stands for a missing number everywhere in the model and in the channel code.
inline constexpr std::uint32_t kNoNumber = 0xFFFFFFFF;

/// The tagged value that passes between items, variables, expressions and the channel range table.
struct TParValue {
    TParKind kind = TParKind::pvNone;
    std::uint32_t number = 0;  ///< pvNumber: the number; pvBool: 0 or 1
    kq_base::TText text;       ///< pvText only

    static TParValue Undefined() { return OfKind(TParKind::pvUndefined); }
    static TParValue OfKind(TParKind kind) {
        TParValue value;
        value.kind = kind;
        return value;
    }
    static TParValue Number(std::uint32_t number) {
        TParValue value;
        value.kind = TParKind::pvNumber;
        value.number = number;
        return value;
    }
    static TParValue Bool(bool truth) {
        TParValue value;
        value.kind = TParKind::pvBool;
        value.number = truth ? 1 : 0;
        return value;
    }
    static TParValue Text(std::string_view text) {
        TParValue value;
        value.kind = TParKind::pvText;
        value.text = text;
        return value;
    }
    static TParValue Text(const kq_base::TText &text) {
        TParValue value;
        value.kind = TParKind::pvText;
        value.text = text;
        return value;
    }

    bool IsNumber() const { return kind == TParKind::pvNumber; }
    bool IsTrue() const { return kind == TParKind::pvBool && number != 0; }

    /// Equal are two texts or two numbers of the same value. Values of any other kind are never equal, not even to
    /// themselves: two unknown values say nothing about each other.
    friend bool operator==(const TParValue &left, const TParValue &right) {
        if (left.kind != right.kind) {
            return false;
        }
        if (left.kind == TParKind::pvText) {
            return left.text == right.text;
        }
        return left.kind == TParKind::pvNumber && left.number == right.number;
    }
};
