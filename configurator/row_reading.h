#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/matcher.h"
#include "model/section_def.h"

namespace kq_pdt {

class CValueReading;

/// What a reading of the written file would make of a row.
struct TRowReading {
    enum class TOutcome : std::uint8_t {
        kSame,
        kNotWritten,   ///< the row leaves no line
        kNoName,       ///< the row has no name, or an empty one
        kBroken,       ///< the line's text ends too early or goes on too far: quotes, comments, line ends
        kLongName,     ///< the name of a line without values leaves the lines below it no room for their `=`
        kUnknownName,  ///< no definition has the name
        kOtherRow,     ///< the name belongs to another definition
        kOverwritten,  ///< another row's name belongs to this row's definition, so its values come here
        kOtherValue,   ///< a cell gets another value
        kRefused,      ///< a value isn't accepted
    };

    // NOLINTNEXTLINE(google-explicit-constructor): most outcomes have nothing more to say.
    TRowReading(TOutcome what = TOutcome::kSame, const CItem *where = nullptr, std::string_view read = {})
        : outcome(what), item(where), text(read) {}

    TOutcome outcome;
    const CItem *item;  ///< of kOtherValue the cell; of kRefused the first one of the value, if it has one
    std::string text;   ///< of kOtherValue what it would show, of kRefused the text that is refused
};

/// Reads a row as the parameter file would hold it, in the same way as the reader does, but without touching the model:
/// the line is written and scanned, its name is matched against the definitions, and its values against the patterns of
/// the row. Conditions count as they are at that line, which may be otherwise than now: see CReadTimeVariables. What a
/// line does to other lines isn't part of it.
///
/// The cost of a row doesn't depend on the number of rows, but where a definition of a key that can't come several
/// times competes for names with others: then the rows of those others are looked at.
class CRowReading {
public:
    TRowReading ReadSection(CSectionDef &section);
    TRowReading ReadKey(CSectionDef &section, CKeyDef &key);

private:
    using TOutcome = TRowReading::TOutcome;

    TRowReading ReadUnknownKey(CSectionDef &section, CKeyDef &key);
    TRowReading ReadKnownKey(CSectionDef &section, CKeyDef &key);
    TRowReading ReadValues(CSectionDef &section, CKeyDef &key);
    bool TakeValue(std::string_view value, CSectionDef &section, CKeyDef &key, CParDef &par, CValueReading &reading);
    TRowReading CompareName(CSectionDef &section, CKeyDef *key, const CItemSeq *pattern, std::string_view text,
                            bool replaced);
    bool IsOverwritten(CSectionDef &section, CKeyDef &key);
    CSectionDef *MatchSection(CSectionDef &section, std::string_view name);
    const CKeyDef *MatchKey(const CSectionDef &definition, std::string_view name);

    CMatcher matcher_;
    std::vector<CSectionDef *> sections_;
    std::vector<const CKeyDef *> keys_;

    // The line that was scanned.
    std::string name_;
    std::vector<std::string> values_;
    std::vector<std::string_view> separators_;  ///< before each value but the first
    std::string raw_;                           ///< all values as one text
    bool has_line_ = false;

    TOutcome ScanKey(CSectionDef &section, CKeyDef &key);
};

}  // namespace kq_pdt
