#include <gtest/gtest.h>

#include "platform/os/events.h"
#include "platform/os/modules.h"
#include "tests/driver/driver_module.h"
#include "tests/support/count_allocations.h"

namespace {

using namespace kq_def;

/// Every way that a value takes, once.
void Exchange(kq_drv::CDriver &driver, TDStringA &string, bool strings) {
    std::uint32_t code = 0;
    std::uint32_t status = 0;
    TValue value;
    value.tag = kTagReal;
    if (strings) {
        value = DStringValue(&string);
    }
    bool done = driver.GetInput(code, 1, &value, status, nullptr);
    done = driver.OutputRequest(code, 1, value, 0, nullptr) && done;
    done = driver.QueryProc(code, value, &value) && done;
    EXPECT_TRUE(done);
}

TEST(DriverAllocation, SettledExchangesAllocateNothing) {
    WithEachModule([](const CTestModule &module) {
        module.Control().logs = false;
        CInitializedDriver driver(module);
        TDStringA string;
        const CAllocationMeter scalars;
        Exchange(driver, string, false);
        EXPECT_EQ(scalars.Allocations(), 0U);
        for (const std::size_t length : module.Generation() == 3 ? std::vector<std::size_t>{10, 5000, 10}
                                                                 : std::vector<std::size_t>{10, 255, 10}) {
            module.SetTexts(std::u16string(length, u'ž'));
            Exchange(driver, string, true);
            const CAllocationMeter settled;
            Exchange(driver, string, true);
            EXPECT_EQ(settled.Allocations(), 0U) << length;
        }
    });
}

TEST(DriverAllocation, NothingStaysBehindWithoutDone) {
    const CTestModule module(3, true);
    module.Control().logs = false;
    const auto use_and_drop = [&module] {
        kq_drv::CDriver driver;
        kq_drv::CDriver copy(driver);
        driver.Init(module.Handle());
        CTextBuffer256 error;
        EXPECT_TRUE(driver.Initialize(error.kHigh, error.Data(), 0, 0, "drv"));
        copy = driver;
        module.Control().wide_given = {};
    };
    use_and_drop();  // some memory is kept for the next driver
    const CAllocationMeter before;
    use_and_drop();
    EXPECT_EQ(before.Bytes(), 0);
}

/// Does an operation again and again, with one more allocation each time before memory is short, until it succeeds. How
/// often it failed.
template <typename TUse>
std::size_t Failures(TUse use) {
    for (std::size_t failures = 0;; ++failures) {
        counted::allocations_left = failures;
        const bool done = use();
        counted::allocations_left = counted::kNoLimit;
        if (done || failures == 1000) {
            return failures;
        }
    }
}

TEST(DriverAllocation, ShortMemoryIsAFailure) {
    WithEachModule([](const CTestModule &module) {
        module.Control().logs = false;
        module.Control().blocks = 100;
        module.SetTexts(std::u16string(200, u'ž'));
        TDStringA text(BytesOf(std::u16string(200, u'ž')));
        const TValue with_text = DStringValue(&text);
        CInitializedDriver settled(module);  // what the module itself allocates is there after this
        Exchange(settled, text, true);

        kq_drv::CDriver driver;
        driver.Init(module.Handle());
        CTextBuffer256 error;
        EXPECT_GT(Failures([&] { return driver.Initialize(error.kHigh, error.Data(), 0, 0, "drv"); }), 0U);
        EXPECT_EQ(error.Utf8(), "Nedostatek paměti");

        std::uint32_t code = 0;
        std::uint32_t status = 0;
        const auto check = [&code](bool may_fail, auto exchange) {
            std::uint32_t first_code = 0;
            const std::size_t failures = Failures([&] {
                const bool done = exchange();
                first_code = first_code == 0 && !done ? code : first_code;
                return done;
            });
            EXPECT_EQ(failures > 0, may_fail);
            EXPECT_EQ(first_code, may_fail ? kq_drv::kRoomNotGrown : 0U);
        };
        TValue value;
        check(true, [&] {
            value = DStringValue(nullptr);
            return driver.GetInput(code, 1, &value, status, nullptr);
        });
        DisposeValueDString(&value);
        check(module.Generation() == 3 && module.IsWide(),
              [&] { return driver.OutputRequest(code, 1, with_text, 0, nullptr); });
        value = DStringValue(nullptr);
        check(true, [&] { return driver.QueryProc(code, with_text, &value); });
        DisposeValueDString(&value);

        kq_drv::CChannelMap map;
        error = {};
        EXPECT_GT(Failures([&] {
                      map.Done();
                      return map.LoadFromDriver(error.kHigh, error.Data(), &driver);
                  }),
                  0U);
        EXPECT_EQ(error.Utf8(), "Nedostatek paměti");
        driver.Done();
    });
}

TEST(DriverAllocation, ShortMemoryOfAnInspectorAndOfAModule) {
    kq_drv::CDriverComponentDLLHelper helper;
    CTextBuffer256 error;
    counted::allocations_left = 0;
    const bool passed = helper.Init(error.kHigh, error.Data(), nullptr);
    void *const module = kq_os::LoadLibraryA(KQ_DRIVER_MODULES "/generation3.dll");
    void *const names = kq_os::LoadLibraryExA(KQ_DRIVER_MODULES "/generation3.dll", kq_os::kDontResolveReferences);
    void *const event = kq_os::CreateEventA(true, true);
    counted::allocations_left = counted::kNoLimit;
    EXPECT_FALSE(passed);
    EXPECT_EQ(error.Utf8(), "Nedostatek paměti");
    EXPECT_EQ(module, nullptr);
    EXPECT_EQ(names, nullptr);
    EXPECT_EQ(event, nullptr);
}

}  // namespace
