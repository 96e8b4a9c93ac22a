#include "tools/kqcfg.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <sstream>

#include "configurator/kq_cfg.h"
#include "tools/arguments.h"
#include "tools/commands.h"
#include "tools/console/diagnostics.h"
#include "tools/console/files.h"

namespace {

constexpr const char *kName = "kqcfg";

/// Builds the options of all commands over one TArguments and remembers which command was given.
class CCommandLine {
public:
    CCommandLine()
        : app_(
              "Works with the configuration of I/O drivers: templates (PDT), parameter files (PAR), "
              "driver map files (DMF), driver modules",
              kName) {
        app_.set_version_flag("--version", std::string(kName) + " " + KQ_VERSION);
        app_.require_subcommand(1);
        app_.failure_message([](const CLI::App *, const CLI::Error &error) { return std::string(error.what()); });
        app_.footer(
            "A file named - is standard input. Exit codes: 0 done, no error found; 1 the input has errors;\n"
            "2 wrong usage, or a file that can't be read or written. An argument that begins with - and is no\n"
            "option goes after --.\n");
        AddTranslations();
        AddEdits();
        AddLanguageTools();
        AddScannerTools();
        AddSession();
        AddModuleTools();
    }

    CLI::App &App() { return app_; }
    bool HasCommand(const std::string &name) const {
        const auto named = [&name](const CLI::App *command) { return command->get_name() == name; };
        return !app_.get_subcommands(named).empty();
    }
    const TArguments &Arguments() const { return arguments_; }
    TCommand Command() const { return command_; }

private:
    CLI::App *AddCommand(const char *name, const char *description, TCommand command) {
        CLI::App *added = app_.add_subcommand(name, description);
        added->add_flag("--json", arguments_.json, "Print one JSON value, and nothing for people");
        added->final_callback([this, command] { command_ = command; });
        return added;
    }

    void AddFile(CLI::App *command, const char *name, std::string &target, const char *description) {
        command->add_option(name, target, description)->required()->option_text("FILE");
    }

    void AddRepeated(CLI::App *command, const char *name, std::vector<std::string> &target, const char *form,
                     const char *description) {
        command->add_option(name, target, description)
            ->option_text(form)
            ->expected(1)
            ->take_all()
            ->allow_extra_args(false);
    }

    void AddTemplateOptions(CLI::App *command) {
        AddFile(command, "PDT", arguments_.pdt, "The template");
        command->add_option("--dmf", arguments_.dmf, "Driver map file to start from")->option_text("FILE");
        command->add_option("--language", arguments_.language, "Language of the host: CZ, EN, GE or JP")
            ->check(CLI::IsMember(std::vector<std::string>(kq_cfg::kLanguages.begin(), kq_cfg::kLanguages.end())))
            ->option_text("CODE");
        command->add_option("--modules", arguments_.modules, "Directory of the modules that dll values list")
            ->option_text("DIR");
    }

    CLI::App *AddTranslation(const char *name, const char *description, TCommand command) {
        CLI::App *added = AddCommand(name, description, command);
        AddTemplateOptions(added);
        AddFile(added, "PAR", arguments_.par, "The parameter file");
        return added;
    }

    CLI::Option *AddOutput(CLI::App *command) {
        return command->add_option("-o,--output", arguments_.output, "Write to a file instead of standard output")
            ->option_text("FILE");
    }

    void AddTranslations() {
        AddTranslation("check", "Check a parameter file against its template", RunCheck);
        CLI::App *format =
            AddTranslation("format", "Write a parameter file in the form that the configurator writes", RunFormat);
        format->add_flag("--check", arguments_.check, "Write nothing; exit code 1 if the file isn't in that form yet")
            ->excludes(AddOutput(format));
        AddTranslation("channels", "List the channels that a configuration has", RunChannels);
        AddOutput(AddTranslation("dmf", "Write the driver map file that a configuration defines; no old one is read",
                                 RunDmf));
        AddTemplateOptions(AddCommand("template", "Compile a template and show what it declares", RunTemplate));
    }

    void AddEdit(const char *name, const char *description, TCommand command, const char *form, const char *places) {
        CLI::App *added = AddTranslation(name, description, command);
        AddOutput(added);
        added->add_option("--dmf-out", arguments_.dmf_output, "Write the driver map file, too")->option_text("FILE");
        added->add_option("PLACE", arguments_.edits, places)->required()->option_text(form);
    }

    void AddEdits() {
        AddEdit("set", "Set values of a parameter file as a person does in the sheet", RunSet, "PLACE=VALUE ...",
                "SECTION/KEY=VALUE; #N after a name for the N-th of that name, :M for the M-th value, @M for the M-th "
                "cell of the key's name; SECTION:M for the M-th cell of the section's name");
        AddEdit("add", "Add sections, or lines to sections", RunAdd, "SECTION[/KEY] ...",
                "The name of a new section, or a section and the name or label of a key");
        AddEdit("remove", "Remove sections, or lines of sections", RunRemove, "SECTION[/KEY] ...",
                "A section or a line, #N after a name for the N-th of that name");
    }

    void AddSession() {
        AddFile(
            AddCommand("session", "Do what a script says in the configurator's window, without a screen", RunSession),
            "SCRIPT", arguments_.script, "The script, one command a line");
    }

