#include <gtest/gtest.h>

#include <cstring>

#include "platform/base/bounded_text.h"
#include "platform/base/number_text.h"

namespace {

using namespace kq_base;

template <std::size_t Bound>
void CutsAtItsBound() {
    for (const std::size_t length : {std::size_t{0}, std::size_t{1}, Bound - 1, Bound, Bound + 1, Bound * 3}) {
        const std::string source(length, 'x');
        const std::string expected = source.substr(0, Bound);
        EXPECT_EQ(TBoundedText<Bound>(source).View(), expected) << length;

        TBoundedText<Bound> joined("ab");
        const TBoundedText<Bound> shared = joined;
        joined.Append(source);
        EXPECT_EQ(joined.View(), ("ab" + source).substr(0, Bound)) << length;
        EXPECT_EQ(joined.Characters()[joined.Length()], '\0');
        EXPECT_EQ(shared.View(), "ab") << "a copy keeps its text";

        std::string buffer(Bound + 2, '#');
        CopyToBuffer(source, Bound, buffer.data());
        EXPECT_EQ(std::string_view(buffer.c_str()), expected) << length;
        EXPECT_EQ(buffer[Bound + 1], '#') << "nothing beyond the bound is touched";
    }
}

TEST(BoundedText, CutsAtItsBound) {
    CutsAtItsBound<4>();
    CutsAtItsBound<255>();
    CutsAtItsBound<259>();
    CutsAtItsBound<1023>();
}

TEST(BoundedText, ANulByteEndsIt) {
    using namespace std::string_view_literals;
    EXPECT_EQ(TText("ab\0cd"sv).View(), "ab");
    TText text("x");
    text.Append("\0y"sv);
    EXPECT_EQ(text.View(), "x");
}

TEST(BoundedText, MayTakeAPieceOfItself) {
    TText text("abcdef");
    text.Append(text.View());
    text.Append(text.View().substr(3));
    EXPECT_EQ(text.View(), "abcdefabcdefdefabcdef");
    text = text.View().substr(6, 3);
    EXPECT_EQ(text.View(), "abc");
}

TEST(BoundedText, PairsOfLengthAndPointer) {
    EXPECT_EQ(ViewOfPair(0, "abc"), "abc");
    EXPECT_EQ(ViewOfPair(2, "abc"), "ab");
    EXPECT_EQ(ViewOfPair(9, "abc"), "abc");
    EXPECT_EQ(ViewOfPair(5, nullptr), "");
    CopyToBuffer("abc", 3, nullptr);
}

TEST(NumberText, ReadsPlainDecimalsOf32Bits) {
    std::uint32_t read = 4711;
    for (const char *text : {"4294967296", "99999999999999999999", "", "-1", "+1", " 1", "1 ", "1.0", "0x1", "a"}) {
        EXPECT_FALSE(ParseDecimal(text, read)) << text;
        EXPECT_EQ(read, 4711U) << text;
    }
    for (const char *text : {"0", "7", "007", "2147483648", "4294967294", "4294967295"}) {
        EXPECT_TRUE(ParseDecimal(text, read)) << text;
        EXPECT_EQ(read, std::stoull(text)) << text;
    }
    for (const std::uint32_t number : {0U, 9U, 10U, 4294967295U}) {
        EXPECT_TRUE(ParseDecimal(DecimalText(number), read));
        EXPECT_EQ(read, number);
    }
}

}  // namespace
