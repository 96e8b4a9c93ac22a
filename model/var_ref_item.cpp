#include "model/var_ref_item.h"

#include "model/const_item.h"
#include "model/journal.h"
#include "model/section_def.h"
#include "model/sheet_data.h"

namespace kq_pdt {

CVarRefItem::CVarRefItem(std::string_view name, CVarScope &scope)
    : CItem(TItemCode::kPlain), name_(name), scope_(&scope) {}

CSectionDef *CVarRefItem::Dependent() const {
    const auto section = dependent_.lock();
    return section && !(*section)->IsReleased() ? *section : nullptr;
}

void CVarRefItem::SetDependent(CSectionDef *section) {
    CJournal::Keep(dependent_);
    dependent_ = section != nullptr ? section->Handle() : std::weak_ptr<CSectionDef *>();
}

void CVarRefItem::Assign(const TParValue &value, bool &ok) {
    CSectionDef *section = Dependent();
    if (section == nullptr) {
        if (CSectionDef *created = scope_->Assign(name_.View(), value, ok)) {
            SetDependent(created);
        }
        return;
    }
    ok = true;
    CVariable *variable = Variable();
    section->CapturedValueChanged(value, variable);
    if (variable != nullptr && !(variable->Stored() == value)) {
        section->SheetData()->Assignments().Assign(*variable, value, false, ok);
    }
}

bool CVarRefItem::AdoptDependent(const CVarRefItem &source) {
    if (HasDependent() || !source.HasDependent()) {
        return false;
    }
    dependent_ = source.dependent_;
    return true;
}

std::unique_ptr<CVarRefItem> CVarRefItem::CloneReference() {
    auto clone = std::make_unique<CVarRefItem>(std::string_view(), *scope_);
    clone->name_ = name_;
    clone->dependent_ = dependent_;
    CloneBaseInto(*clone);
    return clone;
}

std::unique_ptr<CItem> CVarRefItem::Clone() { return CloneReference(); }

void CVarRefItem::GetValue(TParValue &value) { scope_->Value(name_.View(), value); }

/// Texts and numbers show; false for every other kind, which shows nothing.
bool CVarRefItem::AppendShownText(kq_base::CTextBuffer &text) {
    TParValue value;
    if (captured_) {
        value = captured_value_;
    } else {
        GetValue(value);
    }
    if (value.kind == TParKind::pvText) {
        text.Append(value.text.View());
    } else if (value.IsNumber()) {
        text.AppendDecimal(value.number);
    } else {
        return false;
    }
    return true;
}

void CVarRefItem::AppendCellText(kq_base::CTextBuffer &text, bool &disabled) {
    AppendShownText(text);
    disabled = false;
}

bool CVarRefItem::AppendText(kq_base::CTextBuffer &text) {
    AppendShownText(text);
    return true;
}

void CVarRefItem::BindVariable(CVariable &variable) {
    if (variable.Name() == name_.View()) {
        CJournal::Keep(captured_, captured_value_);
        captured_ = true;
        variable.Read(captured_value_);
    }
}

void CVarRefItem::CapturedValueChanged(const TParValue &value, const CVariable *variable) {
    if (captured_ && variable != nullptr && variable->Name() == name_.View()) {
        CJournal::Keep(captured_value_);
        captured_value_ = value;
    }
}

bool CVarRefItem::Match(std::string_view text, std::uint32_t position, TMatchStep &step) {
    step.position = position;
    step.complete = true;
    step.may_be_empty = true;
    kq_base::CTextBuffer shown;
    if (!AppendShownText(shown)) {
        return false;
    }
    step.complete = HasPartAt(text, position, shown.View(), true);
    if (step.complete) {
        step.position += static_cast<std::uint32_t>(shown.Length());
    }
    return step.complete;
}

}  // namespace kq_pdt
