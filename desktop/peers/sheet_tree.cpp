#include "desktop/peers/sheet_tree.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <utility>

#include "desktop/peers/qt_peer.h"
#include "desktop/peers/sheet_delegate.h"
#include "desktop/peers/sheet_model.h"

namespace kq_desktop {

CSheetTree::CSheetTree(CSheetModel &model, TActions actions) : model_(model), actions_(std::move(actions)) {
    setModel(&model);
    setItemDelegate(new CSheetDelegate(this));
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectItems);
    setSelectionMode(SingleSelection);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(false);
    setExpandsOnDoubleClick(false);
    setAlternatingRowColors(false);
    setAutoScroll(true);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    header()->setSectionsMovable(false);
    header()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header()->setStretchLastSection(true);
    setFrameShape(NoFrame);
}

void CSheetTree::Detach() {
    quiet_ = true;
    actions_.place_editor = [] {};
    actions_.step = [](bool) {};
    setModel(nullptr);
}

void CSheetTree::ShowCurrent(const QModelIndex &index) {
    const CSyncing syncing(quiet_);
    if (index == currentIndex()) {
        return;
    }
    if (index.isValid()) {
        setCurrentIndex(index);
        scrollTo(index);
    } else {
        selectionModel()->clear();
    }
}

void CSheetTree::currentChanged(const QModelIndex &current, const QModelIndex &previous) {
    QTreeView::currentChanged(current, previous);
    viewport()->update();
    if (!moves_up_or_down_) {
        kept_column_ = -1;
    }
    if (!quiet_ && current.isValid()) {
        actions_.select(current);
    }
}

QModelIndex CSheetTree::NextCell(const QModelIndex &index, bool backwards) const {
    const int column = index.column() + (backwards ? -1 : 1);
    if (column >= 0 && column < model_.columnCount({})) {
        return index.siblingAtColumn(column);
    }
    const QModelIndex row = backwards ? indexAbove(index.siblingAtColumn(0)) : indexBelow(index.siblingAtColumn(0));
    return row.isValid() ? row.siblingAtColumn(backwards ? model_.columnCount({}) - 1 : 0) : QModelIndex();
}

void CSheetTree::Copy(bool row) const {
    QStringList cells;
    const QModelIndex current = currentIndex();
    for (int column = 0; row && column < model_.columnCount({}); ++column) {
        cells.append(current.siblingAtColumn(column).data().toString());
    }
    QGuiApplication::clipboard()->setText(row ? cells.join(QLatin1Char('\t')) : current.data().toString());
}

bool CSheetTree::HandleKey(const QKeyEvent &event) {
    const QModelIndex current = currentIndex();
    if (!current.isValid()) {
        return false;
    }
    if (event.matches(QKeySequence::Copy)) {
        Copy(false);
        return true;
    }
    if (event.key() == Qt::Key_C && event.modifiers() == (Qt::ControlModifier | Qt::ShiftModifier)) {
        Copy(true);
        return true;
    }
    const bool opens_list = event.key() == Qt::Key_Down && event.modifiers() == Qt::AltModifier;
    const bool enter = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    if (event.key() == Qt::Key_F2 || opens_list || (enter && event.modifiers() == Qt::NoModifier)) {
        if (enter && !current.data(CSheetModel::kEditableRole).toBool() &&
            model_.hasChildren(current.siblingAtColumn(0))) {
            setExpanded(current.siblingAtColumn(0), !isExpanded(current.siblingAtColumn(0)));
            return true;
        }
        opens_list ? actions_.open_list(current) : actions_.edit(current, {});
        return true;
    }
    const QString text = event.text();
    const bool command = (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
    const bool printable = !text.isEmpty() && text.front().isPrint() && !text.front().isSpace();
    // The signs open and close nodes where nothing can be typed.
    if (printable && !command && current.data(CSheetModel::kEditableRole).toBool()) {
        actions_.edit(current, text);
        return true;
    }
    return false;
}

/// Up and down go to the column in which the person was, also after rows that don't have it. Left and right go from
/// cell to cell; only in the first column they open and close rows and go to those above and below.
QModelIndex CSheetTree::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    const QModelIndex current = currentIndex();
    if (current.column() > 0 && (action == MoveLeft || action == MoveRight)) {
        const QModelIndex cell = current.siblingAtColumn(current.column() + (action == MoveLeft ? -1 : 1));
        return (cell.flags() & Qt::ItemIsSelectable) != 0 ? cell : current;
    }
    const QModelIndex next = QTreeView::moveCursor(action, modifiers);
    if (!moves_up_or_down_) {
        return next;
    }
    if (kept_column_ < 0) {
        kept_column_ = current.column();
    }
    return kept_column_ < 0 ? next : next.siblingAtColumn(kept_column_);
}

void CSheetTree::keyPressEvent(QKeyEvent *event) {
    if (HandleKey(*event)) {
        event->accept();
        return;
    }
    const int key = event->key();
    moves_up_or_down_ = key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown;
    QTreeView::keyPressEvent(event);
    moves_up_or_down_ = false;
}

bool CSheetTree::event(QEvent *event) {
    // Tab goes from cell to cell; F6 leaves the sheet.
    if (event->type() == QEvent::KeyPress && currentIndex().isValid()) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Tab || key == Qt::Key_Backtab) {
            actions_.step(key == Qt::Key_Backtab);
            return true;
        }
    }
    return QTreeView::event(event);
}

void CSheetTree::mousePressEvent(QMouseEvent *event) {
    pressed_current_ = event->button() == Qt::LeftButton ? currentIndex() : QModelIndex();
    QTreeView::mousePressEvent(event);
}

void CSheetTree::mouseReleaseEvent(QMouseEvent *event) {
    QTreeView::mouseReleaseEvent(event);
    const QModelIndex index = indexAt(event->pos());
    const bool on_cell = index.isValid() && visualRect(index).contains(event->pos());
    if (event->button() != Qt::LeftButton || !on_cell || index != currentIndex()) {
        return;
    }
    const bool again = index == pressed_current_;
    if ((again && index.data(CSheetModel::kEditableRole).toBool()) ||
        (index.column() == 0 && index.data(CSheetModel::kAddRole).toBool())) {
        actions_.edit(index, {});
    } else if (again && index.column() == 0 && model_.hasChildren(index)) {
        setExpanded(index, !isExpanded(index));
    }
}

void CSheetTree::updateEditorGeometries() {
    QTreeView::updateEditorGeometries();
    actions_.place_editor();
}

void CSheetTree::drawRow(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const {
    const QModelIndex current = currentIndex();
    if (index.data(CSheetModel::kHeadingRole).toBool()) {
        painter->fillRect(option.rect, CSheetDelegate::HeadingColor(palette()));
    } else if (current.isValid() && current.siblingAtColumn(0) == index) {
        QColor tint = palette().color(QPalette::Highlight);
        tint.setAlpha(28);
        painter->fillRect(option.rect, tint);
    }
    QTreeView::drawRow(painter, option, index);
}

}  // namespace kq_desktop
