#include "desktop/kqconf/disk_watch.h"

#include <QFileInfo>

#include "desktop/kqconf/text_files.h"

namespace kq_desktop {

namespace {

std::string ContentOf(const QString &path) { return ReadFile(path).value_or(QByteArray()).toStdString(); }

}  // namespace

CDiskWatch::CDiskWatch(const QStringList &paths) {
    for (const QString &path : paths) {
        files_.push_back({.path = path, .time = {}, .size = -1, .known = {}, .changed = false});
    }
    KnowPresent();
}

void CDiskWatch::Look(TFile &file) {
    const QFileInfo info(file.path);
    file.time = info.exists() ? info.lastModified() : QDateTime();
    file.size = info.exists() ? info.size() : -1;
}

void CDiskWatch::KnowPresent() {
    for (TFile &file : files_) {
        Look(file);
        file.known = ContentOf(file.path);
        file.changed = false;
    }
}

QStringList CDiskWatch::Changed() {
    QStringList changed;
    for (TFile &file : files_) {
        const TFile before = file;
        Look(file);
        if (file.time != before.time || file.size != before.size) {
            file.changed = ContentOf(file.path) != file.known;
        }
        if (file.changed) {
            changed.append(file.path);
        }
    }
    return changed;
}

const std::string &CDiskWatch::Known(const QString &path) const {
    static const std::string none;
    for (const TFile &file : files_) {
        if (file.path == path) {
            return file.known;
        }
    }
    return none;
}

}  // namespace kq_desktop
