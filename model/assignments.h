#pragma once

#include <cstdint>
#include <vector>

#include "model/section_def.h"

namespace kq_pdt {

class CParSheetData;

/// Carries out assignments to variables, and lets follow what depends on them: instances adjust themselves, and a
/// dependent section is created. Either may assign in turn, so both the depth and the number of sections are bounded. A
/// new value for the bound references of a section has the same effects and counts as an assignment.
class CAssignments {
public:
    /// How deep assignments may set each other off.
    static constexpr std::uint32_t kMaxDepth = 100;
    /// How many sections one assignment may create, with all that it sets off.
    static constexpr std::uint32_t kMaxSections = 100;

    explicit CAssignments(CParSheetData &sheet_data) : sheet_data_(sheet_data) {}

    /// Stores the value and lets everything follow that depends on the variable. Gives the section that was created, or
    /// none. If anything refuses, the old value comes back and ok is false.
    CSectionDef *Assign(CVariable &variable, const TParValue &value, bool &ok);
    /// Lets instances and dependent sections follow a changed value; variable is null if a bound value has changed.
    CSectionDef *Follow(CVariable *variable, const TParValue &value, bool &ok);

    /// Finds the definitions with `depend_on` anew, after a change of the list of definitions.
    void FindDependents(const CSectionList &definitions);
    /// A definition was put at the end of the list.
    void AddDependent(CSectionDef &definition);
    /// While a parameter file is read instances don't follow changed variables.
    void SetReading(bool reading) { reading_ = reading; }

private:
    class CGuard;

    void NotifyInstances(const CVariable *variable, const TParValue &value, bool &ok);

    CParSheetData &sheet_data_;
    std::vector<CSectionDef *> dependents_;  ///< definitions with `depend_on`, in order
    bool reading_ = false;
    std::uint32_t depth_ = 0;             ///< assignments under way
    std::uint32_t sections_created_ = 0;  ///< by the outermost of them
};

}  // namespace kq_pdt
