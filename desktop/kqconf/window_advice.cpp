#include "desktop/kqconf/window_advice.h"

#include "desktop/kqconf/commands.h"
#include "desktop/peers/text.h"

namespace kq_desktop {

bool CWindowAdvice::IsSheet(const CSheetView &sheet) const { return window_ != nullptr && &window_->Sheet() == &sheet; }

QString CWindowAdvice::CellHelp(CSheetView &sheet, std::uint32_t table, std::uint32_t row, std::uint32_t column) {
    return IsSheet(sheet) ? ToQt(window_->CellBubble(table, row, column)) : QString();
}

QString CWindowAdvice::CellReason(CSheetView &sheet, std::uint32_t table, std::uint32_t row, std::uint32_t column) {
    return IsSheet(sheet) ? ToQt(window_->CellReason(table, row, column)) : QString();
}

QString CWindowAdvice::RowProblem(CSheetView &sheet, std::uint32_t table, std::uint32_t row) {
    return IsSheet(sheet) ? ToQt(window_->RowProblem(table, row)) : QString();
}

QString CWindowAdvice::NameOf(const void *view) {
    if (window_ == nullptr) {
        return {};
    }
    if (view == &window_->Sheet()) {
        return QStringLiteral("Parametry");
    }
    if (view == &window_->Channels()) {
        return QStringLiteral("Definované kanály");
    }
    if (view == &window_->ParView()) {
        return QStringLiteral("Text parametrického souboru");
    }
    return view == &window_->Messages() ? QStringLiteral("Hlášení") : QString();
}

QString CWindowAdvice::RowPlace(const CListBox &list, std::size_t row) {
    if (window_ == nullptr || &list != &window_->Messages()) {
        return {};
    }
    const CConfiguratorWindow::TMessagePosition place = window_->MessagePosition(row);
    if (place.line == 0) {
        return {};
    }
    return place.column == 0 ? QStringLiteral("Řádek %1").arg(place.line)
                             : QStringLiteral("Řádek %1, sloupec %2").arg(place.line).arg(place.column);
}

std::vector<TTextMark> CWindowAdvice::TextMarks(const CTextView &text) {
    std::vector<TTextMark> marks;
    if (window_ == nullptr || &text != &window_->ParView()) {
        return marks;
    }
    const auto &rows = window_->Messages().Rows();
    for (std::size_t row = 1; row <= rows.size(); ++row) {
        const CConfiguratorWindow::TMessagePosition place = window_->MessagePosition(row);
        if (place.line != 0) {
            const CListBox::TRow &message = rows[row - 1];
            marks.push_back({place.line, place.column, message.icon == icError, ToQt(message.text.View())});
        }
    }
    return marks;
}

QString CWindowAdvice::CommandName(std::uint32_t command) {
    switch (command) {
        case cmApply:
            return QStringLiteral("Použít");
        case cmClose:
            return QStringLiteral("Uzavřít");
        default:
            return {};
    }
}

QList<QKeySequence> CWindowAdvice::Shortcuts(std::uint32_t command) { return ShortcutsOf(command); }

QString CWindowAdvice::MenuText(const QString &text) { return WithMnemonic(text); }

QString CWindowAdvice::IconName(std::uint32_t icon) { return IconNameOf(icon); }

}  // namespace kq_desktop
