#pragma once

#include <cstdint>

#include "platform/base/export.h"

namespace kq_drv {

/// Looks at a driver module without making a driver in it. The module is the caller's, loaded before and freed after;
/// its handle is the one that dlopen gives. Names are looked up anew by every operation. A copy looks at the same
/// module.
///
/// The operations that call the module need one that is loaded and passed Init; without that they answer false.
/// Texts go to a caller's buffer, given by its highest valid index and its address, and are cut at the bound.
class KQ_API CDriverComponentDLLHelper {
public:
    /// Tests whether the module exports, in either text width, what the other operations call: GetDriverInfo, Version
    /// and Check, in this order. False names the first that is missing; the text ends where the module's name would
    /// follow.
    bool Init(std::uint32_t error_high, char *error, void *module);

    /// The module's version number. Untouched on false.
    bool Version(std::uint32_t &version) const;
    /// What the module says about itself, up to 255 characters.
    bool GetDriverDescription(std::uint32_t high, char *text) const;
    /// Does the module agree to run under this host? What the three numbers mean is between the two. False gives the
    /// module's reason, up to 255 characters.
    bool AbleToRunInThisKQ(std::uint32_t error_high, char *error, std::uint32_t a, std::uint32_t b,
                           std::uint32_t c) const;
    /// 1 if the module's texts are 16 bits wide, else 0: only a module without Version is wide. Untouched on false.
    bool IsUNICODE(std::uint8_t &wide) const;
    /// Can the driver list its channels? If needs_init3 isn't 0, a driver that wants its parameters before it can do
    /// anything doesn't count. Works without Init having passed.
    bool AbleToEnumerateChannels(std::uint8_t needs_init3) const;

private:
    enum class TState : std::uint32_t { kNew, kRefused, kPassed };

    void *Find(const char *name) const;
    /// Has the module passed, and can it be run?
    bool MayCall() const;

    TState state_ = TState::kNew;
    void *module_ = nullptr;
};

}  // namespace kq_drv
