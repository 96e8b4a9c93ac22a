#pragma once

#include <functional>

#include "configurator/kq_pdt.h"
#include "desktop/peers/advice.h"

namespace kq_desktop {

/// What the configurator's window says of its views.
class CWindowAdvice final : public CPeerAdvice {
public:
    /// From now on the window is asked; null for none.
    void SetWindow(CConfiguratorWindow *window) { window_ = window; }

    QString CellHelp(CSheetView &sheet, std::uint32_t table, std::uint32_t row, std::uint32_t column) override;
    QString CellReason(CSheetView &sheet, std::uint32_t table, std::uint32_t row, std::uint32_t column) override;
    QString RowProblem(CSheetView &sheet, std::uint32_t table, std::uint32_t row) override;
    QString NameOf(const void *view) override;
    QString RowPlace(const CListBox &list, std::size_t row) override;
    std::vector<TTextMark> TextMarks(const CTextView &text) override;
    QString CommandName(std::uint32_t command) override;
    QList<QKeySequence> Shortcuts(std::uint32_t command) override;
    QString MenuText(const QString &text) override;
    void LeavingTab() override {
        if (leaving_tab) {
            leaving_tab();
        }
    }
    bool HandleCommand(std::uint32_t command) override { return handle_command && handle_command(command); }
    QString IconName(std::uint32_t icon) override;

    /// What the program does by itself; true if a command is one of these.
    std::function<bool(std::uint32_t)> handle_command;
    std::function<void()> leaving_tab;

private:
    bool IsSheet(const CSheetView &sheet) const;

    CConfiguratorWindow *window_ = nullptr;
};

}  // namespace kq_desktop
