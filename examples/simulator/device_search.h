#pragma once

#include <cstdint>
#include <string_view>

#include "devices.h"

namespace simulator {

/// Takes what the search finds, in either text width.
class CSearchListener {
public:
    virtual ~CSearchListener() = default;
    virtual void AddItem(std::uint32_t parent, std::uint32_t key, std::string_view name, TItemFlags flags) = 0;
    /// Three lines that replace those before.
    virtual void Progress(std::string_view line1, std::string_view line2, std::string_view line3) = 0;
};

/// How long an address takes to answer, in milliseconds.
inline constexpr std::uint32_t kAnswerTime = 300;

/// Goes through all addresses. Ends early once the cancel event, which may be absent, is signalled. True if a device
/// was found.
bool SearchDevices(CSearchListener &listener, void *cancel);

}  // namespace simulator
