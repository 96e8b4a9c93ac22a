#pragma once

#include "model/cell_item.h"

namespace kq_pdt {

/// A value that a person types: number or string. It may have a default, which it takes as long as it has no value from
/// elsewhere. An optional one is edited in a combo box that takes free text and offers to take the value away.
class CTypedItem : public CCellItem {
public:
    bool AppendText(kq_base::CTextBuffer &text) final;
    void OpenEditor(std::uint32_t &index, std::unique_ptr<TCellEditor> &editor) final;
    void CloseEditor(std::unique_ptr<TCellEditor> &editor, bool accept) final;
    void SetDefault(CDefaultValue value) final;
    /// Takes the default if the change has enabled the item.
    void ParameterChanged(const CVariable *variable, const TParValue &value, bool &ok) final;
    void CountAsGiven() final;

protected:
    explicit CTypedItem(TItemCode code) : CCellItem(code) {}

    /// The value, whether it is in use or not.
    virtual TParValue Stored() const = 0;
    /// Stores a value without publishing it; false, with nothing stored, if it is of another kind.
    virtual bool Store(const TParValue &value) = 0;
    /// Gives an editor the control of a value that isn't optional.
    virtual void AddControl(TCellEditor &editor) const = 0;
    /// What is typed in an editor; pvNone if it is no value.
    virtual TParValue TypedValue(const TCellEditor &editor) const = 0;

    TParValue EditedValue(const TCellEditor &editor) const final;
    TParValue PublishedValue() const final;
    /// Stores the default if it evaluates to a value of the item's kind; true if it does.
    bool TakeDefault();

    bool has_value_ = false;  ///< the value came from a file, the sheet or the default
};

}  // namespace kq_pdt
