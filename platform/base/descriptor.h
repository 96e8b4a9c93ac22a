#pragma once

#include <unistd.h>

namespace kq_base {

/// Owns an open file descriptor of the operating system, or none (below 0).
class CDescriptor {
public:
    explicit CDescriptor(int number) : number_(number) {}
    CDescriptor(const CDescriptor &) = delete;
    CDescriptor &operator=(const CDescriptor &) = delete;
    ~CDescriptor() {
        if (IsOpen()) {
            close(number_);
        }
    }

    bool IsOpen() const { return number_ >= 0; }
    int Number() const { return number_; }

private:
    int number_;
};

}  // namespace kq_base
