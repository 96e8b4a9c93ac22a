#include <gtest/gtest.h>

#include <array>
#include <map>
#include <random>

#include "driver/channels/channel_block_set.h"
#include "driver/channels/range_tree.h"
#include "driver/kq_drv.h"
#include "platform/base/code_page.h"
#include "tests/support/memory_disk.h"

namespace {

using namespace kq_drv;
using namespace kq_def;

constexpr std::uint32_t kHigh = 255;

/// A map with a buffer for errors; each operation gives its error in UTF-8, or `ok`.
class CMapUser {
public:
    CChannelMap map;

    std::string Load(std::string_view text) {
        const TDStringA string(text);
        return Answer(map.LoadFromDString(kHigh, Buffer(), &string));
    }
    std::string LoadFile(std::string_view path) {
        return Answer(map.LoadFromFile(kHigh, Buffer(), static_cast<std::uint32_t>(path.size()), path.data()));
    }
    std::string Check(std::uint32_t first, std::uint32_t count, std::uint32_t type, std::uint32_t direction) {
        return Answer(map.Check(kHigh, Buffer(), first, count, type, static_cast<TDirection>(direction)));
    }
    /// `type,direction`, or the error.
    std::string Get(std::uint32_t channel) {
        std::uint32_t type = 77;
        TDirection direction = kDirectionEither;
        const std::string answer = Answer(map.Get(kHigh, Buffer(), channel, type, direction));
        return answer != "ok" ? answer : std::to_string(type) + "," + std::to_string(direction);
    }

private:
    char *Buffer() {
        buffer_ = {'?', '\0'};
        return buffer_.data();
    }
    std::string Answer(bool result) const {
        EXPECT_EQ(result, std::string_view(buffer_.data()) == "?") << "a text is written on failure only";
        return result ? "ok" : kq_base::ToUtf8(buffer_.data());
    }

