#include "desktop/kqconf/text_files.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QStandardPaths>

namespace kq_desktop {

namespace {

constexpr qsizetype kMostRecent = 10;

QString RecentPath() { return StateFolder() + QStringLiteral("/recent"); }

}  // namespace

QString StateFolder(const QString &below) {
    QString base = qEnvironmentVariable("XDG_STATE_HOME");
    if (base.isEmpty() || !QDir::isAbsolutePath(base)) {
        base = QDir::homePath() + QStringLiteral("/.local/state");
    }
    QString folder = base + QStringLiteral("/kqconf") + (below.isEmpty() ? below : QLatin1Char('/') + below);
    QDir().mkpath(folder);
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return folder;
}

std::optional<QByteArray> ReadFile(const QString &path) {
    QFile file(path);
    if (!file.open(QFile::ReadOnly)) {
        return std::nullopt;
    }
    return file.readAll();
}

bool WritePrivately(const QString &path, const QByteArray &content) {
    QSaveFile file(path);
    return file.open(QFile::WriteOnly) && file.setPermissions(QFile::ReadOwner | QFile::WriteOwner) &&
           file.write(content) == content.size() && file.commit();
}

QStringList RecentFiles() {
    QStringList files = QString::fromUtf8(ReadFile(RecentPath()).value_or(QByteArray())).split(QLatin1Char('\n'));
    files.removeAll(QString());
    return files;
}

void AddRecentFile(const QString &path) {
    QStringList files = RecentFiles();
    files.removeAll(path);
    files.prepend(path);
    WritePrivately(RecentPath(), files.mid(0, kMostRecent).join(QLatin1Char('\n')).toUtf8());
}

}  // namespace kq_desktop
