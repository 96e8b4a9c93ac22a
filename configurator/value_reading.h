#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/cut_search.h"

namespace kq_pdt {

/// What a reading of a parameter file would leave in the items of a name or value, worked out without touching the
/// model: pieces of a text are taken, and publishing puts in defaults where no value was given, by the rules of each
/// kind of item.
class CValueReading {
public:
    /// The items of a new instance, before a text is read into them.
    explicit CValueReading(const CItemSeq &items);

    /// Copies into the items what a match of a pattern has cut from a text, piece by piece.
    void TakeCuts(const CItemSeq &pattern, const std::vector<TCut> &cuts, std::string_view text);
    /// The same for a name that consists of the pieces alone, as a key has it that may come several times. False if
    /// the items don't line up with the pieces.
    bool ReplaceByCuts(const CItemSeq &pattern, const std::vector<TCut> &cuts, std::string_view text);
    /// The last item takes a value that is left over, with the separator before it.
    void AppendRaw(std::string_view separator, std::string_view text);
    /// What publishing does: a default comes in place of a value that wasn't given. Inside the scopes of the items.
    void TakeDefaults();
    /// The first item whose cell wouldn't show what it shows now, while it is enabled; null if there is none. shown is
    /// then what it would show. Inside the scopes of the items.
    CItem *FindDifference(std::string &shown) const;

private:
    struct TValue {
        bool undefined = false;
        bool given = false;        ///< no default comes in its place
        std::uint32_t number = 0;  ///< of a number; of a choice the index of its entry
        kq_base::TText text;       ///< of a string
    };

    static TValue InitialValue(const CItem &item);
    static TValue ReadPiece(CItem &item, std::string_view text, const TCut &cut, bool ends_text, bool ends_pattern);
    static void TakeDigits(const CItem &item, std::string_view digits, bool ends_pattern, TValue &value);
    static std::string Shown(const CItem &item, const TValue &value);

    const CItemSeq::TItems &items_;
    std::vector<TValue> values_;
};

}  // namespace kq_pdt
