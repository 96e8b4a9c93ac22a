#include "template/language/host_callback.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>

namespace {

/// A host with a language; without one it leaves the number as it came, which is what the interface does by itself.
class CLanguageHost final : public CAbstractPdtIdeCallBack {
public:
    void GetLanguage(std::uint32_t &number) override {
        if (language) {
            number = *language;
        } else {
            CAbstractPdtIdeCallBack::GetLanguage(number);
        }
    }

    std::optional<std::uint32_t> language;
};

/// The tags that are the language of the host, a blank after each.
std::string Current() {
    std::string tags;
    for (const char *tag : {"CZ", "EN", "GE", "JP", "cz", "E", "ENG", ""}) {
        tags += kq_pdt::IsCurrentLanguage(tag) ? std::string(tag) + " " : "";
    }
    return tags;
}

TEST(HostCallback, OneLanguageIsCurrentOrNone) {
    EXPECT_EQ(Current(), "") << "without a host";
    CLanguageHost host;
    kq_pdt::SetHostCallback(&host);
    EXPECT_EQ(Current(), "") << "a host that names no language";
    for (const auto &[language, tags] :
         {std::pair{0U, "CZ "}, {1U, "EN "}, {2U, "GE "}, {3U, "JP "}, {4U, ""}, {0xFFFFFFFFU, ""}}) {
        host.language = language;
        EXPECT_EQ(Current(), tags) << language;
    }
    kq_pdt::SetHostCallback(nullptr);
}

}  // namespace
