#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

/// Small files of the program's own.
namespace kq_desktop {

/// The folder of what the program remembers, which exists then.
QString StateFolder(const QString &below = {});
/// Reads a file; nothing if there is none.
std::optional<QByteArray> ReadFile(const QString &path);
/// Writes a file that only its owner may read, in such a way that a crash leaves the old content or the new one.
bool WritePrivately(const QString &path, const QByteArray &content);

/// The files that were opened last, the latest first.
QStringList RecentFiles();
void AddRecentFile(const QString &path);

}  // namespace kq_desktop
