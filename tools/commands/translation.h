#pragma once

#include <optional>

#include "configurator/kq_cfg.h"
#include "tools/arguments.h"
#include "tools/console/console.h"
#include "tools/print/report_text.h"

/// A configuration that was translated from the files of the command line.
class CTranslation {
public:
    /// False if a file can't be read; the reason is printed then.
    bool Read(const TArguments &arguments, TConsole &console, bool with_dmf);
    /// From text to model, without the driver map file if this is a repair of it. Prints the report for people.
    void Translate(const TArguments &arguments, TConsole &console, bool repair);

    kq_cfg::CConfiguration &Configuration() { return *configuration_; }
    const kq_cfg::TReport &Report() const { return configuration_->Report(); }
    const TSources &Sources() const { return sources_; }
    const kq_cfg::TOptions &Options() const { return options_; }
    int ExitCode() const { return Report().Good() ? kDone : kInputErrors; }

private:
    TSources sources_;
    kq_cfg::TOptions options_;
    std::optional<kq_cfg::CConfiguration> configuration_;
};
