#include "model/assignments.h"

#include <algorithm>

#include "model/sheet_data.h"

namespace kq_pdt {

/// One more assignment under way, for the length of a block. The outermost one begins to count the sections anew.
class CAssignments::CGuard {
public:
    explicit CGuard(CAssignments &assignments) : assignments_(assignments) {
        if (assignments_.depth_++ == 0) {
            assignments_.sections_created_ = 0;
        }
    }
    ~CGuard() { --assignments_.depth_; }
    CGuard(const CGuard &) = delete;
    CGuard &operator=(const CGuard &) = delete;

private:
    CAssignments &assignments_;
};

CSectionDef *CAssignments::Assign(CVariable &variable, const TParValue &value, bool &ok) {
    if (depth_ >= kMaxDepth) {
        ok = false;
        return nullptr;
    }
    const CGuard guard(*this);
    const TParValue old_value = variable.Stored();
    variable.Replace(value);
    CSectionDef *created = Follow(&variable, value, ok);
    if (!ok) {
        variable.Replace(old_value);
        bool ignored = true;
        NotifyInstances(&variable, old_value, ignored);
        sheet_data_.Post(cmRebuildSheets);
        created = nullptr;
    }
    return created;
}

CSectionDef *CAssignments::Follow(CVariable *variable, const TParValue &value, bool &ok) {
    if (variable == nullptr) {
        if (depth_ < kMaxDepth) {
            const CGuard guard(*this);
            NotifyInstances(nullptr, value, ok);
            sheet_data_.Post(cmRebuildSheets);
        }
        return nullptr;
    }
    NotifyInstances(variable, value, ok);
    if (!ok) {
        sheet_data_.Post(cmRebuildSheets);
        return nullptr;
    }
    const auto dependent = std::find_if(dependents_.begin(), dependents_.end(), [variable](CSectionDef *definition) {
        const CVarRefItem *depend_on = definition->DependOn();
        return depend_on->Name() == variable->Name() && depend_on->Variable() == variable;
    });
    if (dependent == dependents_.end()) {
        sheet_data_.Post(cmRebuildSheets);
        return nullptr;
    }
    if (sections_created_ >= kMaxSections) {
        ok = false;
        return nullptr;
    }
    ++sections_created_;
    CSectionDef &section = sheet_data_.Instances().Append((*dependent)->Clone(true));
    section.BindVariable(*variable);
    return &section;
}

void CAssignments::NotifyInstances(const CVariable *variable, const TParValue &value, bool &ok) {
    if (!reading_) {
        ok = true;
        sheet_data_.Instances().ParameterChanged(variable, value, ok);
    }
}

void CAssignments::FindDependents(const CSectionList &definitions) {
    dependents_.clear();
    for (const auto &definition : definitions) {
        AddDependent(*definition);
    }
}

void CAssignments::AddDependent(CSectionDef &definition) {
    if (definition.DependOn() != nullptr) {
        dependents_.push_back(&definition);
    }
}

}  // namespace kq_pdt
