#pragma once

#include <ostream>
#include <string>
#include <string_view>

/// Standard output, which may be a full disk: writes in large pieces, checks each, and remembers why the first one
/// failed. What comes after a failure is dropped.
class COutput {
public:
    explicit COutput(std::ostream &stream) : stream_(stream) {}

    void Write(std::string_view text);
    /// Writes what is left. False if that or an earlier write failed, with the reason.
    bool Finish(std::string &reason);

private:
    void Flush();

    std::ostream &stream_;
    std::string pending_;
    std::string reason_;
    bool failed_ = false;
};
