#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "configurator/channels_view.h"
#include "configurator/kq_pdt.h"
#include "configurator/message_boxes.h"
#include "configurator/par_sheet_view.h"
#include "configurator/session.h"
#include "configurator/sheet_history.h"
#include "configurator/status_line.h"
#include "configurator/texts.h"
#include "platform/base/bounded_text.h"
#include "platform/view/menu_bar.h"
#include "platform/view/tool_box.h"

namespace kq_pdt {

class CSearchProgress;
class CWindowSession;

/// What a window is opened with.
struct TOpening {
    TRect rect;
    kq_base::TText name;  ///< the driver's display name
    kq_base::TPathText pdt_path;
    kq_base::TPathText par_path;
    kq_base::TPathText dmf_path;
    kq_os::HMODULE module = nullptr;  ///< the driver's module, the session's from now on; null if it didn't load
    CAbstractPdtIdeCallBack *callback = nullptr;
};

/// Asks the session before its tab changes.
class CConfiguratorTab final : public CTab {
public:
    /// From now on it asks; before, any change is allowed.
    void SetSession(CWindowSession *session) { session_ = session; }

protected:
    bool MayActivate(std::uint32_t tab) override;

private:
    CWindowSession *session_ = nullptr;
};

/// The session behind a window: the model and the texts with the views that show them, and what happens between them.
/// Of the two shapes, sheet and text, the one on the active tab holds; changing the tab translates.
///
/// The members lie in several files: window_layout.cpp builds the views, window_open.cpp opens the session,
/// window_events.cpp takes commands and what the model reports, window_history.cpp takes steps back,
/// window_messages.cpp has the message list, window_flows.cpp translating and repair, window_save.cpp saving,
/// window_close.cpp the end, device_search.cpp the search.
class CWindowSession final : public CConfiguratorSession, private CModelListener {
public:
    explicit CWindowSession(CConfiguratorWindow &window);
    ~CWindowSession() override;

    /// Opens everything whatever fails on the way, which the user is told. False if a file couldn't be opened.
    bool Open(const TOpening &opening);
    void ReadSettings();
    /// The window is to be maximised when it is first shown.
    void MaximizeWhenShown() { maximize_pending_ = true; }
    void WindowShown();
    /// Takes a bubble down that is shown.
    void HideBubble();

    /// Handles an event that the window got; true if the window's own handling is to follow.
    bool HandleEvent(TEvent &event);
    /// May the active tab become another one? Translates if so.
    bool TabChanging(std::uint32_t tab);
    /// Asks what to do with unsaved changes; false if the user wants to go on.
    bool QueryClose();
    /// The same, asked by the host; false without a question while a box or a search is up.
    bool HostQueryClose();
    /// Ends the session; once. A search that is up is cancelled, and its driver released when it has come back.
    void Done();

    CConfiguratorWindow::TTexts TextsToSave();
    void ReplaceTexts(const CConfiguratorWindow::TTexts &texts);
    std::uint64_t ChangeCount() const { return changes_; }

    bool Undo();
    bool Redo();
    std::string UndoName();
    std::string RedoName();
    bool Find(std::string_view text, bool backwards);
    bool NextProblem();

    void AddWarning(std::string_view text1, std::string_view text2, std::uint32_t line) override;
    void AddError(std::string_view text1, std::string_view text2, std::uint32_t line) override;
    void AddErrorAt(std::string_view text1, std::string_view text2, std::uint32_t line, std::uint32_t column) override;
    void ClearMessages() override;
    void SelectChannelRow(std::uint32_t row) override;
    void ChannelsChanged() override;
    void UpdateToolButtons(bool insert, bool remove, bool add) override;
    void ShowHint(std::string_view text) override;
    void PostCommand(TWindowCommand command, std::uint32_t parameter) override;

    CConfiguratorTab &Tabs() { return tabs_; }
    CParSheetView &Sheet() { return sheet_; }
    CChannelsView &Channels() { return channels_; }
    CListBox &MessageList() { return message_list_; }
    CSplitterPane &WindowSplitter() { return window_splitter_; }
    CSplitterPane &SheetSplitter() { return sheet_splitter_; }
    CToolBox &SheetToolBox() { return sheet_tools_; }
    const CStatusLine &StatusLine() const { return status_line_; }
    std::size_t CurrentMessage() const { return current_message_; }
    bool IsModified() const { return modified_; }
    bool IsClosing() const { return closing_; }
    bool IsDone() const { return done_; }
    const TOpening &Opening() const { return opening_; }

protected:
    void ClearSheet() override;
    void ParRead() override;

private:
    void EditTaken(CJournal::TSteps &&steps) override { history_.EditTaken(std::move(steps)); }
    void ModelCleared() override { history_.End(); }
    void RowsChanged(std::uint32_t table, std::uint32_t row, bool inserted) override {
        sheet_.NoteRows(table, row, inserted);
    }

