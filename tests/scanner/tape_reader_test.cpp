#include "scanner/tape_reader.h"

#include <gtest/gtest.h>

#include <memory>

#include "scanner/string_tape_reader.h"
#include "tests/scanner/nasty_texts.h"
#include "tests/scanner/reference_reader.h"

namespace {

using namespace par_scanner;

/// A reader whose characters come from outside: what the reader itself holds isn't touched.
class COutsideReader : public CTapeReader {
public:
    explicit COutsideReader(std::string_view text) : text_(text) {}
    bool ReadCharacter(std::uint32_t & /*error*/, char &character, bool peek) override {
        if (at_ == text_.size()) {
            return false;
        }
        character = text_[at_];
        at_ += peek ? 0 : 1;
        return true;
    }
    std::size_t At() const { return at_; }

private:
    std::string_view text_;
    std::size_t at_ = 0;
};

/// Reads as the template compiler does.
class CReaderInPlace : public CStringTapeReader {
public:
    bool ReadToken(std::uint32_t &error, TToken &token, bool /*peek*/) { return ReadTokenInPlace(error, token); }
};

void Lay(CTapeReader &reader, std::string_view text) {
    reader.InitBuffer(text.data(), static_cast<std::uint32_t>(text.size()));
}

std::string Show(const TToken &token) {
    std::string text = std::to_string(token.kind);
    return token.kind >= kIdentifier && token.kind <= kNumber ? text + "<" + std::string(token.View()) + ">" : text;
}

/// All tokens of a reader: kinds, texts in <>, failures as E and their error, the end as nothing.
template <class Reader>
std::string Tokens(Reader &reader) {
    std::string result;
    for (;;) {
        TToken token;
        std::uint32_t error = 0;
        if (reader.ReadToken(error, token, false)) {
            result += Show(token) + " ";
        } else if (error != 0) {
            result += "E" + std::to_string(error) + " ";
        } else {
            return result;
        }
    }
}

std::string RawTokens(std::string_view text) {
    CTapeReader reader;
    Lay(reader, text);
    return Tokens(reader);
}

std::string StringTokens(std::string_view text) {
    CStringTapeReader reader;
    reader.InitDString(text);
    return Tokens(reader);
}

struct TCase {
    std::string_view text;
    std::string_view tokens;
};

TEST(TapeReader, RawTokens) {
    const TCase cases[] = {
        {"", ""},
        {"+-*/&,;)[]{}^~=#|?!%\\", "4 5 6 7 9 11 12 15 16 17 18 19 20 21 22 23 31 32 33 34 35 "},
        {":= : <> < <= > >= << >> . ..", "8 40 13 40 24 40 25 40 26 40 27 40 28 40 29 40 30 40 10 40 36 "},
        {"a\r\nb", "1<a> 1<\r> 37 1<b> "},
        {"\tab c", "1<\tab> 40 1<c> "},
        {"1..2", "3<1> 36 3<2> "},
        {"1.5.", "3<1.5> 10 "},
        {"12E", "E4 "},
        {"12EF", "E4 1<F> "},
        {"12.e5", "3<12.e5> "},
        {"a!b", "1<a!b> "},
        {"a\"b", "1<a> 1<\"b> "},
        {"\"`$@_", "1<\"> 1<`$@_> "},
        {"a1?$@\x80\xff", "1<a1?$@\x80\xff> "},
        {"'a''b'c", "2<a'b> 1<c> "},
        {"'a", ""},
        {"'a\nb", "E2 37 1<b> "},
        {"a(* (* *) ( * ) *)b", "1<a> 1<b> "},
        {"(***)x(****)y(*(*)*)*)z", "1<x> 1<y> 1<z> "},
    };
    for (const TCase &each : cases) {
        EXPECT_EQ(RawTokens(each.text), each.tokens) << each.text;
    }
}

TEST(TapeReader, StringsSkipWhiteSpace) {
    const TCase cases[] = {
        {" a\t=\r\n\n1 ", "1<a> 22 3<1> "},
        {"(* *) \n                    (* *)b", "1<b> "},
        {"'a b' 'a\tb'", "2<a b> 2<a\tb> "},
        {"\vab", "1<\vab> "},
    };
    for (const TCase &each : cases) {
        EXPECT_EQ(StringTokens(each.text), each.tokens) << each.text;
    }
}

struct TLongCase {
    std::string text;
    std::string tokens;
};

TEST(TapeReader, BoundsOfTokenText) {
    const auto of = [](std::size_t count, char character) { return std::string(count, character); };
    const TLongCase cases[] = {
        {"'" + of(1023, 'x') + "'", "2<" + of(1023, 'x') + "> "},
        {"'" + of(1024, 'x') + " y", "E3 40 1<y> "},
        {"'" + of(1022, 'x') + "'''", "2<" + of(1022, 'x') + "'> "},
        {"'" + of(1023, 'x') + "''y", "E3 1<y> "},
        {of(1024, 'x') + "-", "1<" + of(1024, 'x') + "> 5 "},
        {of(1025, 'x') + "-", "1<" + of(1024, 'x') + "> 1<x> 5 "},
        {of(1025, '1') + "-", "3<" + of(1024, '1') + "> 3<1> 5 "},
        {of(1023, '1') + ".5", "3<" + of(1023, '1') + ".> 3<5> "},
        {of(1024, '1') + "E5", "3<" + of(1024, '1') + "> 1<E5> "},
        {of(1023, '1') + "E5", "E4 3<5> "},
        {of(1022, '1') + "E+5", "E4 3<5> "},
        {of(1022, '1') + "E55", "3<" + of(1022, '1') + "E5> 3<5> "},
    };
    for (const TLongCase &each : cases) {
        EXPECT_EQ(RawTokens(each.text), each.tokens);
    }
    CTapeReader reader;
    Lay(reader, "a_long_word_of_more_than_sixteen_characters 'cd' 12 ");
    TToken token;
    std::uint32_t error = 0;
    for (int count = 0; count < 6; ++count) {
        ASSERT_TRUE(reader.ReadToken(error, token, false));
        EXPECT_TRUE(token.kind == kBlank || token.text[token.length] == '\0');
    }
}

TEST(TapeReader, PeekedTokensComeAgain) {
    CTapeReader reader;
    Lay(reader, "ab=");
    TToken token;
    std::uint32_t error = 7;
    ASSERT_TRUE(reader.ReadToken(error, token, true));
    EXPECT_EQ(reader.GetPosition(), (TPosition{2, 1, 3}));
    CTapeReader copy = reader;
    Lay(reader, "xyz");
    TToken again;
    ASSERT_TRUE(copy.ReadToken(error, again, true));
    ASSERT_TRUE(copy.ReadToken(error, again, false));
    EXPECT_EQ(Show(again), "1<ab>");
    EXPECT_NE(again.text, token.text) << "a copy has a text of its own";
    again = {99, 98, nullptr};
    ASSERT_TRUE(copy.ReadToken(error, again, true));
    EXPECT_EQ(again.kind, kEqual);
    EXPECT_EQ(again.length, 98U) << "only texts have a length";
    ASSERT_TRUE(copy.ReadToken(error, again, false));
    EXPECT_FALSE(copy.ReadToken(error, again, false));
    EXPECT_EQ(error, 7U) << "the end is no error";
}

TEST(TapeReader, EndOfInput) {
    for (const std::string_view text : {"", "'ab", "(* x"}) {
        CTapeReader reader;
        Lay(reader, text);
        TToken token;
        std::uint32_t error = 7;
        const bool comment = text.starts_with('(');
        EXPECT_EQ(reader.ReadToken(error, token, true), !comment) << text;
        EXPECT_EQ(error, 7U) << text;
        if (comment) {
            continue;
        }
        EXPECT_EQ(token.kind, kEndOfInput);
        EXPECT_TRUE(reader.ReadToken(error, token, true));
        EXPECT_FALSE(reader.ReadToken(error, token, false));
        EXPECT_EQ(error, kReadPastEnd);
        EXPECT_TRUE(reader.ReadToken(error, token, true)) << "the end stays";
    }
    CTapeReader nothing;
    TToken token{5, 0, nullptr};
    std::uint32_t error = 7;
    EXPECT_FALSE(nothing.ReadToken(error, token, false));
    nothing.InitBuffer(nullptr, 5);
    EXPECT_FALSE(nothing.ReadToken(error, token, false)) << "a size without a text";
    char character = '?';
    EXPECT_FALSE(nothing.ReadCharacter(error, character, false));
    nothing.Copy(&character, 0, 0);
    EXPECT_EQ(character, '?');
    EXPECT_EQ(error, 7U);
    Lay(nothing, "12E");
    EXPECT_FALSE(nothing.ReadToken(error, token, true));
    EXPECT_EQ(error, kMalformedExponent);
    EXPECT_EQ(token.kind, kNoToken);
}

TEST(TapeReader, Positions) {
    CTapeReader reader;
    Lay(reader, "a\r\n(* \n*) 'b' c");
    const TPosition positions[] = {{1, 1, 2}, {2, 1, 3}, {3, 2, 1}, {10, 3, 4}, {13, 3, 7}, {14, 3, 8}, {15, 3, 9}};
    TToken token;
    std::uint32_t error = 0;
    for (const TPosition &position : positions) {
        ASSERT_TRUE(reader.ReadToken(error, token, false));
        EXPECT_EQ(reader.GetPosition(), position) << position.index;
    }
    EXPECT_EQ(reader.GetLine(), 3U);
    EXPECT_EQ(reader.GetLineIndex(), 9U);
    reader.SetPosition(positions[1]);
    ASSERT_TRUE(reader.ReadToken(error, token, false));
    EXPECT_EQ(reader.GetPosition(), positions[2]);
    Lay(reader, "x");
    EXPECT_EQ(reader.GetPosition(), (TPosition{0, 2, 1})) << "another tape goes on counting";
    char copy[] = "....";
    Lay(reader, "abcd");
    reader.Copy(copy, 1, 2);
    EXPECT_STREQ(copy, "bc..");
    reader.Copy(copy, 2, 1);
    EXPECT_STREQ(copy, "bc..");
}

TEST(TapeReader, TokenStream) {
    using namespace std::string_literals;
    const std::string long_text(1500, 'y');
    const TLongCase cases[] = {
        {"\1\2ab\x16\3\1"
         "5\2\0"s,
         "1<ab> 22 3<5> 2<> "},
        {"\0\4\x25\x26"s, "0 4 37 38 "},
        {"\x27\4\xff"s, "E5 4 E5 "},
        {"\1"s, ""},
        {"\1\3ab"s, ""},
        {"\1\xff\2\0ab\4"s, "1<ab> 4 "},
        {"\1\xff\2"s, ""},
        {"\1\xff\xdc\5"s + long_text + "\4", "1<" + long_text.substr(0, 1024) + "> 4 "},
    };
    for (const TLongCase &each : cases) {
        CTapeReader reader;
        reader.SetSourceOfCode(CTapeReader::kSourceStream);
        Lay(reader, each.text);
        EXPECT_EQ(Tokens(reader), each.tokens);
        EXPECT_EQ(reader.GetLine(), 1U);
        EXPECT_EQ(reader.GetLineIndex(), 1U);
    }
    CTapeReader reader;
    Lay(reader, "ab");
    reader.SetSourceOfCode(3);
    EXPECT_EQ(Tokens(reader), "");
    reader.SetSourceOfCode(CTapeReader::kSourceText);
    EXPECT_EQ(Tokens(reader), "1<ab> ");
}

TEST(TapeReader, TextsOfKinds) {
    std::string texts;
    for (std::uint32_t kind = 0; kind <= 41; ++kind) {
        char text[3] = "??";
        TokenKindToString(kind, 2, text);
        EXPECT_EQ(text, TokenKindText(kind));
        texts += std::string(text) + "\n";
    }
    EXPECT_EQ(texts,
              "\n\n\n\n+\n-\n*\n/\n:=\n&\n.\n,\n;\n:\n(\n)\n[\n]\n{\n}\n^\n~\n=\n#\n<>\n<\n<=\n>\n>=\n<<\n>>\n|\n?\n!\n"
              "%\n\\\n..\n\n\n\n \n\n");
    char text[2] = "?";
    TokenKindToString(kAssign, 1, text);
    EXPECT_STREQ(text, ":");
}

TEST(TapeReader, NestedCommentsNeedNoStack) {
    constexpr int kDepth = 1'000'000;
    std::string text;
    for (int depth = 0; depth < kDepth; ++depth) {
        text += "(*";
    }
    EXPECT_EQ(RawTokens(text + "x"), "");
    for (int depth = 0; depth < kDepth; ++depth) {
        text += "*)";
    }
    EXPECT_EQ(RawTokens(text + "x"), "1<x> ");
}

/// Reads a text to its end beside the reference; false at the first difference.
template <class Reader>
bool AgreesWithReference(Reader &reader, std::string_view text, bool skipping, bool with_index) {
    CReferenceReader reference(text, skipping);
    for (;;) {
        TToken token;
        std::uint32_t error = 0;
        std::uint32_t expected_error = 0;
        const bool read = reader.ReadToken(error, token, false);
        const bool expected = reference.Read(expected_error);
        TPosition position = reader.GetPosition();
        position.index = with_index ? position.index : reference.position.index;
        if (read != expected || error != expected_error || position != reference.position ||
            (read && token.kind != reference.kind) ||
            (read && token.kind <= kNumber && token.View() != reference.text)) {
            return false;
        }
        if (!read && error == 0) {
            return true;
        }
    }
}

void CheckAgainstReference(const std::string &text) {
    // Exactly as long as the text, so that a look beyond its end is found.
    const std::unique_ptr<char[]> tape(new char[text.size()]);
    text.copy(tape.get(), text.size());
    const std::string_view view(tape.get(), text.size());
    CTapeReader raw;
    Lay(raw, view);
    EXPECT_TRUE(AgreesWithReference(raw, view, false, true)) << text;
    CStringTapeReader skipping;
    skipping.InitDString(view);
    EXPECT_TRUE(AgreesWithReference(skipping, view, true, true)) << text;
    CReaderInPlace in_place;
    in_place.InitDString(view);
    EXPECT_TRUE(AgreesWithReference(in_place, view, true, true)) << text;
    COutsideReader outside(view);
    EXPECT_TRUE(AgreesWithReference(outside, view, false, false)) << text;
    EXPECT_EQ(outside.At(), text.size());
}

TEST(TapeReader, EveryShortTextAgreesWithReference) {
    ForEveryText({"(", "*", ")", "'", "1", ".", "E", "\n"}, 6, CheckAgainstReference);
    ForEveryText({":", "=", "<", ">", "a", " ", "\r", "\t", "+"}, 4, CheckAgainstReference);
}

TEST(TapeReader, LongTextsAgreeWithReference) {
    CNastyTexts texts(
        "(*|*)|(|'|''|1|12|.|..|E|e5|-|\n|\r\n|\t| |abc|a_long_word_of_more_than_sixteen_characters|"
        "                    |\xe8|=|:=|<>|!",
        1);
    for (int round = 0; round < 3000; ++round) {
        CheckAgainstReference(texts.Make(texts.Number(60)));
    }
}

TEST(TapeReader, StringsAreDoneWith) {
    const TDStringA text("a b");
    CStringTapeReader reader;
    reader.InitDString(&text);
    EXPECT_EQ(Tokens(reader), "1<a> 1<b> ");
    EXPECT_EQ(reader.GetLineIndex(), 4U);
    reader.InitDString(&text);
    reader.Done();
    EXPECT_EQ(Tokens(reader), "");
}

}  // namespace
