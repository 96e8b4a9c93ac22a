#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "model/item_list.h"

namespace kq_pdt {

class CSectionDef;

/// Finds instances without walking all of them: by their definition, and by a text that their name may match.
///
/// A name of constants and bound references is one text, so a look-up of that text finds it, whatever the case of its
/// letters: which of the names found is meant is the match's to decide. Other names are patterns, and all instances of
/// one definition have the same; one instance is asked for all of them, unless the name publishes or shows a variable.
class CInstanceIndex {
public:
    void Add(CSectionDef &section);
    void Remove(CSectionDef &section);
    /// The instance's name shows another text now.
    void Rename(CSectionDef &section);
    void Clear();

    /// The first instance of a definition, or none.
    CSectionDef *FirstOf(const CSectionDef *definition) const;
    /// The last one, or none.
    CSectionDef *LastOf(const CSectionDef *definition) const { return LastBefore(definition, kNoNumber); }
    /// The last one before a serial number, or none.
    CSectionDef *LastBefore(const CSectionDef *definition, std::uint32_t serial) const;
    /// The first one after a serial number, or none.
    CSectionDef *NextOf(const CSectionDef *definition, std::uint32_t serial) const;
    /// The one before an instance among those of its definition, or none.
    CSectionDef *PreviousOf(const CSectionDef &section) const;
    /// All instances that a text has to be matched against, in the order of the list. Of instances that show the same
    /// name, or have the same pattern, the first counts that no text was read into yet, or else the first.
    void FindCandidates(std::string_view text, std::vector<CSectionDef *> &candidates) const;
    /// True if the names of two instances are one text each, and the same.
    bool ShowOneName(const CSectionDef &left, const CSectionDef &right) const;

private:
    enum class TForm { kNone, kText, kPattern, kSingle };
    struct TEntry {
        TForm form = TForm::kNone;
        std::string text;
    };

    static TEntry Describe(CSectionDef &section);
    void Insert(CSectionDef &section);
    void Take(CSectionDef &section);

    std::unordered_map<const CSectionDef *, TEntry> entries_;
    std::unordered_map<const CSectionDef *, std::vector<CSectionDef *>> by_definition_;
    std::unordered_map<std::string, std::vector<CSectionDef *>> by_text_;
    std::unordered_map<const CSectionDef *, std::vector<CSectionDef *>> patterns_;
    mutable std::unordered_map<const CSectionDef *, std::size_t> fresh_;  ///< before it in patterns_ all were taken
    std::vector<CSectionDef *> singles_;
};

}  // namespace kq_pdt
