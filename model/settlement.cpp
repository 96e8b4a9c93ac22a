// What an edit leaves to settle. A reading takes the items that publish a variable in the order of the file, so the
// variable ends with the value of the last one. Which items get a dependent section follows from that order as well: an
// item gets one as soon as a value of its own differs from the one that the variable has at that moment. It is asked
// twice, when its text is matched, where a number or string of several characters comes piece by piece and so always
// differs once, and when its section is published.

#include <algorithm>

#include "model/assignments.h"
#include "model/edit_state.h"
#include "model/reference_index.h"
#include "model/sheet_data.h"
#include "model/var_ref_item.h"

namespace kq_pdt {

/// An item that publishes a variable, with what decides about its dependent section.
struct CAssignments::TPublisher {
    CItem *item = nullptr;
    CSectionDef *section = nullptr;
    TParValue value;
    bool written = false;  ///< the parameter file holds its value
    bool creates = false;  ///< a reading creates a dependent section for it
};

namespace {

bool SameValue(const TParValue &left, const TParValue &right) {
    const auto is_unknown = [](const TParValue &value) {
        return value.kind == TParKind::pvUndefined || value.kind == TParKind::pvNone;
    };
    return left == right || (is_unknown(left) && is_unknown(right));
}

bool PublishesTo(const CItem &item, const CVariable &variable) {
    return item.IdVariable() != nullptr && item.IdVariable()->Name() == variable.Name();
}

/// Calls use(item) for the items of a name, and of a key's values, in the order of the file.
template <class TUse>
void ForEachItem(CDefNode &node, const TUse &use) {
    const auto visit = [&](const CItemSeq &items) {
        for (const auto &item : items.Items()) {
            use(*item);
        }
    };
    if (node.Names() != nullptr) {
        visit(node.Names()->Items());
    }
    if (node.Has(nfKey)) {
        for (const auto &par : static_cast<CKeyDef &>(node).Pars()) {
            visit(par->Items());
        }
    }
}

template <class TUse>
void ForEachPublisher(CDefNode &node, const CVariable &variable, const TUse &use) {
    ForEachItem(node, [&](CItem &item) {
        if (PublishesTo(item, variable)) {
            use(item);
        }
    });
}

CItem *LastOfNode(CDefNode &node, const CVariable &variable) {
    CItem *last = nullptr;
    ForEachPublisher(node, variable, [&](CItem &item) { last = &item; });
    return last;
}

/// Keys that come once are among the first, as many as the definition has.
CItem *LastOfSection(CSectionDef &section, const TSectionUse &use, const CVariable &variable) {
    const auto &keys = section.Keys();
    const bool repeated =
        std::any_of(use.keys.begin(), use.keys.end(), [](const CKeyDef *key) { return key->Has(nfMultiple); });
    const std::size_t end = repeated ? keys.size() : std::min(keys.size(), use.section->Keys().size());
    for (std::size_t index = end; index-- > 0;) {
        if (use.Holds(keys[index]->Definition())) {
            return LastOfNode(*keys[index], variable);
        }
    }
    return use.in_section ? LastOfNode(section, variable) : nullptr;
}

/// Does the item's text come in pieces when it is read, so that it creates a section in any case?
bool ComesInPieces(const CItem &item, const TParValue &value) {
    return item.Code() != TItemCode::kOptions && (value.IsNumber() ? value.number >= 10 : value.text.Length() >= 2);
}

}  // namespace

CItem *CAssignments::LastPublisher(const CVariable &variable, std::uint32_t before) const {
    CDefNode *node = variable.Scope().Node();
    if (node != nullptr && node->Has(nfKey)) {
        return LastOfNode(*node, variable);
    }
    const std::shared_ptr<const TVariableUses> uses = UsesOf(variable);
    CSectionDef *last = nullptr;
    CItem *item = nullptr;
    for (const TSectionUse &use : uses->publishers) {
        CSectionDef *section = node != nullptr ? static_cast<CSectionDef *>(node)
                                               : sheet_data_.Instances().Index().LastBefore(use.section, before);
        while (section != nullptr && (last == nullptr || section->Serial() > last->Serial())) {
            if (CItem *found = LastOfSection(*section, use, variable)) {
                last = section;
                item = found;
                break;
            }
            section = node != nullptr ? nullptr : sheet_data_.Instances().Index().PreviousOf(*section);
        }
    }
    return item;
}

void CAssignments::Publish(const CItem &item, CVarRefItem &reference, const TParValue &value, bool &ok) {
    CVariable *variable = reference.Variable();
    if (variable == nullptr) {
        return;
    }
    sheet_data_.Edit()->Touch(*variable);
    if (CSectionDef *dependent = reference.Dependent()) {
        const CScopeIsolation isolation(sheet_data_.RootScope());
        dependent->CapturedValueChanged(value, variable);
    }
    if (!SameValue(variable->Stored(), value) && LastPublisher(*variable) == &item) {
        Assign(*variable, value, false, ok);
    }
}

TParValue CAssignments::SettledValue(const CVariable &variable) const {
    if (CItem *item = LastPublisher(variable)) {
        return item->ValueInScopes();
    }
    const CDefNode *node = variable.Scope().Node();
    if (node == nullptr) {
        return {};
    }
    const CDefNode *definition = node->Has(nfKey)
                                     ? static_cast<const CDefNode *>(static_cast<const CKeyDef *>(node)->Definition())
                                     : static_cast<const CSectionDef *>(node)->Definition();
    return definition->Scope()->Variables().find(variable.Name())->second->Stored();
}

void CAssignments::NoteLostSource(CVariable &variable) {
    if (variable.Scope().Node() == nullptr && notes_lost_sources_) {
        lost_sources_.push_back(&variable);
    }
}

void CAssignments::SettleLostSources() {
    for (CVariable *variable : lost_sources_) {
        variable->Replace(SettledValue(*variable));
    }
    lost_sources_.clear();
}

void CAssignments::SettleRoot() {
    constexpr int kMaxRounds = 10;
    bool changed = true;
    for (int round = 0; changed && round < kMaxRounds; ++round) {
        changed = false;
        std::vector<CVariable *> variables;
        for (const auto &[name, variable] : sheet_data_.RootScope().Variables()) {
            variables.push_back(variable.get());
        }
        for (CVariable *variable : variables) {
            const TParValue value = SettledValue(*variable);
            if (!SameValue(value, variable->Stored())) {
                bool ok = true;
                Assign(*variable, value, false, ok);
                changed = true;
            }
        }
    }
}

void CAssignments::SettleVariable(CVariable &variable) {
    const CDefNode *node = variable.Scope().Node();
    if (node != nullptr && node->IsReleased()) {
        return;
    }
    const TParValue value = SettledValue(variable);
    if (!SameValue(value, variable.Stored())) {
        bool ok = true;
        Assign(variable, value, false, ok);
    }
    if (node == nullptr && sheet_data_.References().Dependent(variable.Name()) != nullptr) {
        SettleDependents(variable);
    }
}

void CAssignments::Settle() {
    TEditState &edit = *sheet_data_.Edit();
    while (!edit.refused && !(edit.touched.empty() && edit.orphans.empty())) {
        if (edit.touched.empty()) {
            CSectionDef *orphan = edit.orphans.back();
            edit.orphans.pop_back();
            const CScopeIsolation isolation(sheet_data_.RootScope());
            sheet_data_.Instances().Release(*orphan);
            continue;
        }
        CVariable *variable = edit.touched.front();
        edit.touched.erase(edit.touched.begin());
        edit.is_touched.erase(variable);
        SettleVariable(*variable);
    }
}

std::vector<CAssignments::TPublisher> CAssignments::Publishers(const CVariable &variable) const {
    std::vector<std::pair<CSectionDef *, const TSectionUse *>> sections;
    const std::shared_ptr<const TVariableUses> uses = UsesOf(variable);
    for (const TSectionUse &use : uses->publishers) {
        std::uint32_t serial = 0;
        while (CSectionDef *section = sheet_data_.Instances().Index().NextOf(use.section, serial)) {
            serial = section->Serial();
            sections.emplace_back(section, &use);
        }
    }
    std::sort(sections.begin(), sections.end(),
              [](const auto &left, const auto &right) { return left.first->Serial() < right.first->Serial(); });
    std::vector<TPublisher> publishers;
    for (const auto &[section, use] : sections) {
        const auto add = [&, section = section](CItem &item) {
            publishers.push_back({&item, section, item.ValueInScopes(), item.IsWritten(), false});
        };
        if (use->in_section) {
            ForEachPublisher(*section, variable, add);
        }
        for (const auto &key : section->Keys()) {
            if (use->Holds(key->Definition())) {
                ForEachPublisher(*key, variable, add);
            }
        }
    }
    return publishers;
}

bool CAssignments::HasSource(const CSectionDef &section) const {
    const CVarRefItem *depend_on = section.Definition() != nullptr ? section.Definition()->DependOn() : nullptr;
    if (depend_on == nullptr) {
        return false;
    }
    const CScopeIsolation isolation(sheet_data_.RootScope());
    const CVariable *variable = depend_on->Variable();
    if (variable == nullptr) {
        return false;
    }
    const std::vector<TPublisher> publishers = Publishers(*variable);
    return std::any_of(publishers.begin(), publishers.end(),
                       [&](const TPublisher &publisher) { return publisher.item->Dependent() == &section; });
}

void CAssignments::FindCreators(std::vector<TPublisher> &publishers) {
    TParValue current;
    for (auto begin = publishers.begin(); begin != publishers.end();) {
        const auto end = std::find_if(begin, publishers.end(),
                                      [&](const TPublisher &other) { return other.section != begin->section; });
        for (auto publisher = begin; publisher != end; ++publisher) {
            if (publisher->written) {
                publisher->creates =
                    ComesInPieces(*publisher->item, publisher->value) || !(publisher->value == current);
                current = publisher->value;
            }
        }
        for (auto publisher = begin; publisher != end; ++publisher) {
            publisher->creates = publisher->creates || !(publisher->value == current);
            current = publisher->value;
        }
        begin = end;
    }
}

void CAssignments::CreateAsFromText(CSectionDef &section) {
    const CScopeGuard scope(&section);
    if (!counts_on_) {
        sections_created_ = 0;
    }
    const auto create = [&](CItem &item) {
        const CVarRefItem *reference = item.IdVariable();
        if (reference == nullptr || item.Dependent() != nullptr ||
            sheet_data_.References().Dependent(reference->Name()) == nullptr || !item.IsWritten()) {
            return;
        }
        const TParValue value = item.ValueInScopes();
        CVariable *variable = reference->Variable();
        if (variable != nullptr && ComesInPieces(item, value)) {
            bool ok = true;
            item.SetDependent(CreateDependent(*variable, &value, ok));
        }
    };
    ForEachItem(section, create);
    for (const auto &key : section.Keys()) {
        const CScopeGuard key_scope(key.get());
        ForEachItem(*key, create);
    }
}

/// A section that nobody needs any more goes over to an item of the same value that has none yet. If there is no such
/// item, a deletion takes the section along, and any other edit is refused, since its content would be lost.
void CAssignments::SettleDependents(CVariable &variable) {
    TEditState &edit = *sheet_data_.Edit();
    std::vector<TPublisher> publishers = Publishers(variable);
    FindCreators(publishers);
    const CSectionDef *definition = sheet_data_.References().Dependent(variable.Name());
    std::vector<std::pair<CSectionDef *, TParValue>> spare;
    for (CSectionDef *orphan : edit.orphans) {
        if (orphan->Definition() == definition && !orphan->IsReleased()) {
            spare.emplace_back(orphan, orphan->BoundValue(variable.Name()));
        }
    }
    for (const TPublisher &publisher : publishers) {
        if (CSectionDef *dependent = publisher.item->Dependent(); dependent != nullptr && !publisher.creates) {
            spare.emplace_back(dependent, publisher.value);
            publisher.item->SetDependent(nullptr);
            if (std::find(edit.orphans.begin(), edit.orphans.end(), dependent) == edit.orphans.end()) {
                edit.orphans.push_back(dependent);
            }
        }
    }
    for (const TPublisher &publisher : publishers) {
        if (!publisher.creates || publisher.item->Dependent() != nullptr) {
            continue;
        }
        const auto fitting = std::find_if(spare.begin(), spare.end(), [&](const auto &section) {
            return SameValue(section.second, publisher.value);
        });
        if (fitting != spare.end()) {
            std::erase(edit.orphans, fitting->first);
            publisher.item->SetDependent(fitting->first);
            spare.erase(fitting);
            continue;
        }
        bool ok = true;
        CSectionDef *created = CreateDependent(variable, &publisher.value, ok);
        if (!ok) {
            sheet_data_.Refuse(true);
            return;
        }
        publisher.item->SetDependent(created);
    }
    if (!edit.removes && !edit.orphans.empty()) {
        sheet_data_.Refuse();
    }
}

}  // namespace kq_pdt
