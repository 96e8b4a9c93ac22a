#include "platform/base/files.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <thread>

#include "platform/base/code_page.h"
#include "platform/base/file_system_name.h"
#include "tests/support/temporary_directory.h"

namespace {

using namespace kq_base;
using namespace kq_base::literals;

/// A name in code page 1250 on the disk, which is no valid UTF-8.
constexpr const char *kRawName =
    "\xE8"
    "raw.dll";

CDisk &Disk() { return CDisk::Current(); }

/// Why a read fails, in UTF-8; "ok" if it doesn't.
std::string WhyNoRead(std::string_view path) {
    std::string content;
    std::string error;
    return Disk().Read(path, content, error) ? "ok" : ToUtf8(error);
}

TEST(Files, AFileIsFoundUnderItsNameInEitherCodingThenInAnyCase) {
    const CTemporaryDirectory directory;
    std::filesystem::create_directories("složka/Sub");
    std::filesystem::create_directory("\xE8");
    const char *const names[] = {"plain.txt",         "Case.Txt",   "čidlo.dll", kRawName, "日本.dll",
                                 "složka/Řídicí.par", "\xE8/x.par", "two.A",     "two.a",  "TWO.a"};
    for (const char *name : names) {
        WriteBytes(name, name);
    }
    struct TRow {
        const char *found;  ///< a name of the list, or the path under which the file would be made
        std::vector<std::string_view> paths;
    };
    for (const auto &[found, paths] : {
             TRow{"plain.txt", {"plain.txt", "PLAIN.TXT", std::string_view("plain.txt\0x", 11)}},
             {"Case.Txt", {"case.txt"}},
             {"two.a", {"two.a"}},
             {"two.A", {"two.A"}},
             {"TWO.a", {"Two.A"}},
             {"čidlo.dll", {"čidlo.dll", "ČIDLO.DLL"}},
             {kRawName, {kRawName}},
             {"日本.dll", {"日本.dll", "日本.DLL"}},
             {"složka/Řídicí.par", {"složka\\řídicí.PAR", "složka/Řídicí.par", "složka\\Řídicí.par"}},
             {"nový.par", {"nový.par"}},
             {"složka/nový.par", {"složka\\nový.par"}},
             {"\xE8/x.par", {"\xE8/X.par"}},
             {"SLOŽKA/x", {"SLOŽKA/x"}},
             {"plain.tx", {"plain.tx"}},
             {"./sLUB/x", {".\\sLUB/x"}},
             {"", {""}},
         }) {
        for (const std::string_view path : paths) {
            std::string in_code_page;
            for (const std::string_view coded : {path, FromUtf8(path, in_code_page) ? in_code_page : path}) {
                EXPECT_EQ(LocateFile(coded), found);
                EXPECT_EQ(Disk().Exists(coded), ReadBytes(found) == found && *found != '\0') << found;
            }
        }
    }
    for (const char *name : names) {
        EXPECT_EQ(LocateFile(FromFileSystem(name)), name) << "the library's form of a name leads back to it";
    }
    EXPECT_EQ(FromFileSystem("čidlo.dll"), "čidlo.dll"_cp);
    EXPECT_EQ(FromFileSystem("ÄŤ"), "ÄŤ") << "in code page 1250 it would read as another name in UTF-8";
}

TEST(Files, ListsTheFilesThatMatchInAlphabeticalOrder) {
    const CTemporaryDirectory directory;
    std::filesystem::create_directory("dir.dll");
    for (const char *name : {"b.dll", "A.DLL", "c.Dll", "č.dll", "a.txt", "back\\slash.dll", "日.dll"}) {
        WriteBytes(name, "");
    }
    std::filesystem::create_symlink("a.txt", "link.dll");
    std::filesystem::create_symlink("nowhere", "dangling.dll");
    std::vector<std::string> names;
    std::string error;
    ASSERT_TRUE(Disk().List("", "*.dll", names, error));
    EXPECT_EQ(names,
              (std::vector<std::string>{"A.DLL", "b.dll", "c.Dll", "link.dll", "日.dll", std::string("č.dll"_cp)}));
    ASSERT_TRUE(Disk().List("dir.dll", "*", names, error));
    EXPECT_TRUE(names.empty());
    EXPECT_FALSE(Disk().List("missing", "*", names, error));
    EXPECT_EQ(ToUtf8(error), "Adresář neexistuje");
    EXPECT_FALSE(Disk().List("b.dll", "*", names, error));
    EXPECT_EQ(ToUtf8(error), "Část cesty není adresář");
}

TEST(Files, ReadsAFileAsItStandsWhateverItsSize) {
    const CTemporaryDirectory directory;
    for (const std::size_t size : {0U, 1U, 4095U, 4096U, 4097U, 65535U, 65536U, 65537U, 300000U}) {
        std::string bytes(size, 'a');
        for (std::size_t at = 0; at < size; ++at) {
            bytes[at] = static_cast<char>(at * 7 + at / 256);
        }
        WriteBytes("file", bytes);
        std::string content = "before";
        std::string error;
        ASSERT_TRUE(Disk().Read("file", content, error));
        EXPECT_TRUE(content == bytes) << size;
    }
    std::string content;
    std::string error;
    ASSERT_TRUE(Disk().Read("/proc/self/status", content, error)) << "a file whose size is given as 0";
    EXPECT_NE(content.find("VmPeak"), std::string::npos);
}

TEST(Files, SaysWhyAFileCantBeRead) {
    const CTemporaryDirectory directory;
    std::filesystem::create_directory("dir");
    WriteBytes("file", "x");
    WriteBytes("huge", "");
    ASSERT_EQ(truncate64("huge", 0x100000000), 0);
    std::filesystem::create_symlink("ring", "ring");
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    EXPECT_EQ(WhyNoRead("missing"), "Soubor neexistuje");
    EXPECT_EQ(WhyNoRead(""), "Soubor neexistuje");
    EXPECT_EQ(WhyNoRead("dir"), "Je to adresář, ne soubor");
    EXPECT_EQ(WhyNoRead("file/x"), "Část cesty není adresář");
    EXPECT_EQ(WhyNoRead("ring"), "Symbolické odkazy tvoří kruh");
    EXPECT_EQ(WhyNoRead(std::string(300, 'n')), "Název souboru je příliš dlouhý");
    EXPECT_EQ(WhyNoRead("pipe"), "Na druhé straně roury nikdo není");
    EXPECT_EQ(WhyNoRead("huge"), "Soubor je příliš velký");
    EXPECT_EQ(WhyNoRead("/dev/zero"), "Soubor je příliš velký") << "a device that never ends";
    EXPECT_EQ(WhyNoRead("/dev/null"), "ok");
}

TEST(Files, WaitsForWhatAPipeStillBrings) {
    const CTemporaryDirectory directory;
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    const int both_ends = open("pipe", O_RDWR);
    ASSERT_GE(both_ends, 0);
    const std::string sent(200000, 'p');
    std::thread writer([&sent, both_ends] {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        const int end = open("pipe", O_WRONLY);
        close(both_ends);
        for (std::size_t at = 0; at < sent.size();) {
            at += static_cast<std::size_t>(write(end, sent.data() + at, sent.size() - at));
        }
        close(end);
    });
    std::string content;
    std::string error;
    EXPECT_TRUE(Disk().Read("pipe", content, error)) << error;
    writer.join();
    EXPECT_TRUE(content == sent);
}

TEST(Files, DeletesFilesOnly) {
    const CTemporaryDirectory directory;
    std::filesystem::create_directory("dir");
    WriteBytes("File.tmp", "x");
    std::string error;
    EXPECT_TRUE(Disk().IsDirectory("dir"));
    EXPECT_FALSE(Disk().IsDirectory("File.tmp"));
    EXPECT_TRUE(Disk().Delete("FILE.TMP", error));
    EXPECT_FALSE(Disk().Exists("File.tmp"));
    EXPECT_FALSE(Disk().Delete("File.tmp", error));
    EXPECT_EQ(ToUtf8(error), "Soubor neexistuje");
    EXPECT_FALSE(Disk().Delete("dir", error));
    EXPECT_EQ(ToUtf8(error), "Je to adresář, ne soubor");
}

}  // namespace
