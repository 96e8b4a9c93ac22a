#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "desktop/kqconf/driver_files.h"

namespace kq_desktop {

/// What the command line asks for.
struct TOptions {
    TNamedFiles files;
    QString language;  ///< a code such as EN; empty for the user's
    QString modules;
};

/// Reads the command line. Without a result the program ends with `exit_code`, and the reason, help or version has been
/// printed.
std::optional<TOptions> ReadOptions(const QStringList &arguments, int &exit_code);

/// The number of a language's code for the configurator. An empty code is the setting or else the display's language.
/// False for an unknown code.
bool FindLanguage(const QString &code, std::uint32_t &language);

/// Keeps a language as the user's.
void KeepLanguage(std::uint32_t language);

}  // namespace kq_desktop
