// The simulator from outside, through the proxy that every host uses.

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <random>
#include <thread>

#include "configurator/kq_cfg.h"
#include "driver/channels/dmf_words.h"
#include "driver/kq_drv.h"
#include "driver/value_scalars.h"
#include "tests/support/temporary_directory.h"
#include "tools/driver/module_file.h"

namespace {

using kq_def::TValue;

const std::string kFolder = KQ_SOURCE_DIR "/examples/simulator/";
constexpr std::uint32_t kHistory = 10000;

/// A simulator with a parameter file, ready to run, and a directory of its own.
class CSimulatorHost {
public:
    CSimulatorHost() {
        std::string reason;
        EXPECT_TRUE(module_.Load(KQ_BINARY_DIR "/examples/simulator/simulator.dll", reason)) << reason;
        driver_.Init(module_.Handle());
        EXPECT_TRUE(driver_.Initialize(255, error_.data(), 0, 0, "Sim"));
    }
    explicit CSimulatorHost(const std::string &par) : CSimulatorHost() { EXPECT_TRUE(Read(par)) << par; }
    ~CSimulatorHost() { driver_.Done(); }
    CSimulatorHost(const CSimulatorHost &) = delete;
    CSimulatorHost &operator=(const CSimulatorHost &) = delete;

    bool Read(const std::string &par) {
        WriteBytes("a.par", par);
        return driver_.ReadParameters(0, "a.par", 255, error_.data(), line_, unused_, 255, place_.data());
    }
    template <kq_def::TValueTag Tag>
    kq_def::TScalar<Tag> Get(std::uint32_t channel) {
        TValue value = kq_def::ScalarValue<Tag>({});
        EXPECT_TRUE(Get(channel, value));
        return kq_def::ScalarIn<Tag>(value);
    }
    bool Get(std::uint32_t channel, TValue &value) {
        driver_.InputRequestStart();
        std::uint32_t done = 0;
        EXPECT_TRUE(driver_.InputFinalized(0, done));
        return driver_.GetInput(code_, channel, &value, status_, nullptr);
    }
    void Put(std::uint32_t channel, const TValue &value) {
        std::uint32_t code = 0;
        driver_.OutputRequestStart();
        EXPECT_TRUE(driver_.OutputRequest(code, channel, value, 0, nullptr));
        driver_.OutputRequestCompleted();
        driver_.OutputFinalized(0, code_);
    }
    void Press(std::uint32_t channel) { Put(channel, kq_def::ScalarValue<kq_def::kTagBoolean>(true)); }

