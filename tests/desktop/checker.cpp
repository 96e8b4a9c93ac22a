#include "tests/desktop/checker.h"

#include <QAccessible>
#include <QListView>
#include <QMainWindow>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTabWidget>
#include <QTextBlock>
#include <QToolBar>
#include <QTreeView>
#include <set>

#include "desktop/peers/qt_peer.h"
#include "desktop/peers/text.h"
#include "tests/desktop/person.h"

using namespace kq_desktop;

namespace {

/// What a cell shows to a person, by the sheet itself.
QString Shown(CSheetView &sheet, std::uint32_t table, std::uint32_t row, std::uint32_t column) {
    const CSheetView::TCell cell = sheet.ReadCell(table, row, column);
    return cell.disabled ? QStringLiteral("—") : ToQt(cell.text.View());
}

QString CompareTable(CSheetView &sheet, const QTreeView &tree, std::uint32_t table, const QModelIndex &node) {
    const QAbstractItemModel &model = *tree.model();
    const int headings = table == 1 ? 0 : 1;
    const QString place = QStringLiteral("table %1").arg(table);
    if (model.rowCount(node) != static_cast<int>(sheet.ShownRowCount(table)) + headings) {
        return QStringLiteral("%1: %2 items, %3 rows")
            .arg(place)
            .arg(model.rowCount(node))
            .arg(sheet.ShownRowCount(table));
    }
    const auto &columns = sheet.Columns(table);
    for (std::uint32_t row = 1; row <= sheet.ShownRowCount(table); ++row) {
        const QModelIndex item = model.index(static_cast<int>(row) - 1 + headings, 0, node);
        for (std::uint32_t column = 1; column <= columns.size(); ++column) {
            const QModelIndex cell = item.siblingAtColumn(static_cast<int>(column) - 1);
            if (cell.isValid() && cell.data().toString() != Shown(sheet, table, row, column)) {
                return QStringLiteral("%1, row %2, column %3: %4 is shown as %5")
                    .arg(place)
                    .arg(row)
                    .arg(column)
                    .arg(Shown(sheet, table, row, column), cell.data().toString());
            }
        }
        const std::uint32_t below = sheet.SubTable(table, row);
        if (below == 0) {
            continue;
        }
        if (tree.isExpanded(item) != sheet.IsOpen(below)) {
            return QStringLiteral("%1, row %2: open or closed differs").arg(place).arg(row);
        }
        QString difference = sheet.IsOpen(below) ? CompareTable(sheet, tree, below, item) : QString();
        if (!difference.isEmpty()) {
            return difference;
        }
    }
    return {};
}

QString CompareSelection(const CSheetView &sheet, const QTreeView &tree) {
    const CSheetView::TPosition &selection = sheet.Selection();
    const QModelIndex current = tree.currentIndex();
    const int headings = selection.table == 1 ? 0 : 1;
    const bool same = selection.table == 0 ? !current.isValid()
                                           : current.isValid() && current.internalId() == selection.table &&
                                                 current.row() == static_cast<int>(selection.row) - 1 + headings &&
                                                 current.column() == static_cast<int>(selection.column) - 1;
    return same ? QString() : QStringLiteral("the selection differs");
}

QString CompareText(CTextView &view, const QPlainTextEdit &editor) {
    QString shown;
    for (QTextBlock block = editor.document()->begin(); block.isValid(); block = block.next()) {
        shown += block.text();
        if (block.next().isValid()) {
            shown += QLatin1Char('\n');
        }
    }
    QString text = ToQt(view.Text());
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    if (shown != text) {
        return QStringLiteral("the text is shown otherwise");
    }
    const QTextCursor cursor = editor.textCursor();
    return cursor.blockNumber() == static_cast<int>(view.CursorLine()) &&
                   cursor.positionInBlock() == static_cast<int>(view.CursorColumn())
               ? QString()
               : QStringLiteral("the cursor is elsewhere");
}

QString CompareTools(const CToolBox &tools) {
    const auto *bar = static_cast<const QToolBar *>(CQtPeer::Of(&tools)->Widget());
    for (const QAction *action : bar->actions()) {
        if (!action->isSeparator() && action->isEnabled() != tools.IsEnabled(action->data().toUInt())) {
            return QStringLiteral("the button %1 differs").arg(action->text());
        }
    }
    return {};
}

void FindUnnamed(QAccessibleInterface &shown, const QString &within, QStringList &found) {
    static const std::set<QAccessible::Role> used = {
        QAccessible::Button,   QAccessible::CheckBox, QAccessible::RadioButton, QAccessible::ComboBox,
        QAccessible::SpinBox,  QAccessible::List,     QAccessible::ListItem,    QAccessible::EditableText,
        QAccessible::MenuItem, QAccessible::PageTab,  QAccessible::TreeItem,    QAccessible::Tree,
        QAccessible::Dialog,   QAccessible::Window};
    // A cell that holds nothing and can't be chosen is a blank between others.
    const bool blank = shown.role() == QAccessible::TreeItem && !shown.state().focusable;
    const QString name = shown.text(QAccessible::Name) + shown.text(QAccessible::Description);
    const QString place = QStringLiteral("%1/%2 %3").arg(within).arg(shown.role()).arg(name);
    if (used.contains(shown.role()) && name.isEmpty() && !blank) {
        found.append(place);
    }
    for (int child = 0; child < shown.childCount(); ++child) {
        if (QAccessibleInterface *below = shown.child(child);
            below != nullptr && !qobject_cast<QScrollBar *>(below->object())) {
            FindUnnamed(*below, place, found);
        }
    }
}

}  // namespace

QString Unnamed(QWidget &widget) {
    QStringList found;
    FindUnnamed(*QAccessible::queryAccessibleInterface(&widget), {}, found);
    return found.join(QLatin1Char('\n'));
}

QString Compare(CPerson &person) {
    CConfiguratorWindow &window = person.Window();
    const auto *tabs = static_cast<const QTabWidget *>(CQtPeer::Of(&window.Tabs())->Widget());
    if (tabs->currentIndex() + 1 != static_cast<int>(window.Tabs().ActiveTabIndex())) {
        return QStringLiteral("another tab is shown");
    }
    const auto *list = static_cast<const QListView *>(CQtPeer::Of(&window.Messages())->Widget());
    if (list->model()->rowCount() != static_cast<int>(window.Messages().Rows().size())) {
        return QStringLiteral("other messages are shown");
    }
    if (list->isVisible() != window.WindowSplitter().IsPaneShown(CSplitterPane::TPane::kLower)) {
        return QStringLiteral("the message pane differs");
    }
    QString difference;
    if (window.Tabs().ActiveTabIndex() == CConfiguratorWindow::kTextTab) {
        difference = CompareText(window.ParView(), person.Text());
    } else {
        difference = CompareTable(window.Sheet(), person.Sheet(), 1, {});
        if (difference.isEmpty()) {
            difference = CompareTable(window.Channels(), person.Channels(), 1, {});
        }
        if (difference.isEmpty()) {
            difference = CompareSelection(window.Sheet(), person.Sheet());
        }
    }
    return difference.isEmpty() && window.DockedToolBox() != nullptr ? CompareTools(*window.DockedToolBox())
                                                                     : difference;
}
