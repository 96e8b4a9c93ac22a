#include "desktop/kqconf/driver_files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "platform/base/bounded_text.h"

namespace kq_desktop {

namespace {

bool Is(const QFileInfo &file, const char *suffix) {
    return file.suffix().compare(QLatin1String(suffix), Qt::CaseInsensitive) == 0;
}

bool IsModule(const QFileInfo &file) { return Is(file, "dll") || Is(file, "so"); }

/// The file beside another one with the same name and another suffix, whose case may differ.
QString Beside(const QFileInfo &file, const QStringList &suffixes) {
    const QDir directory = file.dir();
    for (const QString &suffix : suffixes) {
        const QString wanted = file.completeBaseName() + QLatin1Char('.') + suffix;
        if (directory.exists(wanted)) {
            return directory.absoluteFilePath(wanted);
        }
        for (const QString &name : directory.entryList(QDir::Files)) {
            if (name.compare(wanted, Qt::CaseInsensitive) == 0) {
                return directory.absoluteFilePath(name);
            }
        }
    }
    return directory.absoluteFilePath(file.completeBaseName() + QLatin1Char('.') + suffixes.first());
}

QString Named(const QString &named, const QFileInfo &opened, const QStringList &suffixes) {
    return named.isEmpty() ? Beside(opened, suffixes) : QFileInfo(named).absoluteFilePath();
}

}  // namespace

std::optional<TDriverFiles> FindDriverFiles(const TNamedFiles &named, QString &error) {
    const QFileInfo opened(named.file);
    const bool is_pdt = Is(opened, "pdt");
    const bool is_module = IsModule(opened);
    if (!is_pdt && !is_module && !Is(opened, "par")) {
        error = QStringLiteral("%1: tento soubor nelze otevřít, očekává se soubor PAR, PDT nebo modul ovladače")
                    .arg(named.file);
        return std::nullopt;
    }
    if (!opened.exists() && (is_pdt || is_module)) {
        error = QStringLiteral("%1: soubor neexistuje").arg(named.file);
        return std::nullopt;
    }
    TDriverFiles files;
    files.name = opened.completeBaseName();
    files.pdt = is_pdt ? opened.absoluteFilePath() : Named(named.pdt, opened, {QStringLiteral("pdt")});
    files.module = is_module ? opened.absoluteFilePath()
                             : Named(named.module, opened, {QStringLiteral("dll"), QStringLiteral("so")});
    files.dmf = Named(named.dmf, opened, {QStringLiteral("dmf")});
    files.par = !is_pdt && !is_module ? opened.absoluteFilePath() : Beside(opened, {QStringLiteral("par")});
    if (!QFileInfo::exists(files.pdt)) {
        error = QStringLiteral("%1: šablona ovladače neexistuje; zadejte ji volbou --pdt").arg(files.pdt);
        return std::nullopt;
    }
    for (const QString &path : {files.module, files.pdt, files.par, files.dmf}) {
        if (QFile::encodeName(path).size() > static_cast<qsizetype>(kq_base::TPathText::kBound)) {
            error = QStringLiteral("%1: cesta je příliš dlouhá").arg(path);
            return std::nullopt;
        }
    }
    return files;
}

}  // namespace kq_desktop
