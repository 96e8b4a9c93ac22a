#include "template/language/expression.h"

#include <algorithm>
#include <compare>
#include <utility>

namespace kq_pdt {

namespace {

/// Arithmetic wraps around on 32 bits. Like kinds keep their kind; of two texts or truth values the left one is the
/// result.
void Compute(TExprKind kind, TParValue &left, const TParValue &right) {
    if (left.kind != right.kind) {
        const bool unknown = left.kind == TParKind::pvUndefined || right.kind == TParKind::pvUndefined;
        left = TParValue::OfKind(unknown ? TParKind::pvUndefined : TParKind::pvNone);
        return;
    }
    if (!left.IsNumber()) {
        return;
    }
    switch (kind) {
        case TExprKind::kAdd:
            left.number += right.number;
            break;
        case TExprKind::kSubtract:
            left.number -= right.number;
            break;
        case TExprKind::kMultiply:
            left.number *= right.number;
            break;
        default:
            if (right.number == 0) {
                left = TParValue::Undefined();
            } else if (kind == TExprKind::kDivide) {
                left.number /= right.number;
            } else {
                left.number %= right.number;
            }
    }
}

/// An unknown operand makes the result unknown, even where the other one would decide.
void Combine(TExprKind kind, TParValue &left, const TParValue &right) {
    if (left.kind == TParKind::pvUndefined || right.kind == TParKind::pvUndefined) {
        left = TParValue::Undefined();
    } else if (left.kind == TParKind::pvBool && right.kind == TParKind::pvBool) {
        const bool both = left.IsTrue() && right.IsTrue();
        const bool any = left.IsTrue() || right.IsTrue();
        left = TParValue::Bool(kind == TExprKind::kAnd ? both : any);
    } else {
        left = TParValue();
    }
}

bool Holds(TExprKind kind, std::strong_ordering order) {
    switch (kind) {
        case TExprKind::kEqual:
            return order == 0;
        case TExprKind::kNotEqual:
            return order != 0;
        case TExprKind::kLess:
            return order < 0;
        case TExprKind::kLessEqual:
            return order <= 0;
        case TExprKind::kGreater:
            return order > 0;
        default:
            return order >= 0;
    }
}

/// Two unknown values are equal, so that `%v% = nedef` can ask; one unknown value fails every comparison, `<>` too.
void Compare(TExprKind kind, TParValue &left, const TParValue &right) {
    const bool left_unknown = left.kind == TParKind::pvUndefined;
    const bool right_unknown = right.kind == TParKind::pvUndefined;
    if (left_unknown || right_unknown) {
        left = TParValue::Bool(left_unknown && right_unknown && kind == TExprKind::kEqual);
    } else if (left.IsNumber() && right.IsNumber()) {
        left = TParValue::Bool(Holds(kind, left.number <=> right.number));
    } else if (left.kind == TParKind::pvText && right.kind == TParKind::pvText) {
        left = TParValue::Bool(Holds(kind, left.text.View() <=> right.text.View()));
    } else {
        left = TParValue();
    }
}

void Negate(TParValue &value) { value = value.IsNumber() ? TParValue::Number(0U - value.number) : TParValue(); }

void Invert(TParValue &value) {
    if (value.kind == TParKind::pvBool) {
        value = TParValue::Bool(!value.IsTrue());
    } else if (value.kind != TParKind::pvUndefined) {
        value = TParValue();
    }
}

}  // namespace

CExpression::CExpression(CExpressionContext &context, TNodes nodes) : context_(&context), nodes_(std::move(nodes)) {}

void CExpression::Evaluate(TParValue &result) const {
    result = TParValue();
    if (!nodes_.empty()) {
        EvaluateNode(0, result);
    }
}

void CExpression::EvaluateNode(std::uint32_t index, TParValue &result) const {
    const CExprNode &node = nodes_[index];
    if (node.kind == TExprKind::kLiteral) {
        result = node.value;
        return;
    }
    if (node.kind == TExprKind::kReference) {
        context_->ReadVariable(node.value.text.View(), result);
        return;
    }
    EvaluateNode(node.left, result);
    if (node.kind == TExprKind::kNegate) {
        Negate(result);
    } else if (node.kind == TExprKind::kNot) {
        Invert(result);
    } else if (node.kind == TExprKind::kFunction) {
        EvaluateFunction(result);
    } else {
        TParValue right;
        EvaluateNode(node.right, right);
        if (node.kind <= TExprKind::kModulo) {
            Compute(node.kind, result, right);
        } else if (node.kind <= TExprKind::kAnd) {
            Combine(node.kind, result, right);
        } else {
            Compare(node.kind, result, right);
        }
    }
}

void CExpression::EvaluateFunction(TParValue &result) const {
    if (result.IsNumber() && result.number != 0) {
        result.number = context_->NewChannels(result.number);
    } else {
        result = TParValue();
    }
}

bool CExpression::ReferencesVariable(const CVariable *variable) const {
    if (variable == nullptr) {
        return false;
    }
    for (std::size_t index = 0; index < nodes_.size(); ++index) {
        const CExprNode &node = nodes_[index];
        if (node.kind == TExprKind::kFunction) {
            // Nodes are in preorder: the argument is all that follows up to the function's end.
            index = node.right - 1;
        } else if (node.kind == TExprKind::kReference && context_->FindVariable(node.value.text.View()) == variable) {
            return true;
        }
    }
    return false;
}

bool CExpression::MakesChannels() const {
    return std::any_of(nodes_.begin(), nodes_.end(),
                       [](const CExprNode &node) { return node.kind == TExprKind::kFunction; });
}

}  // namespace kq_pdt
