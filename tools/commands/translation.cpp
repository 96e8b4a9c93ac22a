#include "tools/commands/translation.h"

#include "tools/console/files.h"
#include "tools/console/progress.h"
#include "tools/host_options.h"

bool CTranslation::Read(const TArguments &arguments, TConsole &console, bool with_dmf) {
    bool read = ReadSource(console, arguments.pdt, sources_.pdt);
    read = ReadSource(console, arguments.par, sources_.par) && read;
    if (with_dmf && arguments.dmf) {
        read = ReadSource(console, *arguments.dmf, sources_.dmf) && read;
    }
    return read && MakeHostOptions(arguments, console, options_);
}

void CTranslation::Translate(const TArguments &arguments, TConsole &console, bool repair) {
    configuration_.emplace(options_);
    {
        const CProgress progress(console, "Translating " + sources_.par.Name());
        if (repair) {
            configuration_->TranslateForRepair(sources_.pdt.Text(), sources_.par.Text());
        } else {
            configuration_->Translate(sources_.pdt.Text(), sources_.par.Text(), sources_.dmf.Text());
        }
    }
    if (!arguments.json) {
        PrintReport(console, sources_, Report());
    }
}
