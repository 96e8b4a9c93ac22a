/// A host that configures a driver without a person: opens the configurator, sets one value as a person would, saves
/// and closes. A host with a window system would install its peers first and let a person do all that.
#include <algorithm>
#include <cstring>
#include <iostream>
#include <memory>
#include <string>

#include "configurator/kq_pdt.h"
#include "platform/base/code_page.h"
#include "platform/view/controls.h"

namespace {

/// Answers the library's questions from the name of the driver: its files are FOLDER/NAME.par and so on.
class CHost final : public CAbstractPdtIdeCallBack {
public:
    explicit CHost(std::string base) : base_(std::move(base)) {}

    void GetParFileName(std::uint32_t /*high*/, const char * /*name*/, std::uint32_t path_high, char *path) override {
        Put(".par", path_high, path);
    }
    void GetDmfFileName(std::uint32_t /*high*/, const char * /*name*/, std::uint32_t path_high, char *path) override {
        Put(".dmf", path_high, path);
    }
    void GetDllFileName(std::uint32_t /*high*/, const char * /*name*/, std::uint32_t path_high, char *path) override {
        Put(".dll", path_high, path);
    }
    void GetPdtFileName(std::uint32_t /*high*/, const char * /*name*/, std::uint32_t path_high, char *path) override {
        Put(".pdt", path_high, path);
    }
    void GetModulesDir(std::uint32_t /*high*/, char *path) override { *path = 0; }
    bool FindFirstModule(std::uint32_t /*name_high*/, char * /*name*/, std::uint32_t /*path_high*/,
                         char * /*path*/) override {
        return false;
    }
    void GetLanguage(std::uint32_t &language) override { language = 1; }
    void NotifyDriverFiles(std::uint32_t /*dmf_high*/, const char * /*dmf*/, std::uint32_t /*par_high*/,
                           const char *par) override {
        std::cout << "works on " << kq_base::ToUtf8(par) << '\n';
    }
    void NotifyClosed() override { std::cout << "closed\n"; }

private:
    void Put(const char *extension, std::uint32_t high, char *path) const {
        const std::string whole = base_ + extension;
        std::memset(path, 0, high + 1);
        std::memcpy(path, whole.c_str(), std::min<std::size_t>(whole.size(), high));
    }

    std::string base_;
};

/// The row of a table whose first cell shows a text; 0 without one.
std::uint32_t FindRow(CSheetView &sheet, std::uint32_t table, std::string_view text) {
    for (std::uint32_t row = 1; row <= sheet.RowCount(table); ++row) {
        if (kq_base::ToUtf8(sheet.ReadCell(table, row, 1).text.View()) == text) {
            return row;
        }
    }
    return 0;
}

/// Types a value into the second cell of a parameter's row. False if the sheet doesn't let a person do that.
bool SetValue(CSheetView &sheet, std::string_view section, std::string_view parameter, std::string_view value) {
    const std::uint32_t table = sheet.SubTable(1, FindRow(sheet, 1, section));
    if (!sheet.UserEdit(table, FindRow(sheet, table, parameter), 2)) {
        return false;
    }
    CView *editor = sheet.CellEditor();
    bool typed = false;
    if (auto *text = dynamic_cast<CEditBox *>(editor)) {
        typed = text->UserType(value);
    } else if (auto *count = dynamic_cast<CIntegerCountBox *>(editor)) {
        typed = count->UserType(value);
    }
    return typed ? sheet.UserCommit() : !sheet.UserCancel();
}

}  // namespace

int main(int count, char **arguments) {
    if (count != 5) {
        std::cerr << "Usage: configure FOLDER/NAME SECTION PARAMETER VALUE\n";
        return 2;
    }
    SetMessageBoxHandler([](const TMessageBox &box) {
        std::cerr << kq_base::ToUtf8(box.title) << ": " << kq_base::ToUtf8(box.lines[1]) << '\n';
        return box.buttons == TBoxButtons::kOk ? TBoxAnswer::kOk : TBoxAnswer::kNo;
    });
    kq_pdt::Init_();
    CHost host(arguments[1]);
    CAbstractDriverConfigurator *configurator = nullptr;
    const std::unique_ptr<CConfiguratorWindow> window(CreateDriverConfigurator(6, "Driver", &host, &configurator));
    if (window == nullptr) {
        return 1;
    }
    window->SetVisible(true);
    configurator->ReadViewSettings();  // goes to the sheet
    const bool set = SetValue(window->Sheet(), arguments[2], arguments[3], arguments[4]);
    ProcessEvents();
    if (!set) {
        std::cerr << "there is no such parameter to set\n";
        window->Done();
        return 1;
    }
    window->SheetToolBox().UserPress(cmApply);  // saves, then closes
    window->Exec();
    window->Done();
    return 0;
}
