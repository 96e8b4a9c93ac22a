#pragma once

#include <utility>
#include <vector>

#include "model/def_node.h"
#include "model/variable.h"

namespace kq_pdt {

/// Puts the variables of definitions back at its end. Where a name publishes, matching it assigns to them; but every
/// name is matched with the values that the template gives, and every instance begins with those. A channel that a
/// variable took when the name was matched stays its value, or each match would take another.
class CTemplateValues {
public:
    CTemplateValues() = default;
    ~CTemplateValues() {
        for (const auto &[variable, value] : values_) {
            variable->Replace(value);
        }
    }
    CTemplateValues(const CTemplateValues &) = delete;
    CTemplateValues &operator=(const CTemplateValues &) = delete;

    void Keep(const CDefNode &node) {
        if (node.Scope() != nullptr) {
            for (const auto &[name, variable] : node.Scope()->Variables()) {
                if (variable->Stored().kind != TParKind::pvNewChannel) {
                    values_.emplace_back(variable.get(), variable->Stored());
                }
            }
        }
    }

private:
    std::vector<std::pair<CVariable *, TParValue>> values_;
};

}  // namespace kq_pdt
