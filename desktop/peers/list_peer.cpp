#include "desktop/peers/list_peer.h"

#include <QAbstractListModel>
#include <QClipboard>
#include <QGuiApplication>
#include <QIcon>
#include <QKeyEvent>
#include <QListView>
#include <functional>
#include <utility>

#include "desktop/peers/advice.h"
#include "desktop/peers/text.h"

namespace kq_desktop {

/// The rows of the list box itself; a row that comes is inserted, anything else reads all anew.
class CListPeer::CModel final : public QAbstractListModel {
public:
    CModel(CListBox &view, CPeerAdvice &advice, std::function<QIcon(std::uint32_t)> icon)
        : view_(view), advice_(advice), icon_(std::move(icon)), known_(Count()) {}

    int rowCount(const QModelIndex &parent) const override { return parent.isValid() ? 0 : known_; }

    QVariant data(const QModelIndex &index, int role) const override {
        const auto row = static_cast<std::size_t>(index.row());
        if (!index.isValid() || row >= view_.Rows().size()) {
            return {};
        }
        const CListBox::TRow &shown = view_.Rows()[row];
        const QString text = ToQt(shown.text.View());
        switch (role) {
            case Qt::DisplayRole: {
                const QString place = advice_.RowPlace(view_, row + 1);
                return place.isEmpty() ? text : QStringLiteral("%1:  %2").arg(place, text);
            }
            case Qt::DecorationRole:
                return icon_(shown.icon);
            case Qt::ToolTipRole:
                return text.toHtmlEscaped();
            default:
                return {};
        }
    }

    void Refresh() {
        const int count = Count();
        if (count > known_) {
            beginInsertRows({}, known_, count - 1);
            known_ = count;
            endInsertRows();
        } else {
            beginResetModel();
            known_ = count;
            endResetModel();
        }
    }

private:
    int Count() const { return static_cast<int>(view_.Rows().size()); }

    CListBox &view_;
    CPeerAdvice &advice_;
    std::function<QIcon(std::uint32_t)> icon_;
    int known_;
};

namespace {

class CListWidget final : public QListView {
public:
    explicit CListWidget(std::function<void(int)> choose) : choose_(std::move(choose)) {}

protected:
    void keyPressEvent(QKeyEvent *event) override {
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
            choose_(currentIndex().row());
        } else if (event->matches(QKeySequence::Copy)) {
            QGuiApplication::clipboard()->setText(currentIndex().data().toString());
        } else {
            QListView::keyPressEvent(event);
        }
    }
    void mouseReleaseEvent(QMouseEvent *event) override {
        QListView::mouseReleaseEvent(event);
        if (event->button() == Qt::LeftButton && indexAt(event->pos()).isValid()) {
            choose_(indexAt(event->pos()).row());
        }
    }

private:
    std::function<void(int)> choose_;
};

}  // namespace

CListPeer::CListPeer(CListBox &view, CPeerAdvice &advice)
    : CQtPeer(advice),
      view_(view),
      model_(std::make_unique<CModel>(view, advice, [this](std::uint32_t icon) { return Icon(icon); })) {
    auto *list = new CListWidget([this](int row) {
        if (row >= 0) {
            view_.UserChoose(static_cast<std::size_t>(row) + 1);
        }
    });
    list->setUniformItemSizes(true);
    list->setIconSize(QSize(16, 16));
    list->setFrameShape(QFrame::NoFrame);
    list->setModel(model_.get());
    list->setAccessibleName(advice.NameOf(&view));
    list->setMinimumHeight(list->fontMetrics().height() * 3);
    SetWidget(list);
    ShowSelection();
}

CListPeer::~CListPeer() {
    if (Widget() != nullptr) {
        List()->setModel(nullptr);
    }
}

QListView *CListPeer::List() const { return static_cast<QListView *>(Widget()); }

void CListPeer::ShowSelection() {
    const QModelIndex index = model_->index(static_cast<int>(view_.SelectedRow()) - 1, 0);
    List()->setCurrentIndex(index);
    if (index.isValid()) {
        List()->scrollTo(index);
    }
}

void CListPeer::Show(const TViewNotice &notice) {
    if (notice.change == TViewChange::kRowsInserted || notice.change == TViewChange::kRowsRemoved) {
        model_->Refresh();
        ShowSelection();
    } else if (notice.change == TViewChange::kSelection) {
        ShowSelection();
    }
}

}  // namespace kq_desktop
