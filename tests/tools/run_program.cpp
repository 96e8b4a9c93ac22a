#include "tests/tools/run_program.h"

#include "tools/kqcfg.h"

TRunResult RunProgram(const std::vector<std::string> &arguments, const std::string &input) {
    TTextConsole texts;
    texts.in.str(input);
    const int exit_code = RunKqcfg(arguments, texts.console);
    return {exit_code, texts.out.str(), texts.err.str()};
}
