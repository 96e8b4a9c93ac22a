#include <gtest/gtest.h>

#include "platform/os/modules.h"
#include "tests/driver/driver_module.h"
#include "tests/support/temporary_directory.h"

namespace {

using kq_drv::CDriverComponentDLLHelper;

/// What every operation of an inspector answers, for a module that was given to Init or not.
std::string Inspect(const CDriverComponentDLLHelper &helper) {
    std::uint32_t version = 7;
    std::uint8_t wide = 7;
    CTextBuffer256 description;
    CTextBuffer256 reason;
    const bool has_version = helper.Version(version);
    const bool has_width = helper.IsUNICODE(wide);
    const bool described = helper.GetDriverDescription(description.kHigh, description.Data());
    const bool runs = helper.AbleToRunInThisKQ(reason.kHigh, reason.Data(), 10, 20, 30);
    return std::to_string(has_version) + ":" + std::to_string(version) + " " + std::to_string(has_width) + ":" +
           std::to_string(wide) + " " + std::to_string(described) + ":" + description.Utf8() + " " +
           std::to_string(helper.AbleToEnumerateChannels(0)) + std::to_string(helper.AbleToEnumerateChannels(1)) + " " +
           std::to_string(runs) + ":" + reason.Utf8();
}

std::string InitText(CDriverComponentDLLHelper &helper, void *module) {
    CTextBuffer256 error;
    const bool passed = helper.Init(error.kHigh, error.Data(), module);
    EXPECT_EQ(passed, error.Utf8() == "?");
    return error.Utf8();
}

TEST(ComponentHelper, LooksAtEachModule) {
    WithEachModule([](const CTestModule &module) {
        const int version = 0x20000 + module.Generation() * 16 + (module.IsWide() ? 1 : 0);
        const std::string wide = module.IsWide() ? "1" : "0";
        const std::string head = "1:" + std::to_string(version) + " 1:" + wide + " 1:Příliš žluťoučký ";
        const std::string enumerates = module.Generation() == 3 ? "11" : "10";
        module.SetTexts(u"Příliš žluťoučký");
        CDriverComponentDLLHelper helper;
        EXPECT_EQ(InitText(helper, module.Handle()), "?");
        const CDriverComponentDLLHelper copy = helper;
        EXPECT_EQ(Inspect(copy), head + enumerates + " 1:?");
        EXPECT_EQ(module.TakeLog(), "GetDriverInfo 255\nCheck 255 10 20 30 4 2\n");
        module.Control().answer = 0;
        EXPECT_EQ(Inspect(helper), head + enumerates + " 0:Příliš žluťoučký");
    });
}

TEST(ComponentHelper, PrefersWideEntriesButAnyVersionMakesAModuleNarrow) {
    const CTestModule module = CTestModule::Both();
    module.Control().text = "narrow";
    module.Control().wide_text = u"wide";
    CDriverComponentDLLHelper helper;
    EXPECT_EQ(InitText(helper, module.Handle()), "?");
    EXPECT_EQ(Inspect(helper), "1:" + std::to_string(0x20031) + " 1:0 1:wide 11 1:?");
}

TEST(ComponentHelper, NamesTheFirstMissingPair) {
    const std::string refused = "0:7 0:7 0:? ";
    const std::string no_driver = " 0:DLL ovladače nevyváží požadované rozhraní: ";
    const std::string missing = " procedura nebyla nalezena v souboru ";
    struct {
        std::vector<std::string> missing;
        std::string error;
        std::string enumerates;
    } cases[] = {
        {{"GetDriverInfo"}, "GetDriverInfo, GetDriverInfoW", "11"},
        {{"Version"}, "Version, VersionW", "11"},
        {{"Check", "Init3"}, "Check, CheckW", "10"},
        {{"Check", "Version", "EnumerateChannels"}, "Version, VersionW", "00"},
        {{"Check", "Version", "GetDriverInfo"}, "GetDriverInfo, GetDriverInfoW", "11"},
    };
    const CTemporaryDirectory directory;
    for (const bool wide : {false, true}) {
        for (const auto &wanted : cases) {
            const CTestModule module(3, wide, wanted.missing);
            CDriverComponentDLLHelper helper;
            EXPECT_EQ(InitText(helper, module.Handle()), wanted.error + missing);
            EXPECT_EQ(Inspect(helper), std::string(refused).append(wanted.enumerates).append(no_driver));
        }
    }
    CDriverComponentDLLHelper helper;
    EXPECT_EQ(Inspect(helper), refused + "00" + no_driver);
    EXPECT_EQ(InitText(helper, nullptr), "GetDriverInfo, GetDriverInfoW" + missing);
    EXPECT_EQ(Inspect(helper), refused + "00" + no_driver);
}

TEST(ComponentHelper, CutsTextsAtTheirBounds) {
    WithEachModule([](const CTestModule &module) {
        module.SetTexts(std::u16string(300, u'ř'));
        CDriverComponentDLLHelper helper;
        InitText(helper, module.Handle());
        std::array<char, 400> text{};
        EXPECT_TRUE(helper.GetDriverDescription(399, text.data()));
        EXPECT_EQ(std::string_view(text.data()), std::string(255, '\xF8'));
        EXPECT_TRUE(helper.GetDriverDescription(3, text.data()));
        EXPECT_EQ(std::string_view(text.data()), "\xF8\xF8\xF8");
        EXPECT_TRUE(helper.GetDriverDescription(0, text.data()));
        EXPECT_EQ(std::string_view(text.data()), "");
    });
}

}  // namespace
