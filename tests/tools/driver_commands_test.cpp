#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <thread>

#include "tests/driver/modules/module_control.h"
#include "tests/support/temporary_directory.h"
#include "tests/tools/run_program.h"
#include "tools/driver/driver_session.h"
#include "tools/kqcfg.h"

namespace {

using TArgumentList = std::vector<std::string>;
using TJson = nlohmann::json;

const std::string kModules = KQ_BINARY_DIR "/tests/driver/modules/";
const std::string kSimulator = KQ_BINARY_DIR "/examples/simulator/simulator.dll";
const std::string kPar = KQ_SOURCE_DIR "/examples/simulator/simulator.par";

/// A test module that says what it is called for; loaded here as well, so that it keeps what it is given.
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

    /// Were Stop, Done and DisposeDriver called, in this order?
    bool EndedInOrder() const {
        const std::string &log = control_->log;
        return log.find("Stop") < log.find("Done") && log.find("Done") < log.find("DisposeDriver") &&
               log.find("DisposeDriver") != std::string::npos;
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
    for (const std::size_t size : {std::size_t{0}, std::size_t{3}, std::size_t{63}, std::size_t{4096}}) {
        WriteBytes("cut.dll", whole.substr(0, size));
        for (const TArgumentList &arguments : {TArgumentList{"inspect", "cut.dll"}, {"drive", "cut.dll", kPar}}) {
            const TRunResult result = RunProgram(arguments);
            EXPECT_EQ(result.exit_code, 1) << size;
            EXPECT_EQ(result.errors, "cut.dll: error: this isn't a module, or only a part of one\n") << size;
        }
    }
    // Another byte of the file's head: the other word size, the other byte order, another machine.
    struct TRow {
        std::size_t offset;
        char byte;
        const char *reason;
    };
    for (const TRow &row : {TRow{4, sizeof(void *) == 4 ? '\2' : '\1', " bits, this program for "},
                            {5, '\2', "the module is built for another processor"},
                            {18, '\x08', "the module is built for another processor"}}) {
        std::string foreign = whole;
        foreign[row.offset] = row.byte;
        WriteBytes("foreign.dll", foreign);
        const TRunResult result = RunProgram({"inspect", "--json", "foreign.dll"});
        EXPECT_EQ(result.exit_code, 1);
        const TJson json = TJson::parse(result.output);
        EXPECT_EQ(json.at("ok"), false);
        EXPECT_NE(json.at("message").get<std::string>().find(row.reason), std::string::npos) << result.output;
        EXPECT_EQ(json.at("version"), nullptr);
        EXPECT_EQ(json.at("generation"), row.offset == 18 ? TJson(3) : TJson(nullptr)) << "what the names say";
    }
}

TEST(DriverCommands, DataOfAnEntrysNameIsMissing) {
    const TRunResult result = RunProgram({"inspect", "--json", kModules + "data.dll"});
    EXPECT_EQ(TJson::parse(result.output).at("missing"), TJson({"Init, Init3"}));
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
        ASSERT_NE(found, std::string::npos) << call << " isn't after the others in\n" << log;
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
    EXPECT_TRUE(log.ends_with("Done\nDisposeDriver\n")) << log;
}

TEST(DriverCommands, ReasonsThatDriversOwe) {
    const CTemporaryDirectory directory;
    CLoaded loaded("generation3.dll");
    loaded.Control().text = "";
    loaded.Control().answer = 0;
    EXPECT_EQ(loaded.Drive({}).errors, "par: error: the driver refuses without a reason\n");
    loaded.Control().answer = 1;
    loaded.Control().text = "text";
    loaded.Control().mischief = TMischief::kNoDriver;
    const TJson json = TJson::parse(loaded.Drive({"--json"}).output);
    EXPECT_EQ(json.at("version"), 0x20030) << "asked before a driver is made";
    EXPECT_EQ(json.at("description"), "text");
}

TEST(DriverCommands, ChannelListsThatDontHold) {
    const std::string bounds = "Horní mez rozsahu je větší než dolní mez (1)";
    struct TRow {
        std::uint32_t blocks;
        std::uint32_t overlap;
        std::uint32_t size;
        std::vector<std::string> mistakes;
        std::size_t rows;  ///< of channels
    };
    const TRow rows[] = {
        {3, 0, 10, {}, 3},
        {3, 1, 10, {"Číslo kanálu redefinováno (1)"}, 3},
        {2, 0, 0, {bounds}, 0},
        {1, 0, 0xFFFFFFFF, {}, 1},
        {2, 0, 0xFFFFFFFF, {"Číslo kanálu redefinováno (1)", "Horní mez rozsahu je větší než dolní mez (11)"}, 2},
    };
    const CTemporaryDirectory directory;
    CLoaded loaded("generation3.dll");
    loaded.Control().logs = false;
    for (const TRow &row : rows) {
        loaded.Control().blocks = row.blocks;
        loaded.Control().overlap = row.overlap;
        loaded.Control().block_size = row.size;
        const TRunResult result = loaded.Drive({"--json"});
        EXPECT_EQ(result.exit_code, row.mistakes.empty() ? 0 : 1);
        const TJson json = TJson::parse(result.output);
        EXPECT_EQ(json.at("channelMistakes"), TJson(row.mistakes)) << row.blocks;
        EXPECT_EQ(json.at("channels").size(), row.rows) << row.blocks;
        EXPECT_EQ(json.at("ok"), row.mistakes.empty());
    }
    loaded.Control().overlap = 0;
    for (const auto &[blocks, mistake] :
         {std::pair(2U, bounds), {1000001U, "Ovladač vypisuje příliš mnoho bloků kanálů"}}) {
        loaded.Control().blocks = blocks;
        loaded.Control().block_size = blocks == 2 ? 0 : 1;
        const TRunResult result = loaded.Drive({});
        EXPECT_EQ(result.exit_code, 1);
        EXPECT_NE(result.errors.find("generation3.dll: error: " + mistake), std::string::npos) << result.errors;
    }
}

TEST(DriverCommands, BlocksThatAreLargeOrComeAfterManyRowsAreDescribedByTheirFirstChannel) {
    struct TRow {
        std::uint32_t blocks;
        std::uint32_t size;
        std::size_t descriptions;  ///< how many the driver is asked for
    };
    const CTemporaryDirectory directory;
    CLoaded loaded("generation3.dll");
    for (const TRow &row : {TRow{1, 63, 63}, {1, 64, 64}, {1, 65, 1}, {100002, 2, 200002}}) {
        loaded.Control().blocks = row.blocks;
        loaded.Control().block_size = row.size;
        loaded.Control().log.clear();
        EXPECT_EQ(loaded.Drive({}).exit_code, 0);
        std::size_t asked = 0;
        const std::string &log = loaded.Control().log;
        for (std::size_t at = 0; (at = log.find("GetChannelDescription", at)) != std::string::npos; ++at) {
            ++asked;
        }
        EXPECT_EQ(asked, row.descriptions) << row.blocks << " blocks of " << row.size;
    }
}

TEST(DriverCommands, ADriverOf8BitTextsOpensAnyPath) {
    const CTemporaryDirectory directory;
    CLoaded loaded("generation3.dll");
    loaded.Control().opens_par = true;
    for (const char *name : {"plain.par", "příliš žluťoučký.par", "\xE2\x98\x83.par"}) {
        WriteBytes(name, "");
        EXPECT_EQ(RunProgram({"drive", kModules + "generation3.dll", name}).exit_code, 0) << name;
    }
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
        const char *expected;
    };
    for (const TRow &row : {TRow{TMischief::kForeignText, "string", "isn't in the room"},
                            {TMischief::kNullTwice, "string", "a second time"},
                            {TMischief::kMovedBuffer, "buffer", "changed where the buffer lies"}}) {
        loaded.Control().mischief = row.mischief;
        const TRunResult result = loaded.Drive({"--read", std::string("1:") + row.type});
        EXPECT_EQ(result.exit_code, 1) << row.expected;
        EXPECT_NE(result.output.find(row.expected), std::string::npos) << result.output;
    }
    loaded.Control().mischief = TMischief::kNoDriver;
    EXPECT_EQ(
        loaded.Drive({"--name", "Linka"}).errors.find(kModules + "generation3.dll: error: Linka : Nelze vytvořit"), 0U);
}

