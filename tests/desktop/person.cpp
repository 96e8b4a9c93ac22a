#include "tests/desktop/person.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMainWindow>
#include <QMessageBox>
#include <QPainter>
#include <QPlainTextEdit>
#include <QTest>
#include <QTreeView>

#include "desktop/kqconf/options.h"
#include "desktop/peers/qt_peer.h"

using namespace kq_desktop;

void UseScreenOf(const QString &folder, int width, int height, int scale) {
    QFile file(folder + QStringLiteral("/screen.json"));
    if (file.open(QFile::WriteOnly)) {
        file.write(
            QStringLiteral("{\"screens\": [{\"name\": \"one\", \"x\": 0, \"y\": 0, \"width\": %1, \"height\": %2, "
                           "\"logicalDpi\": 96, \"logicalBaseDpi\": 96, \"dpr\": %3}]}")
                .arg(width)
                .arg(height)
                .arg(scale)
                .toUtf8());
    }
    qputenv("QT_QPA_PLATFORM", QStringLiteral("offscreen:configfile=%1").arg(file.fileName()).toLocal8Bit());
}

CPerson::CPerson() : former_settings_(SetSettingsStore(&settings_)) {
    kq_pdt::Init_();
    box_timer_.setInterval(5);
    QObject::connect(&box_timer_, &QTimer::timeout, &box_timer_, [this] { AnswerBox(); });
    box_timer_.start();
}

CPerson::~CPerson() {
    End();
    SetSettingsStore(former_settings_);
}

void CPerson::AnswerBox() {
    auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
    if (box == nullptr || !box->isVisible()) {
        return;
    }
    boxes_.append(box->text());
    Look(QStringLiteral("box"));
    const QString wanted = answers_.isEmpty() ? QString() : answers_.takeFirst();
    for (QAbstractButton *button : box->buttons()) {
        if (button->text().remove(QLatin1Char('&')) == wanted) {
            button->click();
            return;
        }
    }
    box->close();
}

bool CPerson::Open(const QString &folder, const QString &file, const QString &pdt, const QString &dmf) {
    for (const QString &name : QDir(folder).entryList(QDir::Files)) {
        QFile::copy(folder + QLatin1Char('/') + name, copies_.filePath(name));
        QFile::setPermissions(copies_.filePath(name), QFile::permissions(copies_.filePath(name)) | QFile::WriteOwner);
    }
    return Show(file, pdt, dmf);
}

bool CPerson::Reopen(const QString &file) {
    End();
    return Show(file, {}, {});
}

bool CPerson::Show(const QString &file, const QString &pdt, const QString &dmf) {
    const auto path = [this](const QString &name) { return name.isEmpty() ? name : copies_.filePath(name); };
    QString error;
    const auto files = FindDriverFiles({copies_.filePath(file), {}, path(pdt), path(dmf)}, error);
    std::uint32_t language = 0;
    FindLanguage({}, language);
    session_ = std::make_unique<CDriverSession>(advice_, events_);
    if (!files || !session_->Open(*files, language, {})) {
        session_.reset();
        return false;
    }
    Main().activateWindow();
    Settle();
    return true;
}

void CPerson::RunUntil(const std::function<bool()> &done) {
    constexpr int kMostRounds = 1000;
    int rounds = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        // A box that is still up would take the code that ends the window's loop.
        if ((done() && QApplication::activeModalWidget() == nullptr) || ++rounds > kMostRounds) {
            MakeEvent(session_->Window(), ecCommand, kEndLoop);
        }
    });
    timer.start(10);
    session_->Window().Exec();
    Settle();
}

bool CPerson::CloseAndRun() {
    Main().close();
    bool ended = true;
    // If nothing ends the window, a code that ends any loop does.
    QTimer::singleShot(500, &Main(), [this, &ended] {
        ended = false;
        MakeEvent(session_->Window(), ecCommand, kEndLoop);
    });
    session_->Run();
    return ended;
}

void CPerson::End() {
    session_.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

QMainWindow &CPerson::Main() const { return *session_->Frame().MainWindow(); }

QTreeView &CPerson::Sheet() const {
    return *static_cast<QTreeView *>(CQtPeer::Of(&session_->Window().Sheet())->Widget());
}

QTreeView &CPerson::Channels() const {
    return *static_cast<QTreeView *>(CQtPeer::Of(&session_->Window().Channels())->Widget());
}

QPlainTextEdit &CPerson::Text() const {
    return *static_cast<QPlainTextEdit *>(CQtPeer::Of(&session_->Window().ParView())->Widget());
}

QString CPerson::FileText(const QString &name) const {
    QFile file(Path(name));
    return file.open(QFile::ReadOnly) ? QString::fromLatin1(file.readAll()) : QString();
}

void CPerson::Settle() {
    for (int round = 0; round < 3; ++round) {
        ProcessEvents();
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    if (session_ != nullptr) {
        if (QApplication::activeModalWidget() == nullptr && !Main().isActiveWindow()) {
            // A window system would do that when a box is gone.
            Main().activateWindow();
            QCoreApplication::processEvents();
        }
        session_->Frame().Refresh();
    }
}

QWidget *CPerson::Focus() const {
    if (QWidget *popup = QApplication::activePopupWidget()) {
        return popup->focusWidget() != nullptr ? popup->focusWidget() : popup;
    }
    QWidget *focus = QApplication::focusWidget();
    return focus != nullptr ? focus : &Main();
}

void CPerson::Press(int key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(Focus(), static_cast<Qt::Key>(key), modifiers);
    Settle();
}

void CPerson::Type(const QString &text) {
    for (const QChar character : text) {
        QTest::keyClick(Focus(), character.toLatin1());
        Settle();
    }
}

bool CPerson::ClickCell(QTreeView &tree, const QString &row, int column) {
    for (QModelIndex index = tree.model()->index(0, 0); index.isValid(); index = tree.indexBelow(index)) {
        if (index.data().toString() == row) {
            const QModelIndex cell = index.siblingAtColumn(column);
            tree.scrollTo(cell);
            QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, tree.visualRect(cell).center());
            Settle();
            return true;
        }
    }
    return false;
}

void CPerson::Look(const QString &name) {
    const QString folder = qEnvironmentVariable("KQ_PICTURES");
    if (!folder.isEmpty()) {
        Shoot(QStringLiteral("%1/%2-%3.png").arg(folder).arg(++pictures_, 2, 10, QLatin1Char('0')).arg(name));
    }
}

void CPerson::Shoot(const QString &path) {
    QPixmap picture = Main().grab();
    QPainter painter(&picture);
    for (QWidget *shown : QApplication::topLevelWidgets()) {
        if (shown->isVisible() && shown != &Main()) {
            // A window system would put a dialog over its owner.
            const QPoint place = shown->isModal() ? Main().rect().center() - shown->rect().center()
                                                  : Main().mapFromGlobal(shown->mapToGlobal(QPoint(0, 0)));
            painter.drawPixmap(place, shown->grab());
            painter.drawRect(QRect(place, shown->size()).adjusted(-1, -1, 0, 0));
        }
    }
    painter.end();
    picture.save(path);
}
