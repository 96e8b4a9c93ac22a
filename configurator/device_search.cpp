// The search for devices by the driver's module. The driver works on a temporary file with the present parameters, and
// what it made of that becomes the text if the person confirms.

#include "configurator/search_entries.h"
#include "configurator/search_progress.h"
#include "configurator/search_result.h"
#include "configurator/texts.h"
#include "configurator/window_state.h"
#include "platform/base/files.h"
#include "platform/base/paths.h"

namespace kq_pdt {

namespace {

constexpr std::string_view kTemporaryExtension = "TMP";

/// A path beside the parameter file at which there is no file yet; empty if none is short enough.
std::string FreePath(std::string_view par_path) {
    std::string path = kq_base::ChangeExtension(par_path, kTemporaryExtension);
    while (path.size() <= kq_base::TPathText::kBound && kq_base::CDisk::Current().Exists(path)) {
        path.append(".").append(kTemporaryExtension);
    }
    return path.size() <= kq_base::TPathText::kBound ? path : std::string();
}

std::uint32_t ShowModal(CWindow &window, CWindow &owner) {
    if (owner.Parent() != nullptr) {
        owner.Parent()->Register(window);
    }
    const std::uint32_t code = window.RunModal(owner);
    window.Done();
    return code;
}

void ShowSearchFailed() { ShowStop(texts::kSearchDevices, {}, texts::kSearchFailed); }

}  // namespace

bool CWindowSession::HasDeviceSearch() const { return TSearchEntries(opening_.module).CanSearch(); }

void CWindowSession::SearchDevices() {
    if (searching_ || closing_) {
        return;
    }
    searching_ = true;
    RunSearch();
    searching_ = false;
    if (done_) {
        ReleaseModule();
    }
}

void CWindowSession::RunSearch() {
    const std::string path = FreePath(opening_.par_path.View());
    if (path.empty() || !WriteForSearch(path)) {
        ShowSearchFailed();
        return;
    }
    if (ChooseDevices(path)) {
        TakeSearchResult(path);
    }
    std::string error;
    kq_base::CDisk::Current().Delete(path, error);
}

/// Writes the present parameters. What the text view has counts as saved or not as before.
bool CWindowSession::WriteForSearch(std::string_view path) {
    std::string error;
    if (OnText()) {
        return kq_base::CDisk::Current().Save(path, ParView().Text(), error);
    }
    CTextView written;
    WriteParTo(written);
    return written.SaveToFile(path, error);
}

/// Lets the driver search and the person choose. True if the driver was to put what was chosen into the file.
bool CWindowSession::ChooseDevices(std::string_view path) {
    const TSearchEntries driver(opening_.module);
    CSearchResult result(window_, driver.put);
    std::uint32_t searched = 0;
    {
        CSearchProgress progress(window_, driver, path);
        result.SetProgress(&progress);
        if (!progress.Start()) {
            ShowSearchFailed();
            return false;
        }
        progress_ = &progress;
        searched = ShowModal(progress, window_);
        progress_ = nullptr;
        result.SetProgress(nullptr);
    }
    const bool chosen = searched == kEndLoop && !done_ && ShowModal(result, window_) == kEndLoop && !done_;
    EndSearchReports();
    if (driver.done != nullptr) {
        driver.done();
    }
    if (searched == CSearchProgress::kNothingFound) {
        DoMessageBox2(MakeBox(texts::kSearchDevices, {}, texts::kNothingFound, {}, TBoxIcon::kInfo, TBoxButtons::kOk));
    }
    return chosen;
}

void CWindowSession::TakeSearchResult(std::string_view path) {
    modified_ = true;
    std::string error;
    if (!ParView().ImportFile(path, error)) {
        ShowSearchFailed();
        return;
    }
    if (OnSheet()) {
        // The channels that the sheet has now are those that the new text is read with.
        WriteDmf();
        ClearMessages();
        if (TranslateToSheet()) {
            return;
        }
        ForceTab(CConfiguratorWindow::kTextTab);
        GoToMessage();
    }
    ParView().PaintView();
    ParView().SetSaved(false);
}

}  // namespace kq_pdt
