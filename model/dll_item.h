#pragma once

#include <vector>

#include "model/cell_item.h"
#include "model/module_lists.h"

namespace kq_pdt {

class CParSheetData;
class CSectionDef;

/// What a module's template brought along.
struct TLoadedModule {
    std::vector<CSectionDef *> sections;  ///< definitions, not owned
    std::vector<std::uint32_t> channels;  ///< first channels of its fixed blocks
    CNameList words;                      ///< to be coloured
};

/// A choice among driver modules. A definition keeps the procedures that a module must export; its clone lists the
/// modules of the host's directory, and the chosen module brings its own template along.
class CDllItem final : public CCellItem {
public:
    explicit CDllItem(CParSheetData *sheet_data);
    /// A clone with the modules and the chosen one of them, kNoNumber for none.
    CDllItem(CParSheetData *sheet_data, CSharedNames modules, std::uint32_t selected_index);

    /// In a definition the required procedures, in an instance the modules found.
    const CNameList &Names() const { return *names_; }
    /// The first name that the text has at a position, in any case of letters, with ".DLL" or without. False without
    /// any.
    bool FindEntry(std::string_view text, std::uint32_t position, TMatchStep &step, std::uint32_t &index) const;

    /// Is another template loaded than the one of the selected module, or any while the item is disabled? To be asked
    /// in the item's scopes.
    bool IsOutdated() const;

    void Publish() override;
    bool AppendText(kq_base::CTextBuffer &text) override;
    std::unique_ptr<CItem> Clone() override;
    void CopyValue(CItem *source) override;
    void OpenEditor(std::uint32_t &index, std::unique_ptr<TCellEditor> &editor) override;
    void CloseEditor(std::unique_ptr<TCellEditor> &editor, bool accept) override;
    void SetAttribute(std::uint32_t keyword, std::uint32_t form, std::string_view text, CVarScope *scope) override;
    bool Match(std::string_view text, std::uint32_t position, TMatchStep &step) override;
    bool ParseValue(std::string_view text, std::uint32_t first, std::uint32_t end) override;
    void ParameterChanged(const CVariable *variable, const TParValue &value, bool &ok) override;
    void GiveBack() override;
    void Done() override;

protected:
    void AppendShownValue(kq_base::CTextBuffer &text) const override;

private:
    const kq_base::TText *Selected() const;
    /// The selected module, or none while the item is disabled.
    kq_base::TText WantedModule() const { return IsEnabled() ? *Selected() : kq_base::TText(); }
    /// Loads the template of the selected module, or releases it while the item is disabled.
    void RefreshModule();
    void LoadModule(const kq_base::TText &name);

    CParSheetData *sheet_data_;
    CSharedNames names_;
    bool listed_ = false;  ///< names_ holds modules
    std::uint32_t selected_index_ = kNoNumber;
    kq_base::TText loaded_name_;  ///< whose template is loaded; empty without one
    TLoadedModule loaded_;
};

}  // namespace kq_pdt
