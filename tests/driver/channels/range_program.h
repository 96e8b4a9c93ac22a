#pragma once

#include <cstdint>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "driver/channels/channel_range.h"
#include "driver/channels/channel_range_owner.h"
#include "driver/channels/texts.h"
#include "platform/base/code_page.h"
#include "platform/base/par_value.h"

/// A little language in which tests say what happens to a table of channel ranges, and what they see afterwards. It
/// runs on our table and on the reference alike.

/// Keeps all that a table says, in UTF-8: one line a report, with `E` or `W` before it; the other calls are counted.
class CRecordingOwner : public kq_pdt::CChannelRangeOwner {
public:
    void AddWarning(std::string_view text1, std::string_view text2, std::uint32_t position) override {
        Keep("W:", text1, text2, position);
    }
    void AddError(std::string_view text1, std::string_view text2, std::uint32_t position) override {
        Keep("E:", text1, text2, position);
    }
    void ChannelsChanged() override { ++changes; }
    void SelectChannelRow(std::uint32_t row) override { selected = row; }

    std::string reports;
    std::uint32_t changes = 0;
    std::uint32_t selected = 0;

private:
    void Keep(const char *mark, std::string_view text1, std::string_view text2, std::uint32_t position) {
        reports += mark + kq_base::ToUtf8(text1) + "|" + kq_base::ToUtf8(text2);
        reports += position == 0xFFFFFFFF ? "\n" : " with a position\n";
    }
};

inline std::string CodeText(std::uint32_t code) {
    return code == kq_pdt::kUndefinedCode ? "-" : std::string(kq_pdt::KeywordText(code));
}

/// `4-6 boolean output D 'x'`: D defined, t type free, d direction free, c continues, the name only if there is one.
/// `real input`, which most ranges of the tests are, isn't shown.
inline std::string RangeText(const kq_pdt::CChannelRange &range) {
    const std::string kind = CodeText(range.type) + " " + CodeText(range.direction);
    std::string text = std::to_string(range.first) + "-" + std::to_string(range.last);
    text += kind == "real input" ? "" : " " + kind;
    std::string flags = std::string(range.defined ? "D" : "") + (range.typeFree ? "t" : "") +
                        (range.directionFree ? "d" : "") + (range.continues ? "c" : "");
    text += flags.empty() ? "" : " " + flags;
    return range.name.IsEmpty() ? text : text + " '" + std::string(range.name.View()) + "'";
}

/// All rows of a table, separated by `; `.
template <class TTable>
std::string TableText(const TTable &table) {
    std::string text;
    kq_pdt::CChannelRange range;
    for (std::uint32_t row = 0; table.GetRow(row, range); ++row) {
        text += (row == 0 ? "" : "; ") + RangeText(range);
    }
    return text;
}

/// Runs statements separated by `;`, a code of `-` meaning undefined:
///     def FIRST LAST TYPE DIRECTION [NAME]     fits FIRST LAST TYPE DIRECTION     append TYPE DIRECTION DEFINED COUNT
///     remove FIRST     from OLD NEW     to KEY OLD NEW     number OLD NEW     all KEY FIRST LAST
///     count KEY OLD NEW     type KEY WORD     direction KEY WORD
/// Gives the results in a row: `+` true, `-` false, for append the bounds if it is true.
template <class TTable>
class CRangeProgram {
public:
    CRangeProgram(TTable &table, const std::string &program) : table_(table), program_(program) {}

    std::string Run() {
        std::string statement;
        std::string results;
        while (std::getline(program_, statement, ';')) {
            words_ = std::istringstream(statement);
            results += (results.empty() ? "" : " ") + RunStatement();
        }
        return results;
    }

private:
    std::string RunStatement() {
        const std::string verb = Word();
        if (verb == "def" || verb == "fits") {
            const std::uint32_t first = Number();
            const std::uint32_t last = Number();
            const std::uint32_t type = Code();
            const std::uint32_t direction = Code();
            return Truth(verb == "def" ? table_.AddDefined(first, last, type, direction, Word())
                                       : table_.DefineIfFits(first, last, type, direction));
        }
        if (verb == "append") {
            return Append();
        }
        if (verb == "remove") {
            table_.RemoveRange(Number());
            return "+";
        }
        return Truth(Change(verb));
    }

    std::string Append() {
        const std::uint32_t type = Code();
        const std::uint32_t direction = Code();
        const bool defined = Number() != 0;
        std::uint32_t first = 0;
        std::uint32_t last = 0;
        if (!table_.AppendRange(type, direction, first, last, defined, Number())) {
            return first == last && first == kNoNumber ? "-" : "bounds of nothing";
        }
        return std::to_string(first) + "-" + std::to_string(last);
    }

    bool Change(const std::string &verb) {
        const bool has_key = verb != "from" && verb != "number";
        const std::uint32_t key = has_key ? Number() : 77777;
        if (verb == "type" || verb == "direction") {
            return table_.ChangeParameter(key, verb == "type" ? kq_pdt::kwChType : kq_pdt::kwChDirection,
                                          TParValue::Number(0), TParValue::Number(Code()));
        }
        const std::uint32_t keyword = verb == "from"    ? kq_pdt::kwChFrom
                                      : verb == "to"    ? kq_pdt::kwChTo
                                      : verb == "all"   ? kq_pdt::kwAll
                                      : verb == "count" ? kq_pdt::kwChCount
                                                        : kq_pdt::kwChNumber;
        const TParValue old_value = TParValue::Number(Number());
        return table_.ChangeParameter(key, keyword, old_value, TParValue::Number(Number()));
    }

    static std::string Truth(bool truth) { return truth ? "+" : "-"; }
    std::string Word() {
        std::string word;
        words_ >> word;
        return word;
    }
    std::uint32_t Number() { return static_cast<std::uint32_t>(std::stoul(Word())); }
    std::uint32_t Code() {
        const std::string word = Word();
        return word == "-" ? kq_pdt::kUndefinedCode : kq_pdt::FindKeyword(word);
    }

    TTable &table_;
    std::istringstream program_;
    std::istringstream words_;
};
