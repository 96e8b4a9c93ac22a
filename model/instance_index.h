#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/name_index.h"
#include "platform/base/pool_map.h"

namespace kq_pdt {

class CSectionDef;

/// Finds instances without walking all of them: by their definition, and by a text that their name may match.
///
/// A name of constants and bound references is one text, so a look-up of that text finds it, whatever the case of its
/// letters: which of the names found is meant is the match's to decide. Other names are patterns, which are found by
/// the constants that they begin with. All instances of one definition have the same pattern; one instance is asked for
/// all of them, unless the name publishes or shows a variable.
class CInstanceIndex {
public:
    void Add(CSectionDef &section);
    void Remove(CSectionDef &section);
    /// The instance's name may show another text now.
    void Rename(CSectionDef &section);
    /// From now on no instance is found by a text, only by its definition.
    void ForgetNames();

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

private:
    using TSections = kq_base::TPoolVector<CSectionDef *>;
    enum class TForm { kNone, kText, kPattern, kSingle };
    struct TEntry {
        TForm form = TForm::kNone;
        std::string text;
        TLeads leads;

        friend bool operator==(const TEntry &, const TEntry &) = default;
    };
    /// The instances of a definition whose name is a pattern.
    struct TPatterns {
        TSections sections;
        std::uint32_t order = 0;        ///< in patterns_
        mutable std::size_t fresh = 0;  ///< before it all sections were taken
    };

    static TEntry Describe(CSectionDef &section);
    void Insert(CSectionDef &section);
    void Take(CSectionDef &section);
    void InsertPattern(CSectionDef &section, const TLeads &leads);
    void TakePattern(CSectionDef &section, const TLeads &leads);
    void AppendByText(std::string_view text, std::vector<CSectionDef *> &candidates) const;

    kq_base::TPoolMap<const CSectionDef *, TEntry> entries_;
    kq_base::TPoolMap<const CSectionDef *, TSections> by_definition_;
    kq_base::TPoolMap<std::uint64_t, TSections> by_text_;         ///< by the hash of the text that the name shows
    kq_base::TPoolMap<const CDefNode *, TPatterns> patterns_of_;  ///< by definition
    CNameIndex patterns_;                                         ///< definitions
    CNameIndex singles_;
    mutable std::vector<CNameIndex::TEntry> found_;
};

}  // namespace kq_pdt
