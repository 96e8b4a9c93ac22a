#pragma once

#include <QTreeView>
#include <functional>

namespace kq_desktop {

class CSheetModel;

/// The tree view of a sheet. It knows keys and clicks and hands on what they mean.
class CSheetTree final : public QTreeView {
public:
    struct TActions {
        std::function<void(const QModelIndex &)> select;
        /// Opens the editor of a cell; a text was typed that is to replace the cell's.
        std::function<void(const QModelIndex &, const QString &typed)> edit;
        /// Opens the editor of a cell with its list of choices.
        std::function<void(const QModelIndex &)> open_list;
        /// Goes to the next cell that can be edited, or back.
        std::function<void(bool backwards)> step;
        /// The editor's cell moved on the screen.
        std::function<void()> place_editor;
    };

    CSheetTree(CSheetModel &model, TActions actions);

    /// Ends what it has to do with model and actions, which end now.
    void Detach();
    /// The present cell becomes another one without a word of it to `select`.
    void ShowCurrent(const QModelIndex &index);
    /// The cell after another one, in the order in which rows are shown; invalid after the last.
    QModelIndex NextCell(const QModelIndex &index, bool backwards) const;

protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void updateEditorGeometries() override;
    bool event(QEvent *event) override;
    void drawRow(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    bool HandleKey(const QKeyEvent &event);
    void Copy(bool row) const;

    CSheetModel &model_;
    TActions actions_;
    QPersistentModelIndex pressed_current_;
    int kept_column_ = -1;  ///< where the way up or down began; -1 without one
    bool moves_up_or_down_ = false;
    bool quiet_ = false;
};

}  // namespace kq_desktop
