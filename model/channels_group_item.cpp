#include "model/channels_group_item.h"

#include "model/sheet_data.h"
#include "model/texts.h"

namespace kq_pdt {

namespace {

/// The word of the first row whose condition holds, 0 if none does.
std::uint32_t EvaluateRows(const CChannelCondList &rows) {
    for (const CChannelCondRow &row : rows) {
        TParValue value;
        row.condition->Evaluate(value);
        if (value.IsTrue()) {
            return row.word;
        }
    }
    return 0;
}

bool References(const std::shared_ptr<const CExpression> &expression, const CVariable *variable) {
    return expression && expression->ReferencesVariable(variable);
}

TParValue Evaluate(const std::shared_ptr<const CExpression> &expression) {
    TParValue value;
    if (expression) {
        expression->Evaluate(value);
    }
    return value;
}

}  // namespace

CChannelsGroupItem::CChannelsGroupItem(CParSheetData *sheet_data)
    : CItem(TItemCode::kChannelsGroup), sheet_data_(sheet_data) {}

void CChannelsGroupItem::SetBound(std::uint32_t keyword, std::unique_ptr<CExpression> expression) {
    if (keyword == kwChFrom && !from_expression_) {
        from_expression_ = std::move(expression);
    } else if (!to_expression_) {
        to_expression_ = std::move(expression);
    }
}

void CChannelsGroupItem::SetExpression(std::uint32_t keyword, std::uint32_t word,
                                       std::unique_ptr<CExpression> expression) {
    if (keyword != kwType && keyword != kwDirection) {
        return;
    }
    auto &rows = keyword == kwType ? type_rows_ : direction_rows_;
    if (!rows) {
        rows = std::make_unique<CChannelCondList>();
    }
    rows->push_back({word, std::move(expression)});
}

std::unique_ptr<CChannelsGroupItem> CChannelsGroupItem::CloneGroup() {
    auto clone = std::make_unique<CChannelsGroupItem>(sheet_data_);
    clone->from_expression_ = from_expression_;
    clone->to_expression_ = to_expression_;
    if (type_rows_) {
        clone->type_rows_ = std::make_unique<CChannelCondList>(*type_rows_);
    }
    if (direction_rows_) {
        clone->direction_rows_ = std::make_unique<CChannelCondList>(*direction_rows_);
    }
    CloneBaseInto(*clone);
    return clone;
}

std::unique_ptr<CItem> CChannelsGroupItem::Clone() { return CloneGroup(); }

/// The keyword code in use: that of the rows, 0 if none holds, or else of the item's own attribute, -1 without one.
std::uint32_t CChannelsGroupItem::CurrentWord(const CChannelCondList *rows, std::uint32_t keyword) {
    if (rows != nullptr) {
        return EvaluateRows(*rows);
    }
    std::uint32_t code = kUndefinedCode;
    return GetChannelAttr(keyword, code) ? code : kUndefinedCode;
}

bool CChannelsGroupItem::Define() {
    if (defined_) {
        return true;
    }
    const TParValue from = Evaluate(from_expression_);
    if (!from.IsNumber()) {
        return from.kind == TParKind::pvUndefined;
    }
    from_ = from;
    const TParValue to = Evaluate(to_expression_);
    if (!to.IsNumber()) {
        return to.kind == TParKind::pvUndefined;
    }
    to_ = to;
    if (to_.number < from_.number) {
        sheet_data_->ReportError(texts::kBoundsReversed);
        return false;
    }
    type_ = CurrentWord(type_rows_.get(), kwChType);
    direction_ = CurrentWord(direction_rows_.get(), kwChDirection);
    if (type_ == 0 || direction_ == 0) {
        return false;
    }
    defined_ = sheet_data_->AddUnnamedChannelRange(from_.number, to_.number, type_, direction_);
    return defined_;
}

/// Type or direction may have changed with the parameter. Rows of which none holds any more refuse the change.
bool CChannelsGroupItem::FollowWord(const CChannelCondList *rows, std::uint32_t keyword, std::uint32_t &stored) {
    const std::uint32_t word = CurrentWord(rows, keyword);
    if (word == stored) {
        return true;
    }
    if (word == 0) {
        sheet_data_->ShowBadChannel();
        return false;
    }
    if (!sheet_data_->ChangeChannelParameter(from_.number, keyword, TParValue::Number(stored),
                                             TParValue::Number(word))) {
        return false;
    }
    stored = word;
    return true;
}

/// Moves the range to the bounds' new values; ok becomes false, with the old bounds kept, if that can't be. A bound
/// that isn't known any more is no refusal, and says so whatever was said before.
void CChannelsGroupItem::FollowBounds(const CVariable *variable, bool &ok) {
    const TParValue old_from = from_;
    const TParValue old_to = to_;
    const bool moves_from = References(from_expression_, variable);
    const bool moves_to = References(to_expression_, variable);
    const TParValue from = Evaluate(from_expression_);
    const TParValue to = Evaluate(to_expression_);
    if (from.kind == TParKind::pvUndefined || to.kind == TParKind::pvUndefined) {
        ok = true;
        return;
    }
    if (!from.IsNumber() || !to.IsNumber() || to.number < from.number) {
        sheet_data_->ShowBadChannel();
        ok = false;
        return;
    }
    bool moved = true;
    if (moves_from && moves_to) {
        moved = sheet_data_->ChangeChannelParameter(old_from.number, kwAll, from, to);
    } else if (moves_from) {
        moved = sheet_data_->ChangeChannelParameter(kNoNumber, kwChFrom, old_from, from);
    } else if (moves_to) {
        moved = sheet_data_->ChangeChannelParameter(from.number, kwChTo, old_to, to);
    }
    if (moved) {
        from_ = from;
        to_ = to;
    } else {
        ok = false;
    }
}

void CChannelsGroupItem::ParameterChanged(const CVariable *variable, const TParValue & /*value*/, bool &ok) {
    if (!defined_) {
        if (!Define()) {
            ok = false;
            sheet_data_->ShowBadChannel();
        }
        return;
    }
    if (!FollowWord(type_rows_.get(), kwChType, type_) ||
        !FollowWord(direction_rows_.get(), kwChDirection, direction_)) {
        ok = false;
        return;
    }
    FollowBounds(variable, ok);
}

void CChannelsGroupItem::Done() {
    if (defined_) {
        const TParValue from = Evaluate(from_expression_);
        if (from.IsNumber()) {
            sheet_data_->RemoveChannelRange(from.number);
        }
        defined_ = false;
    }
    CItem::Done();
    from_expression_.reset();
    to_expression_.reset();
}

}  // namespace kq_pdt
