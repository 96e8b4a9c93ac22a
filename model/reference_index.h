#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "model/section_def.h"

namespace kq_pdt {

/// Where the instances of one definition section refer to a variable: in its name or groups, and in these of its keys.
struct TSectionUse {
    CSectionDef *section = nullptr;
    bool in_section = false;
    std::vector<const CKeyDef *> keys;  ///< definitions, in order

    bool Holds(const CKeyDef *definition) const;
};

/// Who has to do with a variable: definitions in their order.
struct TVariableUses {
    std::vector<TSectionUse> readers;     ///< conditions, defaults, groups, and words that a variable picks
    std::vector<TSectionUse> publishers;  ///< items with `id`
};

/// Which definitions refer to which variable. A name means the same variable in all instances of a definition: that of
/// the key, the section or the root, whichever declares it first on the way out. So who refers to what can be known
/// from the definitions alone.
class CReferenceIndex {
public:
    /// Goes through all definitions; to be called when their list has changed.
    void Rebuild(const CSectionList &definitions);
    /// Who has to do with a variable of the root scope or, with a definition section given, of that section's own
    /// scope. Variables of keys concern their own key alone and aren't held. Never null.
    std::shared_ptr<const TVariableUses> Find(const CSectionDef *scope, std::string_view name) const;
    /// The definition section that an assignment to a variable of the root scope creates, or none.
    CSectionDef *Dependent(std::string_view name) const;

private:
    using TKey = std::pair<const CSectionDef *, std::string>;

    void AddItems(const CItemSeq &items, CSectionDef &section, const CKeyDef *key);
    void AddUse(std::string_view name, bool publishes, CSectionDef &section, const CKeyDef *key);
    void AddExpression(const CExpression *expression, CSectionDef &section, const CKeyDef *key);
    void AddGroups(const CDefNode &node, CSectionDef &section, const CKeyDef *key);
    void AddAttributes(const CItem &item, CSectionDef &section, const CKeyDef *key);

    std::map<TKey, std::shared_ptr<TVariableUses>> uses_;
    std::map<std::string, CSectionDef *, std::less<>> dependents_;
};

}  // namespace kq_pdt