TEST(DriverCommands, SignalEndsTheDriveInOrder) {
    const CTemporaryDirectory directory;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        CLoaded loaded("generation3.dll");
        std::thread hand([signal] {
            std::this_thread::sleep_for(std::chrono::milliseconds(300));
            std::raise(signal);
            if (signal == SIGHUP) {
                std::raise(signal);  // a shell and the system each send one
            }
        });
        const TRunResult result =
            loaded.Drive({"--json", "--rounds", "0", "--interval", "60000", "--read", "2:cardinal"});
        hand.join();
        EXPECT_EQ(result.exit_code, 0) << result.errors;
        const TJson json = TJson::parse(result.output);
        EXPECT_EQ(json.at("interrupted"), true);
        EXPECT_EQ(json.at("rounds").size(), 1U);
        EXPECT_TRUE(loaded.EndedInOrder());
    }
}

TEST(DriverCommands, NobodyReadsOrTheDriverThrowsAndItIsStopped) {
    const CTemporaryDirectory directory;
    CLoaded loaded("generation3.dll");
    int ends[2] = {};
    ASSERT_EQ(pipe(ends), 0);
    std::ofstream closed_pipe("/proc/self/fd/" + std::to_string(ends[1]));
    close(ends[0]);
    std::istringstream in;
    std::ostringstream errors;
    TConsole console{in, COutput(closed_pipe), errors};
    EXPECT_EQ(RunKqcfg({"drive", kModules + "generation3.dll", "par", "--rounds", "0", "--interval", "1"}, console), 2);
    EXPECT_TRUE(loaded.EndedInOrder());
    close(ends[1]);

    loaded.Control().log.clear();
    loaded.Control().mischief = TMischief::kThrows;
    const TRunResult result = loaded.Drive({});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_NE(result.errors.find("error: thrown"), std::string::npos) << result.errors;
    EXPECT_TRUE(loaded.EndedInOrder());
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
