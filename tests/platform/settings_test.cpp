#include "platform/view/settings.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <limits>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/temporary_directory.h"

namespace {

constexpr std::string_view kPath = "\\driver config tool\\Sheet";

/// The store that all windows use, as long as it lives.
template <typename TStore>
class CInstalled : public TStore {
public:
    template <typename... TArguments>
    explicit CInstalled(TArguments... arguments) : TStore(arguments...), former_(SetSettingsStore(this)) {}
    ~CInstalled() override { SetSettingsStore(former_); }

private:
    CSettingsStore *former_;
};

void ExpectValuesOfEachKind() {
    CSettings settings;
    EXPECT_FALSE(settings.Open(kPath));
    settings.Create(kPath);
    settings.WriteInteger("negative", -5);
    settings.WriteUnsigned("large", 0xFFFFFFFF);
    settings.WriteBoolean("true", true);
    EXPECT_TRUE(settings.Open(kPath));
    std::int32_t integer = 0;
    std::uint32_t number = 0;
    bool truth = false;
    EXPECT_TRUE(settings.ReadInteger("negative", integer) && settings.ReadUnsigned("negative", number));
    EXPECT_EQ(integer, -5);
    EXPECT_EQ(number, 0xFFFFFFFB);
    EXPECT_TRUE(settings.ReadInteger("large", integer) && settings.ReadBoolean("large", truth));
    EXPECT_EQ(integer, -1);
    EXPECT_TRUE(truth);
    EXPECT_TRUE(settings.ReadUnsigned("true", number));
    EXPECT_EQ(number, 1U);
    EXPECT_FALSE(settings.ReadUnsigned("True", number) || settings.ReadBoolean("", truth));
    EXPECT_EQ(number, 1U) << "left as it is";
    for (const auto &[path, known] : {std::pair<std::string_view, bool>{"", true},
                                      {"\\driver config tool", true},
                                      {kPath, true},
                                      {"\\driver config", false},
                                      {R"(\driver config tool\Sheet\x)", false},
                                      {"driver config tool", false}}) {
        EXPECT_EQ(settings.Open(path), known) << path;
    }
}

TEST(Settings, HoldEachKindOfValue) {
    {
        const CInstalled<CMemorySettings> memory;
        ExpectValuesOfEachKind();
    }
    const CTemporaryDirectory directory;
    const CInstalled<CFileSettings> file("deep/below/settings");
    ExpectValuesOfEachKind();
    EXPECT_EQ(ReadBytes("deep/below/settings"),
              "; settings\n[\\driver config tool\\Sheet]\nlarge=4294967295\nnegative=-5\ntrue=1\n; end\n");
}

TEST(FileSettings, KeepAnyPathAndName) {
    const CTemporaryDirectory directory;
    const std::vector<std::string> words = {"",      " ",   "a b",  " a ",  "[x]",  "a=b",
                                            "; end", "%41", "\r\n", "\x80", "\xFF", std::string(1, 0),
                                            "\\a\\", "%",   "a;b"};
    {
        CFileSettings settings("s");
        for (const std::string &path : words) {
            settings.Write(path, "name", 1);
        }
        for (const std::string &name : words) {
            settings.Write("path", name, std::numeric_limits<std::int32_t>::min());
        }
    }
    const CFileSettings settings("s");
    for (const std::string &word : words) {
        std::int64_t value = 0;
        EXPECT_TRUE(settings.Read(word, "name", value) && value == 1) << word;
        EXPECT_TRUE(settings.Read("path", word, value) && value == std::numeric_limits<std::int32_t>::min()) << word;
    }
}

TEST(FileSettings, ADamagedFileReadsAsEmpty) {
    const CTemporaryDirectory directory;
    const std::string whole = "; settings\n[\\a]\nx=1\ny=-2\n[\\b]\nz=3\n; end\n";
    const auto reads = [](const std::string &content) {
        WriteBytes("s", content);
        const CFileSettings settings("s");
        std::int64_t value = 0;
        EXPECT_EQ(settings.HasPath(""), settings.Read("\\a", "x", value));
        return settings.HasPath("\\a");
    };
    EXPECT_TRUE(reads(whole));
    EXPECT_TRUE(reads(whole + "anything"));
    EXPECT_TRUE(reads("; settings\r\n\r\n[\\a]\r\nx=0\r\nx=1\r\n; end\r\n")) << "as an editor may leave it";
    for (std::size_t size = 0; size + 1 < whole.size(); ++size) {
        EXPECT_FALSE(reads(whole.substr(0, size))) << "cut after " << size;
    }
    for (const std::string_view line :
         {"x", "=", "x=", "x=a", "x=1 ", "x= 1", "x=4294967296", "x=-2147483649", "x=99999999999999999999", "x=1=2",
          "[x", "[x]]", "[%4]", "[%4G]", "x%=1", "; note", "\x80=1", "[]x=1"}) {
        EXPECT_FALSE(reads("; settings\n[\\a]\nx=1\n" + std::string(line) + "\n; end\n")) << line;
    }
    EXPECT_FALSE(reads("; settings\nx=1\n; end\n")) << "a value below no path";
    EXPECT_FALSE(reads(std::string(1000, '\0')));
    CFileSettings settings("s");
    settings.Write("\\a", "x", 7);
    std::int64_t value = 0;
    EXPECT_TRUE(CFileSettings("s").Read("\\a", "x", value));
    EXPECT_EQ(value, 7);
}

TEST(FileSettings, WritersKeepEachOthersValues) {
    const CTemporaryDirectory directory;
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int writer = 0; writer < 4; ++writer) {
        threads.emplace_back([writer] {
            CFileSettings settings("s");
            for (int number = 0; number < 8; ++number) {
                settings.Write("\\" + std::to_string(writer), std::to_string(number), number);
            }
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    const CFileSettings settings("s");
    for (int number = 0; number < 32; ++number) {
        std::int64_t value = -1;
        EXPECT_TRUE(settings.Read("\\" + std::to_string(number / 8), std::to_string(number % 8), value));
        EXPECT_EQ(value, number % 8);
    }
}

TEST(FileSettings, ReplaceTheFileOnlyForAChange) {
    const CTemporaryDirectory directory;
    WriteBytes("real", "");
    chmod("real", 0640);
    symlink("real", "link");
    const auto inode = [] {
        struct stat status = {};
        EXPECT_EQ(stat("real", &status), 0);
        EXPECT_EQ(status.st_mode & 0777U, 0640U);
        return status.st_ino;
    };
    CFileSettings settings("link");
    settings.Write("\\a", "x", 1);
    const ino_t written = inode();
    settings.Write("\\a", "x", 1);
    EXPECT_EQ(inode(), written);
    CFileSettings("real").Write("\\a", "x", 2);
    settings.Write("\\a", "x", 1);
    std::int64_t value = 0;
    EXPECT_TRUE(CFileSettings("link").Read("\\a", "x", value));
    EXPECT_EQ(value, 1) << "another writer changed it meanwhile";
    EXPECT_TRUE(std::filesystem::is_symlink("link"));
    std::size_t files = 0;
    for ([[maybe_unused]] const auto &entry : std::filesystem::directory_iterator(".")) {
        ++files;
    }
    EXPECT_EQ(files, 2U) << "no temporary file is left";
}

TEST(FileSettings, AValueThatCantBeWrittenLives) {
    const CTemporaryDirectory directory;
    WriteBytes("blocked", "");
    CFileSettings settings("blocked/s");
    settings.Write("\\a", "x", 1);
    std::int64_t value = 0;
    EXPECT_TRUE(settings.Read("\\a", "x", value));
    std::filesystem::remove("blocked");
    CFileSettings("blocked/s").Write("\\a", "z", 3);
    settings.Write("\\a", "y", 2);
    const CFileSettings written("blocked/s");
    EXPECT_TRUE(written.Read("\\a", "x", value) && written.Read("\\a", "y", value) && written.Read("\\a", "z", value))
        << "it is written with the next one";
    CFileSettings nowhere("");
    nowhere.Write("\\a", "x", 1);
    EXPECT_TRUE(nowhere.Read("\\a", "x", value));
}

TEST(FileSettings, DefaultPath) {
    const auto path = [](const char *configuration, const char *home) {
        configuration == nullptr ? unsetenv("XDG_CONFIG_HOME") : setenv("XDG_CONFIG_HOME", configuration, 1);
        setenv("HOME", home, 1);
        return CFileSettings::DefaultPath();
    };
    const std::string home = std::getenv("HOME") == nullptr ? "" : std::getenv("HOME");
    const char *const former = std::getenv("XDG_CONFIG_HOME");
    const std::string configuration = former == nullptr ? "" : former;
    EXPECT_EQ(path("/etc/xdg", "/home/a"), "/etc/xdg/kq_pdt/settings");
    EXPECT_EQ(path(nullptr, "/home/a"), "/home/a/.config/kq_pdt/settings");
    EXPECT_EQ(path("", "/home/a"), "/home/a/.config/kq_pdt/settings");
    EXPECT_EQ(path("relative", "/home/a"), "/home/a/.config/kq_pdt/settings");
    path(configuration.c_str(), home.c_str());
}

}  // namespace
