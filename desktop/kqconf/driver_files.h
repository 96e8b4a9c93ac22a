#pragma once

#include <QString>
#include <optional>

namespace kq_desktop {

/// The files of a driver's configuration; absolute paths.
struct TDriverFiles {
    QString name;  ///< what the driver is called
    QString module;
    QString pdt;
    QString par;
    QString dmf;
};

/// What the command line says about the files; empty where it says nothing.
struct TNamedFiles {
    QString file;
    QString module;
    QString pdt;
    QString dmf;
};

/// Finds the files of a driver: those that aren't named lie beside the one that is opened, under the same name. The
/// file that is opened is a parameter file, a template or a module. Without a result `error` says why.
std::optional<TDriverFiles> FindDriverFiles(const TNamedFiles &named, QString &error);

}  // namespace kq_desktop
