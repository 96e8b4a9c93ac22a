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
        std::string_view name, pattern;
        bool matches;
    };
    for (const auto &[name, pattern, matches] : {TRow{"a.dll", "*.dll", true},
                                                 {"A.DLL", "*.dll", true},
                                                 {"a.dll", "*.DLL", true},
                                                 {".dll", "*.dll", true},
                                                 {"a.dll.bak", "*.dll", false},
                                                 {"a.dl", "*.dll", false},
                                                 {"adll", "*.dll", false},
                                                 {"a.dll.dll", "*.dll", true},
                                                 {"abc", "a?c", true},
                                                 {"ac", "a?c", false},
                                                 {"", "*", true},
                                                 {"", "", true},
                                                 {"a", "", false},
                                                 {"", "?", false},
                                                 {"aXbXc", "a*b*c", true},
                                                 {"aXbX", "a*b*c", false},
                                                 {"abab", "*ab", true},
                                                 {"ab", "ab**", true},
                                                 {"ČIDLO"_cp, "č*o"_cp, true},
                                                 {"cidlo", "č*o"_cp, false}}) {
        EXPECT_EQ(MatchesPattern(name, pattern), matches) << name << " " << pattern;
    }
    const std::string long_name(100000, 'a');
    EXPECT_FALSE(MatchesPattern(long_name, "*a*a*a*a*a*a*b")) << "must not take exponential time";
}

}  // namespace