    /// A file of the session, of which the content at the opening may be unknown.
    struct TFile {
        const kq_base::TPathText &path;
        std::optional<std::string> load_error = {};  ///< set if the file is there and couldn't be read
    };
    /// While it lives, new rows don't show the message list by themselves: the work under way decides that in the end.
    class CReporting;

    // window_layout.cpp
    void BuildMenu();
    void BuildViews();
    void BuildSheetPage();
    void BuildTextPage();
    void BuildToolBoxes();

    // window_open.cpp
    bool CanEnumerate() const;
    bool OpenPar();
    bool OpenDmf();
    struct TFileTexts;
    bool OpenFile(CTextView &view, TFile &file, const TFileTexts &shown);
    bool LoadFile(CTextView &view, TFile &file);
    void SetColouredIds();

    // window_events.cpp
    bool HandleCommand(TEvent &event);
    bool HandleReport(TEvent &event);
    void HandleCloseRequest();
    bool HandleCloseLoop(TEvent &event);
    void RebuildSheets();
    void CommitCellEditors();
    bool IsBusy() const;
    void NoteCommitted();

    // window_history.cpp
    CSheetHistory::TAction Snapshot();
    void ShowHistoryState();
    void UpdateUndoMenu(std::uint32_t tab);

    // window_messages.cpp
    void ShowRow(const CMessageList::TRow &row);
    void RowAdded();
    void RestoreMessages(std::size_t rows);
    void ShowMessageList(bool shown);
    void NextMessage();
    void ChooseMessage();
    void GoToMessage();

    // window_flows.cpp
    bool OnSheet() const { return tabs_.ActiveTabIndex() == CConfiguratorWindow::kSheetTab; }
    bool OnText() const { return tabs_.ActiveTabIndex() == CConfiguratorWindow::kTextTab; }
    void ForceTab(std::uint32_t tab);
    void FollowTab(std::uint32_t tab);
    bool TranslateToSheet();
    TOutcome ReadTexts();
    void ReportTemplate();
    void GoToFirstError();
    bool TranslateToText();
    bool ConfirmUndefined();
    void RepairDmfText();

    // window_save.cpp
    void SaveSession(std::uint32_t command);
    void NotifyFiles();
    bool SaveChannels();
    bool SavePar();
    bool SaveParFromModel();
    static bool IsUnread(const CTextView &view, const TFile &file, std::string &error);
    static bool SaveView(CTextView &view, TFile &file, std::string &error);
    bool SaveDmfFromModel(std::string &error);

    // window_close.cpp
    void ReleaseModule();

    // device_search.cpp
    bool HasDeviceSearch() const;
    void SearchDevices();
    void RunSearch();
    bool WriteForSearch(std::string_view path);
    bool ChooseDevices(std::string_view path);
    void TakeSearchResult(std::string_view path);

    CConfiguratorWindow &window_;
    std::uint64_t changes_ = 0;
    TOpening opening_;
    TFile par_file_{opening_.par_path};
    TFile dmf_file_{opening_.dmf_path};

    CMenuBar menu_bar_;
    CStatusLine status_line_;
    CSplitterPane window_splitter_;
    CConfiguratorTab tabs_;
    CListBox message_list_;
    CSplitterPane sheet_splitter_;
    CDataContainer sheet_scroller_;
    CView channels_strip_;
    CStaticText channels_title_{texts::kChannelsTitle, icChannels};
    CDataContainer channels_scroller_;
    CDataContainer text_container_;
    CToolBox sheet_tools_;
    CSheetHistory history_;
    CParSheetView sheet_;
    CChannelsView channels_;

    std::size_t current_message_ = 0;
    std::uint32_t keyword_color_ = 0xFFFFFFFF;
    bool closing_ = false;   ///< closing was confirmed; the next code 5 ends the window
    bool modified_ = false;  ///< the sheet has changes that are in no file
    bool tab_switch_forced_ = false;
    bool maximize_pending_ = false;
    bool driver_enumerates_ = false;  ///< the driver lists its channels itself; there is no driver map file
    bool reporting_ = false;
    bool searching_ = false;               ///< a device search is up
    CSearchProgress *progress_ = nullptr;  ///< its window while the driver is at work
    bool done_ = false;
};

class CWindowSession::CReporting {
public:
    explicit CReporting(CWindowSession &session)
        : session_(session), before_(std::exchange(session.reporting_, true)) {}
    ~CReporting() { session_.reporting_ = before_; }
    CReporting(const CReporting &) = delete;
    CReporting &operator=(const CReporting &) = delete;

private:
    CWindowSession &session_;
    bool before_;
};

/// The window of the entry points has ended: another one may be opened.
void WindowEnded(const CConfiguratorWindow &window);

}  // namespace kq_pdt

struct CConfiguratorWindow::TState {
    explicit TState(CConfiguratorWindow &window) : session(window) {}

    kq_pdt::CWindowSession session;
};

/// The way of the entry points, and of tests, to what is behind a window.
struct TConfiguratorAccess {
    static std::unique_ptr<CConfiguratorWindow> Create();
    static kq_pdt::CWindowSession &Session(CConfiguratorWindow &window) { return window.state_->session; }
};
