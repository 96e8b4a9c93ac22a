// The end of a session: the question about unsaved changes, and what is stored and released.

#include "configurator/geometry.h"
#include "configurator/search_progress.h"
#include "configurator/texts.h"
#include "configurator/window_state.h"
#include "platform/view/settings.h"

namespace kq_pdt {

bool CWindowSession::QueryClose() {
    CommitCellEditors();
    if (OnText()) {
        modified_ = !ParView().IsSaved();
    }
    if (!modified_) {
        return true;
    }
    const TBoxAnswer answer = DoMessageBox2(MakeBox(texts::kUnsavedTitle, texts::kUnsaved, texts::kSaveNow, {},
                                                    TBoxIcon::kQuestionMark, TBoxButtons::kYesNoCancel));
    if (answer != TBoxAnswer::kYes) {
        return answer == TBoxAnswer::kNo;
    }
    // The user wants to leave: neither file keeps the other one, or the window, waiting.
    NotifyFiles();
    SaveChannels();
    if (OnSheet()) {
        SaveParFromModel();
    } else {
        SavePar();
    }
    return true;
}

bool CWindowSession::HostQueryClose() { return !IsBusy() && QueryClose(); }

void CWindowSession::Done() {
    if (done_) {
        return;
    }
    done_ = true;
    if (OnSheet()) {
        sheet_.StoreColumnSettings();
    }
    StoreGeometry(window_);
    CSettings settings;
    settings.Create(ConfiguratorSettingsPath());
    settings.WriteBoolean("InPar", OnSheet());

    ClearMessages();
    DmfView().Clear();
    sheet_.UserCancel();
    channels_.UserCancel();
    window_.Dock(nullptr);
    sheet_tools_.SetItems({});
    ParView().EndToolBox();
    ParView().Clear();
    history_.End();
    sheet_.Clear();
    channels_.Clear();
    SheetData().Done();
    if (progress_ != nullptr) {
        MakeEvent(*progress_, ecCommand, kCloseRequest);
    }
    if (!searching_) {
        ReleaseModule();
    }
    SetHostCallback(nullptr);
    opening_.callback = nullptr;
}

void CWindowSession::ReleaseModule() {
    if (opening_.module != nullptr) {
        kq_os::FreeLibrary(opening_.module);
        opening_.module = nullptr;
    }
}

}  // namespace kq_pdt
