// The examples of hosts, run as programs of their own.

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
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

TEST(ExampleHost, ConfiguresADriver) {
    const CTemporaryDirectory directory;
    for (const char *extension : {".pdt", ".par", ".dmf"}) {
        std::filesystem::copy_file(KQ_SOURCE_DIR "/examples/modbus/modbus" + std::string(extension),
                                   "modbus" + std::string(extension));
    }
    const std::string configure = KQ_BINARY_DIR "/examples/host/configure modbus Line1 ";
    struct {
        const char *arguments;
        int exit_code;
        const char *text;
        const char *section;  ///< in the file afterwards
    } cases[] = {
        {"Nothing 5", 1, "works on modbus.par\nthere is no such parameter to set\n", "[Line1]"},
        {"Line 5", 0, "works on modbus.par\nworks on modbus.par\nclosed\n", "[Line5]"},
    };
    for (const auto &wanted : cases) {
        int exit_code = 0;
        EXPECT_EQ(Output(configure + wanted.arguments, exit_code), wanted.text);
        EXPECT_EQ(exit_code, wanted.exit_code);
        EXPECT_NE(ReadBytes("modbus.par").find(wanted.section), std::string::npos);
    }
}

}  // namespace
