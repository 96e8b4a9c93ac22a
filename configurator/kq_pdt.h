#pragma once

/// The configurator: a window in which a person edits the parameters of one driver, as a sheet of nested tables or as
/// text. There is one window at a time. It is a portable view (platform/view): a window system shows it through peers,
/// a program drives it without any, by the operations named User... of its views.
///
///     kq_pdt::Init_();
///     CAbstractDriverConfigurator *configurator = nullptr;
///     CConfiguratorWindow *window = CreateDriverConfigurator(4, "Line", &host, &configurator);
///     if (window != nullptr) {
///         window->SetVisible(true);
///         configurator->ReadViewSettings();
///         window->Exec();
///         window->Done();
///         delete window;
///     }
///
/// All texts are in code page 1250. Everything here is called on one thread, the user interface thread, and the host's
/// callback is called on it.

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/base/export.h"
#include "platform/os/modules.h"
#include "platform/view/labels.h"
#include "platform/view/list_box.h"
#include "platform/view/message_box.h"
#include "platform/view/panes.h"
#include "platform/view/sheet_view.h"
#include "platform/view/text_view.h"
#include "platform/view/window.h"
#include "template/language/host_callback.h"

class CConfiguratorWindow;

/// What the library gives to a host that opened a window by CreateDriverConfigurator.
class KQ_API CAbstractDriverConfigurator {
public:
    /// Asks whether the window may be closed, which asks the person if something isn't saved. False: the person wants
    /// to go on, or a box or a search is up. The host then ends the window itself, by its Done; NotifyClosed doesn't
    /// come.
    virtual bool QueryClose();
    /// Takes over the user's choice of tab and colours. A host calls it once the window is up.
    virtual void ReadViewSettings();

protected:
    ~CAbstractDriverConfigurator() = default;
};

/// The commands of menus and tool boxes.
enum TConfiguratorCommand : std::uint32_t {
    cmSave = 0x44C,
    cmApply = 0x44D,  ///< save, then close
    cmInsert = 0x44E,
    cmDelete = 0x44F,
    cmAdd = 0x450,
    cmSearchDevices = 0x451,
    cmDriverHelp = 0x452,
    cmRepairDmf = 0x453,
    cmUndo = 0x460,
    cmRedo = 0x461,
    cmClose = kCloseRequest,
};

/// The numbers of the icons. Their pictures are files of the desktop.
enum TIconNumber : std::uint32_t {
    icLibrary = 1,
    icTextTab = 1001,
    icSheetTab = 1002,
    icChannels = 1003,
    icError = 1004,
    icNotice = 1005,
    icApply = 1006,
    icClose = 1007,
    icInsert = 1008,
    icDelete = 1009,
    icAdd = 1010,
    icSearchDevices = 1011,
    icDriverHelp = 1012,
    icSave = 1013,  ///< the small picture for saving, of the toolkit
};

/// The window. It owns its views; what a person does goes to them.
class KQ_API CConfiguratorWindow : public CWindow {
public:
    /// The tabs.
    static constexpr std::uint32_t kSheetTab = 1;
    static constexpr std::uint32_t kTextTab = 2;
    /// The code that a key press has, of class ecKeyDown, to go to the next message.
    static constexpr std::uint32_t kNextMessageKey = 0x7300;

    ~CConfiguratorWindow() override;

    /// Runs until the window is to end: code 4, or code 5 once closing was confirmed. The window has to outlive it: a
    /// host that runs a loop of its own may delete the window when it hears NotifyClosed, this one's caller only after.
    std::uint32_t Exec() override;
    void SetVisible(bool visible) override;
    void SetSelect(bool selected) override;
    void ReceiveEvent(TEvent &event) override;
    /// Ends the session: settings are stored, model and views emptied, the module released. Nothing is saved. Whoever
    /// ran Exec calls it. A second call does nothing.
    void Done() override;

    // The views. They live as long as the window; after Done they are empty.

    CTab &Tabs();
    CSheetView &Sheet();
    CSheetView &Channels();
    /// The text of the parameter file.
    CTextView &ParView();
    /// The text of the driver map file, which is never shown.
    const CTextView &DmfView() const;
    CListBox &Messages();
    /// Tabs above, messages below.
    CSplitterPane &WindowSplitter();
    /// On tab 1: the sheet above, the channels below.
    CSplitterPane &SheetSplitter();
    CToolBox &SheetToolBox();
    CToolBox &TextToolBox();
    std::string_view StatusText() const;
    /// The bubble that is shown; null without one.
    const CBubble *Bubble() const;

