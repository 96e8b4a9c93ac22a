#pragma once

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "model/section_def.h"

namespace kq_pdt {

class CParSheetData;
struct TVariableUses;

/// Carries out assignments to variables, and lets follow what depends on them: instances adjust themselves, and a
/// dependent section is created. Either may assign in turn, so both the depth and the number of sections are bounded.
///
/// While a parameter file is read a variable has the value that came last, and the first value of each item creates a
/// section. An edit comes at any time and anywhere, yet has to leave what a reading of the written file would give. So
/// in an edit a variable keeps the value of the item that comes last in the file (Publish), and which items have a
/// dependent section is settled at the end (Settle): assignments.cpp and settlement.cpp.
class CAssignments {
public:
    /// How deep assignments may set each other off.
    static constexpr std::uint32_t kMaxDepth = 100;
    /// How many sections one assignment, or one edit, may create with all that it sets off.
    static constexpr std::uint32_t kMaxSections = 100;
    /// How many others an assignment outside an edit may set off. Far more than the sections of a file can need, and
    /// few enough that conditions in a circle, which refuse each other at each depth, come to an end.
    static constexpr std::uint32_t kMaxAssignments = 100'000;

    explicit CAssignments(CParSheetData &sheet_data) : sheet_data_(sheet_data) {}

    /// Stores the value and lets everything follow that depends on the variable. Gives the section that was created, or
    /// none; with creates false, and in an edit, none is. If anything refuses, ok is false: outside an edit the old
    /// value comes back then.
    CSectionDef *Assign(CVariable &variable, const TParValue &value, bool creates, bool &ok);
    /// Creates the dependent sections of a section that was published but not, or not wholly, read from a text: those
    /// that its values would create when the text that is written is read.
    void CreateAsFromText(CSectionDef &section);
    /// For the length of a block, all assignments count the sections that they create together, on from `count`.
    class CCommonCount {
    public:
        CCommonCount(CAssignments &assignments, std::uint32_t &count);
        ~CCommonCount();
        CCommonCount(const CCommonCount &) = delete;
        CCommonCount &operator=(const CCommonCount &) = delete;

    private:
        CAssignments &assignments_;
        std::uint32_t &count_;
    };
    /// While a file is read: an item that may have published a variable goes. It counts if a module takes it along,
    /// between a true and a false of NoteLostSources, which gives what was in force.
    void NoteLostSource(CVariable &variable);
    bool NoteLostSources(bool notes) { return std::exchange(notes_lost_sources_, notes); }
    /// Before another file is read: forgets those that went since the last SettleLostSources.
    void ForgetLostSources() { lost_sources_.clear(); }
    /// Gives the variables of such items the values of those that are left. Nothing follows.
    void SettleLostSources();
    /// Gives the variables of the root scope the values of the items that come last in the file. For sections that were
    /// published without being read: there a module's section may publish before an item that comes before it.
    void SettleRoot();
    /// In an edit: an item hands its value to its variable.
    void Publish(const CItem &item, CVarRefItem &reference, const TParValue &value, bool &ok);
    /// At the end of an edit: gives the variables that were touched the values, and the items the dependent sections,
    /// that a reading of the written file would give them.
    void Settle();
    /// Is the value still there for which a dependent section was created?
    bool HasSource(const CSectionDef &section) const;

    /// The item that gives a variable its value: of those that publish it, the last one in the file; or none. With a
    /// serial number given, only sections before it count, unless the variable is one of a section or key.
    CItem *LastPublisher(const CVariable &variable, std::uint32_t before = kNoNumber) const;
    /// Who has to do with a variable that isn't a key's own. Never null.
    std::shared_ptr<const TVariableUses> UsesOf(const CVariable &variable) const;

    /// While a text is read instances don't follow changed variables.
    void SetReading(bool reading) { reading_ = reading; }

private:
    class CGuard;
    struct TPublisher;

    CSectionDef *CreateDependent(CVariable &variable, const TParValue *value, bool &ok);
    void NotifyReaders(const CVariable &variable, const TParValue &value, bool &ok);
    TParValue SettledValue(const CVariable &variable) const;
    void SettleVariable(CVariable &variable);
    void SettleDependents(CVariable &variable);
    std::vector<TPublisher> Publishers(const CVariable &variable) const;
    static void FindCreators(std::vector<TPublisher> &publishers);

    CParSheetData &sheet_data_;
    bool reading_ = false;
    bool notes_lost_sources_ = false;
    std::vector<CVariable *> lost_sources_;
    std::uint32_t depth_ = 0;             ///< assignments under way
    std::uint32_t assignments_ = 0;       ///< that the outermost of them set off
    std::uint32_t sections_created_ = 0;  ///< by the outermost of them
    bool counts_on_ = false;              ///< sections_created_ goes on from one to the next
};

}  // namespace kq_pdt
