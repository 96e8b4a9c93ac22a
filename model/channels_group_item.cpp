#include "model/channels_group_item.h"

#include <algorithm>

#include "model/journal.h"
#include "model/sheet_data.h"
#include "model/texts.h"
#include "model/var_ref_item.h"

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

/// The value of a bound that was evaluated before. One that makes channels keeps them: another evaluation would make
/// further ones.
TParValue EvaluateAgain(const std::shared_ptr<const CExpression> &expression, const TParValue &before) {
    return expression && expression->MakesChannels() ? before : Evaluate(expression);
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

/// In an edit a range that doesn't fit is refused, also where a reading would take it. The table still reports why, if
/// it finds a reason; what it does besides goes with the edit.
bool CChannelsGroupItem::LayRange() {
    const bool edits = sheet_data_->Edit() != nullptr;
    if (edits && sheet_data_->DefineFittingRange(from_.number, to_.number, type_, direction_)) {
        return true;
    }
    return sheet_data_->AddUnnamedChannelRange(from_.number, to_.number, type_, direction_) && !edits;
}

bool CChannelsGroupItem::Define() {
    if (defined_) {
        return true;
    }
    const TParValue from = Evaluate(from_expression_);
    if (!from.IsNumber()) {
        return from.kind == TParKind::pvUndefined;
    }
    CJournal::Keep(from_, to_, type_, direction_, defined_);
    from_ = from;
    const TParValue to = Evaluate(to_expression_);
    if (!to.IsNumber()) {
        return to.kind == TParKind::pvUndefined;
    }
    to_ = to;
    if (to_.number == kNoNumber) {
        sheet_data_->ReportError(texts::kBadChannel);
        return false;
    }
    if (to_.number < from_.number) {
        sheet_data_->ReportError(texts::kBoundsReversed);
        return false;
    }
    type_ = CurrentWord(type_rows_.get(), kwChType);
    direction_ = CurrentWord(direction_rows_.get(), kwChDirection);
    if (type_ == 0 || direction_ == 0) {
        return false;
    }
    defined_ = LayRange();
    return defined_;
}

void CChannelsGroupItem::Reconsider() {
    if (!defined_) {
        return;
    }
    const bool stays = EvaluateAgain(from_expression_, from_) == from_ && EvaluateAgain(to_expression_, to_) == to_ &&
                       CurrentWord(type_rows_.get(), kwChType) == type_ &&
                       CurrentWord(direction_rows_.get(), kwChDirection) == direction_;
    if (!stays) {
        RemoveRange();
    }
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
    CJournal::Keep(stored);
    stored = word;
    return true;
}

/// Moves the range to the bounds' new values; ok becomes false, with the old bounds kept, if that can't be. While a
/// bound isn't known there is no range.
void CChannelsGroupItem::FollowBounds(const CVariable *variable, bool &ok) {
    const bool moves_from = References(from_expression_, variable);
    const bool moves_to = References(to_expression_, variable);
    const TParValue from = EvaluateAgain(from_expression_, from_);
    const TParValue to = EvaluateAgain(to_expression_, to_);
    if (from.kind == TParKind::pvUndefined || to.kind == TParKind::pvUndefined) {
        RemoveRange();
        return;
    }
    if (!from.IsNumber() || !to.IsNumber() || to.number < from.number) {
        sheet_data_->ShowBadChannel();
        ok = false;
        return;
    }
    bool moved = true;
    if (moves_from && moves_to) {
        moved = sheet_data_->ChangeChannelParameter(from_.number, kwAll, from, to);
    } else if (moves_from) {
        moved = sheet_data_->ChangeChannelParameter(kNoNumber, kwChFrom, from_, from);
    } else if (moves_to) {
        moved = sheet_data_->ChangeChannelParameter(from_.number, kwChTo, to_, to);
    }
    if (!moved) {
        ok = false;
    } else if (moves_from || moves_to) {
        CJournal::Keep(from_, to_);
        from_ = from;
        to_ = to;
    }
}

bool CChannelsGroupItem::Concerns(const CVariable *variable) const {
    const auto in_rows = [&](const std::unique_ptr<CChannelCondList> &rows) {
        return rows && std::any_of(rows->begin(), rows->end(),
                                   [&](const CChannelCondRow &row) { return References(row.condition, variable); });
    };
    const TChannelAttributes *channel = Attributes().channel.get();
    const auto picks = [&](const std::unique_ptr<CVarRefItem> &reference) {
        return reference && reference->Variable() == variable;
    };
    return References(from_expression_, variable) || References(to_expression_, variable) || in_rows(type_rows_) ||
           in_rows(direction_rows_) ||
           (channel != nullptr && (picks(channel->type_variable) || picks(channel->direction_variable)));
}

/// A variable that the group has nothing to do with can't be refused by it.
void CChannelsGroupItem::ParameterChanged(const CVariable *variable, const TParValue & /*value*/, bool &ok) {
    if (!Concerns(variable)) {
        return;
    }
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

void CChannelsGroupItem::RemoveRange() {
    if (defined_) {
        sheet_data_->RemoveChannelRange(from_.number);
        CJournal::Keep(defined_);
        defined_ = false;
    }
}

void CChannelsGroupItem::GiveBack() { RemoveRange(); }

void CChannelsGroupItem::Done() {
    RemoveRange();
    CItem::Done();
    from_expression_.reset();
    to_expression_.reset();
}

}  // namespace kq_pdt