    /// The position of a message in the parameter file's text, from 1; line 0 and column 0 are none.
    struct TMessagePosition {
        std::uint32_t line = 0;
        std::uint32_t column = 0;
    };
    /// Of a row of the message list, from 1.
    TMessagePosition MessagePosition(std::size_t row) const;
    /// The message last gone to, from 1; 0 without one.
    std::size_t CurrentMessage() const;
    /// True if the sheet has changes that are in no file.
    bool IsModified() const;
    /// True if the channels table shows undefined cells in warning colours.
    bool IsHighlighting() const;
    std::string_view ParPath() const;
    std::string_view DmfPath() const;
    std::string_view PdtPath() const;

    // More about the sheet's cells, for tooltips and accessible descriptions. All are empty where there is nothing to
    // say, and for cells that don't exist.

    /// What the template says of a cell to its user.
    std::string CellBubble(std::uint32_t table, std::uint32_t row, std::uint32_t column);
    /// Why a cell is disabled: the condition and the values in it.
    std::string CellReason(std::uint32_t table, std::uint32_t row, std::uint32_t column);
    /// Why a row, written to the file, wouldn't read back as it is.
    std::string RowProblem(std::uint32_t table, std::uint32_t row);
    /// The first such reason of all rows.
    std::string FirstProblem();

    /// What a save would write now.
    struct TTexts {
        std::string par;
        std::string dmf;
        bool has_dmf = false;  ///< false if a save leaves the driver map file alone
    };
    TTexts TextsToSave();
    /// Counts up with each change on tab 1, also one that was taken back.
    std::uint64_t ChangeCount() const;

    // What a person does to the window as a whole; to its views by their own operations. These commit an open editor.

    /// Takes the last step in the active tab back, or makes it again. False if there is none.
    bool UserUndo();
    bool UserRedo();
    /// The name of the step that would be taken back or made again; empty without one.
    std::string UndoName() const;
    std::string RedoName() const;
    /// Puts other texts in place of the present ones, on tab 2 and unsaved, as if the person had written them there:
    /// work that was kept elsewhere.
    void UserReplaceTexts(const TTexts &texts);
    /// Finds the next cell of the sheet after the selected one whose text holds a text in any case, in the order in
    /// which rows are shown and round again, and selects it. Backwards likewise. False if there is none or tab 1 isn't
    /// active.
    bool UserFind(std::string_view text, bool backwards);
    /// Selects the next row that wouldn't read back. False likewise.
    bool UserNextProblem();

private:
    friend struct TConfiguratorAccess;
    struct TState;
    CConfiguratorWindow();

    std::unique_ptr<TState> state_;
};

/// A path that is passed by value, terminated within its bound.
struct TDriverPath {
    std::array<char, 260> text;
};

extern "C" {
/// Opens a window for a driver whose files the caller names: module, parameter file, driver map file. The template lies
/// beside the module. Null if a window is open already; otherwise a window comes whatever the opening met, which the
/// person has seen. The caller deletes it.
KQ_API CConfiguratorWindow *OpenEditor(TDriverPath module, TDriverPath par, TDriverPath dmf);

/// Opens a window for a driver under a host, which names the files. The name is the driver's display name: its length,
/// or any greater number, then the text, terminated. The host deletes the window; the configurator is the library's,
/// and lives until the next window is created. Null if a file couldn't be opened, which the person has seen; the
/// configurator is null then. Null also, and nothing touched or asked, if a window is open already or the callback is
/// null.
KQ_API CConfiguratorWindow *CreateDriverConfigurator(std::uint32_t name_high, const char *name,
                                                     CAbstractPdtIdeCallBack *callback,
                                                     CAbstractDriverConfigurator **configurator);
}

namespace kq_pdt {

/// Prepares the library; a host calls it once before anything else here. Later calls do nothing.
KQ_API void Init_();
/// The library's own handle.
extern KQ_API kq_os::HMODULE HThisDLLInstance;

}  // namespace kq_pdt

namespace kq_pdt_ {

/// The part of kq_pdt::Init_ that concerns the pictures.
KQ_API void Init_();

}  // namespace kq_pdt_
