#include <gtest/gtest.h>

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
        driver.Done();
    });
}

TEST(DriverAllocation, NothingStaysBehindWithoutDone) {
    const CTestModule module(3, true);
    module.Control().logs = false;
    const CAllocationMeter before;
    {
        kq_drv::CDriver driver;
        kq_drv::CDriver copy(driver);
        driver.Init(module.Handle());
        CTextBuffer256 error;
        EXPECT_TRUE(driver.Initialize(error.kHigh, error.Data(), 0, 0, "drv"));
        copy = driver;
    }
    module.Control().wide_given = {};
    EXPECT_EQ(before.Bytes(), 0);
}

}  // namespace
