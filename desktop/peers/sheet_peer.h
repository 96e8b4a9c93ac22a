#pragma once

#include <QPersistentModelIndex>
#include <memory>
#include <set>

#include "desktop/peers/qt_peer.h"
#include "desktop/peers/sheet_model.h"

namespace kq_desktop {

class CSheetTree;

/// A sheet of nested tables. Its cell editors are peers of their own (editor_peer.h), which come here to be placed and
/// to end.
class CSheetPeer final : public CQtPeer {
public:
    CSheetPeer(CSheetView &view, CPeerAdvice &advice);
    ~CSheetPeer() override;
    CSheetPeer(const CSheetPeer &) = delete;
    CSheetPeer &operator=(const CSheetPeer &) = delete;

    void AddChild(CView &child, QWidget &widget) override;

    /// A person ends the editor; `step` is where to go then: 1 to the next cell that can be edited, -1 back, 0 nowhere.
    void CommitEditor(int step);
    void CancelEditor();
    /// The row that adds others has no value of its own: leaving its list adds nothing.
    bool IsAddingRow() const;

protected:
    void Show(const TViewNotice &notice) override;

private:
    CSheetTree &Tree() const;
    void Connect();
    void Select(const QModelIndex &index);
    void Edit(const QModelIndex &index, const QString &typed);
    void OpenList(const QModelIndex &index);
    void Step(bool backwards);
    void PlaceEditor();
    void EditorEnded();
    void Opened(const QModelIndex &index, bool open);
    void ShowOpen(std::uint32_t table);
    void ShowSelection();
    void ShowAll();
    void ShowRows(const TViewNotice &notice);
    void ShowWidths();
    void Sized(int column, int width);

    CSheetView &view_;
    std::unique_ptr<CSheetModel> model_;
    QObject alive_;                 ///< ends with the peer, which its widget may outlive
    std::set<std::uint32_t> open_;  ///< tables that were seen open, to be opened again after all was read anew
    QPointer<QWidget> editor_;
    QPersistentModelIndex editor_cell_;
    bool syncing_ = false;
};

}  // namespace kq_desktop
