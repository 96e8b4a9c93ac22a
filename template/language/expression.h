#pragma once

#include <cstdint>
#include <string_view>

#include "platform/base/par_value.h"
#include "platform/base/pooled.h"

namespace kq_pdt {

class CVariable;

/// What an expression needs of the model while it is evaluated.
class CExpressionContext {
public:
    virtual ~CExpressionContext() = default;
    /// The value of the variable that a name means at this moment; pvUndefined if there is none or it has no value.
    virtual void ReadVariable(std::string_view name, TParValue &value) = 0;
    /// The variable that a name means at this moment, or none.
    virtual CVariable *FindVariable(std::string_view name) = 0;
    /// Reserves count channels after the last one and gives the first number.
    virtual std::uint32_t NewChannels(std::uint32_t count) = 0;
};

/// Node kinds, under the numbers that the language has always used.
enum class TExprKind : std::uint32_t {
    kGroup = 0,  ///< the value of its left child; only while a tree is built
    kReference = 4,
    kLiteral = 5,
    kAdd = 10,
    kSubtract = 11,
    kMultiply = 12,
    kDivide = 13,
    kModulo = 14,
    kNegate = 15,
    kOr = 16,
    kAnd = 17,
    kNot = 18,
    kEqual = 19,
    kNotEqual = 20,
    kLess = 21,
    kLessEqual = 22,
    kGreater = 23,
    kGreaterEqual = 24,
    kFunction = 25,  ///< new_channel of its left child
};

/// One node of a finished tree.
struct CExprNode {
    static constexpr std::uint32_t kNoChild = 0xFFFFFFFF;

    TExprKind kind = TExprKind::kGroup;
    std::uint32_t left = kNoChild;   ///< index of the child in the expression's nodes
    std::uint32_t right = kNoChild;  ///< likewise
    TParValue value;                 ///< a literal's value; a reference's text is the name of its variable
};

/// An expression of a template: a tree that is evaluated anew whenever its value is asked for, since the variables in
/// it follow the parameters that a user changes. CExpressionBuilder makes it. It never changes afterwards, so items and
/// their clones share one. It is at most 200 operators, functions and parentheses deep.
class CExpression : public kq_base::CPooled {
public:
    using TNodes = kq_base::TPoolVector<CExprNode>;

    /// The root is the first node. The context has to outlive the expression.
    CExpression(CExpressionContext &context, TNodes nodes);

    /// Computes the value. There is no error: what makes no sense comes out as pvNone or pvUndefined. Both operands of
    /// every operator are evaluated, the left one first, and each new_channel reserves its channels, each time.
    void Evaluate(TParValue &result) const;
    /// True if the tree refers to this variable. The arguments of functions don't count.
    bool ReferencesVariable(const CVariable *variable) const;
    /// True if each evaluation reserves channels, so that two of them differ.
    bool MakesChannels() const;

    const TNodes &Nodes() const { return nodes_; }

private:
    void EvaluateNode(std::uint32_t index, TParValue &result) const;
    void EvaluateFunction(TParValue &result) const;

    CExpressionContext *context_;
    TNodes nodes_;
};

}  // namespace kq_pdt
