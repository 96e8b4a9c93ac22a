#include "desktop/peers/sheet_peer.h"

#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QTimer>
#include <algorithm>

#include "desktop/peers/advice.h"
#include "desktop/peers/editor_peer.h"
#include "desktop/peers/sheet_tree.h"

namespace kq_desktop {

CSheetPeer::CSheetPeer(CSheetView &view, CPeerAdvice &advice)
    : CQtPeer(advice), view_(view), model_(std::make_unique<CSheetModel>(view, advice)) {
    auto *tree =
        new CSheetTree(*model_, {.select = [this](const QModelIndex &index) { Select(index); },
                                 .edit = [this](const QModelIndex &index, const QString &typed) { Edit(index, typed); },
                                 .open_list = [this](const QModelIndex &index) { OpenList(index); },
                                 .step = [this](bool backwards) { Step(backwards); },
                                 .place_editor = [this] { PlaceEditor(); }});
    tree->setAccessibleName(advice.NameOf(&view));
    SetWidget(tree);
    Connect();
    ShowWidths();
}

CSheetPeer::~CSheetPeer() {
    if (Widget() != nullptr) {
        Tree().disconnect();
        Tree().header()->disconnect(&Tree());
        Tree().Detach();
    }
}

CSheetTree &CSheetPeer::Tree() const { return static_cast<CSheetTree &>(*Widget()); }

void CSheetPeer::Connect() {
    QTreeView *tree = &Tree();
    QObject::connect(tree, &QTreeView::expanded, tree, [this](const QModelIndex &index) { Opened(index, true); });
    QObject::connect(tree, &QTreeView::collapsed, tree, [this](const QModelIndex &index) { Opened(index, false); });
    QObject::connect(tree->header(), &QHeaderView::sectionResized, tree,
                     [this](int column, int /*before*/, int width) { Sized(column, width); });
}

// What a person does.

void CSheetPeer::Select(const QModelIndex &index) {
    const CSheetModel::TPlace place = model_->PlaceOf(index);
    if (syncing_ || place.IsHeading()) {
        return;
    }
    if (IsAddingRow()) {
        view_.UserCancel();
    }
    view_.UserMouse();
    view_.UserSelect(place.table, place.row, std::min(place.column, model_->CellsOf(place)));
    ShowSelection();
}

void CSheetPeer::Edit(const QModelIndex &index, const QString &typed) {
    const CSheetModel::TPlace place = model_->PlaceOf(index);
    if (place.IsHeading() || !view_.UserEdit(place.table, place.row, place.column) || editor_ == nullptr) {
        return;
    }
    auto &editor = static_cast<CEditorPeer &>(*Of(view_.CellEditor()));
    editor.Begin(typed);
    if (IsAddingRow()) {
        editor.OpenList();
    }
}

void CSheetPeer::OpenList(const QModelIndex &index) {
    Edit(index, {});
    if (editor_ != nullptr && !IsAddingRow()) {
        static_cast<CEditorPeer &>(*Of(view_.CellEditor())).OpenList();
    }
}

void CSheetPeer::Step(bool backwards) {
    QModelIndex cell = Tree().currentIndex();
    do {
        cell = Tree().NextCell(cell, backwards);
    } while (cell.isValid() &&
             (!cell.data(CSheetModel::kEditableRole).toBool() || cell.data(CSheetModel::kAddRole).toBool()));
    if (cell.isValid()) {
        Tree().setCurrentIndex(cell);
        Edit(cell, {});
    }
}

bool CSheetPeer::IsAddingRow() const {
    const CSheetView::TPosition &position = view_.EditorPosition();
    return view_.CellEditor() != nullptr && position.row > view_.RowCount(position.table);
}

void CSheetPeer::CommitEditor(int step) {
    view_.UserCommit();
    if (step != 0) {
        // What the commit set off comes first: rows may have come or gone.
        QTimer::singleShot(0, &alive_, [this, step] { Step(step < 0); });
    }
}

void CSheetPeer::CancelEditor() { view_.UserCancel(); }

void CSheetPeer::Opened(const QModelIndex &index, bool open) {
    const std::uint32_t table = model_->TableBelow(index);
    if (table == 0) {
        return;
    }
    if (open) {
        open_.insert(table);
        model_->AddColumns(table);
    } else {
        open_.erase(table);
    }
    if (!syncing_) {
        view_.UserOpen(table, open);
    }
    ShowWidths();
}

void CSheetPeer::Sized(int column, int width) {
    if (syncing_ || !Tree().isVisible() || column == Tree().header()->count() - 1) {
        return;
    }
    const CSyncing syncing(syncing_);
    view_.UserSizeColumn(CSheetModel::kRoot, static_cast<std::uint32_t>(column + 1), static_cast<std::uint32_t>(width));
    for (const std::uint32_t table : open_) {
        view_.UserSizeColumn(table, static_cast<std::uint32_t>(column + 1), static_cast<std::uint32_t>(width));
    }
}

// Cell editors.

void CSheetPeer::AddChild(CView & /*child*/, QWidget &widget) {
    const CSheetView::TPosition &position = view_.EditorPosition();
    ShowSelection();
    editor_ = &widget;
    editor_cell_ = model_->IndexOf(position.table, position.row, position.column);
    widget.setParent(Tree().viewport());
    const QString title = model_->TitleOf(model_->PlaceOf(editor_cell_));
    widget.setAccessibleName(title);
    for (QLineEdit *line : widget.findChildren<QLineEdit *>()) {
        line->setAccessibleName(title);
    }
    PlaceEditor();
    widget.show();
    widget.setFocus(Qt::OtherFocusReason);
}

void CSheetPeer::PlaceEditor() {
    if (editor_ != nullptr && editor_cell_.isValid()) {
        QRect cell = Tree().visualRect(editor_cell_);
        cell.setWidth(std::max(cell.width(), 60));
        editor_->setGeometry(cell);
    }
}

void CSheetPeer::EditorEnded() {
    if (view_.CellEditor() != nullptr || editor_ == nullptr) {
        return;
    }
    const bool had_focus = editor_->hasFocus() || editor_->isAncestorOf(QApplication::focusWidget());
    editor_ = nullptr;
    editor_cell_ = QModelIndex();
    if (had_focus || QApplication::focusWidget() == nullptr) {
        Tree().setFocus(Qt::OtherFocusReason);
    }
}

// What the view tells.

void CSheetPeer::ShowSelection() {
    const CSyncing syncing(syncing_);
    const CSheetView::TPosition &selection = view_.Selection();
    if (selection.table == 0) {
        Tree().ShowCurrent({});
        return;
    }
    const QModelIndex index = model_->IndexOf(selection.table, selection.row, selection.column);
    for (QModelIndex node = index.parent(); node.isValid(); node = node.parent()) {
        view_.UserOpen(model_->TableBelow(node), true);
        Tree().expand(node);
    }
    Tree().ShowCurrent(index);
}

void CSheetPeer::ShowOpen(std::uint32_t table) {
    std::uint32_t owner = 0;
    std::uint32_t row = 0;
    if (!syncing_ && view_.FindNode(table, owner, row)) {
        const CSyncing syncing(syncing_);
        Tree().setExpanded(model_->IndexOf(owner, row, 1), view_.IsOpen(table));
    }
}

void CSheetPeer::ShowAll() {
    const CSyncing syncing(syncing_);
    if (!model_->Sync()) {
        for (const std::uint32_t table : std::set<std::uint32_t>(open_)) {
            std::uint32_t owner = 0;
            std::uint32_t row = 0;
            if (view_.IsOpen(table) && view_.FindNode(table, owner, row)) {
                Tree().expand(model_->IndexOf(owner, row, 1));
            }
        }
    }
    ShowWidths();
    ShowSelection();
}

void CSheetPeer::ShowWidths() {
    const CSyncing syncing(syncing_);
    // A sheet of several columns is flat, so it needs no room for the signs that open nodes.
    Tree().setRootIsDecorated(view_.Columns(CSheetModel::kRoot).size() == 1);
    for (int column = 0; column < model_->columnCount({}) - 1; ++column) {
        const auto number = static_cast<std::uint32_t>(column + 1);
        std::uint32_t width = view_.ColumnWidth(CSheetModel::kRoot, number);
        for (const std::uint32_t table : open_) {
            width = std::max(width, view_.ColumnWidth(table, number));
        }
        if (width != 0) {
            Tree().setColumnWidth(column, static_cast<int>(width));
        }
    }
}

void CSheetPeer::ShowRows(const TViewNotice &notice) {
    const CSyncing syncing(syncing_);
    const auto row = static_cast<std::uint32_t>(notice.first);
    if (notice.change == TViewChange::kRowsInserted) {
        model_->RowInserted(notice.table, row);
    } else {
        model_->RowRemoved(notice.table, row);
    }
}

void CSheetPeer::Show(const TViewNotice &notice) {
    switch (notice.change) {
        case TViewChange::kRowsInserted:
        case TViewChange::kRowsRemoved:
            ShowRows(notice);
            break;
        case TViewChange::kContent:
            ShowAll();
            break;
        case TViewChange::kTable:
            if (notice.table == 0) {
                const CSyncing syncing(syncing_);
                open_.clear();
                model_->Reset();
            } else {
                open_.erase(notice.table);
            }
            break;
        case TViewChange::kCell:
            model_->CellChanged(notice.table, static_cast<std::uint32_t>(notice.first), notice.column);
            break;
        case TViewChange::kSelection:
            ShowSelection();
            break;
        case TViewChange::kVisible:
            ShowOpen(notice.table);
            break;
        case TViewChange::kArea:
            ShowWidths();
            break;
        case TViewChange::kEditor:
            EditorEnded();
            break;
        default:
            break;
    }
}

}  // namespace kq_desktop
