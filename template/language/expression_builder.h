#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "template/language/expression.h"

namespace kq_pdt {

/// Builds the tree of an expression while the compiler reads it, by means of a cursor into the growing tree.
///
/// The shape of a tree is not that of usual precedence: it follows from where the cursor is when an operator comes.
/// Each level of the grammar attaches a node, an operator is written into the node at the cursor and its right operand
/// goes beside the left one. Only some levels put the cursor back. Stored templates rely on the resulting shapes.
///
/// A node has two slots for children. What would need a third, or an operator that would land on the node of a minus
/// with one operand, is refused as kFull.
class CExpressionBuilder {
public:
    enum class TResult { kDone, kFull, kTooDeep };
    /// A node of the growing tree.
    using TCursor = std::uint32_t;
    /// A tree set aside while a function's argument is built.
    struct TSavedTree {
        TCursor root;
        TCursor cursor;
        std::uint32_t base_level;
    };

    /// Nodes from the root that hold an operator, a function or parentheses.
    static constexpr std::uint32_t kMaxDepth = 200;

    /// Forgets the tree.
    void Clear();

    /// Attaches a node that just leads down; the cursor moves to it.
    TResult Attach();
    /// The same for parentheses, which count as a level of their own.
    TResult AttachParentheses();
    /// Adds a literal or a reference below the cursor, which stays.
    TResult AddOperand(TExprKind kind, TParValue value);
    /// Writes an operator into the node at the cursor. kFull on the node of a minus.
    TResult SetNodeKind(TExprKind kind);
    /// True if the node at the cursor can take one more child.
    bool HasFreeSlot() const;

    TCursor Cursor() const { return cursor_; }
    void SetCursor(TCursor cursor) { cursor_ = cursor; }

    /// Begins the argument of a function: a tree of its own, one level below the cursor.
    TSavedTree BeginArgument();
    /// Ends it: the saved tree comes back, with the function and its argument as an operand below the cursor.
    TResult EndArgument(const TSavedTree &saved);

    /// The finished tree, without the nodes that only led down. Clears the builder.
    std::unique_ptr<CExpression> Finish(CExpressionContext &context);

private:
    static constexpr TCursor kNone = CExprNode::kNoChild;

    struct TNode {
        TExprKind kind = TExprKind::kGroup;
        TCursor left = kNone;
        TCursor right = kNone;
        std::uint32_t level = 0;  ///< counted nodes from the root to this one, included
        bool counted = false;
        TParValue value;
    };

    TResult Add(TExprKind kind, bool counted, bool move_cursor);
    std::uint32_t Height(TCursor root) const;
    TCursor SkipGroups(TCursor node) const;
    std::uint32_t Emit(TCursor node, CExpression::TNodes &nodes) const;

    std::vector<TNode> nodes_;
    TCursor root_ = kNone;
    TCursor cursor_ = kNone;
    std::uint32_t base_level_ = 0;
};

}  // namespace kq_pdt
