#include "desktop/kqconf/recovery.h"

#include <csignal>

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>

#include "desktop/kqconf/text_files.h"

namespace kq_desktop {

namespace {

const QString kPar = QStringLiteral(".par");
const QString kDmf = QStringLiteral(".dmf");

/// The process that keeps a copy is the number after the last sign; while it runs, the copy is its own.
bool IsInUse(const QFileInfo &copy) {
    const qint64 process = copy.completeBaseName().section(QLatin1Char('-'), -1).toLongLong();
    return process > 0 && process != QCoreApplication::applicationPid() && ::kill(static_cast<pid_t>(process), 0) == 0;
}

}  // namespace

CRecovery::CRecovery(const QString &par_path) {
    const QFileInfo file(par_path);
    const QByteArray hash =
        QCryptographicHash::hash(file.absoluteFilePath().toUtf8(), QCryptographicHash::Sha256).toHex().left(16);
    name_ = QStringLiteral("%1-%2").arg(file.completeBaseName(), QString::fromLatin1(hash));
    own_ = QStringLiteral("%1/%2-%3-%4")
               .arg(StateFolder(QStringLiteral("recovery")), name_)
               .arg(QDateTime::currentMSecsSinceEpoch())
               .arg(QCoreApplication::applicationPid());
}

std::optional<CRecovery::TCopy> CRecovery::Left() const {
    const QDir folder(StateFolder(QStringLiteral("recovery")));
    for (const QFileInfo &file : folder.entryInfoList({QStringLiteral("*") + kPar}, QDir::Files, QDir::Time)) {
        if (!file.fileName().startsWith(name_ + QLatin1Char('-'))) {
            continue;
        }
        const QString base = file.absolutePath() + QLatin1Char('/') + file.completeBaseName();
        if (base != own_ && !IsInUse(file)) {
            return TCopy{base, file.lastModified()};
        }
    }
    return std::nullopt;
}

CRecovery::TTexts CRecovery::Read(const TCopy &copy) {
    TTexts texts;
    texts.par = ReadFile(copy.base + kPar).value_or(QByteArray()).toStdString();
    if (const auto dmf = ReadFile(copy.base + kDmf)) {
        texts.dmf = dmf->toStdString();
        texts.has_dmf = true;
    }
    return texts;
}

void CRecovery::Delete(const TCopy &copy) {
    QFile::remove(copy.base + kPar);
    QFile::remove(copy.base + kDmf);
}

bool CRecovery::Keep(const TTexts &texts) {
    kept_ = (!texts.has_dmf || WritePrivately(own_ + kDmf, QByteArray::fromStdString(texts.dmf))) &&
            WritePrivately(own_ + kPar, QByteArray::fromStdString(texts.par));
    return kept_;
}

void CRecovery::Remove() {
    if (kept_) {
        Delete({own_, {}});
        kept_ = false;
    }
}

}  // namespace kq_desktop
