#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <string>
#include <vector>

namespace kq_desktop {

/// Notices when files of a session change by somebody else's hand. What they hold is known from the opening and from
/// the session's own saves.
class CDiskWatch {
public:
    explicit CDiskWatch(const QStringList &paths);

    /// The files that aren't any more what the session knows, by the time and size that the system tells; a file is
    /// read only if these changed.
    QStringList Changed();
    /// The files are known as they are now.
    void KnowPresent();
    /// What a file held when it was last known.
    const std::string &Known(const QString &path) const;

private:
    struct TFile {
        QString path;
        QDateTime time;
        qint64 size = -1;
        std::string known;
        bool changed = false;
    };

    static void Look(TFile &file);

    std::vector<TFile> files_;
};

}  // namespace kq_desktop
