#include "platform/base/save_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/base/code_page.h"
#include "platform/base/files.h"
#include "tests/support/temporary_directory.h"

namespace {

using namespace kq_base;

/// A file on a disk of limited room whose operations fail from a certain one on.
class CFaultyFile : public CSaveTarget {
public:
    explicit CFaultyFile(std::string content) : content_(std::move(content)) {}

    std::size_t room = SIZE_MAX;           ///< the bytes that the file may grow to
    int failing_operation = -1;            ///< counted from 0; -1: none fails
    bool later_ones_too = false;           ///< all after it fail as well
    std::size_t written_all_the_same = 0;  ///< the bytes that a failing write still puts

    int WriteAt(std::uint64_t offset, std::string_view bytes) override {
        synced_ = false;
        const bool fails = Fails();
        const auto start = static_cast<std::size_t>(offset);
        const std::string_view put = bytes.substr(0, fails ? written_all_the_same : room - start);
        content_.resize(std::max(content_.size(), start + put.size()));
        content_.replace(start, put.size(), put);
        return fails ? EIO : put.size() < bytes.size() ? ENOSPC : 0;
    }
    int Resize(std::uint64_t size) override {
        synced_ = false;
        if (Fails()) {
            return EIO;
        }
        content_.resize(static_cast<std::size_t>(size));
        return 0;
    }
    int Sync() override {
        if (Fails()) {
            return EIO;
        }
        synced_ = true;
        return 0;
    }

    const std::string &Content() const { return content_; }
    bool IsSynced() const { return synced_; }
    int Operations() const { return operations_; }

private:
    bool Fails() {
        const int operation = operations_++;
        return operation == failing_operation ||
               (later_ones_too && failing_operation >= 0 && operation > failing_operation);
    }

    std::string content_;
    bool synced_ = true;
    int operations_ = 0;
};

struct TTexts {
    std::string old_text;
    std::string new_text;
};

std::vector<TTexts> AllSizes() {
    std::vector<TTexts> all;
    for (const std::size_t old_size : {0U, 1U, 4U, 9U}) {
        for (const std::size_t new_size : {0U, 1U, 3U, 4U, 5U, 9U, 20U}) {
            all.push_back({std::string(old_size, 'o'), std::string(new_size, 'n')});
        }
    }
    return all;
}

TEST(Overwrite, OneFailureAnywhereLeavesTheOldContent) {
    for (const auto &[old_text, new_text] : AllSizes()) {
        CFaultyFile sound(old_text);
        EXPECT_EQ(Overwrite(sound, old_text, new_text).error, 0);
        EXPECT_EQ(sound.Content(), new_text);
        EXPECT_TRUE(sound.IsSynced());
        for (int operation = 0; operation < sound.Operations(); ++operation) {
            for (std::size_t written = 0; written <= new_text.size(); ++written) {
                CFaultyFile file(old_text);
                file.failing_operation = operation;
                file.written_all_the_same = written;
                const TSaveResult result = Overwrite(file, old_text, new_text);
                EXPECT_EQ(result.error, EIO);
                EXPECT_EQ(result.restore_error, 0);
                EXPECT_EQ(file.Content(), old_text) << new_text << " operation " << operation << " written " << written;
                EXPECT_TRUE(file.IsSynced());
            }
        }
    }
}

TEST(Overwrite, AFullDiskLeavesTheOldContentUntouched) {
    for (const auto &[old_text, new_text] : AllSizes()) {
        for (std::size_t room = old_text.size(); room < new_text.size(); ++room) {
            CFaultyFile file(old_text);
            file.room = room;
            const TSaveResult result = Overwrite(file, old_text, new_text);
            EXPECT_NE(result.error, 0) << room;
            EXPECT_EQ(result.restore_error, 0) << room;
            EXPECT_EQ(file.Content(), old_text) << new_text << " room " << room;
        }
    }
}

TEST(Overwrite, ALossIsNeverKeptSecret) {
    for (const auto &[old_text, new_text] : AllSizes()) {
        for (int operation = 0; operation < 6; ++operation) {
            CFaultyFile file(old_text);
            file.failing_operation = operation;
            file.later_ones_too = true;
            file.written_all_the_same = 1;
            const TSaveResult result = Overwrite(file, old_text, new_text);
            EXPECT_TRUE(file.Content() == (result.error == 0 ? new_text : old_text) || result.restore_error != 0);
        }
    }
}

/// Why a save fails, in UTF-8; "ok" if it doesn't.
std::string Save(const std::string &path, std::string_view content) {
    std::string error;
    return SaveFile(path, content, error) ? "ok" : ToUtf8(error);
}

struct stat StatusOf(const char *path) {
    struct stat status = {};
    EXPECT_EQ(stat(path, &status), 0);
    return status;
}

TEST(SaveFile, ReplacesTheContentAndNothingElseOfTheFile) {
    const CTemporaryDirectory directory;
    for (const auto &[old_text, new_text] : AllSizes()) {
        WriteBytes("file", old_text);
        chmod("file", 0640);
        const struct stat before = StatusOf("file");
        EXPECT_EQ(Save("file", new_text), "ok");
        EXPECT_EQ(ReadBytes("file"), new_text);
        const struct stat after = StatusOf("file");
        EXPECT_EQ(after.st_ino, before.st_ino);
        EXPECT_EQ(after.st_mode, before.st_mode);
    }
    EXPECT_EQ(Save("new", "x"), "ok");
    EXPECT_EQ(ReadBytes("new"), "x");
    EXPECT_EQ(Save("empty", ""), "ok");
    EXPECT_TRUE(std::filesystem::exists("empty"));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator("."), {}), 3) << "no temporary file is left";
}

