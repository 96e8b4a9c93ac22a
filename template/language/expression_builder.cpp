// Depth is bounded twice over: a node that goes in too deep is refused at once, which bounds the compiler's own
// recursion, and an operator that turns up above a finished left operand is refused if that operand gets too deep by
// it.

#include "template/language/expression_builder.h"

#include <algorithm>
#include <utility>

namespace kq_pdt {

void CExpressionBuilder::Clear() {
    nodes_.clear();
    root_ = kNone;
    cursor_ = kNone;
    base_level_ = 0;
}

CExpressionBuilder::TResult CExpressionBuilder::Add(TExprKind kind, bool counted, bool move_cursor) {
    const auto index = static_cast<TCursor>(nodes_.size());
    const std::uint32_t above = root_ == kNone ? base_level_ : nodes_[cursor_].level;
    const std::uint32_t level = above + (counted ? 1 : 0);
    if (level > kMaxDepth) {
        return TResult::kTooDeep;
    }
    if (root_ == kNone) {
        root_ = index;
        cursor_ = index;
    } else if (nodes_[cursor_].left == kNone) {
        nodes_[cursor_].left = index;
    } else if (nodes_[cursor_].right == kNone) {
        nodes_[cursor_].right = index;
    } else {
        return TResult::kFull;
    }
    TNode &node = nodes_.emplace_back();
    node.kind = kind;
    node.level = level;
    node.counted = counted;
    if (move_cursor) {
        cursor_ = index;
    }
    return TResult::kDone;
}

bool CExpressionBuilder::HasFreeSlot() const {
    return root_ == kNone || nodes_[cursor_].left == kNone || nodes_[cursor_].right == kNone;
}

CExpressionBuilder::TResult CExpressionBuilder::Attach() { return Add(TExprKind::kGroup, false, true); }

CExpressionBuilder::TResult CExpressionBuilder::AttachParentheses() { return Add(TExprKind::kGroup, true, true); }

CExpressionBuilder::TResult CExpressionBuilder::AddOperand(TExprKind kind, TParValue value) {
    const TResult result = Add(kind, false, false);
    if (result == TResult::kDone) {
        nodes_.back().value = std::move(value);
    }
    return result;
}

CExpressionBuilder::TResult CExpressionBuilder::SetNodeKind(TExprKind kind) {
    TNode &node = nodes_[cursor_];
    if (node.kind == TExprKind::kNegate) {
        return TResult::kFull;
    }
    if (!node.counted) {
        if (node.level + 1 + Height(node.left) > kMaxDepth) {
            return TResult::kTooDeep;
        }
        node.counted = true;
        ++node.level;
    }
    node.kind = kind;
    return TResult::kDone;
}

std::uint32_t CExpressionBuilder::Height(TCursor root) const {
    std::uint32_t height = 0;
    std::vector<std::pair<TCursor, std::uint32_t>> pending;
    if (root != kNone) {
        pending.emplace_back(root, 0);
    }
    while (!pending.empty()) {
        const auto [index, above] = pending.back();
        pending.pop_back();
        const TNode &node = nodes_[index];
        const std::uint32_t here = above + (node.counted ? 1 : 0);
        height = std::max(height, here);
        for (const TCursor child : {node.left, node.right}) {
            if (child != kNone) {
                pending.emplace_back(child, here);
            }
        }
    }
    return height;
}

CExpressionBuilder::TSavedTree CExpressionBuilder::BeginArgument() {
    const TSavedTree saved{root_, cursor_, base_level_};
    base_level_ = root_ == kNone ? base_level_ + 1 : nodes_[cursor_].level + 1;
    root_ = kNone;
    cursor_ = kNone;
    return saved;
}

CExpressionBuilder::TResult CExpressionBuilder::EndArgument(const TSavedTree &saved) {
    const TCursor argument = root_;
    root_ = saved.root;
    cursor_ = saved.cursor;
    base_level_ = saved.base_level;
    const TResult result = Add(TExprKind::kFunction, true, false);
    if (result == TResult::kDone) {
        nodes_.back().left = argument;
    }
    return result;
}

/// A node without an operator and with one child is only a way down.
CExpressionBuilder::TCursor CExpressionBuilder::SkipGroups(TCursor node) const {
    while (nodes_[node].kind == TExprKind::kGroup) {
        node = nodes_[node].left;
    }
    return node;
}

/// Appends a subtree in preorder and gives the index of its root. A function keeps in `right` the index after its
/// argument.
std::uint32_t CExpressionBuilder::Emit(TCursor node, CExpression::TNodes &nodes) const {
    const TNode &source = nodes_[SkipGroups(node)];
    const auto index = static_cast<std::uint32_t>(nodes.size());
    nodes.push_back({source.kind, CExprNode::kNoChild, CExprNode::kNoChild, source.value});
    if (source.left != kNone) {
        const std::uint32_t left = Emit(source.left, nodes);
        nodes[index].left = left;
    }
    if (source.kind == TExprKind::kFunction) {
        nodes[index].right = static_cast<std::uint32_t>(nodes.size());
    } else if (source.right != kNone) {
        const std::uint32_t right = Emit(source.right, nodes);
        nodes[index].right = right;
    }
    return index;
}

std::unique_ptr<CExpression> CExpressionBuilder::Finish(CExpressionContext &context) {
    std::size_t count = 0;
    for (const TNode &node : nodes_) {
        count += node.kind == TExprKind::kGroup ? 0 : 1;
    }
    CExpression::TNodes nodes;
    nodes.reserve(count);
    if (root_ != kNone) {
        Emit(root_, nodes);
    }
    Clear();
    return std::make_unique<CExpression>(context, std::move(nodes));
}

}  // namespace kq_pdt