    std::array<char, kHigh + 1> buffer_{};
};

TEST(ChannelMap, Texts) {
    struct {
        const char *text;
        const char *answer;
        const char *channels;  ///< those below 10 that the map has then
    } cases[] = {
        {"", "ok", ""},
        {"1 real input", "ok", ""},
        {"begin", "ok", ""},
        {"x BEGIN 1 Real INPUT 5 - 5 bUfFeR Out eND. 2 real input", "ok", "1 5"},
        {"begin 1 - 3 real i 5 real in 7 real b 9 real bidirect", "ok", "1 2 3 5 7 9"},
        {"begin 1 real input end 2 real input 'open\n", "ok", "1"},
        {"begin (* 1 real input *) 2 real (* (* *) *) input", "ok", "2"},
        {"begin 1 real input 2", "ok", "1"},
        {"begin 1 real input 2 -", "ok", "1"},
        {"begin 1 real input 2 - 4", "ok", "1"},
        {"begin 1 real input 2 - 4 real", "ok", "1"},
        {"begin 1 real input 2 'open\n real input", "ok", "1"},
        {"begin 1 real input 2 12E real input", "ok", "1"},
        {"begin 1 real input real", "Nesprávné číslo v mapovacím souboru", "1"},
        {"begin 1 real input . 2 real input", "Nesprávné číslo v mapovacím souboru", "1"},
        {"begin 1 real input begin", "Nesprávné číslo v mapovacím souboru", "1"},
        {"begin 1 - x real input", "Nesprávné číslo v mapovacím souboru", ""},
        {"begin 1.5 real input", "Nesprávné číslo v mapovacím souboru (1.5)", ""},
        {"begin 4294967296 real input", "Nesprávné číslo v mapovacím souboru (4294967296)", ""},
        {"begin 1 - 2E1 real input", "Nesprávné číslo v mapovacím souboru (2E1)", ""},
        {"begin 8 - 5 real input", "Horní mez rozsahu je větší než dolní mez (5)", ""},
        {"begin 3..5 real input", "Očekáváno jméno typu", ""},
        {"begin 3 5 real input", "Očekáváno jméno typu", ""},
        {"begin 3 Šílený input", "Neznámý typ (šílený)", ""},
        {"begin 3 input real", "Neznámý typ (input)", ""},
        {"begin 3 real 4", "Očekáváno jméno směru", ""},
        {"begin 3 real INP", "Neznámý směr (inp)", ""},
        {"begin 1 real input 1 real input 2 real input", "Číslo kanálu redefinováno", "1"},
        {"begin 1 - 8 real input 3 real input", "Číslo kanálu redefinováno", "1 2 3 4 5 6 7 8"},
        {"begin 3 real input 1 - 8 real input", "ok", "1 2 3 4 5 6 7 8"},
        {"begin 0 - 4294967295 real input 5 real input", "Číslo kanálu redefinováno", "0 1 2 3 4 5 6 7 8 9"},
    };
    for (const auto &wanted : cases) {
        SCOPED_TRACE(wanted.text);
        std::string text;
        ASSERT_TRUE(kq_base::FromUtf8(wanted.text, text));
        CMapUser user;
        EXPECT_EQ(user.Load(text), wanted.answer);
        std::string channels;
        for (std::uint32_t channel = 0; channel < 10; ++channel) {
            if (user.Get(channel).find(',') != std::string::npos) {
                channels += (channels.empty() ? "" : " ") + std::to_string(channel);
            }
        }
        EXPECT_EQ(channels, wanted.channels);
        user.map.Done();
        EXPECT_EQ(user.Get(1), "Nesprávné číslo kanálu");
    }
}

TEST(ChannelMap, EveryWordHasItsCode) {
    const std::pair<const char *, std::uint32_t> types[] = {
        {"boolean", 2}, {"shortcard", 3}, {"cardinal", 4}, {"longcard", 5}, {"shortint", 6}, {"integer", 7},
        {"longint", 8}, {"shortreal", 9}, {"real", 10},    {"buffer", 12},  {"string", 14}};
    const std::pair<const char *, std::uint32_t> directions[] = {{"input", 1},  {"in", 1},       {"i", 1},
                                                                 {"output", 2}, {"out", 2},      {"o", 2},
                                                                 {"b", 3},      {"bidirect", 3}, {"bidirectional", 3}};
    for (const auto &[type, code] : types) {
        for (const auto &[direction, value] : directions) {
            CMapUser user;
            EXPECT_EQ(user.Load(std::string("begin 7 ") + type + " " + direction), "ok");
            EXPECT_EQ(user.Get(7), std::to_string(code) + "," + std::to_string(value));
        }
    }
}

TEST(ChannelMap, Check) {
    const std::string bad_channel = "Nesprávné číslo kanálu";
    const std::string bad_direction = "Nesprávný směr kanálu";
    const std::string bad_type = "Nesprávný typ kanálu";
    CMapUser user;
    EXPECT_EQ(user.Check(1, 0, 10, 1), bad_channel);
    EXPECT_EQ(user.Check(1, 1, 12, 1), "ok");
    user.Load("begin 0 boolean b 5 real input 6 real output 7 - 20 boolean b 21 - 4294967295 boolean b");
    EXPECT_EQ(user.Check(5, 1, 10, 1), "ok");
    EXPECT_EQ(user.Check(5, 2, 10, 1), bad_direction);
    EXPECT_EQ(user.Check(5, 1, 2, 2), bad_direction);
    EXPECT_EQ(user.Check(5, 1, 2, 1), bad_type);
    EXPECT_EQ(user.Check(4, 2, 10, 1), bad_channel);
    EXPECT_EQ(user.Check(4, 0, 10, 1), "ok");
    EXPECT_EQ(user.Check(4, 9, 12, 1), "ok");
    EXPECT_EQ(user.Check(7, 20, 2, 3), "ok");
    EXPECT_EQ(user.Check(7, 1, 2, 1), bad_direction);
    EXPECT_EQ(user.Check(7, 1, 2, 4), bad_direction);
    EXPECT_EQ(user.Check(7, 4294967289U, 2, 3), "ok");
    EXPECT_EQ(user.Check(7, 4294967290U, 2, 3), bad_channel);
    EXPECT_EQ(user.Check(0, 4294967295U, 2, 3), bad_channel);

    char small[4] = "abc";
    EXPECT_FALSE(user.map.Check(2, small, 0, 1, 10, kDirectionInput));
    EXPECT_STREQ(small, "Ne");
    EXPECT_FALSE(user.map.Check(0, nullptr, 0, 1, 10, kDirectionInput));
}

TEST(ChannelMap, CopiesShareAndLoadsAdd) {
    CMapUser user;
    user.Load("begin 5 real input");
    CMapUser other = user;
    EXPECT_EQ(user.Load("begin 6 real output"), "ok");
    EXPECT_EQ(other.Get(6), "10,2");
    EXPECT_EQ(other.Load("begin 7 real input 5 boolean input"), "Číslo kanálu redefinováno");
    EXPECT_EQ(user.Get(7), "10,1");
    other.map.Done();
    EXPECT_EQ(user.Get(5), "Nesprávné číslo kanálu");
    EXPECT_EQ(user.Load("begin 5 boolean input"), "ok");
    EXPECT_EQ(user.Get(5), "2,1");
}

TEST(ChannelMap, Files) {
    CMemoryDisk disk;
    std::string error;
    disk.Save("a.dmf", "begin 5 real input", error);
    CMapUser user;
    EXPECT_EQ(user.LoadFile("b.dmf"), "Nenalezen mapovací soubor");
    EXPECT_EQ(user.LoadFile("a.dmf"), "ok");
    EXPECT_EQ(user.Get(5), "10,1");
    EXPECT_EQ(user.LoadFile("a.dmf"), "Číslo kanálu redefinováno");
}

/// Blocks as drivers may deliver them: a block of no channels, one of all, one that may be used either way.
TEST(ChannelBlockSet, OddBlocks) {
    CChannelBlockSet blocks;
    CChannelBlock found;
    blocks.Insert({5, 0, 10, kDirectionInput});
    EXPECT_FALSE(blocks.Find(5, found));
    EXPECT_FALSE(blocks.Find(4, found));
    blocks.Insert({7, 2, 10, kDirectionEither});
    blocks.Insert({0, 0, 2, kDirectionOutput});
    EXPECT_TRUE(blocks.Find(0xFFFFFFFF, found));
    EXPECT_EQ(found.Last(), 0xFFFFFFFF);
    EXPECT_TRUE(blocks.Find(7, found));
    EXPECT_EQ(found.direction, kDirectionOutput);
}

TEST(TValue, FieldsLieWhereDriversLook) {
    TValue value;
    value.tag = kTagBuffer;
    char memory = 0;
    value.PutField(TValue::kBufferAt, &memory);
    std::array<unsigned char, sizeof(TValue)> bytes{};
    std::memcpy(bytes.data(), &value, sizeof value);
    const char *pointer = nullptr;
    std::memcpy(&pointer, bytes.data() + 7, sizeof pointer);
    EXPECT_EQ(pointer, &memory);
    EXPECT_EQ(value.GetField<char *>(TValue::kBufferAt), &memory);
    value = {};
    value.PutField(TValue::kCountAt, std::uint32_t{0x01020304});
    value.PutField(TValue::kCharactersAt, &memory);
    EXPECT_EQ(value.GetField<std::uint32_t>(TValue::kCountAt), 0x01020304U);
    EXPECT_EQ(value.GetField<char *>(TValue::kCharactersAt), &memory);
    std::memcpy(bytes.data(), &value, sizeof value);
    EXPECT_EQ(bytes[4], 4);
}

}  // namespace
