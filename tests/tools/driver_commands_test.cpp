#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>
#include <thread>

#include "tests/driver/modules/module_control.h"
#include "tests/support/temporary_directory.h"
#include "tests/tools/run_program.h"
#include "tools/driver/driver_session.h"

namespace {

using TArgumentList = std::vector<std::string>;
using TJson = nlohmann::json;

const std::string kModules = KQ_BINARY_DIR "/tests/driver/modules/";
const std::string kSimulator = KQ_BINARY_DIR "/examples/simulator/simulator.dll";
const std::string kPar = KQ_SOURCE_DIR "/examples/simulator/simulator.par";

/// A test module that says what it is called for; loaded here as well, so that it keeps what it is told.
class CLoaded {
public:
    explicit CLoaded(const std::string &name) : path_(kModules + name) {
        std::string reason;
        EXPECT_TRUE(module_.Load(path_, reason)) << reason;
        control_ = reinterpret_cast<TModuleControl *(*)()>(kq_os::GetProcAddress(module_.Handle(), "TestControl"))();
        *control_ = {};
        control_->text = "text";
        control_->wide_text = u"wide \u017Elu\u0165";
        control_->blocks = 2;
        WriteBytes("par", "");
    }
    TModuleControl &Control() { return *control_; }
    TRunResult Drive(TArgumentList arguments) {
        arguments.insert(arguments.begin(), {"drive", path_, "par"});
        return RunProgram(arguments);
    }

private:
    std::string path_;
    CModuleFile module_;
    TModuleControl *control_ = nullptr;
};

TEST(DriverCommands, InspectKnowsEveryKindOfModule) {
    struct TRow {
        const char *module;
        std::uint32_t generation;
        bool wide;
    };
    const CTemporaryDirectory directory;
    for (const TRow &row : {TRow{"generation1.dll", 1, false},
                            {"generation2.dll", 2, false},
                            {"generation3.dll", 3, false},
                            {"generation3w.dll", 3, true},
                            {"both.dll", 1, false}}) {
        const CLoaded loaded(row.module);
        const TRunResult result = RunProgram({"inspect", "--json", kModules + row.module});
        EXPECT_EQ(result.exit_code, 0) << row.module << result.output;
        const TJson json = TJson::parse(result.output);
        EXPECT_EQ(json.at("generation"), row.generation) << row.module;
        EXPECT_EQ(json.at("wide"), row.wide) << row.module;
        EXPECT_EQ(json.at("enumeratesChannels"), true) << row.module;
        EXPECT_EQ(json.at("searchesDevices"), false) << row.module;
    }
}

// Whatever is cut off or of another processor, there is a reason and no crash; and nothing of it is run.
TEST(DriverCommands, DamagedModules) {
    const CTemporaryDirectory directory;
    const std::string whole = ReadBytes(kSimulator);
    for (const std::size_t size :
         {std::size_t{0}, std::size_t{3}, std::size_t{63}, whole.size() / 4, whole.size() / 2}) {
        WriteBytes("cut.dll", whole.substr(0, size));
        for (const TArgumentList &arguments : {TArgumentList{"inspect", "cut.dll"}, {"drive", "cut.dll", kPar}}) {
            const TRunResult result = RunProgram(arguments);
            EXPECT_EQ(result.exit_code, 1) << size;
            EXPECT_EQ(result.errors, "cut.dll: error: this isn't a module, or only a part of one\n") << size;
        }
    }
    constexpr std::size_t kMachineAt = 18;
    std::string foreign = whole;
    foreign[kMachineAt] = 8;
    WriteBytes("foreign.dll", foreign);
    const TRunResult result = RunProgram({"inspect", "--json", "foreign.dll"});
    EXPECT_EQ(result.exit_code, 1);
    const TJson json = TJson::parse(result.output);
    EXPECT_EQ(json.at("ok"), false);
    EXPECT_NE(json.at("message"), "");
    EXPECT_EQ(json.at("version"), nullptr);
    EXPECT_EQ(json.at("generation"), 3) << "the names tell that much";
}

TEST(DriverCommands, DriveKeepsTheOrderOfCalls) {
    const CTemporaryDirectory directory;
    CLoaded loaded("generation3.dll");
    const TRunResult result =
        loaded.Drive({"--write", "1:cardinal=7", "--read", "2:cardinal", "--rounds", "2", "--interval", "0"});
    EXPECT_EQ(result.exit_code, 0) << result.output << result.errors;
    const std::string &log = loaded.Control().log;
    std::size_t at = 0;
    const std::string round =
        "OutputRequestStart|OutputRequest3 1|OutputRequestCompleted|OutputFinalized|"
        "InputRequestStart|InputRequest 2|InputRequestCompleted|InputFinalized|GetInput3 2|";
    std::istringstream calls("MakeDriver|Init3|ReadParameters|EnumerateChannels|Run|" + round + round +
                             "Stop|Done|DisposeDriver");
    for (std::string call; std::getline(calls, call, '|');) {
        const std::size_t found = log.find(call, at);
        ASSERT_NE(found, std::string::npos) << call << " isn't behind the others in\n" << log;
        at = found + call.size();
    }
}

TEST(DriverCommands, DriverThatRefusesIsEndedAllTheSame) {
    const CTemporaryDirectory directory;
    CLoaded loaded("generation3w.dll");
    loaded.Control().answer = 0;
    const TRunResult result = loaded.Drive({});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_NE(result.errors.find("par: error: wide žluť"), std::string::npos) << result.errors;
    const std::string &log = loaded.Control().log;
    EXPECT_EQ(log.find("Run"), std::string::npos) << log;
    EXPECT_EQ(log.find("Stop"), std::string::npos) << log;
    EXPECT_LT(log.find("Done"), log.find("DisposeDriver")) << log;
}

TEST(DriverCommands, ValuesOfEveryGeneration) {
    const CTemporaryDirectory directory;
    for (const char *module : {"generation1.dll", "generation2.dll", "generation3.dll", "generation3w.dll"}) {
        CLoaded loaded(module);
        const TRunResult result = loaded.Drive({"--json", "--write", "4:string=žluť", "--read", "1:string"});
        EXPECT_EQ(result.exit_code, 0) << module << result.output << result.errors;
        const std::string value = TJson::parse(result.output).at("rounds").at(0).at("reads").at(0).at("value");
        const bool wide = std::string(module) == "generation3w.dll";
        EXPECT_EQ(value, wide ? "wide žluť" : "text") << module;
        EXPECT_EQ(wide ? loaded.Control().wide_given == u"\u017Elu\u0165" : loaded.Control().given == "\x9Elu\x9D",
                  true);
    }
}

TEST(DriverCommands, DriversMischiefIsTold) {
    const CTemporaryDirectory directory;
    CLoaded loaded("generation3.dll");
    struct TRow {
        TMischief mischief;
        const char *type;
        const char *told;
    };
    for (const TRow &row : {TRow{TMischief::kForeignText, "string", "isn't in the room"},
                            {TMischief::kNullTwice, "string", "a second time"},
                            {TMischief::kMovedBuffer, "buffer", "changed where the buffer lies"}}) {
        loaded.Control().mischief = row.mischief;
        const TRunResult result = loaded.Drive({"--read", std::string("1:") + row.type});
        EXPECT_EQ(result.exit_code, 1) << row.told;
        EXPECT_NE(result.output.find(row.told), std::string::npos) << result.output;
    }
    loaded.Control().mischief = TMischief::kNoDriver;
    EXPECT_EQ(
        loaded.Drive({"--name", "Linka"}).errors.find(kModules + "generation3.dll: error: Linka : Nelze vytvořit"), 0U);
}

TEST(DriverCommands, SignalEndsTheDriveInOrder) {
    const CTemporaryDirectory directory;
    for (const int signal : {SIGINT, SIGTERM}) {
        CLoaded loaded("generation3.dll");
        std::thread hand([signal] {
            std::this_thread::sleep_for(std::chrono::milliseconds(300));
            std::raise(signal);
        });
        const TRunResult result =
            loaded.Drive({"--json", "--rounds", "0", "--interval", "60000", "--read", "2:cardinal"});
        hand.join();
        EXPECT_EQ(result.exit_code, 0) << result.errors;
        const TJson json = TJson::parse(result.output);
        EXPECT_EQ(json.at("interrupted"), true);
        EXPECT_EQ(json.at("rounds").size(), 1U);
        const std::string &log = loaded.Control().log;
        EXPECT_LT(log.find("Stop"), log.find("Done")) << log;
        EXPECT_LT(log.find("Done"), log.find("DisposeDriver")) << log;
    }
}

TEST(DriverCommands, LongPathsAndNamesOfAnyLetters) {
    const CTemporaryDirectory directory;
    std::string deep = ".";
    for (int level = 0; level < 6; ++level) {
        deep += "/" + std::string(60, 'd');
    }
    std::filesystem::create_directories(deep);
    for (const std::string &folder : {std::string("."), deep}) {
        for (const char *name : {"příliš žluťoučký.dll", "\xE2\x98\x83.dll", "\x9Elu\x9D.dll"}) {
            const std::string path = folder + "/" + name;
            std::filesystem::copy_file(kSimulator, path);
            std::filesystem::copy_file(kPar, path + ".par");
            EXPECT_EQ(RunProgram({"inspect", path}).exit_code, 0) << path;
            const TRunResult result = RunProgram({"drive", path, path + ".par"});
            EXPECT_EQ(result.exit_code, folder == "." ? 0 : 2) << path << result.errors;
            EXPECT_EQ(result.errors.find("drivers take") != std::string::npos, folder != ".");
        }
    }
}

}  // namespace
