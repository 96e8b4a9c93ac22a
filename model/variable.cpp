#include "model/variable.h"

#include <cassert>

#include "model/journal.h"
#include "model/sheet_data.h"
#include "model/var_ref_item.h"
#include "platform/base/number_text.h"

namespace kq_pdt {

void CVariable::SetInitial(std::uint32_t keyword, std::uint32_t form, std::string_view text) {
    if (keyword != kwInitValue) {
        return;
    }
    if (form == kwCreateNewChannel) {
        value_ = TParValue::OfKind(TParKind::pvNewChannel);
        takes_new_channel_ = true;
        kq_base::ParseDecimal(text, new_channel_count_);
    } else if (form == formNumber) {
        std::uint32_t number = 0;
        if (kq_base::ParseDecimal(text, number)) {
            value_ = TParValue::Number(number);
        }
    } else if (form == formText) {
        value_ = TParValue::Text(text);
    }
}

void CVariable::Replace(const TParValue &value) {
    CJournal::Keep(value_);
    value_ = value;
}

std::unique_ptr<CVariable> CVariable::CloneFor(CVarScope &scope) const {
    auto clone = std::make_unique<CVariable>(*this);
    clone->scope_ = &scope;
    return clone;
}

void CVariable::Read(TParValue &value) {
    if (value_.kind == TParKind::pvNewChannel && takes_new_channel_ && scope_->Owner() != nullptr) {
        Replace(TParValue::Number(scope_->Owner()->NewChannelRange(false, new_channel_count_)));
    }
    value = value_;
    if (value.kind == TParKind::pvNone) {
        value.kind = TParKind::pvUndefined;
    }
}

CSectionDef *CVariable::Assign(const TParValue &value, bool &ok) {
    if (value == value_) {
        return nullptr;
    }
    CParSheetData *owner = scope_->Owner();
    if (owner == nullptr) {
        value_ = value;
        return nullptr;
    }
    return owner->Assignments().Assign(*this, value, true, ok);
}

void CVarScope::Push(CVarScope *scope) {
    ++scope->use_count_;
    stack_.push_back(scope);
}

void CVarScope::Pop() {
    assert(!stack_.empty());
    --stack_.back()->use_count_;
    stack_.pop_back();
}

CVariable &CVarScope::Declare(std::string_view name) {
    const kq_base::TText bounded(name);
    auto found = variables_.find(bounded.View());
    if (found == variables_.end()) {
        found = variables_.emplace(bounded.View(), std::make_unique<CVariable>(*this, bounded.View())).first;
    }
    return *found->second;
}

CVariable *CVarScope::Find(std::string_view name) const {
    for (std::size_t depth = stack_.size(); depth > 0; --depth) {
        const TVariables &variables = stack_[depth - 1]->variables_;
        const auto found = variables.find(name);
        if (found != variables.end()) {
            return found->second.get();
        }
    }
    const auto found = variables_.find(name);
    return found != variables_.end() ? found->second.get() : nullptr;
}

std::unique_ptr<CVarRefItem> CVarScope::Resolve(std::string_view name, bool declare_here) {
    const kq_base::TText bounded(name);
    if (declare_here) {
        CVarScope &innermost = stack_.empty() ? *this : *stack_.back();
        innermost.Declare(bounded.View());
    } else if (Find(bounded.View()) == nullptr) {
        Declare(bounded.View());
    }
    return std::make_unique<CVarRefItem>(bounded.View(), *this);
}

std::unique_ptr<CVarRefItem> CVarScope::Reference(std::string_view name) {
    const kq_base::TText bounded(name);
    if (Find(bounded.View()) == nullptr) {
        return nullptr;
    }
    return std::make_unique<CVarRefItem>(bounded.View(), *this);
}

void CVarScope::Value(std::string_view name, TParValue &value) const {
    if (CVariable *variable = Find(name)) {
        variable->Read(value);
    } else {
        value = TParValue::Undefined();
    }
}

CSectionDef *CVarScope::Assign(std::string_view name, const TParValue &value, bool &ok) {
    ok = true;
    CVariable *variable = Find(name);
    return variable != nullptr ? variable->Assign(value, ok) : nullptr;
}

std::unique_ptr<CVarScope> CVarScope::Clone() const {
    auto clone = std::make_unique<CVarScope>();
    clone->owner_ = owner_;
    for (const auto &[name, variable] : variables_) {
        clone->variables_.emplace(name, variable->CloneFor(*clone));
    }
    return clone;
}

}  // namespace kq_pdt