    kq_drv::CDriver &Driver() { return driver_; }
    std::uint32_t Code() const { return code_; }
    std::uint32_t Status() const { return status_; }
    std::uint32_t Line() const { return line_; }

private:
    CTemporaryDirectory directory_;
    CModuleFile module_;
    kq_drv::CDriver driver_;
    std::array<char, 256> error_{};
    std::array<char, 256> place_{};
    std::uint32_t line_ = 0;
    std::uint32_t unused_ = 0;
    std::uint32_t code_ = 0;
    std::uint32_t status_ = 0;
};

std::string SamplePar() { return ReadBytes(kFolder + "simulator.par"); }

/// first-last type direction of each block, as the configuration has them and as the driver lists them.
std::string Configured(const std::string &par, const std::string &dmf) {
    kq_cfg::CConfiguration configuration({});
    configuration.Translate(ReadBytes(kFolder + "simulator.pdt"), par, dmf);
    EXPECT_TRUE(configuration.Report().Good()) << par;
    std::string text;
    for (const kq_cfg::TChannel &channel : configuration.Channels()) {
        if (channel.defined) {
            text += std::to_string(channel.first) + "-" + std::to_string(channel.last) + " " +
                    channel.type.value_or("?") + " " + channel.direction.value_or("?") + "\n";
        }
    }
    return text;
}

std::string Listed(kq_drv::CDriver &driver) {
    std::string text;
    unsigned long cookie = 0;
    std::uint32_t type = 0;
    kq_def::TDirection direction{};
    std::uint32_t first = 0;
    std::uint32_t count = 0;
    std::uint8_t flag = 0;
    while (driver.EnumerateChannels(cookie, type, direction, first, count, flag)) {
        if (first != kHistory) {
            text += std::to_string(first) + "-" + std::to_string(first + count - 1) + " ";
            text.append(kq_drv::TypeWord(type)).append(" ").append(kq_drv::DirectionWord(direction)).append("\n");
        }
    }
    return text;
}

TEST(SimulatorDriver, ListsTheChannelsThatTheConfigurationHas) {
    const std::string head = "[Simulator]\n[Record]\nFile = a, 1\n";
    for (const std::string &par :
         {SamplePar(), head,
          head + "[Signal7]\nChannels = READ, 4\n[Signal8]\nShape = SQUARE\nChannels = READWRITE, 64, "
                 "100\n[Signal9]\nChannels = READWRITE, 3\n",
          head +
              "[Signal1]\nShape = RANDOM\nLimits = 5\nChannels = READ, 3, 10001\n[Signal2]\nChannels = READ, 2, 7\n"}) {
        CSimulatorHost host(par);
        EXPECT_EQ(Listed(host.Driver()), Configured(par, "")) << par;
    }
    CSimulatorHost host(SamplePar());
    EXPECT_EQ(Listed(host.Driver()), Configured(SamplePar(), ReadBytes(kFolder + "simulator.dmf")));
}

TEST(SimulatorDriver, MistakesComeWithTheirLine) {
    const std::vector<std::pair<std::uint32_t, std::vector<std::string>>> lines = {
        {0, {"", "[Signal1]\n"}},
        {2,
         {"Step = 9\n", "Step = 100, 1000, 1\n", "[Signal0]\n", "[Signal100]\n", "[Signal99999999999]\n",
          "[Signal1]\nChannels = READ, 2, 6\n", "[Signal1]\nChannels = READ, 2, 9999\n",
          "[Signal1]\nChannels = READ, 2, 4294967295\n"}},
        {3,
         {"\nNoise = yes\n", "[Record]\nFile = a, 0\n", "[Signal1]\n[Signal1]\n", "[Signal1]\nShape = SINE, 1\n",
          "[Signal1]\nShape = RANDOM, 5\n", "[Signal1]\nShape = SQUARE, 5, 100\n", "[Signal1]\nLimits = 10, 1\n",
          "[Signal1]\nLimits = 1.5\n", "[Signal1]\nChannels = READ, 65\n", "[Signal1]\nChannels = READ, 1, 0\n"}},
        {4,
         {"[Signal1]\nChannels = READ, 4, 10\n[Signal2]\nChannels = READ, 9, 7\n",
          "[Signal1]\nChannels = READ, 1, 4294967295\n[Signal2]\n"}}};
    for (const auto &[line, pars] : lines) {
        for (const std::string &par : pars) {
            CSimulatorHost host;
            EXPECT_FALSE(host.Read(line == 0 ? par : "[Simulator]\n" + par)) << par;
            EXPECT_EQ(host.Line(), line) << par;
            EXPECT_EQ(Listed(host.Driver()), "") << par;
        }
    }
}

// Whatever is done to a parameter file, it is read or refused, and what was read can be driven.
TEST(SimulatorDriver, DamagedParameterFiles) {
    const std::string sample = SamplePar();
    std::mt19937 random(7);  // NOLINT(cert-msc51-cpp): the same files every time
    const std::string bytes("[]=,\n\"'(*)0919\x00\xE8", 16);
    int read = 0;
    for (unsigned round = 0; round < 600; ++round) {
        std::string par = sample;
        for (std::size_t change = 0; change < 1 + round % 5U; ++change) {
            const std::size_t at = random() % par.size();
            if (random() % 3 == 0) {
                par.erase(at, random() % 20);
            } else {
                par.insert(at, 1, bytes[random() % bytes.size()]);
            }
        }
        CSimulatorHost host;
        if (host.Read(par)) {
            ++read;
            host.Driver().Run();
            host.Press(3);
            EXPECT_EQ(host.Get<kq_def::kTagLongcard>(5), 1U);
            host.Driver().Stop();
        }
    }
    EXPECT_GT(read, 50);
    EXPECT_LT(read, 550);
}

TEST(SimulatorDriver, StepsByHandAndByTime) {
    CSimulatorHost host("[Simulator]\nStep = 10\n[Record]\nFile =\n");
    const auto steps = [&host] { return host.Get<kq_def::kTagLongcard>(5); };
    host.Press(3);
    EXPECT_EQ(steps(), 0U) << "nothing moves before Run";
    host.Driver().Run();
    host.Press(3);
    host.Press(3);
    EXPECT_EQ(steps(), 2U);
    host.Press(1);
    const auto start = std::chrono::steady_clock::now();
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    host.Press(2);
    const auto most = (std::chrono::steady_clock::now() - start) / std::chrono::milliseconds(10) + 1;
    const std::uint64_t stopped = steps();
    EXPECT_GE(stopped, 2U + 9U);
    EXPECT_LE(stopped, 2U + static_cast<std::uint64_t>(most));
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    EXPECT_EQ(steps(), stopped);
    host.Press(4);
    EXPECT_EQ(steps(), 0U);
}

TEST(SimulatorDriver, AllSignalsRepeatAfterAReset) {
    CSimulatorHost host(SamplePar());
    host.Driver().Run();
    std::string first;
    for (int repeat = 0; repeat < 2; ++repeat) {
        std::string seen;
        for (int step = 0; step < 60; ++step) {
            host.Press(3);
            const float sine = host.Get<kq_def::kTagShortreal>(11);
            EXPECT_TRUE(sine >= 0 && sine <= 500) << sine;
            EXPECT_EQ(host.Status(), sine >= 450 ? 1U : 0U);
            const std::int32_t random = host.Get<kq_def::kTagInteger>(23);
            EXPECT_TRUE(random >= 0 && random <= 1000) << random;
            seen += std::to_string(sine) + " " + std::to_string(random) + " " +
                    std::to_string(static_cast<int>(host.Get<kq_def::kTagBoolean>(16))) + "\n";
        }
        first = repeat == 0 ? seen : first;
        EXPECT_EQ(seen, first);
        host.Press(4);
    }
    EXPECT_NE(first.find(" 1\n"), std::string::npos);
    EXPECT_NE(first.find(" 0\n"), std::string::npos);
}

TEST(SimulatorDriver, WrittenValuesStandUntilTheReset) {
    CSimulatorHost host("[Simulator]\n[Signal1]\nShape = RANDOM\nLimits = 100, 90\nChannels = READWRITE, 1, 7\n");
    host.Driver().Run();
    const std::int32_t before = host.Get<kq_def::kTagInteger>(7);
    host.Put(7, kq_def::ScalarValue<kq_def::kTagInteger>(-2147483647 - 1));
    EXPECT_EQ(host.Get<kq_def::kTagInteger>(7), -2147483647 - 1);
    EXPECT_EQ(host.Status(), 2U);
    host.Put(7, kq_def::ScalarValue<kq_def::kTagInteger>(90));
    EXPECT_EQ(host.Get<kq_def::kTagInteger>(7), 90);
    EXPECT_EQ(host.Status(), 3U) << "written, and an alarm";
    host.Press(4);
    EXPECT_EQ(host.Get<kq_def::kTagInteger>(7), before);
}

TEST(SimulatorDriver, CodesHaveTexts) {
    CSimulatorHost host(SamplePar());
    const auto code_of_input = [&host](std::uint32_t channel, std::uint32_t tag) {
        TValue value;
        value.tag = tag;
        EXPECT_FALSE(host.Get(channel, value));
        return host.Code();
    };
    EXPECT_EQ(code_of_input(7, kq_def::kTagReal), 1U);
    EXPECT_EQ(code_of_input(0, kq_def::kTagReal), 1U);
    EXPECT_EQ(code_of_input(24, kq_def::kTagReal), 1U);
    EXPECT_EQ(code_of_input(5, kq_def::kTagCardinal), 2U);
    EXPECT_EQ(code_of_input(1, kq_def::kTagBoolean), 3U);
    EXPECT_EQ(code_of_input(kHistory, kq_def::kTagBuffer), 4U);
    host.Put(11, kq_def::ScalarValue<kq_def::kTagShortreal>(1));
    EXPECT_EQ(host.Code(), 3U);
    host.Put(15, kq_def::ScalarValue<kq_def::kTagShortreal>(1));
    EXPECT_EQ(host.Code(), 2U);
    std::array<char, 256> text{};
    for (std::uint32_t code = 0; code < 8; ++code) {
        EXPECT_EQ(host.Driver().QueryErrorCode(code, 255, text.data()), code >= 1 && code <= 5) << code;
    }
}

TEST(SimulatorDriver, LongTextsBuffersAndQuestions) {
    CSimulatorHost host(SamplePar());
    TDStringA text;
    TValue value = kq_def::DStringValue(&text);
    ASSERT_TRUE(host.Get(6, value)) << host.Code();
    EXPECT_GT(text.Length(), 1024U) << "more than the room that a text gets at first";
    EXPECT_EQ(text.View().back(), '\n');

    std::array<float, 64> history{};
    history.fill(-1);
    std::uint32_t code = 0;
    EXPECT_FALSE(host.Driver().BufferInfo(code, kHistory, 1, 255));
    EXPECT_FALSE(host.Driver().BufferInfo(code, 5, 1, 256));
    ASSERT_TRUE(host.Driver().BufferInfo(code, kHistory, 1, 256));
    ASSERT_TRUE(host.Driver().SetBufferAddr(code, kHistory, history.data()));
    host.Driver().Run();
    host.Press(3);
    value = {};
    value.tag = kq_def::kTagBuffer;
    value.PutField(TValue::kBufferAt, history.data());
    ASSERT_TRUE(host.Get(kHistory, value)) << host.Code();
    EXPECT_EQ(history[61], 0.0F);
    EXPECT_NE(history[62], 0.0F);
    EXPECT_EQ(history[63], host.Get<kq_def::kTagShortreal>(11));

    TDStringA question(std::string_view("Signal3"));
    TDStringA answer;
    TValue out = kq_def::DStringValue(&answer);
    ASSERT_TRUE(host.Driver().QueryProc(code, kq_def::DStringValue(&question), &out));
    EXPECT_TRUE(answer.View().starts_with("n\xE1hoda, meze 0")) << answer.View();
    question.Assign("Signal4");
    ASSERT_TRUE(host.Driver().QueryProc(code, kq_def::DStringValue(&question), &out));
    EXPECT_EQ(answer.View(), "");
    out = kq_def::ScalarValue<kq_def::kTagLongcard>(77);
    ASSERT_TRUE(host.Driver().QueryProc(code, kq_def::ScalarValue<kq_def::kTagLongcard>(5), &out));
    EXPECT_EQ(kq_def::ScalarIn<kq_def::kTagLongcard>(out), 1U);
}

TEST(SimulatorDriver, RecordThatCantBeWrittenIsACode) {
    CSimulatorHost host("[Simulator]\n[Record]\nFile = missing/a.txt, 2\n");
    host.Driver().Run();
    host.Press(3);
    host.Press(3);
    std::uint32_t code = 0;
    host.Driver().InputRequestStart();
    EXPECT_FALSE(host.Driver().InputFinalized(0, code));
    EXPECT_EQ(code, 5U);
}

}  // namespace
