#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "configurator/kq_pdt.h"
#include "platform/base/bounded_text.h"
#include "platform/view/controls.h"
#include "platform/view/settings.h"
#include "tests/support/memory_disk.h"

/// A configurator's window with what is around it: files and settings in memory, a host, a person who answers boxes.
/// What a person, the host or the disk would notice goes into a log, in UTF-8.
class CWindowBench final : public CAbstractPdtIdeCallBack {
public:
    static constexpr const char *kPdt = "d.pdt";
    static constexpr const char *kPar = "d.par";
    static constexpr const char *kDmf = "d.dmf";

    explicit CWindowBench(std::string_view pdt, std::string_view par = {}, std::string_view dmf = {}) : disk(*this) {
        Write(kPdt, pdt);
        Write(kPar, par);
        Write(kDmf, dmf);
        former_store_ = SetSettingsStore(&settings);
        former_handler_ = SetMessageBoxHandler([this](const TMessageBox &box) { return Answer(box); });
    }
    ~CWindowBench() override {
        window.reset();
        SetMessageBoxHandler(std::move(former_handler_));
        SetSettingsStore(former_store_);
    }
    CWindowBench(const CWindowBench &) = delete;
    CWindowBench &operator=(const CWindowBench &) = delete;

    void Write(std::string_view path, std::string_view utf8) {
        std::string bytes;
        kq_base::FromUtf8(utf8, bytes);
        disk.CMemoryDisk::Save(path, bytes, error_);
    }
    std::string File(std::string_view path) const { return kq_base::ToUtf8(disk.Content(path)); }

    bool OpenEditor() {
        window.reset(::OpenEditor(Path(module), Path(kPar), Path(kDmf)));
        return window != nullptr;
    }
    bool Create() {
        window.reset(CreateDriverConfigurator(255, "Linka", this, &configurator));
        return window != nullptr;
    }
    /// Opens a window that isn't under a host, and goes to its sheet.
    bool OpenSheet() { return OpenEditor() && Tab(CConfiguratorWindow::kSheetTab); }
    bool Tab(std::uint32_t tab) {
        const bool changed = window->Tabs().UserActivate(tab);
        ProcessEvents();
        return changed;
    }
    void Command(std::uint32_t command, std::uint16_t event_class = ecCommand) {
        MakeEvent(*window, event_class, command);
        ProcessEvents();
    }
    /// Types a value into a cell and leaves the editor open.
    bool Type(CSheetView &sheet, std::uint32_t table, std::uint32_t row, std::uint32_t column, std::string_view text) {
        if (!sheet.UserEdit(table, row, column)) {
            return false;
        }
        CView *editor = sheet.CellEditor();
        if (auto *count = dynamic_cast<CIntegerCountBox *>(editor)) {
            return count->UserType(text);
        }
        if (auto *combo = dynamic_cast<CComboBox *>(editor)) {
            for (std::size_t entry = 1; entry <= combo->EntryCount(); ++entry) {
                if (combo->Entry(entry) == text) {
                    return combo->UserSelect(entry);
                }
            }
            return combo->UserType(text);
        }
        return dynamic_cast<CEditBox &>(*editor).UserType(text);
    }
    bool SetCell(CSheetView &sheet, std::uint32_t table, std::uint32_t row, std::uint32_t column,
                 std::string_view text) {
        const bool typed = Type(sheet, table, row, column, text);
        sheet.UserCommit();
        ProcessEvents();
        return typed;
    }
    /// The id of the table below row 1 of table 1.
    std::uint32_t SectionTable() { return window->Sheet().SubTable(1, 1); }
    /// Sets the number of kPdt.
    bool SetV(std::string_view value) { return SetCell(window->Sheet(), SectionTable(), 1, 2, value); }
    bool HasMenu(std::uint32_t command) const { return window->MenuBar()->IsEnabled(command); }
    /// The message list, a row a line.
    std::string Rows() const {
        std::string rows;
        for (const CListBox::TRow &row : window->Messages().Rows()) {
            rows += (row.icon == icError ? "E " : "W ") + kq_base::ToUtf8(row.text.View()) + "\n";
        }
        return rows;
    }
    bool MessagesShown() const { return window->WindowSplitter().IsPaneShown(CSplitterPane::TPane::kLower); }
    /// The log since the last call.
    std::string TakeLog() { return std::exchange(log_, {}); }
    void Log(std::string_view line) { log_.append(log_.empty() ? "" : "\n").append(line); }

