#include "desktop/peers/window_peer.h"

#include <QCloseEvent>
#include <QDateTime>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>
#include <QTimer>
#include <QToolBar>
#include <QVBoxLayout>
#include <functional>
#include <utility>

#include "desktop/peers/elided_text.h"
#include "desktop/peers/text.h"

namespace kq_desktop {

namespace {

/// Windows of fixed size come with the bit that gives a frame to be sized missing.
constexpr std::uint32_t kSizable = 0x1;

/// A dialog is at least so wide.
constexpr int kDialogWidth = 280;

/// What a person does to the frame goes to the peer.
class CFrame final : public QMainWindow {
public:
    CFrame(CWindow &window, std::function<void()> changed) : window_(&window), changed_(std::move(changed)) {}

    /// The window and its peer end now.
    void Detach() {
        window_ = nullptr;
        changed_ = [] {};
    }

protected:
    void keyPressEvent(QKeyEvent *event) override {
        if (event->key() == Qt::Key_Escape && isModal() && window_ != nullptr) {
            window_->UserClose();
        } else {
            QMainWindow::keyPressEvent(event);
        }
    }
    void closeEvent(QCloseEvent *event) override {
        event->ignore();
        if (window_ != nullptr) {
            window_->UserClose();
        }
    }
    void resizeEvent(QResizeEvent *event) override {
        QMainWindow::resizeEvent(event);
        changed_();
    }
    void moveEvent(QMoveEvent *event) override {
        QMainWindow::moveEvent(event);
        changed_();
    }
    void changeEvent(QEvent *event) override {
        QMainWindow::changeEvent(event);
        if (event->type() == QEvent::WindowStateChange) {
            changed_();
        } else if (event->type() == QEvent::ActivationChange && window_ != nullptr) {
            window_->UserSelect(isActiveWindow());
        }
    }

private:
    CWindow *window_;
    std::function<void()> changed_;
};

}  // namespace

CWindowPeer::CWindowPeer(CWindow &view, CPeerAdvice &advice) : CQtPeer(advice), view_(view) {
    const CSyncing syncing(syncing_);
    auto *frame = new CFrame(view, [this] { FrameChanged(); });
    SetWidget(frame);
    frame->setContextMenuPolicy(Qt::PreventContextMenu);
    auto *central = new QWidget;
    client_ = new QVBoxLayout(central);
    client_->setContentsMargins(0, 0, 0, 0);
    client_->setSpacing(0);
    if (view.ModalOwner() != nullptr) {
        // The height follows from what has to be read in it.
        client_->addStrut(kDialogWidth);
    } else {
        frame->setMinimumSize(480, 320);
    }
    notices_ = new QVBoxLayout;
    notices_->setSpacing(0);
    client_->addLayout(notices_);
    frame->setCentralWidget(central);
    ShowTitle();
    ShowArea();
    ShowModality();
}

CWindowPeer::~CWindowPeer() {
    if (Widget() != nullptr) {
        static_cast<CFrame *>(Widget())->Detach();
    }
}

QMainWindow *CWindowPeer::MainWindow() const { return static_cast<QMainWindow *>(Widget()); }

void CWindowPeer::AddChild(CView &child, QWidget &widget) {
    if (&child == view_.MenuBar()) {
        MainWindow()->setMenuBar(static_cast<QMenuBar *>(&widget));
    } else if (&child == view_.StatusView()) {
        auto *bar = new CElidedStatusBar;
        bar->addWidget(&widget, 1);
        MainWindow()->setStatusBar(bar);
    } else if (child.Kind() == TViewKind::kToolBox) {
        MainWindow()->addToolBar(static_cast<QToolBar *>(&widget));
        widget.show();
    } else if (child.Kind() == TViewKind::kBubble) {
        return;
    } else {
        const bool leaf = child.Kind() == TViewKind::kStaticText || child.Kind() == TViewKind::kButton;
        client_->addWidget(&widget, leaf ? 0 : 1, leaf ? Qt::AlignHCenter : Qt::Alignment());
        if (child.Kind() == TViewKind::kButton) {
            client_->setContentsMargins(16, 12, 16, 12);
            client_->setSpacing(8);
            ShowElapsed();
        }
    }
}

/// A window with lines and a button waits for something: how long it has been waiting is said below.
void CWindowPeer::ShowElapsed() {
    auto *label = new QLabel;
    label->setObjectName(QStringLiteral("elapsed"));
    client_->addWidget(label, 0, Qt::AlignHCenter);
    auto *timer = new QTimer(label);
    const auto show = [label, begin = QDateTime::currentDateTime()] {
        const qint64 seconds = begin.secsTo(QDateTime::currentDateTime());
        label->setText(
            QStringLiteral("Uplynulý čas: %1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QLatin1Char('0')));
    };
    QObject::connect(timer, &QTimer::timeout, label, show);
    timer->start(500);
    show();
}

void CWindowPeer::ShowTitle() {
    MainWindow()->setWindowTitle(ToQt(view_.Title()) + QStringLiteral("[*]"));
    if (view_.LargeIcon() != 0) {
        MainWindow()->setWindowIcon(Icon(view_.LargeIcon()));
    }
}

void CWindowPeer::ShowArea() {
    const TRect &rect = view_.Rect();
    MainWindow()->resize(rect.width, rect.depth);
    if ((view_.Style() & kSizable) != 0) {
        MainWindow()->move(rect.x, rect.y);
    }
}

void CWindowPeer::ShowState() {
    if (view_.IsVisible() && view_.IsMaximized() != MainWindow()->isMaximized()) {
        MainWindow()->setWindowState(MainWindow()->windowState() ^ Qt::WindowMaximized);
    }
}

void CWindowPeer::ShowModality() {
    if (const CQtPeer *owner = Of(view_.ModalOwner())) {
        MainWindow()->setParent(owner->Widget(), Qt::Dialog);
        MainWindow()->setWindowModality(Qt::ApplicationModal);
    }
}

void CWindowPeer::FrameChanged() {
    if (syncing_ || Widget() == nullptr || !MainWindow()->isVisible()) {
        return;
    }
    const CSyncing syncing(syncing_);
    const bool maximized = MainWindow()->isMaximized();
    if (maximized != view_.IsMaximized()) {
        view_.UserMaximize(maximized);
    }
    if (!maximized) {
        view_.UserMove({MainWindow()->x(), MainWindow()->y(), MainWindow()->width(), MainWindow()->height()});
    }
}

void CWindowPeer::Show(const TViewNotice &notice) {
    if (notice.change == TViewChange::kContent) {
        ShowTitle();
    } else if (syncing_) {
        return;
    } else if (notice.change == TViewChange::kArea) {
        const CSyncing syncing(syncing_);
        ShowState();
        if (!view_.IsMaximized()) {
            ShowArea();
        }
    }
}

}  // namespace kq_desktop
