#include <gtest/gtest.h>

#include <cstring>

#include "tests/driver/driver_module.h"

namespace {

using namespace kq_drv;
using namespace kq_def;

constexpr std::uint32_t kUntouched = 9;
constexpr std::uint32_t kScalarTags[] = {0, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 13, 15, 99};

bool IsZero(const TValue &value) {
    const TValue zero;
    return std::memcmp(&value, &zero, sizeof(TValue)) == 0;
}

TValue Tagged(std::uint32_t tag, std::uint32_t number = 0) {
    TValue value;
    value.tag = tag;
    value.PutField(4, number);
    return value;
}

/// One call of an operation, with everything around it that it may touch.
struct TCall {
    std::uint32_t code = kUntouched;
    std::uint32_t status = kUntouched;
    bool result = false;

    bool Input(CDriver &driver, std::uint32_t channel, TValue &value) {
        return result = driver.GetInput(code, channel, &value, status, reinterpret_cast<TUTCStamp *>(this));
    }
    bool Output(CDriver &driver, std::uint32_t channel, const TValue &value) {
        return result = driver.OutputRequest(code, channel, value, 44, nullptr);
    }
    bool Query(CDriver &driver, const TValue &in, TValue &out) { return result = driver.QueryProc(code, in, &out); }
};

/// The status that a driver of each generation gives, index 1 to 3; one of generation 1 only by the proxy's default.
constexpr std::uint32_t kStatus[] = {0, kUntouched, 222, 333};

/// Every letter of the code page in turn, as 16-bit characters.
std::u16string Letters(std::size_t count) {
    std::u16string text;
    for (std::size_t at = 0; at < count; ++at) {
        text += static_cast<char16_t>(kq_base::kCodePageToUnicode[at % 255 + 1]);
    }
    return text;
}

TEST(DriverExchange, ScalarsPassAsTheyAre) {
    WithEachModule([](const CTestModule &module) {
        CInitializedDriver driver(module);
        for (const std::uint32_t tag : kScalarTags) {
            if (tag == kTagShortText || tag == kTagCountedText) {
                continue;  // the module takes these for texts
            }
            SCOPED_TRACE(tag);
            TValue value = Tagged(tag);
            TCall input;
            EXPECT_TRUE(input.Input(driver, 1000, value));
            EXPECT_EQ(input.code, 0);
            EXPECT_EQ(input.status, module.Generation() == 1 ? 500 : kStatus[module.Generation()]);
            TValue wanted;
            wanted.tag = tag;
            std::memset(wanted.payload, 0xEE, sizeof(wanted.payload));
            wanted.PutField(4, std::uint32_t{1000});
            EXPECT_EQ(std::memcmp(&value, &wanted, sizeof(TValue)), 0);

            module.Control().log.clear();
            TCall output;
            EXPECT_TRUE(output.Output(driver, 7, Tagged(tag, 123456)));
            EXPECT_EQ(output.code, kUntouched);
            const std::string forms[] = {"", "2", "3"};
            EXPECT_EQ(module.TakeLog(), "OutputRequest" + forms[module.Generation() - 1] + " 7 " + std::to_string(tag) +
                                            " 123456" + (module.Generation() == 1 ? "\n" : " 44 0\n"));

            TValue out = Tagged(tag, 321);
            TCall query;
            EXPECT_TRUE(query.Query(driver, Tagged(kTagReal, 123), out));
            EXPECT_EQ(query.code, kUntouched);
            const std::string in_log = " 10 123 " + std::to_string(tag) + " 321";
            EXPECT_EQ(module.TakeLog(), module.Generation() == 3
                                            ? "QueryProc3" + in_log + " " + std::to_string(tag) + "\n"
                                            : "QueryProc" + in_log + "\n");
            EXPECT_EQ(out.GetField<std::uint32_t>(4), 10U) << "the answer is the question's tag";
        }
    });
}

TEST(DriverExchange, ADriversOwnCodeLeavesAScalarAlone) {
    for (const bool wide : {false, true}) {
        const CTestModule module(3, wide);
        CInitializedDriver driver(module);
        module.Control().code = 77;
        TValue value = Tagged(kTagReal);
        TCall call;
        EXPECT_FALSE(call.Input(driver, 5, value));
        EXPECT_EQ(call.code, 77);
        EXPECT_EQ(value.GetField<std::uint32_t>(4), 5U);
    }
}

TEST(DriverExchange, StringsFromTheDriver) {
    WithEachModule([](const CTestModule &module) {
        const bool third = module.Generation() == 3;
        CInitializedDriver driver(module);
        TDStringA text(std::string_view("before"));
        std::uint32_t capacity = 1024;
        for (const std::uint32_t length :
             {0U, 1U, 255U, 1022U, 1023U, 1024U, 1025U, 1056U, 1057U, 5000U, 5024U, 70000U, 5U}) {
            if (!third && length > 1023) {
                continue;
            }
            SCOPED_TRACE(length);
            module.SetTexts(Letters(length));
            for (const bool again : {false, true}) {
                module.Control().text_calls = 0;
                TValue value = DStringValue(&text);
                TCall call;
                EXPECT_TRUE(call.Input(driver, 1, value));
                EXPECT_EQ(call.code, 0);
                EXPECT_EQ(call.status, kStatus[module.Generation()]);
                EXPECT_EQ(ValueDString(value), &text);
                EXPECT_EQ(text.View(), BytesOf(Letters(length)));
                EXPECT_EQ(module.Control().text_calls, length > capacity ? 2U : 1U) << again;
                capacity = std::max(capacity, (length + 31) / 32 * 32);
            }
        }
    });
}

TEST(DriverExchange, AValueWithoutAStringGetsOne) {
    WithEachModule([](const CTestModule &module) {
        CInitializedDriver driver(module);
        module.SetTexts(u"čaj");
        TValue value = DStringValue(nullptr);
        TCall call;
        EXPECT_TRUE(call.Input(driver, 1, value));
        ASSERT_NE(ValueDString(value), nullptr);
        EXPECT_EQ(ValueDString(value)->View(),
                  "\xE8"
                  "aj");
        SetValueDString(&value, ValueDString(value));
        EXPECT_EQ(ValueDString(value)->Length(), 3U);
        DisposeValueDString(&value);
        EXPECT_EQ(ValueDString(value), nullptr);
    });
}

TEST(DriverExchange, CharactersOfWideTexts) {
    struct {
        std::u16string_view wide;
        std::string_view bytes;
    } cases[] = {
        {u"\u03A9-\u0416", "?-?"},
        {u"\xD83D\xDE00.", "??."},
        {std::u16string_view(u"a\0b", 3), std::string_view("a\0b", 3)},
        {u"\u20AC\u0081\u02D9\u02DA\u02DF\u2122\u2123\u1FFF\u2130\uFFFF", "\x80\x81\xFF??\x99????"},
        {u"\u00A0\u00A1\u00A4\u0100\u0102", "\xA0?\xA4?\xC3"},
    };
    const CTestModule module(3, true);
    CInitializedDriver driver(module);
    for (const auto &wanted : cases) {
        module.Control().wide_text = wanted.wide;
        TDStringA text;
        TValue value = DStringValue(&text);
        TCall call;
        EXPECT_TRUE(call.Input(driver, 1, value));
        EXPECT_EQ(text.View(), wanted.bytes);
    }
}

TEST(DriverExchange, DriversThatBreakTheRules) {
    struct {
        bool query;  ///< the text is an answer; else it is an input
        int generation;
        TMischief mischief;
        std::uint32_t named_size;
        std::uint32_t driver_code;
        std::uint32_t code;  ///< 0 if the text passes
        std::size_t length;  ///< of the text then
    } cases[] = {
        {false, 1, TMischief::kForeignText, 0, 0, kForeignText, 0},
        {false, 2, TMischief::kForeignText, 0, 0, kForeignText, 0},
        {false, 3, TMischief::kForeignText, 0, 0, kForeignText, 0},
        {false, 1, TMischief::kSilent, 0, 0, 0, 0},
        {false, 2, TMischief::kSilent, 0, 0, 0, 0},
        {false, 3, TMischief::kSilent, 0, 0, 0, 1024},
        {false, 1, TMischief::kUnterminated, 1024, 0, 0, 1023},
        {false, 2, TMischief::kUnterminated, 1024, 0, 0, 1023},
        {false, 3, TMischief::kNullTwice, 0, 0, kRoomTwice, 0},
        {false, 3, TMischief::kNamedSize, 0, 0, kRoomNotGrown, 0},
        {false, 3, TMischief::kNamedSize, 1023, 0, kRoomNotGrown, 0},
        {false, 3, TMischief::kNamedSize, 1024, 0, kRoomNotGrown, 0},
        {false, 3, TMischief::kNamedSize, 1025, 0, kRoomTwice, 0},
        {false, 3, TMischief::kNamedSize, 0x4000000, 0, kRoomTwice, 0},
        {false, 3, TMischief::kNamedSize, 0x4000001, 0, kRoomNotGrown, 0},
        {false, 3, TMischief::kNamedSize, 0xFFFFFFE1, 0, kRoomNotGrown, 0},
        {false, 3, TMischief::kNamedSize, 0xFFFFFFFF, 0, kRoomNotGrown, 0},
        {false, 3, TMischief::kCountAboveRoom, 1024, 0, 0, 1024},
        {false, 3, TMischief::kCountAboveRoom, 1025, 0, kForeignText, 0},
        {false, 3, TMischief::kCountAboveRoom, 0xFFFFFFFF, 0, kForeignText, 0},
        {false, 3, TMischief::kNone, 0, 77, 77, 0},
        {false, 3, TMischief::kForeignText, 0, 77, 77, 0},
        {false, 3, TMischief::kNullTwice, 0, 77, 77, 0},
        {true, 1, TMischief::kForeignText, 0, 0, kForeignText, 7},
        {true, 2, TMischief::kForeignText, 0, 0, kForeignText, 7},
        {true, 3, TMischief::kForeignText, 0, 0, kForeignText, 7},
        {true, 1, TMischief::kSilent, 0, 0, 0, 7},
        {true, 3, TMischief::kSilent, 0, 0, 0, 1024},
        {true, 1, TMischief::kUnterminated, 256, 0, 0, 255},
        {true, 3, TMischief::kNullTwice, 0, 0, kRoomTwice, 7},
        {true, 3, TMischief::kNamedSize, 1024, 0, kRoomNotGrown, 7},
        {true, 3, TMischief::kNamedSize, 1025, 0, kRoomTwice, 7},
        {true, 3, TMischief::kNamedSize, 0xFFFFFFFF, 0, kRoomNotGrown, 7},
        {true, 3, TMischief::kCountAboveRoom, 1025, 0, kForeignText, 7},
    };
    for (const auto &wanted : cases) {
        for (const bool wide : {false, true}) {
            SCOPED_TRACE(testing::Message() << "row " << &wanted - cases << (wide ? " wide" : ""));
            const CTestModule module(wanted.generation, wide);
            CInitializedDriver driver(module);
            module.SetTexts(u"before");
            TDStringA text;
            TValue value = DStringValue(&text);
            TCall call;
            EXPECT_TRUE(call.Input(driver, 1, value));

            text.Assign("present");
            module.Control().mischief = wanted.mischief;
            module.Control().named_size = wanted.named_size;
            module.Control().code = wanted.driver_code;
            EXPECT_EQ(wanted.query ? call.Query(driver, Tagged(kTagReal), value) : call.Input(driver, 1, value),
                      wanted.code == 0);
            EXPECT_EQ(call.code, wanted.code);
            EXPECT_EQ(IsZero(value), wanted.code != 0 && !wanted.query) << "a failed query leaves the answer alone";
            EXPECT_EQ(text.Length(), wanted.code == 0 ? wanted.length : 7U);
        }
    }
}

TEST(DriverExchange, Buffers) {
    WithEachModule([](const CTestModule &module) {
        CInitializedDriver driver(module);
        for (const bool moved : {false, true}) {
            char memory[2] = {'m', 'n'};
            TValue value;
            value.tag = kTagBuffer;
            value.PutField(TValue::kBufferAt, &memory[0]);
            module.Control().mischief = moved ? TMischief::kMovedBuffer : TMischief::kNone;
            TCall call;
            EXPECT_EQ(call.Input(driver, 1, value), !moved);
            EXPECT_EQ(call.code, moved ? kForeignBuffer : 0U);
            EXPECT_EQ(call.status, kStatus[module.Generation()]);
            EXPECT_EQ(IsZero(value), moved);
            EXPECT_EQ(memory[0], 'B');
            if (!moved) {
                module.Control().log.clear();
                EXPECT_TRUE(call.Output(driver, 1, value));
                EXPECT_NE(module.TakeLog().find(" 1 12 66"), std::string::npos)
                    << "the memory itself reaches the driver";
            }
        }
    });
}

TEST(DriverExchange, StringsToTheDriver) {
    WithEachModule([](const CTestModule &module) {
        const bool third = module.Generation() == 3;
        CInitializedDriver driver(module);
        for (const std::size_t length : {0U, 1U, 254U, 255U, 256U, 300U, 5000U, 3U}) {
            const TDStringA text(BytesOf(Letters(length)));
            module.Control().log.clear();
            TCall call;
            EXPECT_TRUE(call.Output(driver, 1, DStringValue(const_cast<TDStringA *>(&text))));
            EXPECT_EQ(call.code, kUntouched);
            const std::size_t arrives = third ? length : std::min<std::size_t>(length, 255);
            EXPECT_EQ(module.Given(), Utf8Of(Letters(arrives)));
            EXPECT_NE(module.TakeLog().find((third ? " 1 15 " : " 1 11 ") + std::to_string(arrives)),
                      std::string::npos);
        }
        TCall call;
        EXPECT_TRUE(call.Output(driver, 1, DStringValue(nullptr)));
        EXPECT_EQ(module.Given(), "");
        const TDStringA with_zero(std::string_view("a\0b", 3));
        EXPECT_TRUE(call.Output(driver, 1, DStringValue(const_cast<TDStringA *>(&with_zero))));
        EXPECT_EQ(module.Given(), third ? std::string("a\0b", 3) : "a");
    });
}

TEST(DriverExchange, Queries) {
    WithEachModule([](const CTestModule &module) {
        const bool third = module.Generation() == 3;
        const std::string string_tag = third ? "15" : "11";
        CInitializedDriver driver(module);
        for (const std::size_t length : {0U, 255U, 256U, 5000U}) {
            SCOPED_TRACE(length);
            const std::size_t arrives = third ? length : std::min<std::size_t>(length, 255);
            const std::size_t answers = third ? length : std::min<std::size_t>(length, 200);
            module.SetTexts(Letters(answers));
            TDStringA question(BytesOf(Letters(length)));
            TDStringA answer(BytesOf(u"ř" + Letters(length)));
            TCall call;

            // A string in both values.
            TValue out = DStringValue(&answer);
            EXPECT_TRUE(call.Query(driver, DStringValue(&question), out));
            EXPECT_EQ(call.code, 0);
            EXPECT_EQ(module.Given(), Utf8Of(Letters(arrives)));
            EXPECT_EQ(module.Present(), Utf8Of((u"ř" + Letters(length)).substr(0, third ? length + 1 : 255)));
            EXPECT_EQ(answer.View(), BytesOf(Letters(answers)));
            EXPECT_EQ(question.View(), BytesOf(Letters(length)));
            EXPECT_EQ(ValueDString(out), &answer);

            // Only in the question.
            call.code = kUntouched;
            module.Control().log.clear();
            out = Tagged(kTagReal, 8);
            EXPECT_TRUE(call.Query(driver, DStringValue(&question), out));
            EXPECT_EQ(call.code, 0);
            EXPECT_EQ(module.TakeLog(), (third ? "QueryProc3 15 " : "QueryProc 11 ") + std::to_string(arrives) +
                                            " 10 8" + (third ? " 10\n" : "\n"));
            EXPECT_EQ(module.Given(), Utf8Of(Letters(arrives)));
            EXPECT_EQ(out.GetField<std::uint32_t>(4), third ? 15U : 11U);

            // Only in the answer, which has none yet.
            call.code = kUntouched;
            out = DStringValue(nullptr);
            EXPECT_TRUE(call.Query(driver, Tagged(kTagReal, 8), out));
            EXPECT_EQ(call.code, 0);
            EXPECT_EQ(module.TakeLog(), (third ? "QueryProc3 10 8 15 0 15\n" : "QueryProc 10 8 11 0\n"));
            EXPECT_EQ(ValueDString(out)->View(), BytesOf(Letters(answers)));
            DisposeValueDString(&out);
        }
    });
}

TEST(DriverExchange, AnAnswerThatOutgrowsTheRoomIsAskedForTwice) {
    for (const bool wide : {false, true}) {
        const CTestModule module(3, wide);
        CInitializedDriver driver(module);
        module.SetTexts(Letters(5000));
        TDStringA answer(std::string_view("present"));
        TValue out = DStringValue(&answer);
        for (const std::uint32_t calls : {2U, 1U}) {
            module.Control().text_calls = 0;
            answer.Assign("present");
            TCall call;
            EXPECT_TRUE(call.Query(driver, Tagged(kTagReal), out));
            EXPECT_EQ(module.Control().text_calls, calls);
            EXPECT_EQ(module.Present(), "present");
            EXPECT_EQ(answer.View(), BytesOf(Letters(5000)));
        }
    }
}

}  // namespace
