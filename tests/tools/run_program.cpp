#include "tests/tools/run_program.h"

#include <sstream>

#include "tools/kqcfg.h"

TRunResult RunProgram(const std::vector<std::string> &arguments, const std::string &input) {
    std::istringstream in(input);
    std::ostringstream out;
    std::ostringstream err;
    TConsole console{in, COutput(out), err};
    TRunResult result;
    result.exit_code = RunKqcfg(arguments, console);
    result.output = out.str();
    result.errors = err.str();
    return result;
}
