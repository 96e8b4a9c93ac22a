#include "platform/base/paths.h"

#include <gtest/gtest.h>

#include "platform/base/code_page.h"

namespace {

using namespace kq_base;
using namespace kq_base::literals;

TEST(Paths, Parts) {
    struct TRow {
        std::string_view path, directory, name, with_extension;
    };
    for (const auto &[path, directory, name, with_extension] : {
             TRow{"a.dll", "", "a.dll", "a.pdt"},
             {"dir/a.dll", "dir", "a.dll", "dir/a.pdt"},
             {"C:\\dir\\a.dll", "C:\\dir", "a.dll", "C:\\dir\\a.pdt"},
             {"dir\\sub/a.b.dll", "dir\\sub", "a.b.dll", "dir\\sub/a.b.pdt"},
             {"dir.d/a", "dir.d", "a", "dir.d/a.pdt"},
             {"dir.d\\a", "dir.d", "a", "dir.d\\a.pdt"},
             {"a.", "", "a.", "a.pdt"},
             {"/a.x", "/", "a.x", "/a.pdt"},
             {"dir/", "dir", "", "dir/.pdt"},
             {"", "", "", ".pdt"},
         }) {
        EXPECT_EQ(DirectoryPart(path), directory) << path;
        EXPECT_EQ(FileNamePart(path), name) << path;
        EXPECT_EQ(ChangeExtension(path, "pdt"), with_extension) << path;
    }
}

TEST(Paths, Join) {
    struct TRow {
        std::string_view directory, name, path;
    };
    for (const auto &[directory, name, path] :
         {TRow{"", "a", "a"}, {"d", "a", "d/a"}, {"d/", "a", "d/a"}, {"d\\", "a", "d\\a"}, {"/", "a", "/a"}}) {
        EXPECT_EQ(JoinPath(directory, name), path);
    }
}

TEST(Paths, Patterns) {
    struct TRow {
        std::string_view pattern;
        std::vector<std::string_view> matching, others;
    };
    for (const auto &[pattern, matching, others] :
         {TRow{"*.dll", {"a.dll", "A.DLL", ".dll", "a.dll.dll"}, {"a.dll.bak", "a.dl", "adll"}},
          {"*.DLL", {"a.dll"}, {"a.dl"}},
          {"a?c", {"abc"}, {"ac"}},
          {"*", {""}, {}},
          {"", {""}, {"a"}},
          {"?", {"a"}, {""}},
          {"a*b*c", {"aXbXc"}, {"aXbX"}},
          {"*ab", {"abab"}, {"aba"}},
          {"ab**", {"ab"}, {"a"}}}) {
        for (const std::string_view name : matching) {
            EXPECT_TRUE(MatchesPattern(name, pattern)) << name << " " << pattern;
        }
        for (const std::string_view name : others) {
            EXPECT_FALSE(MatchesPattern(name, pattern)) << name << " " << pattern;
        }
    }
    EXPECT_TRUE(MatchesPattern("ČIDLO"_cp, "č*o"_cp));
    EXPECT_FALSE(MatchesPattern("cidlo", "č*o"_cp));
    const std::string long_name(100000, 'a');
    EXPECT_FALSE(MatchesPattern(long_name, "*a*a*a*a*a*a*b")) << "must not take exponential time";
}

}  // namespace
