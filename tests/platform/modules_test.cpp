#include "platform/os/modules.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/support/temporary_directory.h"

namespace {

using namespace kq_os;

const std::string kModuleDir = KQ_MODULE_DIR "/";

struct TName {
    const char *name;
    bool exported;
};

constexpr TName kNames[] = {
    {"Version", true},         {"Initialised", true},
    {"WeakFunction", true},    {"ProtectedFunction", true},
    {"data_word", true},       {"Name10", true},
    {"Name53", true},          {"CallNeeded", true},
    {"HiddenFunction", false}, {"OnlyInNeeded", false},
    {"WeakImport", false},     {"Name54", false},
    {"version", false},        {"Versio", false},
    {"Version2", false},       {"", false},
    {"puts", false},           {"_ZN12_GLOBAL__N_110InitialiseEv", false},
};

TEST(Modules, GivesTheNamesThatTheModuleItselfExports) {
    for (const char *style : {"gnu", "sysv", "both"}) {
        const std::string path = kModuleDir + "kq_module_" + style + ".dll";
        for (const bool only_look : {true, false}) {
            HMODULE module = LoadLibraryExA(path, only_look ? kDontResolveReferences : 0);
            ASSERT_NE(module, nullptr) << path;
            for (const auto &[name, exported] : kNames) {
                EXPECT_EQ(GetProcAddress(module, name) != nullptr, exported) << path << " " << name << only_look;
                const bool function = exported && std::string_view(name) != "data_word";
                EXPECT_EQ(GetFunctionAddress(module, name) != nullptr, function) << path << " " << name << only_look;
            }
            EXPECT_EQ(GetProcAddress(module, nullptr), nullptr);
            EXPECT_EQ(GetModuleHandleA(path) == nullptr, only_look) << "to look loads nothing";
            EXPECT_TRUE(FreeLibrary(module));
        }
    }
    EXPECT_EQ(GetProcAddress(nullptr, "puts"), nullptr);
    EXPECT_FALSE(FreeLibrary(nullptr));
}

TEST(Modules, ALoadedModuleRuns) {
    HMODULE module = LoadLibraryA(kModuleDir + "KQ_MODULE_GNU.DLL");
    ASSERT_NE(module, nullptr) << "found in any case";
    const auto call = [module](const char *name) {
        return reinterpret_cast<int (*)()>(GetProcAddress(module, name))();
    };
    EXPECT_EQ(call("Initialised"), 1);
    EXPECT_EQ(call("CallNeeded"), 2);
    EXPECT_EQ(GetModuleHandleA("kq_module_gnu.dll"), module);
    EXPECT_EQ(GetModuleHandleA("Kq_Module_GNU.dll"), module);
    EXPECT_NE(GetModuleHandleA("kq_needed_library.dll"), nullptr) << "libkq_needed_library.so";
    EXPECT_EQ(GetModuleHandleA("kq_needed.dll"), nullptr);
    EXPECT_EQ(GetModuleHandleA("kq_module_sysv.dll"), nullptr);
    EXPECT_NE(GetModuleHandleA(""), nullptr);
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_EQ(GetModuleHandleA("kq_module_gnu.dll"), nullptr) << "asking for the handle counted no user";
}

TEST(Modules, WhatIsNoModuleHasNoHandle) {
    const CTemporaryDirectory directory;
    std::filesystem::create_directory("dir.dll");
    const std::string whole = ReadBytes(kModuleDir + "kq_module_gnu.dll");
    WriteBytes("empty.dll", "");
    WriteBytes("text.dll", "INPUT(libc.so)\n");
    WriteBytes("cut.dll", whole.substr(0, whole.size() / 2));
    WriteBytes("whole.dll", whole);
    ASSERT_EQ(mkfifo("pipe.dll", 0600), 0);
    for (const char *path : {"", "empty.dll", "text.dll", "cut.dll", "dir.dll", "pipe.dll", "./missing.dll",
                             "no_such_library.so", "/dev/zero", "whole.dll/x"}) {
        EXPECT_EQ(LoadLibraryA(path), nullptr) << path;
        EXPECT_EQ(LoadLibraryExA(path, kDontResolveReferences), nullptr) << path;
    }
    HMODULE module = LoadLibraryA("whole.dll");
    EXPECT_NE(module, nullptr) << "a bare name in the current directory";
    EXPECT_TRUE(FreeLibrary(module));
}

}  // namespace
