#include "desktop/kqconf/start_page.h"

#include <QCoreApplication>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QMimeData>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/kqconf/text_files.h"
#include "desktop/peers/icons.h"

namespace kq_desktop {

CStartPage::CStartPage() : recent_(new QListWidget) {
    setWindowTitle(QStringLiteral("Konfigurátor ovladačů"));
    setWindowIcon(LoadIcon(QStringLiteral("library")));
    setAcceptDrops(true);
    resize(620, 420);
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins(28, 24, 28, 24);
    rows->setSpacing(12);
    auto *title = new QLabel(QStringLiteral("Konfigurátor ovladačů"));
    QFont font = title->font();
    font.setPointSizeF(font.pointSizeF() * 1.6);
    font.setBold(true);
    title->setFont(font);
    auto *hint =
        new QLabel(QStringLiteral("Otevřete parametrický soubor (PAR), šablonu (PDT) nebo modul ovladače, nebo "
                                  "soubor přetáhněte sem."));
    hint->setWordWrap(true);
    auto *open = new QPushButton(LoadIcon(QStringLiteral("open")), QStringLiteral("&Otevřít soubor…"));
    open->setDefault(true);
    recent_->setAccessibleName(QStringLiteral("Nedávné soubory"));
    for (const QString &path : RecentFiles()) {
        auto *item = new QListWidgetItem(
            LoadIcon(QStringLiteral("text-tab")),
            QStringLiteral("%1\n%2").arg(QFileInfo(path).fileName(), QFileInfo(path).absolutePath()), recent_);
        item->setData(Qt::UserRole, path);
    }
    recent_->setEnabled(recent_->count() != 0);
    rows->addWidget(title);
    rows->addWidget(hint);
    rows->addWidget(open, 0, Qt::AlignLeft);
    rows->addWidget(new QLabel(recent_->count() != 0 ? QStringLiteral("Nedávné soubory")
                                                     : QStringLiteral("Zatím nebyl otevřen žádný soubor.")));
    rows->addWidget(recent_, 1);
    connect(open, &QPushButton::clicked, this, [this] { AskForFile(); });
    connect(recent_, &QListWidget::itemActivated, this,
            [this](const QListWidgetItem *item) { Choose(item->data(Qt::UserRole).toString()); });
    connect(recent_, &QListWidget::itemClicked, this,
            [this](const QListWidgetItem *item) { Choose(item->data(Qt::UserRole).toString()); });
}

QString CStartPage::Ask() {
    CStartPage page;
    page.show();
    while (page.isVisible()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return page.Chosen();
}

void CStartPage::Choose(const QString &path) {
    chosen_ = path;
    close();
}

void CStartPage::AskForFile() {
    const QString path = QFileDialog::getOpenFileName(
        this, QStringLiteral("Otevřít konfiguraci ovladače"), {},
        QStringLiteral("Konfigurace ovladače (*.par *.pdt *.dll *.so *.PAR *.PDT *.DLL);;Všechny soubory (*)"));
    if (!path.isEmpty()) {
        Choose(path);
    }
}

void CStartPage::dragEnterEvent(QDragEnterEvent *event) {
    if (event->mimeData()->hasUrls()) {
        event->acceptProposedAction();
    }
}

void CStartPage::dropEvent(QDropEvent *event) {
    const QList<QUrl> urls = event->mimeData()->urls();
    if (!urls.isEmpty() && urls.first().isLocalFile()) {
        event->acceptProposedAction();
        Choose(urls.first().toLocalFile());
    }
}

void CStartPage::keyPressEvent(QKeyEvent *event) {
    if (event->key() == Qt::Key_Escape || event->matches(QKeySequence::Quit)) {
        close();
    } else if (event->matches(QKeySequence::Open)) {
        AskForFile();
    } else {
        QWidget::keyPressEvent(event);
    }
}

}  // namespace kq_desktop
