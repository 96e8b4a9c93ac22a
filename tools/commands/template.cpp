#include "configurator/kq_cfg.h"
#include "tools/commands.h"
#include "tools/console/files.h"
#include "tools/console/progress.h"
#include "tools/host_options.h"
#include "tools/print/json_template.h"
#include "tools/print/report_text.h"
#include "tools/print/template_outline.h"

using kq_cfg::TTemplate;

int RunTemplate(const TArguments &arguments, TConsole &console) {
    TSources sources;
    kq_cfg::TOptions options;
    bool read = ReadSource(console, arguments.pdt, sources.pdt);
    if (arguments.dmf) {
        read = ReadSource(console, *arguments.dmf, sources.dmf) && read;
    }
    if (!read || !MakeHostOptions(arguments, console, options)) {
        return kFailed;
    }
    const TTemplate declared = [&] {
        const CProgress progress(console, "Compiling " + sources.pdt.Name());
        return kq_cfg::DescribeTemplate(options, sources.pdt.Text(), sources.dmf.Text());
    }();
    if (arguments.json) {
        console.out.Write(Dumped(TemplateJson(declared)));
    } else {
        PrintReport(console, sources, declared.report);
        console.out.Write(TemplateOutline(declared));
    }
    return declared.report.Good() ? kDone : kInputErrors;
}