    void AddLanguageTools() {
        CLI::App *eval = AddCommand("eval", "Evaluate an expression of the template language", RunEval);
        eval->add_option("EXPR", arguments_.expression, "The expression")->required()->option_text("TEXT");
        AddRepeated(eval, "--var", arguments_.variables, "NAME=VALUE",
                    "Declare a variable: a number, true, false, nedef, or a text, which may be 'quoted'");
        CLI::App *match = AddCommand("match", "Match a text against a value list of the template language", RunMatch);
        match->add_option("VALUELIST", arguments_.expression, "The list, as after name =")
            ->required()
            ->option_text("TEXT");
        match->add_option("TEXT", arguments_.text, "The text")->required()->option_text("TEXT");
    }

    void AddScannerTools() {
        AddFile(AddCommand("scan", "Show sections, keys and values of a parameter file", RunScan), "PAR",
                arguments_.par, "The parameter file");
        CLI::App *tokens = AddCommand("tokens", "List the tokens of a text", RunTokens);
        AddFile(tokens, "FILE", arguments_.par, "The text");
        tokens->add_flag("--raw", arguments_.raw, "With blanks and line ends");
    }

    void AddModuleTools() {
        AddFile(AddCommand("inspect", "Show what a driver module is", RunInspect), "MODULE", arguments_.module,
                "The module");
        CLI::App *drive = AddCommand("drive", "Run a driver: write and read channels for some rounds", RunDrive);
        AddFile(drive, "MODULE", arguments_.module, "The driver module");
        AddFile(drive, "PAR", arguments_.par, "The parameter file");
        TDriveArguments &options = arguments_.drive;
        drive->add_option("--name", options.name, "Name of the driver; without it the module's")->option_text("NAME");
        drive->add_option("--instance", options.instance, "Which driver of the module this is, 0 for the first")
            ->option_text("N");
        AddRepeated(drive, "--read", options.reads, "CHANNEL:TYPE", "Read a channel in each round");
        AddRepeated(drive, "--write", options.writes, "CHANNEL:TYPE=VALUE", "Write a channel in each round");
        drive->add_option("--rounds", options.rounds, "Number of rounds, 1 without it; 0 goes on until Ctrl-C")
            ->option_text("N");
        drive->add_option("--interval", options.interval, "From round to round, 1000 without it")->option_text("MS");
    }

    CLI::App app_;
    TArguments arguments_;
    TCommand command_ = nullptr;
};

constexpr char kGuard = '\x01';

/// -h and -o are the only options of one minus. Any other argument that begins with one, such as the expression -%n%,
/// gets a guard before it, with which the parser of the command line takes it for no option. So does one that begins
/// with a bracket, for no list.
std::string Guarded(const std::string &argument) {
    const bool option = argument.starts_with("--") || argument.starts_with("-o") || argument == "-h";
    const bool minus = argument.size() > 1 && argument.starts_with('-') && !option;
    return minus || argument.starts_with('[') || argument.starts_with(kGuard) ? kGuard + argument : argument;
}

void Unguard(std::string &argument) {
    if (argument.starts_with(kGuard)) {
        argument.erase(0, 1);
    }
}

TArguments Unguarded(TArguments arguments) {
    for (std::string *argument : {&arguments.pdt, &arguments.par, &arguments.expression, &arguments.text,
                                  &arguments.module, &arguments.script}) {
        Unguard(*argument);
    }
    for (std::optional<std::string> *argument :
         {&arguments.dmf, &arguments.modules, &arguments.output, &arguments.dmf_output, &arguments.drive.name}) {
        if (*argument) {
            Unguard(**argument);
        }
    }
    for (std::vector<std::string> *list :
         {&arguments.edits, &arguments.variables, &arguments.drive.reads, &arguments.drive.writes}) {
        std::for_each(list->begin(), list->end(), Unguard);
    }
    return arguments;
}

int UsageError(TConsole &console, const std::string &text) {
    PrintError(console, kName, text);
    console.err << "Run \"kqcfg --help\" or \"kqcfg COMMAND --help\" for more.\n";
    return kFailed;
}

int RunCommandLine(const std::vector<std::string> &arguments, TConsole &console) {
    CCommandLine line;
    if (!arguments.empty() && !arguments[0].starts_with('-') && !line.HasCommand(arguments[0])) {
        return UsageError(console, "there is no command " + arguments[0]);
    }
    std::vector<std::string> reversed(arguments.size());
    std::transform(arguments.rbegin(), arguments.rend(), reversed.begin(), Guarded);
    try {
        line.App().parse(std::move(reversed));
    } catch (const CLI::ParseError &error) {
        std::ostringstream shown;
        std::ostringstream reason;
        if (line.App().exit(error, shown, reason) == 0) {
            console.out.Write(shown.str());
            return kDone;
        }
        std::string text = reason.str();
        text.erase(std::remove(text.begin(), text.end(), kGuard), text.end());
        return UsageError(console, text);
    }
    const TArguments parsed = Unguarded(line.Arguments());
    if ((parsed.pdt == kStandardInput) + (parsed.par == kStandardInput) + (parsed.dmf == kStandardInput) > 1) {
        return UsageError(console, "only one file can be standard input");
    }
    console.terminal = console.terminal && !parsed.json;
    return line.Command()(parsed, console);
}

}  // namespace

int RunKqcfg(const std::vector<std::string> &arguments, TConsole &console) {
    const int code = RunCommandLine(arguments, console);
    std::string reason;
    if (!console.out.Finish(reason)) {
        PrintError(console, "<stdout>", reason);
        return kFailed;
    }
    return code;
}
