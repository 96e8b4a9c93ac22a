// Saving: the driver map file first, then the parameter file, each straight to its own path.

#include "configurator/texts.h"
#include "configurator/window_state.h"

namespace kq_pdt {

void CWindowSession::SaveSession(std::uint32_t command) {
    CommitCellEditors();
    NotifyFiles();
    // A save that fails doesn't set this back.
    modified_ = false;
    bool saved = SaveChannels();
    if (!OnSheet()) {
        saved = SavePar() && saved;
    } else if (saved) {
        saved = SaveParFromModel();
        if (saved) {
            history_.MarkSaved();
        } else {
            history_.MarkUnsaved();
        }
    }
    if (command == cmApply && saved) {
        closing_ = true;
        MakeEvent(window_, ecCommand, kCloseLoop);
    }
}

CConfiguratorWindow::TTexts CWindowSession::TextsToSave() {
    CConfiguratorWindow::TTexts texts;
    texts.has_dmf = !SheetData().NoChannels() && !driver_enumerates_;
    if (!OnSheet()) {
        texts.par = ParView().Text();
        texts.dmf = DmfView().Text();
        return texts;
    }
    CTextView par;
    WriteParTo(par);
    texts.par = par.Text();
    CTextView dmf;
    WriteDmfTo(dmf);
    texts.dmf = dmf.Text();
    return texts;
}

void CWindowSession::NotifyFiles() {
    if (opening_.callback != nullptr) {
        opening_.callback->NotifyDriverFiles(kq_base::TPathText::kBound, opening_.dmf_path.Characters(),
                                             kq_base::TPathText::kBound, opening_.par_path.Characters());
    }
}

bool CWindowSession::SaveChannels() {
    if (SheetData().NoChannels() || driver_enumerates_) {
        return true;
    }
    if (OnSheet() && SheetData().Ranges().HasUndefined() && !ConfirmUndefined()) {
        return false;
    }
    std::string error;
    const bool saved = OnSheet() ? SaveDmfFromModel(error) : SaveView(DmfView(), dmf_file_, error);
    if (!saved) {
        ShowStop(texts::kCannotSaveTitle, texts::kCannotSaveDmf, opening_.dmf_path.View(), error);
    }
    return saved;
}

bool CWindowSession::SaveParFromModel() {
    ClearMessages();
    WritePar();
    return SavePar();
}

bool CWindowSession::SavePar() {
    std::string error;
    const bool saved = SaveView(ParView(), par_file_, error);
    if (!saved) {
        ShowStop(texts::kCannotSaveTitle, texts::kCannotSavePar, opening_.par_path.View(), error);
    }
    return saved;
}

/// A file that is there but couldn't be read isn't overwritten by nothing.
bool CWindowSession::IsUnread(const CTextView &view, const TFile &file, std::string &error) {
    if (!file.load_error || !view.Text().empty()) {
        return false;
    }
    error = *file.load_error;
    return true;
}

bool CWindowSession::SaveView(CTextView &view, TFile &file, std::string &error) {
    if (IsUnread(view, file, error) || !view.SaveToFile(file.path.View(), error)) {
        return false;
    }
    file.load_error.reset();
    return true;
}

bool CWindowSession::SaveDmfFromModel(std::string &error) {
    // The table was filled from the view, so what the file holds is missing in the table too.
    if (IsUnread(DmfView(), dmf_file_, error) || !SheetData().Ranges().SaveDmf(dmf_file_.path.View(), error)) {
        return false;
    }
    dmf_file_.load_error.reset();
    return true;
}

}  // namespace kq_pdt