    void GetParFileName(std::uint32_t /*high*/, const char * /*name*/, std::uint32_t path_high, char *path) override {
        Log("par?");
        kq_base::CopyToBuffer(kPar, path_high, path);
    }
    void GetDmfFileName(std::uint32_t /*high*/, const char * /*name*/, std::uint32_t path_high, char *path) override {
        Log("dmf?");
        kq_base::CopyToBuffer(kDmf, path_high, path);
    }
    void GetDllFileName(std::uint32_t /*high*/, const char * /*name*/, std::uint32_t path_high, char *path) override {
        Log("dll?");
        kq_base::CopyToBuffer(module, path_high, path);
    }
    void GetPdtFileName(std::uint32_t /*high*/, const char * /*name*/, std::uint32_t path_high, char *path) override {
        Log("pdt?");
        kq_base::CopyToBuffer(kPdt, path_high, path);
    }
    /// The current directory has the modules that a template may load.
    void GetModulesDir(std::uint32_t high, char *path) override { kq_base::CopyToBuffer(".", high, path); }
    bool FindFirstModule(std::uint32_t /*high*/, char * /*name*/, std::uint32_t /*path_high*/,
                         char * /*path*/) override {
        return false;
    }
    void FindPdtFile(std::uint32_t high, const char *name, std::uint32_t path_high, char *path) override {
        kq_base::CopyToBuffer(kq_base::JoinPath(".", kq_base::ViewOfPair(high, name)), path_high, path);
    }
    void ShowDriverHelp(std::uint32_t /*high*/, const char *name) override { Log("help " + std::string(name)); }
    void NotifyDriverFiles(std::uint32_t /*dmf_high*/, const char *dmf, std::uint32_t /*par_high*/,
                           const char *par) override {
        Log("files " + std::string(dmf) + " " + par);
    }
    void NotifyClosed() override {
        Log("closed");
        if (deletes_when_closed) {
            window.reset();
        }
    }

    class CDisk final : public CMemoryDisk {
    public:
        explicit CDisk(CWindowBench &bench) : bench_(bench) {}
        bool Read(std::string_view path, std::string &content, std::string &error) override {
            bench_.Watch();
            return CMemoryDisk::Read(path, content, error);
        }
        bool Save(std::string_view path, std::string_view content, std::string &error) override {
            const bool saved = CMemoryDisk::Save(path, content, error);
            bench_.Log((saved ? "save " : "fail ") + std::string(path));
            return saved;
        }

    private:
        CWindowBench &bench_;
    };

    std::string module = "d.dll";  ///< the driver's module; the template of OpenEditor lies beside it
    CDisk disk;
    CMemorySettings settings;
    std::function<void()> watch;           ///< called when a file is read and when a box is up
    std::vector<bool> asked_while_box_up;  ///< the host's QueryClose from inside a box
    bool deletes_when_closed = false;
    std::vector<TBoxAnswer> answers;  ///< to the next boxes; their last button without one
    CAbstractDriverConfigurator *configurator = nullptr;
    std::unique_ptr<CConfiguratorWindow> window;

private:
    static TDriverPath Path(std::string_view text) {
        TDriverPath path = {};
        kq_base::CopyToBuffer(text, path.text.size() - 1, path.text.data());
        return path;
    }
    void Watch() {
        if (watch) {
            watch();
        }
    }
    TBoxAnswer Answer(const TMessageBox &box) {
        Watch();
        std::string text = "box " + box.title;
        for (const std::string &line : box.lines) {
            text += "|" + line;
        }
        Log(kq_base::ToUtf8(text) + (box.icon == TBoxIcon::kStop ? " !" : " ?"));
        if (configurator != nullptr) {
            asked_while_box_up.push_back(configurator->QueryClose());
        }
        TBoxAnswer answer = box.buttons == TBoxButtons::kOk      ? TBoxAnswer::kOk
                            : box.buttons == TBoxButtons::kYesNo ? TBoxAnswer::kNo
                                                                 : TBoxAnswer::kCancel;
        if (box.buttons != TBoxButtons::kOk && !answers.empty()) {
            answer = answers.front();
            answers.erase(answers.begin());
        }
        return answer;
    }

    std::string log_;
    std::string error_;
    CSettingsStore *former_store_ = nullptr;
    TMessageBoxHandler former_handler_;
};

/// A template with a number and a channel whose kind it leaves open, and files for it.
inline const char *const kPdt =
    "keywords = 'ON'; def_section name = 'S'; required;"
    " def_key name = 'v'; par = number { range_from = 1; range_to = 9 }; end_key"
    " def_key name = 'k'; channels; par = number { ch_number; ch_count = 1 }; end_key end_section";
inline const char *const kPar = "[S]\n  v = 1\n  k = 5\n";
inline const char *const kDmf = "begin\n  5 real input\nend.\n";
