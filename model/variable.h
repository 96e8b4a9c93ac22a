#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/base/par_value.h"

namespace kq_pdt {

class CDefNode;
class CParSheetData;
class CSectionDef;
class CVarRefItem;
class CVarScope;

/// A named value that links items to each other: one item hands its value to it, others read it.
class CVariable {
public:
    CVariable(CVarScope &scope, std::string_view name) : scope_(&scope), name_(name) {}

    std::string_view Name() const { return name_.View(); }
    /// The value as it is stored, before anything is read.
    const TParValue &Stored() const { return value_; }

    /// `init_value`: the value that the variable starts with. form is a TAttributeForm or kwCreateNewChannel, which
    /// lets the variable take a fresh channel when it is first read.
    void SetInitial(std::uint32_t keyword, std::uint32_t form, std::string_view text);
    /// The value; pvUndefined if nothing was ever stored.
    void Read(TParValue &value);
    /// Stores a value and lets everything follow that depends on it. If something refuses, ok becomes false and the old
    /// value is back everywhere. Gives the section that was created, or none.
    CSectionDef *Assign(const TParValue &value, bool &ok);
    /// Stores a value and lets nothing follow.
    void Replace(const TParValue &value);
    /// The same variable in another scope.
    std::unique_ptr<CVariable> CloneFor(CVarScope &scope) const;
    /// Where it was declared.
    const CVarScope &Scope() const { return *scope_; }

private:
    CVarScope *scope_;
    kq_base::TText name_;
    TParValue value_;
    bool takes_new_channel_ = false;
    std::uint32_t new_channel_count_ = 1;
};

/// A set of variables, and on the root scope the stack of scopes that are in force: a name means the variable of the
/// innermost scope that has it.
class CVarScope {
public:
    using TVariables = std::map<std::string, std::unique_ptr<CVariable>, std::less<>>;

    void SetOwner(CParSheetData *owner) { owner_ = owner; }
    CParSheetData *Owner() const { return owner_; }
    /// The section or key that declares these variables; none for the root scope.
    CDefNode *Node() const { return node_; }
    void SetNode(CDefNode *node) { node_ = node; }

    /// Puts a scope in force, inside all others.
    void Push(CVarScope *scope);
    /// Ends the innermost one.
    void Pop();
    /// How often this scope is in force.
    std::uint32_t UseCount() const { return use_count_; }

    /// Finds or makes a variable of this very scope.
    CVariable &Declare(std::string_view name);
    /// The variable that a name means at this moment, or none.
    CVariable *Find(std::string_view name) const;
    /// A reference to a name: if no scope in force has it, it is declared, with declare_here in the innermost scope
    /// whatever the outer ones hold, and otherwise in this one.
    std::unique_ptr<CVarRefItem> Resolve(std::string_view name, bool declare_here);
    /// A reference to a name that is declared already; none if it isn't.
    std::unique_ptr<CVarRefItem> Reference(std::string_view name);
    /// The value of the variable that a name means; pvUndefined without one.
    void Value(std::string_view name, TParValue &value) const;
    /// Assigns to the variable that a name means; nothing happens without one.
    CSectionDef *Assign(std::string_view name, const TParValue &value, bool &ok);
    std::unique_ptr<CVarScope> Clone() const;
    /// Forgets all variables.
    void Clear() { variables_.clear(); }

    const TVariables &Variables() const { return variables_; }

private:
    friend class CScopeIsolation;

    std::uint32_t use_count_ = 0;
    CParSheetData *owner_ = nullptr;
    CDefNode *node_ = nullptr;
    TVariables variables_;
    std::vector<CVarScope *> stack_;  ///< the innermost last
};

/// Lets only the root scope be in force for the length of a block: what one node sets off in another one is looked up
/// in that other node's scopes, not in those of the node at work.
class CScopeIsolation {
public:
    explicit CScopeIsolation(CVarScope &root) : root_(root) { stack_.swap(root_.stack_); }
    ~CScopeIsolation() { stack_.swap(root_.stack_); }
    CScopeIsolation(const CScopeIsolation &) = delete;
    CScopeIsolation &operator=(const CScopeIsolation &) = delete;

private:
    CVarScope &root_;
    std::vector<CVarScope *> stack_;
};

}  // namespace kq_pdt
