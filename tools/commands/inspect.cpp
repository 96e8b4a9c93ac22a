#include "tools/commands.h"
#include "tools/console/diagnostics.h"
#include "tools/console/terminal_text.h"
#include "tools/driver/hex_text.h"
#include "tools/driver/module_facts.h"
#include "tools/driver/module_file.h"
#include "tools/print/json_text.h"

namespace {

std::string FactsText(const std::string &name, const TModuleFacts &facts) {
    const auto yes_or_no = [](bool yes) { return yes ? "yes\n" : "no\n"; };
    std::string text = name + ": driver module of generation " + std::to_string(facts.generation) + "\n";
    text += "  description           " + TerminalText(facts.description.value_or("")) + "\n";
    text += "  version               " + HexText(facts.version.value_or(0)) + "\n";
    text += "  texts                 " + std::string(facts.wide ? "16 bits" : "8 bits") + " a character\n";
    text += "  lists its channels    " + std::string(yes_or_no(facts.enumerates_channels));
    text += "  searches for devices  " + std::string(yes_or_no(facts.searches_devices));
    return text;
}

}  // namespace

int RunInspect(const TArguments &arguments, TConsole &console) {
    if (!CheckReadable(console, arguments.module)) {
        return kFailed;
    }
    const TModuleFacts facts = LookAtModule(arguments.module);
    if (arguments.json) {
        const TJson generation = facts.generation != 0 ? TJson(facts.generation) : TJson(nullptr);
        const TJson json = {{"ok", facts.usable},
                            {"message", facts.message},
                            {"version", NumberOrNull(facts.version)},
                            {"description", facts.description ? TJson(*facts.description) : TJson(nullptr)},
                            {"wide", facts.wide},
                            {"generation", generation},
                            {"enumeratesChannels", facts.enumerates_channels},
                            {"searchesDevices", facts.searches_devices},
                            {"missing", facts.missing}};
        console.out.Write(Dumped(json));
    } else if (facts.usable) {
        console.out.Write(FactsText(arguments.module, facts));
    } else {
        PrintError(console, arguments.module, facts.message);
    }
    return facts.usable ? kDone : kInputErrors;
}
