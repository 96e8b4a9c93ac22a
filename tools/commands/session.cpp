#include "tools/commands.h"
#include "tools/console/diagnostics.h"
#include "tools/console/files.h"
#include "tools/session/runner.h"

int RunSession(const TArguments &arguments, TConsole &console) {
    CSourceText source;
    if (!ReadSource(console, arguments.script, source)) {
        return kFailed;
    }
    std::vector<TScriptMistake> mistakes;
    const std::vector<TScriptCommand> script = ParseScript(source.Text(), mistakes);
    for (const TScriptMistake &mistake : mistakes) {
        PrintDiagnostic(console, source, {.text = mistake.text, .line = mistake.line});
    }
    if (!mistakes.empty()) {
        return kFailed;
    }
    CSessionReport report(console, source, arguments.json);
    return CSessionRunner(script, report).Run() ? kDone : kInputErrors;
}
