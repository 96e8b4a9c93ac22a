#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <sstream>

#include "platform/os/modules.h"
#include "tests/driver/driver_module.h"
#include "tests/support/temporary_directory.h"

namespace {

using namespace kq_drv;
using namespace kq_def;

const char kMissing[] = " procedura nebyla nalezena v souboru ";

/// "ok", or the error.
std::string Initialize(CDriver &driver, std::uint32_t instance = 0, std::string_view name = "drv") {
    CTextBuffer256 error;
    const bool done =
        driver.Initialize(error.kHigh, error.Data(), instance, static_cast<std::uint32_t>(name.size()), name.data());
    EXPECT_EQ(done, error.Utf8() == "?");
    return done ? "ok" : error.Utf8();
}

/// "result a b error text".
std::string ReadParameters(CDriver &driver, std::string_view path = "C:\\par.par") {
    CTextBuffer256 error;
    CTextBuffer256 text;
    std::uint32_t a = 9;
    std::uint32_t b = 9;
    const bool done = driver.ReadParameters(static_cast<std::uint32_t>(path.size()), path.data(), error.kHigh,
                                            error.Data(), a, b, text.kHigh, text.Data());
    return std::to_string(done) + " " + std::to_string(a) + " " + std::to_string(b) + " " + error.Utf8() + " " +
           text.Utf8();
}

/// Decimal, but hexadecimal for what is as large as the codes of the proxy.
std::string NumberText(std::uint64_t number) {
    std::ostringstream text;
    number < 0x10000 ? text << number : text << "0x" << std::hex << std::uppercase << number;
    return text.str();
}

/// What all forwarding operations answer, a line each. Whatever an operation leaves alone shows as 9 or ?.
std::string Everything(CDriver &driver) {
    std::string answers;
    const auto tell = [&answers](const char *name, auto... numbers) {
        answers += name;
        ((answers += " " + NumberText(static_cast<std::uint64_t>(numbers))), ...);
        answers += "\n";
    };
    CTextBuffer256 text;
    CTextBuffer256 second;
    unsigned long cookie = 0;
    unsigned long long_number = 9;
    std::uint32_t code = 9;
    std::uint32_t type = 9;
    std::uint32_t first = 9;
    std::uint32_t count = 9;
    std::uint8_t flag = 9;
    auto direction = static_cast<TDirection>(9);
    char memory = 'm';
    TValue value;
    value.tag = kTagCardinal;
    TValue answer = value;

    bool result = driver.QueryErrorCode(5, text.kHigh, text.Data());
    answers += "QueryErrorCode " + std::to_string(result) + " " + text.Utf8() + "\n";
    tell("AbleToEnumerateChannels", driver.AbleToEnumerateChannels(0), driver.AbleToEnumerateChannels(1));
    result = driver.EnumerateChannels(cookie, type, direction, first, count, flag);
    tell("EnumerateChannels", result, cookie, type, static_cast<int>(direction), first, count, flag);
    text = {};
    result = driver.GetChannelDescription(6, text.kHigh, text.Data(), second.kHigh, second.Data());
    answers += "GetChannelDescription " + std::to_string(result) + " " + text.Utf8() + " " + second.Utf8() + "\n";
    driver.Run();
    driver.Stop();
    driver.InputRequestStart();
    driver.InputRequest(7);
    driver.InputRequestCompleted();
    result = driver.InputFinalized(8, code);
    tell("InputFinalized", result, code);
    result = driver.InputOOBDataQuery(long_number, count);
    tell("InputOOBDataQuery", result, long_number, count);
    result = driver.GetInput(code, 3, &value, count, nullptr);
    tell("GetInput", result, code, value.tag);
    driver.OutputRequestStart();
    code = 9;
    result = driver.OutputRequest(code, 3, answer, 4, nullptr);
    tell("OutputRequest", result, code);
    driver.OutputRequestCompleted();
    result = driver.OutputFinalized(8, code);
    tell("OutputFinalized", result, code);
    code = 9;
    result = driver.BufferInfo(code, 1, 2, 3);
    tell("BufferInfo", result, code);
    code = 9;
    result = driver.SetBufferAddr(code, 1, &memory);
    tell("SetBufferAddr", result, code);
    driver.DriverProc(1, 2, 3, 4, 5);
    code = 9;
    result = driver.QueryProc(code, answer, &answer);
    tell("QueryProc", result, code);
    return answers;
}

const char kNothingAnswers[] =
    "QueryErrorCode 0 ?\nAbleToEnumerateChannels 0 0\nEnumerateChannels 0 0 9 9 9 9 9\nGetChannelDescription 0 ? ?\n"
    "InputFinalized 0 0xE1201047\nInputOOBDataQuery 0 9 9\nGetInput 0 0xE1201046 0\nOutputRequest 0 0xE1201048\n"
    "OutputFinalized 0 0xE1201049\nBufferInfo 0 0xE1201041\nSetBufferAddr 0 0xE1201042\nQueryProc 0 0xE1201043\n";

TEST(DriverLifecycle, EveryOperationReachesTheDriver) {
    WithEachModule([](const CTestModule &module) {
        module.SetTexts(u"text €", u"druhý");
        module.Control().blocks = 1;
        module.Control().code = 12;
        CInitializedDriver driver(module);
        const bool third = module.Generation() == 3;
        const std::string forms[] = {"", "2", "3"};
        const std::string form = forms[module.Generation() - 1];
        EXPECT_EQ(Everything(driver),
                  "QueryErrorCode 1 text €\nAbleToEnumerateChannels 1 " + std::to_string(third) +
                      "\nEnumerateChannels 1 1 10 4 1 10 1\nGetChannelDescription 1 text € druhý\n"
                      "InputFinalized 1 12\nInputOOBDataQuery 1 55 66\nGetInput " +
                      (third ? "0 12 4" : "1 0 4") +
                      "\nOutputRequest 1 9\nOutputFinalized 1 12\nBufferInfo 1 0xE1201044\nSetBufferAddr 1 9\n"
                      "QueryProc 1 9\n");
        const std::string stamped = module.Generation() == 1 ? "" : " 0";
        EXPECT_EQ(module.TakeLog(),
                  "QueryErrorCode 5 255\nEnumerateChannels 0\nGetChannelDescription 6 255 63\nRun\nStop\n"
                  "InputRequestStart\nInputRequest 7\nInputRequestCompleted\nInputFinalized 8\nInputOOBDataQuery\n"
                  "GetInput" +
                      form + " 3 4" + stamped + (third ? " 0" : "") + "\nOutputRequestStart\nOutputRequest" + form +
                      " 3 4 0" + (stamped.empty() ? "" : " 4 0") +
                      "\nOutputRequestCompleted\nOutputFinalized 8\nBufferInfo 1 2 3\nSetBufferAddr 1 109\n"
                      "DriverProc 1 2 3 4 5\nQueryProc" +
                      (third ? "3 4 0 4 0 4\n" : " 4 0 4 0\n"));

        module.Control().answer = 0;
        module.Control().blocks = 0;
        const std::string refusals = Everything(driver);
        for (const char *line :
             {"QueryErrorCode 0 ?\n", "EnumerateChannels 0 0 9 9 9 9 9\n", "GetChannelDescription 0 ? ?\n",
              "InputFinalized 0 12\n", "InputOOBDataQuery 0 55 66\n", "OutputFinalized 0 12\n",
              "BufferInfo 0 0xE1201044\n"}) {
            EXPECT_NE(refusals.find(line), std::string::npos) << refusals;
        }
        module.Control().log.clear();
        driver.Done();
        EXPECT_EQ(module.TakeLog(), "Done\nDisposeDriver\n");
        driver.Done();
        Everything(driver);
        EXPECT_EQ(module.TakeLog(), "") << "nothing reaches a driver that has ended";
    });
}

TEST(DriverLifecycle, OptionalEntriesMayBeMissing) {
    const CTemporaryDirectory directory;
    for (const bool wide : {false, true}) {
        const CTestModule module(3, wide,
                                 {"ReadParameters", "QueryErrorCode", "EnumerateChannels", "GetChannelDescription",
                                  "Run", "Stop", "BufferInfo", "SetBufferAddr", "InputRequestStart",
                                  "InputOOBDataQuery", "OutputRequestStart", "QueryProc3"});
        CInitializedDriver driver(module);
        EXPECT_EQ(ReadParameters(driver), "1 0 0 ? ");
        EXPECT_EQ(Everything(driver),
                  "QueryErrorCode 0 ?\nAbleToEnumerateChannels 0 0\nEnumerateChannels 0 0 9 9 9 9 9\n"
                  "GetChannelDescription 0 ? ?\nInputFinalized 1 0\nInputOOBDataQuery 0 9 9\nGetInput 1 0 4\n"
                  "OutputRequest 1 9\nOutputFinalized 1 0\nBufferInfo 0 0xE1201041\nSetBufferAddr 0 0xE1201042\n"
                  "QueryProc 0 0xE1201043\n");
        EXPECT_EQ(
            module.TakeLog(),
            "InputRequest 7\nInputRequestCompleted\nInputFinalized 8\nGetInput3 3 4 0 0\nOutputRequest3 3 4 0 4 0\n"
            "OutputRequestCompleted\nOutputFinalized 8\nDriverProc 1 2 3 4 5\n");
    }
}

TEST(DriverLifecycle, NamesTheFirstMissingEntry) {
    struct {
        std::vector<std::string> missing;
        std::vector<std::string> named;
    } cases[] = {
        {{"MakeDriver"}, {"MakeDriver"}},
        {{"DisposeDriver"}, {"DisposeDriver"}},
        {{"Init3"}, {"Init", "Init3"}},
        {{"Done"}, {"Done"}},
        {{"InputRequest"}, {"InputRequest"}},
        {{"InputRequestCompleted"}, {"InputRequestCompleted"}},
        {{"InputFinalized"}, {"InputFinalized"}},
        {{"OutputRequestCompleted"}, {"OutputRequestCompleted"}},
        {{"OutputFinalized"}, {"OutputFinalized"}},
        {{"DriverProc"}, {"DriverProc"}},
        {{"GetInput3"}, {"GetInput", "GetInput2", "GetInput3"}},
        {{"OutputRequest3"}, {"OutputRequest", "OutputRequest2", "OutputRequest3"}},
        {{"OutputRequest3", "GetInput3", "DriverProc"}, {"DriverProc"}},
        {{"OutputRequest3", "GetInput3"}, {"GetInput", "GetInput2", "GetInput3"}},
        {{"DriverProc", "OutputFinalized", "Done", "Run"}, {"Done"}},
    };
    const CTemporaryDirectory directory;
    for (const bool wide : {false, true}) {
        for (const auto &wanted : cases) {
            const CTestModule module(3, wide, wanted.missing);
            std::string error;
            for (const std::string &name : wanted.named) {
                error += (error.empty() ? "" : ", ") + name + (wide ? "W" : "");
            }
            CDriver driver;
            driver.Init(module.Handle());
            EXPECT_EQ(Initialize(driver), error + kMissing + "drv");
            EXPECT_EQ(ReadParameters(driver), "0 0 0 DLL ovladače nevyváží požadované rozhraní: drv ");
            driver.Run();
            driver.Done();
            EXPECT_EQ(module.TakeLog(), "") << "no driver was made, so none was called";
        }
    }
}

TEST(DriverLifecycle, DataOfAnEntrysNameIsNoEntry) {
    CDriver driver;
    void *const module = kq_os::LoadLibraryA(KQ_DRIVER_MODULES "/data.dll");
    ASSERT_NE(module, nullptr);
    driver.Init(module);
    EXPECT_EQ(Initialize(driver), std::string("Init, Init3") + kMissing + "drv");
    kq_os::FreeLibrary(module);
}

TEST(DriverLifecycle, WithoutAModuleNothingHappens) {
    CDriver driver;
    std::uint32_t version = 9;
    EXPECT_FALSE(driver.Version(version));
    EXPECT_EQ(version, 9);
    driver.Done();
    EXPECT_EQ(Initialize(driver), "DLL ovladače nevyváží požadované rozhraní: drv");
    EXPECT_EQ(Everything(driver), kNothingAnswers);
    const CTestModule module(2, true);
    driver.Init(module.Handle());
    EXPECT_EQ(Everything(driver), kNothingAnswers);
    EXPECT_EQ(module.TakeLog(), "");
}

TEST(DriverLifecycle, ModuleMakesNoDriver) {
    WithEachModule([](const CTestModule &module) {
        module.Control().mischief = TMischief::kNoDriver;
        CDriver driver;
        driver.Init(module.Handle());
        EXPECT_EQ(Initialize(driver, 0, "Lince"), "Lince : Nelze vytvořit ovladač.");
        driver.Done();
        EXPECT_EQ(module.TakeLog(), "MakeDriver\n");
    });
}

TEST(DriverLifecycle, SetUp) {
    const std::string long_name(70, 'n');
    const std::string long_path(300, 'p');
    WithEachModule([&](const CTestModule &module) {
        const bool third = module.Generation() == 3;
        module.SetTexts(u"chyba č. 1", u"řádek 2");
        CDriver driver;
        driver.Init(module.Handle());
        std::uint32_t version = 0;
        EXPECT_TRUE(driver.Version(version));
        EXPECT_EQ(version, 0x20000U + static_cast<unsigned>(module.Generation()) * 16 + (module.IsWide() ? 1 : 0));
        CTextBuffer256 info;
        EXPECT_TRUE(driver.GetDriverInfo(info.kHigh, info.Data()));
        EXPECT_EQ(info.Utf8(), "chyba č. 1");
        module.Control().log.clear();

        EXPECT_EQ(Initialize(driver, 0, "Linka \xE8. 1"), "ok");
        EXPECT_EQ(module.TakeLog(), third ? "MakeDriver\nInit3 0 63\n" : "MakeDriver\n");
        EXPECT_EQ(third ? module.Given() : "Linka č. 1", "Linka č. 1");
        EXPECT_EQ(ReadParameters(driver, "C:\\\xF8.par"), third ? "1 77 88 ? " : "1 0 0 ? ");
        EXPECT_EQ(module.TakeLog(), third ? "ReadParameters 259 255 255\n" : "Init 259 255 0 1\n");
        EXPECT_EQ(module.Given(), "C:\\ř.par");
        EXPECT_EQ(third ? "Linka č. 1" : module.Present(), "Linka č. 1");
        EXPECT_EQ(module.Control().context, &driver);
        EXPECT_EQ(module.Control().callback, third && module.IsWide() ? KQDriverCallbackW : KQDriverCallback);
        module.Control().answer = 0;
        EXPECT_EQ(ReadParameters(driver), third ? "0 77 88 chyba č. 1 řádek 2" : "0 0 0 chyba č. 1 ");
        driver.Done();

        module.Control().log.clear();
        EXPECT_EQ(Initialize(driver, 5, long_name), "ok");
        EXPECT_EQ(module.TakeLog(), third ? "MakeDriver\nInit3 5 63\n" : "MakeDriver\n");
        EXPECT_EQ(third ? module.Given() : std::string(63, 'n'), std::string(63, 'n'));
        ReadParameters(driver, long_path);
        EXPECT_EQ(module.TakeLog(), third ? "ReadParameters 259 255 255\n" : "Init 259 255 0 0\n");
        EXPECT_EQ(module.Given(), std::string(259, 'p'));
        driver.Done();
    });
}

TEST(DriverLifecycle, AModuleOfBothWidthsIsNarrow) {
    const CTestModule module = CTestModule::Both();
    CInitializedDriver driver(module);
    EXPECT_FALSE(driver.AbleToEnumerateChannels(1)) << "Init3W doesn't count in a narrow module";
    EXPECT_EQ(ReadParameters(driver), "1 0 0 ? ");
    EXPECT_EQ(module.TakeLog(), "Init 259 255 0 1\n");
    EXPECT_EQ(module.Given(), "C:\\par.par");
}

TEST(DriverLifecycle, TheNewestFormServes) {
    struct {
        std::vector<std::string> missing;
        std::string log;
    } cases[] = {
        {{},
         "Init3 0 63\nReadParameters 259 255 255\nGetInput3 3 10 0 0\nOutputRequest3 3 10 0 4 0\nQueryProc3 10 0 10 0 "
         "10\n"},
        {{"GetInput3", "Init3"},
         "Init 259 255 0 1\nGetInput2 3 10 0\nOutputRequest3 3 10 0 4 0\nQueryProc3 10 0 10 0 10\n"},
        {{"OutputRequest3", "QueryProc3", "Init"},
         "Init3 0 63\nReadParameters 259 255 255\nGetInput3 3 10 0 0\nOutputRequest2 3 10 0 4 0\nQueryProc 10 0 10 "
         "0\n"},
        {{"GetInput3", "GetInput2", "OutputRequest2"},
         "Init3 0 63\nReadParameters 259 255 255\nGetInput 3 10\nOutputRequest3 3 10 0 4 0\nQueryProc3 10 0 10 0 10\n"},
        {{"OutputRequest3", "OutputRequest2", "GetInput2", "QueryProc"},
         "Init3 0 63\nReadParameters 259 255 255\nGetInput3 3 10 0 0\nOutputRequest 3 10 0\nQueryProc3 10 0 10 0 10\n"},
    };
    const CTemporaryDirectory directory;
    for (const auto &wanted : cases) {
        for (const bool wide : {false, true}) {
            const CTestModule module(0, wide, wanted.missing);
            CDriver driver;
            driver.Init(module.Handle());
            EXPECT_EQ(Initialize(driver), "ok");
            ReadParameters(driver);
            TValue value;
            value.tag = kTagReal;
            const TValue zero = value;
            std::uint32_t code = 0;
            std::uint32_t status = 0;
            EXPECT_TRUE(driver.GetInput(code, 3, &value, status, nullptr));
            EXPECT_TRUE(driver.OutputRequest(code, 3, zero, 4, nullptr));
            value = zero;
            EXPECT_TRUE(driver.QueryProc(code, zero, &value));
            EXPECT_EQ(module.TakeLog(), "MakeDriver\n" + wanted.log);
            driver.Done();
        }
    }
}

/// Expects these operations in the table of virtual ones, in this order and no others before or between them. Compilers
/// for this system encode an operation's index in the pointer to it.
template <typename... TMembers>
void ExpectSlots(TMembers... members) {
    const auto slot_of = [](auto member) {
        std::uintptr_t encoded = 0;
        std::memcpy(&encoded, &member, sizeof(encoded));
        return (encoded - 1) / sizeof(void *);
    };
    std::uintptr_t wanted = 0;
    for (const std::uintptr_t slot : {slot_of(members)...}) {
        EXPECT_EQ(slot, wanted++);
    }
}

TEST(DriverLifecycle, OperationsKeepTheirSlots) {
    ExpectSlots(&CDriver::Version, &CDriver::GetDriverInfo, &CDriver::Initialize, &CDriver::ReadParameters,
                &CDriver::QueryErrorCode, &CDriver::AbleToEnumerateChannels, &CDriver::EnumerateChannels,
                &CDriver::GetChannelDescription, &CDriver::Run, &CDriver::Stop, &CDriver::Done,
                &CDriver::InputRequestStart, &CDriver::InputRequest, &CDriver::InputRequestCompleted,
                &CDriver::InputFinalized, &CDriver::InputOOBDataQuery, &CDriver::GetInput, &CDriver::OutputRequestStart,
                &CDriver::OutputRequest, &CDriver::OutputRequestCompleted, &CDriver::OutputFinalized,
                &CDriver::BufferInfo, &CDriver::SetBufferAddr, &CDriver::DriverProc, &CDriver::QueryProc,
                &CDriver::DriverCallBackA, &CDriver::DriverCallBackW);
}

/// A host that answers its driver by a function of the test.
class CHost : public CDriver {
public:
    using TAnswer = std::function<std::uint32_t(CHost &host, bool wide, std::uint32_t number, void *pointer)>;

