#include "desktop/kqconf/host.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMessageBox>
#include <QUrl>
#include <utility>

#include "platform/base/bounded_text.h"

namespace kq_desktop {

namespace {

/// A path goes to the library as the bytes that the file system has.
void Give(const QString &text, std::uint32_t high, char *out) {
    kq_base::CopyToBuffer(QFile::encodeName(text).toStdString(), high, out);
}

}  // namespace

CDesktopHost::CDesktopHost(TDriverFiles files, std::uint32_t language, QString modules)
    : files_(std::move(files)), language_(language), modules_(std::move(modules)) {
    if (modules_.isEmpty()) {
        modules_ = QFileInfo(files_.pdt).absolutePath();
    }
}

QString CDesktopHost::Documentation() const {
    const QFileInfo module(files_.module);
    for (const char *suffix : {"html", "pdf", "md", "txt"}) {
        QString path =
            module.dir().absoluteFilePath(module.completeBaseName() + QLatin1Char('.') + QLatin1String(suffix));
        if (QFileInfo::exists(path)) {
            return path;
        }
    }
    return {};
}

void CDesktopHost::ShowDriverHelp(std::uint32_t /*high*/, const char * /*name*/) {
    const QString path = Documentation();
    if (!path.isEmpty()) {
        QDesktopServices::openUrl(QUrl::fromLocalFile(path));
        return;
    }
    QMessageBox::information(QApplication::activeWindow(), QStringLiteral("Popis ovladače"),
                             QStringLiteral("K ovladači %1 není popis. Hledá se soubor %2 s příponou html, pdf, md "
                                            "nebo txt vedle modulu ovladače.")
                                 .arg(files_.name, QFileInfo(files_.module).completeBaseName()));
}

void CDesktopHost::GetParFileName(std::uint32_t /*high*/, const char * /*name*/, std::uint32_t path_high, char *path) {
    Give(files_.par, path_high, path);
}

void CDesktopHost::GetDmfFileName(std::uint32_t /*high*/, const char * /*name*/, std::uint32_t path_high, char *path) {
    Give(files_.dmf, path_high, path);
}

void CDesktopHost::GetDllFileName(std::uint32_t /*high*/, const char * /*name*/, std::uint32_t path_high, char *path) {
    Give(files_.module, path_high, path);
}

void CDesktopHost::GetPdtFileName(std::uint32_t /*high*/, const char * /*name*/, std::uint32_t path_high, char *path) {
    Give(files_.pdt, path_high, path);
}

void CDesktopHost::FindPdtFile(std::uint32_t high, const char *name, std::uint32_t path_high, char *path) {
    const QString bare = QFile::decodeName(QByteArray::fromStdString(std::string(kq_base::ViewOfPair(high, name))));
    QString found = bare;
    for (const QString &directory : {modules_, QFileInfo(files_.pdt).absolutePath()}) {
        if (QDir(directory).exists(bare)) {
            found = QDir(directory).absoluteFilePath(bare);
            break;
        }
    }
    Give(found, path_high, path);
}

bool CDesktopHost::FindFirstModule(std::uint32_t /*name_high*/, char * /*name*/, std::uint32_t /*path_high*/,
                                   char * /*path*/) {
    return false;
}

bool CDesktopHost::FindNextModule(std::uint32_t /*name_high*/, char * /*name*/, std::uint32_t /*path_high*/,
                                  char * /*path*/) {
    return false;
}

void CDesktopHost::GetModulesDir(std::uint32_t high, char *path) { Give(modules_, high, path); }

void CDesktopHost::NotifyDriverFiles(std::uint32_t /*dmf_high*/, const char * /*dmf_path*/, std::uint32_t /*par_high*/,
                                     const char * /*par_path*/) {
    if (saving) {
        saving();
    }
}

}  // namespace kq_desktop
