// Between the two shapes: from the text to the sheet and back, and the repair of the driver map.

#include "configurator/texts.h"
#include "configurator/translate_progress.h"
#include "configurator/window_state.h"
#include "model/texts.h"
#include "platform/base/number_text.h"
#include "scanner/unread_text.h"

namespace kq_pdt {

bool CConfiguratorTab::MayActivate(std::uint32_t tab) { return session_ == nullptr || session_->TabChanging(tab); }

bool CWindowSession::TabChanging(std::uint32_t tab) {
    if (tab_switch_forced_) {
        return true;
    }
    CommitCellEditors();
    ClearMessages();
    switch (tab) {
        case CConfiguratorWindow::kSheetTab:
            return TranslateToSheet();
        case CConfiguratorWindow::kTextTab:
            return TranslateToText();
        default:
            return false;
    }
}

void CWindowSession::ForceTab(std::uint32_t tab) {
    tab_switch_forced_ = true;
    tabs_.SetActiveTabIndex(tab);
    tab_switch_forced_ = false;
    FollowTab(tab);
}

void CWindowSession::FollowTab(std::uint32_t tab) {
    const bool text = tab == CConfiguratorWindow::kTextTab;
    window_.Dock(text ? &ParView().ToolBox() : &sheet_tools_);
    if (text) {
        menu_bar_.Enable(cmRepairDmf);
    } else {
        menu_bar_.Disable(cmRepairDmf);
    }
    UpdateUndoMenu(tab);
}

void CWindowSession::ClearSheet() { sheet_.Clear(); }

void CWindowSession::ParRead() {
    for (const par_scanner::TUnreadText &place : par_scanner::FindUnreadText(ParView().Text())) {
        AddWarning(std::string(texts::kNotReadFromLine).append(kq_base::DecimalText(place.line)), texts::kNotRead,
                   place.line);
    }
}

void CWindowSession::ReportTemplate() {
    constexpr std::uint32_t kNoLine = 0xFFFFFFFF;
    const TCompileResult &result = TemplateResult();
    AddError(texts::kTemplateBoxError, opening_.pdt_path.View(), kNoLine);
    AddError(std::string(result.message.View())
                 .append(texts::kTemplateBoxLine)
                 .append(kq_base::DecimalText(result.line))
                 .append(texts::kTemplateBoxPosition),
             kq_base::DecimalText(result.position), kNoLine);
}

CConfiguratorSession::TOutcome CWindowSession::ReadTexts() {
    const CTranslateProgress progress(window_);
    const TOutcome outcome = TranslateToModel();
    if (outcome == TOutcome::kTemplateFailed) {
        ForceTab(CConfiguratorWindow::kTextTab);
        tabs_.SetDisableTabIndex(CConfiguratorWindow::kSheetTab, true);
        ReportTemplate();
    } else {
        sheet_.Rebuild();
        sheet_.ReadColumnSettings();
    }
    ShowMessageList(!message_list_.Rows().empty());
    return outcome;
}

bool CWindowSession::TranslateToSheet() {
    const CReporting reporting(*this);
    const TOutcome outcome = ReadTexts();
    if (outcome == TOutcome::kTemplateFailed) {
        return false;
    }
    if (outcome == TOutcome::kErrors) {
        ShowStop(texts::kErrorTitle, {}, Messages().ErrorCount() == 1 ? texts::kOneError : texts::kManyErrors);
        ClearSheet();
        SheetData().ClearData();
        GoToFirstError();
        menu_bar_.Enable(cmRepairDmf);
        return false;
    }
    // A text that was typed and isn't in the file stays unsaved as a sheet.
    modified_ = modified_ || !ParView().IsSaved();
    history_.Begin(!modified_);
    channels_.ClearSelection();
    channels_.RebuildColumns();
    channels_.PrepareSheet();
    channels_.SetHighlight(false);
    FollowTab(CConfiguratorWindow::kSheetTab);
    return true;
}

void CWindowSession::ReplaceTexts(const CConfiguratorWindow::TTexts &texts) {
    if (done_) {
        return;
    }
    CommitCellEditors();
    ForceTab(CConfiguratorWindow::kTextTab);
    ParView().UserReplaceAt(0, ParView().Text().size(), texts.par);
    if (texts.has_dmf && DmfView().Text() != texts.dmf) {
        DmfView().SetText(texts.dmf);
    }
    ParView().SetLineIndex(0, 0);
    ParView().FitCursor();
}

void CWindowSession::GoToFirstError() {
    if (Messages().Records().empty()) {
        ParView().SetLineIndex(0, 0);
    } else {
        current_message_ = 1;
        GoToMessage();
    }
    ParView().FitCursor();
}

bool CWindowSession::TranslateToText() {
    sheet_.StoreColumnSettings();
    WritePar();
    ParView().SetSaved(!modified_);
    if (SheetData().Ranges().HasUndefined()) {
        channels_.SetHighlight(true);
        channels_.SelectFirstUndefined();
        if (!ConfirmUndefined()) {
            return false;
        }
    }
    WriteDmf();
    ParView().SetLineIndex(0, 0);
    ParView().FitCursor();
    FollowTab(CConfiguratorWindow::kTextTab);
    return true;
}

bool CWindowSession::ConfirmUndefined() {
    return AskYesNo(texts::kUndefinedTitle, texts::kUndefined1, texts::kUndefined2, texts::kUndefined3);
}

void CWindowSession::RepairDmfText() {
    const CReporting reporting(*this);
    if (!AskYesNo(texts::kRepairTitle, texts::kRepair1, texts::kRepair2, texts::kRepair3)) {
        return;
    }
    switch (RepairDmf()) {
        case TOutcome::kTemplateFailed:
            ForceTab(CConfiguratorWindow::kTextTab);
            tabs_.SetDisableTabIndex(CConfiguratorWindow::kSheetTab, true);
            break;
        case TOutcome::kErrors:
            ShowMessageList(!message_list_.Rows().empty());
            ShowStop(texts::kReadErrorTitle, texts::kRepairFailed, texts::kErrorsInPar);
            break;
        case TOutcome::kDone:
            break;
    }
}

}  // namespace kq_pdt
