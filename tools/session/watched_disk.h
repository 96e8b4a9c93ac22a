#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/base/files.h"
#include "tools/session/event_recorder.h"

/// The disk as a session sees it while this object lives: the one before, but saves are recorded, and saves and loads
/// of some paths fail.
class CWatchedDisk final : public kq_base::CDisk {
public:
    explicit CWatchedDisk(CEventRecorder &recorder) : disk_(Current()), recorder_(recorder) { Replace(this); }
    ~CWatchedDisk() override;
    CWatchedDisk(const CWatchedDisk &) = delete;
    CWatchedDisk &operator=(const CWatchedDisk &) = delete;

    /// From now on saves, or loads, of a path fail with a text; an empty text ends that.
    void FailSaves(std::string_view path, std::string_view text) { Fail(failing_saves_, path, text); }
    void FailLoads(std::string_view path, std::string_view text) { Fail(failing_loads_, path, text); }
    /// The disk before.
    kq_base::CDisk &Behind() { return disk_; }

    bool Read(std::string_view path, std::string &content, std::string &error) override;
    bool Save(std::string_view path, std::string_view content, std::string &error) override;
    bool Delete(std::string_view path, std::string &error) override { return disk_.Delete(path, error); }
    bool Exists(std::string_view path) override { return disk_.Exists(path); }
    bool IsDirectory(std::string_view path) override { return disk_.IsDirectory(path); }
    bool List(std::string_view directory, std::string_view pattern, std::vector<std::string> &names,
              std::string &error) override {
        return disk_.List(directory, pattern, names, error);
    }

private:
    struct TFailure {
        std::string path;
        std::string text;
    };
    using TFailures = std::vector<TFailure>;

    static void Fail(TFailures &failures, std::string_view path, std::string_view text);
    /// Null if nothing fails for the path.
    static const TFailure *Find(const TFailures &failures, std::string_view path);

    kq_base::CDisk &disk_;
    CEventRecorder &recorder_;
    TFailures failing_saves_;
    TFailures failing_loads_;
};
