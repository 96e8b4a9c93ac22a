// Opening a session: a failure only changes the result, all steps run.

#include <array>

#include "configurator/geometry.h"
#include "configurator/texts.h"
#include "configurator/window_state.h"
#include "driver/component_helper.h"
#include "model/texts.h"
#include "platform/base/files.h"
#include "platform/view/settings.h"

namespace kq_pdt {

CWindowSession::CWindowSession(CConfiguratorWindow &window)
    : window_(window),
      history_(SheetData()),
      sheet_(SheetData(), *this, history_),
      channels_(SheetData(), *this, history_) {
    SheetData().SetListener(this);
    history_.SetSnapshot([this] { return Snapshot(); });
    ParView().SetHistoryKept(true);
}

CWindowSession::~CWindowSession() { SheetData().SetListener(nullptr); }

bool CWindowSession::Open(const TOpening &opening) {
    const CReporting reporting(*this);
    opening_ = opening;
    SetHostCallback(opening_.callback);
    SetTemplatePath(opening_.pdt_path.View());
    driver_enumerates_ = CanEnumerate();
    BuildMenu();
    BuildViews();
    bool opened = OpenPar();
    // A driver that lists its channels itself has no driver map file.
    opened = (driver_enumerates_ || OpenDmf()) && opened;
    if (!CompileTemplate()) {
        tabs_.SetDisableTabIndex(CConfiguratorWindow::kSheetTab, true);
        ReportTemplate();
        ShowMessageList(true);
    }
    if (SheetData().NoChannels()) {
        sheet_splitter_.ShowPane(CSplitterPane::TPane::kLower, false);
    }
    BuildToolBoxes();
    FollowTab(CConfiguratorWindow::kTextTab);
    if (opened) {
        NotifyFiles();
    }
    return opened;
}

bool CWindowSession::CanEnumerate() const {
    std::array<char, 256> error = {};
    kq_drv::CDriverComponentDLLHelper helper;
    return opening_.module != nullptr && helper.Init(error.size() - 1, error.data(), opening_.module) &&
           helper.AbleToEnumerateChannels(1);
}

struct CWindowSession::TFileTexts {
    std::string_view title;
    std::string_view create;
    std::string_view cannot_open;
    std::string_view cannot_create;
};

bool CWindowSession::OpenPar() {
    return OpenFile(ParView(), par_file_,
                    {texts::kParTitle, texts::kCreatePar, texts::kCannotOpenPar, texts::kCannotOpenPar});
}

bool CWindowSession::OpenDmf() {
    return OpenFile(DmfView(), dmf_file_,
                    {texts::kDmfTitle, texts::kCreateDmf, texts::kCannotOpenDmf, texts::kCannotCreateDmf});
}

bool CWindowSession::OpenFile(CTextView &view, TFile &file, const TFileTexts &shown) {
    if (LoadFile(view, file)) {
        return true;
    }
    kq_base::CDisk &disk = kq_base::CDisk::Current();
    const std::string_view path = file.path.View();
    if (disk.Exists(path)) {
        ShowStop(texts::kOpenErrorTitle, shown.cannot_open, path);
        return false;
    }
    if (!AskYesNo(shown.title, shown.create, path, {}, TBoxIcon::kStop)) {
        return false;
    }
    // Somebody else may have written the file while the question was up.
    std::string error;
    if (!disk.Exists(path) && !disk.Save(path, {}, error)) {
        ShowStop(texts::kOpenErrorTitle, shown.cannot_create, path);
        return false;
    }
    LoadFile(view, file);
    return true;
}

bool CWindowSession::LoadFile(CTextView &view, TFile &file) {
    std::string error;
    const bool loaded = view.LoadFromFile(file.path.View(), error);
    if (!loaded && kq_base::CDisk::Current().Exists(file.path.View())) {
        file.load_error = error;
    }
    return loaded;
}

void CWindowSession::ReadSettings() {
    if (done_) {
        return;
    }
    bool in_par = true;
    CSettings settings;
    if (settings.Open(ConfiguratorSettingsPath())) {
        settings.ReadBoolean("InPar", in_par);
    }
    if (in_par) {
        tabs_.SetActiveTabIndex(CConfiguratorWindow::kSheetTab);
    }
    if (settings.Open(CSettings::GetRegistryIniPath(4) + "\\text editor")) {
        std::uint32_t number_color = 0;
        if (settings.ReadUnsigned("number color", number_color)) {
            ParView().number_color = number_color;
        }
        settings.ReadUnsigned("system keyword color", keyword_color_);
    }
    SetColouredIds();
}

void CWindowSession::SetColouredIds() {
    ParView().ClearColoredIdList();
    for (const kq_base::TText &word : SheetData().KeywordWords()) {
        ParView().AddColoredId(word.View(), keyword_color_);
    }
    ParView().PaintView();
}

}  // namespace kq_pdt