    explicit CHost(TAnswer answer) : answer_(std::move(answer)) {}
    std::uint32_t DriverCallBackA(std::uint32_t number, void *pointer) override {
        return answer_(*this, false, number, pointer);
    }
    std::uint32_t DriverCallBackW(std::uint32_t number, void *pointer) override {
        return answer_(*this, true, number, pointer);
    }

private:
    TAnswer answer_;
};

TEST(DriverLifecycle, DriverMayCallItsHostFromInit3) {
    for (const bool wide : {false, true}) {
        const CTestModule module(3, wide);
        module.Control().calls_back = true;
        module.SetTexts(u"žluť");
        TDStringA string;
        bool done = false;
        CHost host([&](CHost &driver, bool, std::uint32_t, void *) {
            std::uint32_t code = 9;
            std::uint32_t status = 0;
            TValue scalar;
            scalar.tag = kTagReal;
            TValue text = DStringValue(&string);
            done = driver.GetInput(code, 1, &scalar, status, nullptr) &&
                   driver.GetInput(code, 1, &text, status, nullptr) &&
                   driver.OutputRequest(code, 1, scalar, 0, nullptr);
            return 0U;
        });
        host.Init(module.Handle());
        EXPECT_EQ(Initialize(host), "ok");
        EXPECT_TRUE(done);
        EXPECT_EQ(kq_base::ToUtf8(string.View()), "žluť");
        host.Done();
    }
}

TEST(DriverLifecycle, ModuleThatIsOnlyLookedAtIsNeverCalled) {
    const kq_os::HMODULE module =
        kq_os::LoadLibraryExA(KQ_DRIVER_MODULES "/generation3.dll", kq_os::kDontResolveReferences);
    CDriver driver;
    driver.Init(module);
    std::uint32_t version = 7;
    EXPECT_FALSE(driver.Version(version));
    EXPECT_EQ(Initialize(driver), "DLL ovladače nevyváží požadované rozhraní: drv");
    kq_drv::CDriverComponentDLLHelper helper;
    CTextBuffer256 text;
    EXPECT_TRUE(helper.Init(text.kHigh, text.Data(), module));
    EXPECT_FALSE(helper.AbleToRunInThisKQ(text.kHigh, text.Data(), 1, 2, 3));
    EXPECT_TRUE(helper.AbleToEnumerateChannels(1));
    kq_os::FreeLibrary(module);
}

TEST(DriverLifecycle, CopiesAreTheSameDriver) {
    WithEachModule([](const CTestModule &module) {
        CDriver driver;
        driver.Init(module.Handle());
        EXPECT_EQ(Initialize(driver), "ok");
        CDriver copy(driver);
        CDriver assigned;
        assigned = copy;
        module.SetTexts(u"čtvrtek");
        for (CDriver *each : {&driver, &copy, &assigned}) {
            TDStringA text;
            TValue value = DStringValue(&text);
            std::uint32_t code = 9;
            std::uint32_t status = 9;
            EXPECT_TRUE(each->GetInput(code, 1, &value, status, nullptr));
            EXPECT_EQ(kq_base::ToUtf8(text.View()), "čtvrtek");
        }
        module.Control().log.clear();
        assigned.Done();
        EXPECT_EQ(module.TakeLog(), "Done\nDisposeDriver\n");
    });
}

TEST(DriverLifecycle, TheDriverCallsItsHost) {
    std::uint32_t forty = 40;
    WithEachModule([&](const CTestModule &module) {
        CHost host([](CHost &, bool wide, std::uint32_t number, void *pointer) {
            return wide ? number * 2 : number + *static_cast<std::uint32_t *>(pointer);
        });
        host.Init(module.Handle());
        EXPECT_EQ(Initialize(host), "ok");
        ReadParameters(host);
        const bool wide = module.Generation() == 3 && module.IsWide();
        EXPECT_EQ(module.Control().callback(module.Control().context, 2, &forty), wide ? 4U : 42U);
        host.Done();
    });
    CDriver nobody;
    for (KQDriverCallbackEntry *callback : {KQDriverCallback, KQDriverCallbackW}) {
        EXPECT_EQ(callback(&nobody, 1, nullptr), 0xFFFFFFFF);
        EXPECT_EQ(callback(nullptr, 1, nullptr), 0xFFFFFFFF);
    }
    Init_();
}

TEST(DriverLifecycle, ChannelMapFromTheDriver) {
    const CTemporaryDirectory directory;
    const auto load = [](CDriver &driver, CChannelMap &map) {
        CTextBuffer256 error;
        const bool loaded = map.LoadFromDriver(error.kHigh, error.Data(), &driver);
        return std::to_string(loaded) + " " + error.Utf8();
    };
    WithEachModule([&](const CTestModule &module) {
        module.Control().blocks = 3;
        CInitializedDriver driver(module);
        CChannelMap map;
        EXPECT_EQ(load(driver, map), "1 ?");
        CTextBuffer256 error;
        EXPECT_TRUE(map.Check(error.kHigh, error.Data(), 1, 30, kTagReal, kDirectionOutput));
        EXPECT_FALSE(map.Check(error.kHigh, error.Data(), 1, 31, kTagReal, kDirectionOutput));
        EXPECT_EQ(load(driver, map), "0 Číslo kanálu redefinováno (1)");
        map.Done();
        module.Control().overlap = 2;
        EXPECT_EQ(load(driver, map), "0 Číslo kanálu redefinováno (1)");
        EXPECT_TRUE(map.Check(error.kHigh, error.Data(), 1, 20, kTagReal, kDirectionInput)) << "the blocks before stay";
    });
    const CTestModule endless(3, false);
    endless.Control().logs = false;
    for (const std::uint32_t blocks : {999999U, 1000000U, 1000001U, 0xFFFFFFFFU}) {
        endless.Control().blocks = blocks;
        CInitializedDriver driver(endless);
        CChannelMap map;
        EXPECT_EQ(load(driver, map), blocks <= 1000000 ? "1 ?" : "0 Ovladač vypisuje příliš mnoho bloků kanálů");
        CTextBuffer256 error;
        EXPECT_EQ(map.Check(error.kHigh, error.Data(), 9999991, 10, kTagReal, kDirectionInput), blocks >= 1000000);
    }
    const CTestModule silent(1, false, {"EnumerateChannels"});
    CInitializedDriver driver(silent);
    CChannelMap map;
    EXPECT_EQ(load(driver, map), "0 ?");
}

}  // namespace
