#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "model/item.h"

namespace kq_pdt {

class CParSheetData;

/// A row of a channel group: a keyword code that counts while the condition holds.
struct CChannelCondRow {
    std::uint32_t word = 0;
    std::shared_ptr<const CExpression> condition;
};

using CChannelCondList = std::vector<CChannelCondRow>;

/// `channels_group`: a block of channels whose bounds, type and direction are expressions over parameters. The item
/// keeps one range of the table of channels in step with them: it makes the range when the bounds first give numbers,
/// and moves it, retypes it or refuses the change whenever a parameter changes.
class CChannelsGroupItem final : public CItem {
public:
    explicit CChannelsGroupItem(CParSheetData *sheet_data);

    /// Makes the range unless it is there. False if that fails; bounds that aren't known yet are no failure.
    bool Define();
    /// Takes the range back if bounds, type or direction have changed while nobody told the group.
    void Reconsider();
    /// Gives an expression to a bound that has none yet: `ch_from` to the lower one or, if that is taken, to the upper
    /// one, `ch_to` to the upper one. A further one is dropped.
    void SetBound(std::uint32_t keyword, std::unique_ptr<CExpression> expression);

    void SetExpression(std::uint32_t keyword, std::uint32_t word, std::unique_ptr<CExpression> expression) override;
    std::unique_ptr<CItem> Clone() override;
    std::unique_ptr<CChannelsGroupItem> CloneGroup();
    void ParameterChanged(const CVariable *variable, const TParValue &value, bool &ok) override;
    void GiveBack() override;
    void Done() override;

    const CExpression *From() const { return from_expression_.get(); }
    const CExpression *To() const { return to_expression_.get(); }
    const std::unique_ptr<CChannelCondList> &TypeRows() const { return type_rows_; }
    const std::unique_ptr<CChannelCondList> &DirectionRows() const { return direction_rows_; }

private:
    bool LayRange();
    std::uint32_t CurrentWord(const CChannelCondList *rows, std::uint32_t keyword);
    bool FollowWord(const CChannelCondList *rows, std::uint32_t keyword, std::uint32_t &stored);
    void FollowBounds(const CVariable *variable, bool &ok);
    /// Has the group anything to do with the variable?
    bool Concerns(const CVariable *variable) const;
    void RemoveRange();

    CParSheetData *sheet_data_;
    std::shared_ptr<const CExpression> from_expression_;
    std::shared_ptr<const CExpression> to_expression_;
    std::unique_ptr<CChannelCondList> type_rows_;
    std::unique_ptr<CChannelCondList> direction_rows_;
    TParValue from_;
    TParValue to_;
    std::uint32_t type_ = 0;
    std::uint32_t direction_ = 0;
    bool defined_ = false;  ///< the range is in the table
};

}  // namespace kq_pdt
