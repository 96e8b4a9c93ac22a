#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "tests/support/temporary_directory.h"
#include "tests/tools/run_program.h"

namespace {

/// A template whose one value selects a module, a parameter file that does, and the module with a template of its own.
/// The module is this test program, which looks like any other library.
void WriteModule(const std::string &module_template) {
    std::filesystem::create_directory("modules");
    std::filesystem::copy_file("/proc/self/exe", "modules/a.dll");
    WriteBytes("modules/a.pdt", module_template);
    WriteBytes("pdt", "def_section name = 'S'; def_key name = 'D'; par = dll {}; end_key end_section");
    WriteBytes("par", "[S]\r\n  D  = a.dll\r\n\r\n");
}

TEST(Modules, StopBoxOfAModuleCountsAsAnErrorForTheExitCode) {
    const CTemporaryDirectory directory;
    WriteModule("nonsense");
    const TRunResult people = RunProgram({"check", "--modules", "modules", "pdt", "par"});
    EXPECT_EQ(people.exit_code, 1);
    EXPECT_EQ(people.output, "par: 1 error\n");
    EXPECT_EQ(people.errors,
              "pdt: error: PDT: Chyba při čtení definice PARu:modules/a.pdt Očekáván  def_section řádek:1 pozice:9\n");

    const TRunResult script = RunProgram({"format", "--json", "--modules", "modules", "pdt", "par"});
    EXPECT_EQ(script.exit_code, 1);
    const nlohmann::json json = nlohmann::json::parse(script.output);
    EXPECT_EQ(json.at("errors"), 0);
    EXPECT_EQ(json.at("text"), nullptr);
    EXPECT_EQ(json.at("boxes"),
              nlohmann::json::parse(R"([{"title": "PDT", "lines": ["Chyba při čtení definice PARu:modules/a.pdt",
                                         "Očekáván  def_section řádek:1 pozice:9", ""]}])"));
}

TEST(Modules, SectionsOfAModuleJoinTheConfiguration) {
    const CTemporaryDirectory directory;
    WriteModule("def_section name = 'M'; required; end_section");
    const TRunResult result = RunProgram({"format", "--modules", "modules", "pdt", "par"});
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_EQ(result.output, "[S]\r\n  D  = a.dll\r\n\r\n[M]\r\n\r\n");
    EXPECT_EQ(RunProgram({"format", "pdt", "par"}).exit_code, 1) << "without a host no module is known";
}

TEST(Modules, EditsChooseAModuleAndWhatItBringsCanBeEdited) {
    const CTemporaryDirectory directory;
    WriteModule("def_section name = 'A'; required; end_section");
    for (const char *name : {"B", "bad"}) {
        std::filesystem::copy_file("modules/a.dll", std::string("modules/") + name + ".dll");
    }
    WriteBytes("modules/B.pdt",
               "def_section name = 'B'; required; def_key name = 'k'; par = number; end_key end_section");
    WriteBytes("modules/bad.pdt", "nonsense");
    const TRunResult chosen = RunProgram({"set", "--modules", "modules", "pdt", "par", "S/D=b", "B/k=5"});
    EXPECT_EQ(chosen.exit_code, 0) << chosen.errors;
    EXPECT_EQ(chosen.output, "[S]\r\n  D  = B.dll\r\n\r\n[B]\r\n  k  = 5\r\n\r\n");

    const TRunResult unknown = RunProgram({"set", "--modules", "modules", "pdt", "par", "S/D=c", "B/k=5"});
    EXPECT_EQ(unknown.exit_code, 1);
    EXPECT_EQ(unknown.errors,
              "par: error: S/D: 'c' is no entry of the list; it has a.dll, B.dll, bad.dll\n"
              "par: error: B/k: no section shows this name\n");

    const TRunResult bad = RunProgram({"set", "--modules", "modules", "pdt", "par", "S/D=bad"});
    EXPECT_EQ(bad.exit_code, 1) << "a module's template that doesn't compile is an error of the input";
    EXPECT_EQ(bad.output, "");
    EXPECT_NE(bad.errors.find("modules/bad.pdt"), std::string::npos) << bad.errors;
}

TEST(Modules, DirectoryOfModulesHasToExist) {
    const CTemporaryDirectory directory;
    WriteModule("");
    for (const char *modules : {"missing", "pdt"}) {
        const TRunResult result = RunProgram({"template", "--modules", modules, "pdt"});
        EXPECT_EQ(result.exit_code, 2);
        EXPECT_EQ(result.errors, std::string(modules) + ": error: not a directory that can be read\n");
    }
}

}  // namespace