TEST(SaveFile, AnEqualContentIsntWritten) {
    const CTemporaryDirectory directory;
    WriteBytes("file", "same");
    const timespec long_ago[2] = {{1000, 0}, {1000, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, "file", long_ago, 0), 0);
    EXPECT_EQ(Save("file", "same"), "ok");
    EXPECT_EQ(StatusOf("file").st_mtime, 1000);
    EXPECT_EQ(Save("file", "some"), "ok");
    EXPECT_NE(StatusOf("file").st_mtime, 1000);
}

TEST(SaveFile, FollowsLinks) {
    const CTemporaryDirectory directory;
    std::filesystem::create_directory("dir");
    WriteBytes("dir/target", "old");
    std::filesystem::create_symlink("dir/target", "link");
    std::filesystem::create_symlink("dir/made", "dangling");
    EXPECT_EQ(Save("link", "new"), "ok");
    EXPECT_EQ(ReadBytes("dir/target"), "new");
    EXPECT_EQ(Save("dangling", "new"), "ok");
    EXPECT_EQ(ReadBytes("dir/made"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink("link") && std::filesystem::is_symlink("dangling"));
}

TEST(SaveFile, SaysWhyItFailed) {
    const CTemporaryDirectory directory;
    std::filesystem::create_directory("dir");
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    EXPECT_EQ(Save("dir", "x"), "Je to adresář, ne soubor");
    EXPECT_EQ(Save("missing/file", "x"), "Adresář neexistuje");
    EXPECT_EQ(Save("pipe", "x"), "Na druhé straně roury nikdo není");
    EXPECT_EQ(Save("/dev/full", "x"), "Disk je plný");
    EXPECT_EQ(Save("/dev/null", "x"), "ok");
}

/// Lets the process write files up to a size only, as long as it lives.
class CSizeLimit {
public:
    explicit CSizeLimit(rlim_t size) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit = {size, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    CSizeLimit(const CSizeLimit &) = delete;
    CSizeLimit &operator=(const CSizeLimit &) = delete;
    ~CSizeLimit() { setrlimit(RLIMIT_FSIZE, &before_); }

private:
    rlimit before_ = {};
};

TEST(SaveFile, WithoutRoomTheOldFileStandsAndANewOneIsGone) {
    const CTemporaryDirectory directory;
    const std::string old_text(5000, 'o');
    WriteBytes("file", old_text);
    for (const rlim_t limit : {5000U, 5001U, 8191U, 9999U}) {
        std::string why_old;
        std::string why_new;
        {
            const CSizeLimit scarce(limit);
            why_old = Save("file", std::string(10000, 'n'));
            why_new = Save("new", std::string(10000, 'n'));
        }
        EXPECT_EQ(why_old, "Soubor je příliš velký");
        EXPECT_EQ(why_new, "Soubor je příliš velký");
        EXPECT_TRUE(ReadBytes("file") == old_text) << limit;
        EXPECT_FALSE(std::filesystem::exists("new"));
    }
    EXPECT_EQ(Save("file", std::string(10000, 'n')), "ok") << "the signal of the limit leaves no trace";
}

/// Without the rights of an administrator, who may do everything, as long as it lives.
class COrdinaryUser {
public:
    COrdinaryUser() : before_(geteuid()) { is_one_ = before_ != 0 || seteuid(65534) == 0; }
    COrdinaryUser(const COrdinaryUser &) = delete;
    COrdinaryUser &operator=(const COrdinaryUser &) = delete;
    ~COrdinaryUser() { EXPECT_EQ(seteuid(before_), 0); }
    bool IsOne() const { return is_one_; }

private:
    uid_t before_;
    bool is_one_;
};

TEST(SaveFile, WithoutTheRightNothingChanges) {
    const CTemporaryDirectory directory;
    WriteBytes("readable", "old");
    WriteBytes("closed", "old");
    chmod("readable", 0444);
    chmod("closed", 0);
    chmod(".", 0555);
    {
        const COrdinaryUser user;
        if (!user.IsOne()) {
            GTEST_SKIP();
        }
        std::string content;
        std::string error;
        EXPECT_EQ(Save("readable", "new"), "Přístup odepřen");
        EXPECT_EQ(Save("readable", "old"), "ok") << "nothing to write";
        EXPECT_EQ(Save("closed", "new"), "Přístup odepřen");
        EXPECT_EQ(Save("made", "new"), "Přístup odepřen");
        EXPECT_FALSE(CDisk::Current().Read("closed", content, error));
        EXPECT_EQ(ToUtf8(error), "Přístup odepřen");
    }
    chmod(".", 0755);
    EXPECT_EQ(ReadBytes("readable"), "old");
}

}  // namespace
