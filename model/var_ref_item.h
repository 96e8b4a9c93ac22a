#pragma once

#include <memory>

#include "model/item.h"
#include "model/variable.h"

namespace kq_pdt {

/// A reference to a variable by its name, which is looked up anew at each use: one reference can reach different
/// variables at different times. It is written as `%name%` in a name or a value list, and after `id`, `ch_type`,
/// `depend_on` and at the end of a list.
///
/// In the name of a dependent section a reference is bound: it keeps the value for which the section was made, though
/// the variable goes on to others.
class CVarRefItem final : public CItem {
public:
    CVarRefItem(std::string_view name, CVarScope &scope);

    std::string_view Name() const { return name_.View(); }
    /// The variable that the name means now, or none.
    CVariable *Variable() const { return scope_->Find(name_.View()); }
    bool IsCaptured() const { return captured_; }

    /// Assigns to the variable. The first value that creates a section ties it to this reference; later values only
    /// rename that section. ok becomes false if the value was refused.
    void Assign(const TParValue &value, bool &ok);
    /// Goes on with the section that was created through another reference, unless this one has its own. True if it
    /// did.
    bool AdoptDependent(const CVarRefItem &source);
    /// The section that this reference created, or none.
    CSectionDef *Dependent() const;
    void SetDependent(CSectionDef *section);
    bool HasDependent() const { return Dependent() != nullptr; }
    /// The value that a bound reference shows.
    const TParValue &BoundValue() const { return captured_value_; }
    /// The same reference, tied to the same section.
    std::unique_ptr<CVarRefItem> CloneReference();

    void GetValue(TParValue &value) override;
    bool AppendText(kq_base::CTextBuffer &text) override;
    void AppendCellText(kq_base::CTextBuffer &text, bool &disabled) override;
    std::unique_ptr<CItem> Clone() override;
    void BindVariable(CVariable &variable) override;
    void CapturedValueChanged(const TParValue &value, const CVariable *variable) override;
    bool Match(std::string_view text, std::uint32_t position, TMatchStep &step) override;

private:
    bool AppendShownText(kq_base::CTextBuffer &text);

    kq_base::TText name_;
    CVarScope *scope_;
    std::weak_ptr<CSectionDef *> dependent_;
    bool captured_ = false;
    TParValue captured_value_;
};

}  // namespace kq_pdt
