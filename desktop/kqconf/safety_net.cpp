#include "desktop/kqconf/safety_net.h"

#include <QApplication>
#include <QFileInfo>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>

#include "desktop/kqconf/changes_dialog.h"
#include "desktop/kqconf/text_files.h"
#include "desktop/peers/qt_peer.h"
#include "desktop/peers/text.h"
#include "desktop/peers/text_peer.h"

namespace kq_desktop {

namespace {

/// Milliseconds between looks at unsaved work and at the files; a copy is at most so far behind.
constexpr int kPeriod = 1000;

const QString kCopyNotice = QStringLiteral("recovery");
const QString kDiskNotice = QStringLiteral("disk");
const QString kCommentNotice = QStringLiteral("comments");

QString NameOf(const QString &path) { return QFileInfo(path).fileName(); }

std::string ContentOf(const QString &path) { return ReadFile(path).value_or(QByteArray()).toStdString(); }

}  // namespace

CSafetyNet::CSafetyNet(CConfiguratorWindow &window, TDriverFiles files, CNotices &notices, QWidget &parent)
    : window_(window),
      files_(std::move(files)),
      notices_(notices),
      parent_(parent),
      recovery_(files_.par),
      disk_({files_.par, files_.dmf}) {
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Tick(); });
    timer_.start(kPeriod);
    OfferCopy();
}

bool CSafetyNet::IsParUnsaved() const {
    return window_.Tabs().ActiveTabIndex() == CConfiguratorWindow::kTextTab ? !window_.ParView().IsSaved()
                                                                            : window_.IsModified();
}

/// A save of the sheet writes the driver map past its view, whose text then counts as saved.
bool CSafetyNet::IsDmfUnsaved() const { return !window_.DmfView().IsSaved() && window_.DmfView().Text() != saved_dmf_; }

bool CSafetyNet::HasUnsavedWork() const { return IsParUnsaved() || IsDmfUnsaved() || save_failed_; }

/// Two numbers that differ from the former ones after any change.
std::pair<std::uint64_t, std::uint64_t> CSafetyNet::ChangeMark() const {
    const auto *text = static_cast<const CTextPeer *>(CQtPeer::Of(&window_.ParView()));
    return {window_.ChangeCount(), text != nullptr ? text->Changes() : 0};
}

bool CSafetyNet::FilesHold(const CConfiguratorWindow::TTexts &texts) const {
    return ContentOf(files_.par) == texts.par && (!texts.has_dmf || ContentOf(files_.dmf) == texts.dmf);
}

// Copies of unsaved work.

void CSafetyNet::Tick() {
    if (QApplication::activeModalWidget() != nullptr) {
        return;
    }
    KeepCopy();
    CheckDisk();
}

void CSafetyNet::KeepCopy() {
    CheckSave();
    if (!HasUnsavedWork()) {
        recovery_.Remove();
        kept_mark_ = {};
    } else if (!recovery_.HasOwn() || kept_mark_ != ChangeMark()) {
        kept_mark_ = ChangeMark();
        recovery_.Keep(window_.TextsToSave());
    }
}

void CSafetyNet::OfferCopy() {
    const auto copy = recovery_.Left();
    if (!copy) {
        notices_.Hide(kCopyNotice);
        return;
    }
    notices_.Show(kCopyNotice,
                  QStringLiteral("K tomuto souboru je uchována neuložená práce z %1.")
                      .arg(QLocale(QLocale::Czech).toString(copy->time, QStringLiteral("d. M. yyyy H:mm:ss"))),
                  {{QStringLiteral("&Otevřít"), [this, copy] { OpenCopy(*copy); }},
                   {QStringLiteral("Po&rovnat"), [this, copy] { CompareCopy(*copy); }},
                   {QStringLiteral("S&mazat"), [this, copy] {
                        CRecovery::Delete(*copy);
                        OfferCopy();
                    }}});
}

void CSafetyNet::OpenCopy(const CRecovery::TCopy &copy) {
    window_.UserReplaceTexts(CRecovery::Read(copy));
    // From now on the work is unsaved here, and kept like any other.
    if (recovery_.Keep(window_.TextsToSave())) {
        CRecovery::Delete(copy);
    }
    notices_.Hide(kCopyNotice);
}

void CSafetyNet::CompareCopy(const CRecovery::TCopy &copy) {
    const CRecovery::TTexts texts = CRecovery::Read(copy);
    QList<TComparison> files = {{NameOf(files_.par), ContentOf(files_.par), texts.par}};
    if (texts.has_dmf) {
        files.append({NameOf(files_.dmf), ContentOf(files_.dmf), texts.dmf});
    }
    ShowChanges(parent_, QStringLiteral("Uchovaná práce"), files);
}

