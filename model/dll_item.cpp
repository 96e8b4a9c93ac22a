#include "model/dll_item.h"

#include <string>
#include <utility>

#include "model/journal.h"
#include "model/sheet_data.h"
#include "model/var_ref_item.h"
#include "platform/base/code_page.h"

namespace kq_pdt {

namespace {

constexpr std::string_view kExtension = ".DLL";

}  // namespace

CDllItem::CDllItem(CParSheetData *sheet_data)
    : CCellItem(TItemCode::kDll), sheet_data_(sheet_data), names_(std::make_shared<CNameList>()) {}

CDllItem::CDllItem(CParSheetData *sheet_data, CSharedNames modules, std::uint32_t selected_index)
    : CCellItem(TItemCode::kDll),
      sheet_data_(sheet_data),
      names_(std::move(modules)),
      listed_(true),
      selected_index_(selected_index) {}

const kq_base::TText *CDllItem::Selected() const {
    return selected_index_ < Names().size() ? &Names()[selected_index_] : nullptr;
}

/// A section that came with a module is published before its text is read, and again afterwards.
void CDllItem::Publish() { RefreshModule(); }

bool CDllItem::AppendText(kq_base::CTextBuffer &text) {
    const kq_base::TText *name = Selected();
    if (name == nullptr) {
        return false;
    }
    text.Append(name->View());
    return true;
}

void CDllItem::AppendShownValue(kq_base::CTextBuffer &text) const {
    if (const kq_base::TText *name = Selected()) {
        text.Append(name->View());
    }
}

std::unique_ptr<CItem> CDllItem::Clone() {
    const CSharedNames modules = listed_                  ? names_
                                 : sheet_data_ != nullptr ? sheet_data_->ModulesWith(Names())
                                                          : ListModules(Names());
    const std::uint32_t selected = listed_ ? selected_index_ : modules->empty() ? kNoNumber : 0;
    auto clone = std::make_unique<CDllItem>(sheet_data_, modules, selected);
    CloneBaseInto(*clone);
    return clone;
}

void CDllItem::CopyValue(CItem *source) {
    if (source == nullptr || source->Code() != TItemCode::kDll) {
        return;
    }
    CopyBaseValue(*source);
    const std::uint32_t index = static_cast<const CDllItem &>(*source).selected_index_;
    selected_index_ = index < Names().size() ? index : kNoNumber;
}

void CDllItem::OpenEditor(std::uint32_t &index, std::unique_ptr<TCellEditor> &editor) {
    if (!BeginEditor(index, editor) || !IsEnabled()) {
        return;
    }
    auto box = std::make_unique<CComboBox>(CComboBox::TMode::kList);
    for (const kq_base::TText &name : Names()) {
        box->AppendEntry(name.View());
    }
    box->Select(Selected() != nullptr ? selected_index_ + 1 : 0);
    editor->kind = TCellEditor::TControl::kComboBox;
    editor->control = std::move(box);
}

void CDllItem::CloseEditor(std::unique_ptr<TCellEditor> &editor, bool accept) {
    if (editor && editor->control && accept) {
        const std::size_t selected = editor->ComboBox().Selected();
        if (selected >= 1 && selected <= Names().size() && selected - 1 != selected_index_) {
            CJournal::Keep(selected_index_);
            selected_index_ = static_cast<std::uint32_t>(selected - 1);
            RefreshModule();
        }
    }
    editor.reset();
}

void CDllItem::SetAttribute(std::uint32_t keyword, std::uint32_t form, std::string_view text, CVarScope *scope) {
    if (keyword == kwProcedure) {
        CNameList procedures = Names();
        procedures.emplace_back(text);
        names_ = std::make_shared<CNameList>(std::move(procedures));
    } else if (keyword != kwOptional) {  // there is always a module, if there are any
        CCellItem::SetAttribute(keyword, form, text, scope);
    }
}

bool CDllItem::FindEntry(std::string_view text, std::uint32_t position, TMatchStep &step, std::uint32_t &index) const {
    step.complete = true;
    step.may_be_empty = false;
    step.position = position;
    if (position > text.size()) {
        return false;
    }
    for (std::size_t entry = 0; entry < Names().size(); ++entry) {
        const std::string_view name = Names()[entry].View();
        const std::string_view here = text.substr(position, name.size());
        const bool whole = kq_base::EqualIgnoringCase(here, name);
        if (whole || kq_base::EqualIgnoringCase(std::string(here).append(kExtension), name)) {
            index = static_cast<std::uint32_t>(entry);
            step.position += static_cast<std::uint32_t>(name.size() - (whole ? 0 : kExtension.size()));
            return true;
        }
    }
    return false;
}

bool CDllItem::Match(std::string_view text, std::uint32_t position, TMatchStep &step) {
    std::uint32_t index = 0;
    return FindEntry(text, position, step, index);
}

bool CDllItem::ParseValue(std::string_view text, std::uint32_t first, std::uint32_t end) {
    TMatchStep step;
    return first < end && FindEntry(text, first, step, selected_index_);
}

void CDllItem::ParameterChanged(const CVariable *variable, const TParValue &value, bool &ok) {
    CCellItem::ParameterChanged(variable, value, ok);
    const CEnableIf *condition = Attributes().enable_if.get();
    if (condition != nullptr && condition->DependsOn(variable)) {
        RefreshModule();
    }
}

void CDllItem::RefreshModule() {
    if (sheet_data_ != nullptr && Selected() != nullptr) {
        LoadModule(WantedModule());
    }
}

bool CDllItem::IsOutdated() const { return Selected() != nullptr && WantedModule() != loaded_name_; }

/// The template that is loaded already stays as it is.
void CDllItem::LoadModule(const kq_base::TText &name) {
    if (name == loaded_name_) {
        return;
    }
    CJournal::Keep(loaded_name_);
    loaded_name_ = name;
    sheet_data_->LoadModuleTemplate(loaded_, name.View());
}

void CDllItem::GiveBack() {
    CItem::GiveBack();
    if (sheet_data_ != nullptr) {
        LoadModule({});
    }
}

void CDllItem::Done() {
    CItem::Done();
    if (sheet_data_ != nullptr) {
        LoadModule({});
    }
    names_ = std::make_shared<CNameList>();
}

}  // namespace kq_pdt
