#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <string_view>

#include "tools/kqcfg.h"

namespace {

bool WantsColour() {
    const char *terminal = std::getenv("TERM");
    return std::getenv("NO_COLOR") == nullptr && terminal != nullptr && std::string_view(terminal) != "dumb";
}

}  // namespace

int main(int count, char **arguments) {
    std::ios::sync_with_stdio(false);
    TConsole console{std::cin, COutput(std::cout), std::cerr};
    console.terminal = isatty(STDERR_FILENO) != 0;
    console.colour = console.terminal && WantsColour();
    return RunKqcfg({arguments + (count > 0 ? 1 : 0), arguments + count}, console);
}