void CSafetyNet::Saving() {
    // What somebody else wrote meanwhile isn't lost either.
    if (!saving_) {
        for (const QString &path : disk_.Changed()) {
            WritePrivately(QStringLiteral("%1/%2.%3.overwritten")
                               .arg(StateFolder(QStringLiteral("recovery")), NameOf(path))
                               .arg(QDateTime::currentMSecsSinceEpoch()),
                           ReadFile(path).value_or(QByteArray()));
        }
    }
    saving_ = true;
}

void CSafetyNet::CheckSave() {
    if (!saving_) {
        return;
    }
    saving_ = false;
    disk_.KnowPresent();
    notices_.Hide(kDiskNotice);
    save_failed_ = !FilesHold(window_.TextsToSave());
    if (!save_failed_) {
        saved_dmf_ = window_.DmfView().Text();
    }
}

void CSafetyNet::Closing() {
    const bool asked = !saving_ && IsParUnsaved();
    CheckSave();
    if (!HasUnsavedWork() || (asked && !save_failed_)) {
        recovery_.Remove();
    } else {
        recovery_.Keep(window_.TextsToSave());
    }
}

// Files that others change.

void CSafetyNet::CheckDisk() {
    const QStringList changed = disk_.Changed();
    if (changed.isEmpty() || notices_.IsShown(kDiskNotice)) {
        return;
    }
    const QString &path = changed.first();
    notices_.Show(kDiskNotice, QStringLiteral("Soubor %1 mezitím změnil někdo jiný.").arg(NameOf(path)),
                  {{QStringLiteral("&Načíst znovu"), [this] { reload(); }},
                   {QStringLiteral("&Ponechat moje"),
                    [this] {
                        disk_.KnowPresent();
                        notices_.Hide(kDiskNotice);
                    }},
                   {QStringLiteral("Po&rovnat"), [this, path] {
                        const auto texts = window_.TextsToSave();
                        ShowChanges(parent_, QStringLiteral("Moje a cizí změny"),
                                    {{NameOf(path), ContentOf(path), path == files_.par ? texts.par : texts.dmf}});
                    }}});
}

bool CSafetyNet::MayOverwrite() {
    const QStringList changed = disk_.Changed();
    if (changed.isEmpty()) {
        return true;
    }
    QMessageBox box(QMessageBox::Warning, QStringLiteral("Soubor se mezitím změnil"),
                    QStringLiteral("Soubor %1 mezitím změnil někdo jiný.").arg(NameOf(changed.first())),
                    QMessageBox::NoButton, &parent_);
    box.setInformativeText(QStringLiteral("Uložením se tyto změny přepíší. Pokračovat?"));
    const QPushButton *overwrite = box.addButton(QStringLiteral("&Přepsat"), QMessageBox::YesRole);
    QPushButton *cancel = box.addButton(QStringLiteral("&Zrušit"), QMessageBox::RejectRole);
    box.setDefaultButton(cancel);
    box.exec();
    return box.clickedButton() == overwrite;
}

// What a save would change.

void CSafetyNet::ShowSavedChanges() {
    window_.Sheet().UserCommit();
    window_.Channels().UserCommit();
    const CConfiguratorWindow::TTexts texts = window_.TextsToSave();
    QList<TComparison> files = {{NameOf(files_.par), ContentOf(files_.par), texts.par}};
    if (texts.has_dmf) {
        files.append({NameOf(files_.dmf), ContentOf(files_.dmf), texts.dmf});
    }
    ShowChanges(parent_, QStringLiteral("Změny proti souborům"), files);
}

void CSafetyNet::CheckComments() {
    const std::uint32_t tab = window_.Tabs().ActiveTabIndex();
    if (tab == tab_) {
        return;
    }
    tab_ = tab;
    if (tab != CConfiguratorWindow::kSheetTab || told_comments_) {
        return;
    }
    const QStringList comments = CommentsOf(ToQt(window_.ParView().Text()));
    if (!comments.isEmpty()) {
        told_comments_ = true;
        notices_.Show(
            kCommentNotice,
            QStringLiteral("Text má komentáře (%1). Tabulka je nezachová: uložením z ní nebo návratem do textu "
                           "se ztratí.")
                .arg(comments.size()),
            {{QStringLiteral("Zobrazit &změny"), [this] { ShowSavedChanges(); }}});
    }
}

void CSafetyNet::Refresh() {
    if (saving_) {
        CheckSave();
    }
    CheckComments();
}

}  // namespace kq_desktop
