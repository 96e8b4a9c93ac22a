#include "model/assignments.h"

#include <algorithm>
#include <functional>
#include <queue>

#include "model/edit_state.h"
#include "model/reference_index.h"
#include "model/sheet_data.h"
#include "model/var_ref_item.h"

namespace kq_pdt {

/// One more assignment under way, for the length of a block. The outermost one begins to count the sections anew.
class CAssignments::CGuard {
public:
    explicit CGuard(CAssignments &assignments) : assignments_(assignments) {
        if (assignments_.depth_++ != 0) {
            return;
        }
        assignments_.assignments_ = 0;
        if (!assignments_.counts_on_) {
            assignments_.sections_created_ = 0;
        }
    }
    ~CGuard() { --assignments_.depth_; }
    CGuard(const CGuard &) = delete;
    CGuard &operator=(const CGuard &) = delete;

private:
    CAssignments &assignments_;
};

CAssignments::CCommonCount::CCommonCount(CAssignments &assignments, std::uint32_t &count)
    : assignments_(assignments), count_(count) {
    assignments_.sections_created_ = count;
    assignments_.counts_on_ = true;
}

CAssignments::CCommonCount::~CCommonCount() {
    assignments_.counts_on_ = false;
    count_ = assignments_.sections_created_;
}

CSectionDef *CAssignments::Assign(CVariable &variable, const TParValue &value, bool creates, bool &ok) {
    TEditState *edit = sheet_data_.Edit();
    if (depth_ >= kMaxDepth || (depth_ != 0 && ++assignments_ > kMaxAssignments) ||
        (edit != nullptr && (edit->refused || ++edit->assignments > TEditState::kMaxAssignments))) {
        ok = false;
        sheet_data_.Refuse();
        return nullptr;
    }
    const CGuard guard(*this);
    const TParValue old_value = variable.Stored();
    variable.Replace(value);
    NotifyReaders(variable, value, ok);
    sheet_data_.Post(cmRebuildSheets);
    if (edit != nullptr) {
        if (!ok) {
            sheet_data_.Refuse();
        }
        return nullptr;
    }
    CSectionDef *created = ok && creates ? CreateDependent(variable, nullptr, ok) : nullptr;
    if (!ok) {
        variable.Replace(old_value);
        bool ignored = true;
        NotifyReaders(variable, old_value, ignored);
        created = nullptr;
    }
    return created;
}

/// Creates the section that depends on a variable, if there is one; it is bound to the variable's value or another one.
/// While a file is read its text may still come, so it is published and gets its channels at the end.
CSectionDef *CAssignments::CreateDependent(CVariable &variable, const TParValue *value, bool &ok) {
    CSectionDef *definition =
        variable.Scope().Node() == nullptr ? sheet_data_.References().Dependent(variable.Name()) : nullptr;
    if (definition == nullptr) {
        return nullptr;
    }
    TEditState *edit = sheet_data_.Edit();
    std::uint32_t &created = edit != nullptr ? edit->sections_created : sections_created_;
    if (created >= kMaxSections) {
        ok = false;
        return nullptr;
    }
    ++created;
    const CScopeIsolation isolation(sheet_data_.RootScope());
    const CInstances::CHold hold(sheet_data_.Instances());
    CSectionDef &section = sheet_data_.Instances().Append(definition->Clone(true));
    section.BindVariable(variable);
    if (value != nullptr) {
        section.CapturedValueChanged(*value, &variable);
    }
    if (sheet_data_.IsReadingPar()) {
        return &section;
    }
    section.PublishTree();
    if (!section.CommitChannels()) {
        ok = false;
        sheet_data_.Instances().Release(section);
        return nullptr;
    }
    return section.IsReleased() ? nullptr : &section;
}

/// Instances follow in the order of the list; those created on the way follow, too.
void CAssignments::NotifyReaders(const CVariable &variable, const TParValue &value, bool &ok) {
    if (reading_) {
        return;
    }
    if (sheet_data_.Edit() == nullptr) {
        ok = true;
    }
    const CScopeIsolation isolation(sheet_data_.RootScope());
    const CInstances::CHold hold(sheet_data_.Instances());
    CDefNode *node = variable.Scope().Node();
    if (node != nullptr && node->IsReleased()) {
        return;
    }
    if (node != nullptr && node->Has(nfKey)) {
        auto *key = static_cast<CKeyDef *>(node);
        const CScopeGuard scope(key->Section());
        key->ParameterChanged(&variable, value, ok);
        return;
    }
    const std::shared_ptr<const TVariableUses> uses = UsesOf(variable);
    if (node != nullptr) {
        for (const TSectionUse &use : uses->readers) {
            static_cast<CSectionDef *>(node)->FollowVariable(use, &variable, value, ok);
        }
        return;
    }
    // Of each reader the serial number that its next instance has at least. Those that are created get higher ones.
    using TTurn = std::pair<std::uint32_t, const TSectionUse *>;
    std::priority_queue<TTurn, std::vector<TTurn>, std::greater<>> turns;
    for (const TSectionUse &use : uses->readers) {
        turns.emplace(1, &use);
    }
    const CInstances &instances = sheet_data_.Instances();
    while (!turns.empty() && turns.top().first < instances.NextSerial()) {
        const auto [serial, use] = turns.top();
        turns.pop();
        CSectionDef *next = instances.Index().NextOf(use->section, serial - 1);
        if (next == nullptr) {
            turns.emplace(instances.NextSerial(), use);
        } else if (!turns.empty() && turns.top().first < next->Serial()) {
            turns.emplace(next->Serial(), use);
        } else {
            turns.emplace(next->Serial() + 1, use);
            next->FollowVariable(*use, &variable, value, ok);
        }
    }
}

std::shared_ptr<const TVariableUses> CAssignments::UsesOf(const CVariable &variable) const {
    const CDefNode *node = variable.Scope().Node();
    const CSectionDef *section = node != nullptr ? static_cast<const CSectionDef *>(node)->Definition() : nullptr;
    return sheet_data_.References().Find(section, variable.Name());
}

}  // namespace kq_pdt
