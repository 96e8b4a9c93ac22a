// The example of a host, run as a program of its own.

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "tests/support/temporary_directory.h"

namespace {

const std::string kHost = KQ_BINARY_DIR "/examples/host/host";
const std::string kModule = KQ_BINARY_DIR "/examples/simulator/simulator.dll";
const std::string kPar = "./simulator.par";

/// What a command writes, on either output, and its exit code.
std::string Output(const std::string &command, int &exit_code) {
    std::FILE *const pipe = popen((command + " 2>&1").c_str(), "r");
    std::string text;
    for (int character = 0; (character = std::fgetc(pipe)) != EOF;) {
        text += static_cast<char>(character);
    }
    exit_code = pclose(pipe) >> 8;
    return text;
}

TEST(ExampleHost, SaysWhatIsWrong) {
    const CTemporaryDirectory directory;  // the simulator writes its record beside the parameter file
    std::filesystem::copy_file(KQ_SOURCE_DIR "/examples/simulator/simulator.par", kPar);
    struct {
        std::string arguments;
        int exit_code;
        std::string text;
    } cases[] = {
        {"", 2, "Usage: host MODULE PAR\n"},
        {" a b c", 2, "Usage: host MODULE PAR\n"},
        {" /no/module.dll p", 1, "/no/module.dll: there is no such module\n"},
        {" " + kPar + " p", 1, kPar + ": there is no such module\n"},
        {" " + kModule + " /no/par", 1, "Soubor parametrů nelze přečíst"},
        {" " + kModule + " " + kPar, 0, "Hlášení simulátoru po kroku "},
    };
    for (const auto &wanted : cases) {
        int exit_code = 0;
        const std::string text = Output(kHost + wanted.arguments, exit_code);
        EXPECT_EQ(exit_code, wanted.exit_code) << wanted.arguments;
        EXPECT_TRUE(text.starts_with(wanted.text)) << text;
    }
}

}  // namespace
