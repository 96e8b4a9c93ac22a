// What authors of 8-bit modules get for opening files, beside the way in which the library finds the same file.

#include "driver/kq_driver_path.h"

#include <gtest/gtest.h>

#include <array>
#include <random>

#include "platform/base/file_system_name.h"

namespace {

std::string FileSystemPath(const std::string &path, std::size_t size = KQ_FILE_SYSTEM_PATH_SIZE) {
    std::array<char, KQ_FILE_SYSTEM_PATH_SIZE + 1> room;
    room.fill('!');
    const int done = KQFileSystemPath(path.c_str(), room.data(), size);
    EXPECT_EQ(room[size], '!') << "nothing is written beyond the room";
    EXPECT_EQ(done == 0, room[0] == 0 && !path.empty());
    return room.data();
}

TEST(DriverPath, IsTheOneThatTheLibraryOpens) {
    for (int byte = 1; byte < 256; ++byte) {
        const std::string path = std::string("d\x9E/x") + static_cast<char>(byte) + "\\n\xC5\x99.par";
        EXPECT_EQ(FileSystemPath(path), kq_base::LocateFile(path)) << byte;
    }
    std::mt19937 random(4);
    for (int round = 0; round < 2000; ++round) {
        std::string path = "no such folder/";
        for (int count = 0; count < 4; ++count) {
            constexpr std::string_view kBytes = "a\x80\x8F\x90\x9F\xA0\xBF\xC1\xC2\xE0\xED\xEF\xF0\xF4\xF5\xFF";
            path += kBytes[random() % kBytes.size()];
        }
        EXPECT_EQ(FileSystemPath(path), kq_base::LocateFile(path));
    }
}

TEST(DriverPath, LongestPathsFit) {
    const std::string longest(259, '\x80');  // the euro sign takes three bytes
    EXPECT_EQ(FileSystemPath(longest).size(), 3U * 259);
    EXPECT_EQ(FileSystemPath(longest, KQ_FILE_SYSTEM_PATH_SIZE - 1), "");
    EXPECT_EQ(FileSystemPath("a/b", 4), "a/b");
    EXPECT_EQ(FileSystemPath("a/b", 3), "");
    EXPECT_EQ(FileSystemPath("", 1), "");
}

}  // namespace
