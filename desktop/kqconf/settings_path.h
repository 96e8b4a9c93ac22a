#pragma once

namespace kq_desktop {

/// Where the program's own settings are, beside those of the configurator.
inline constexpr const char *kSettingsPath = "\\kqconf";

}  // namespace kq_desktop
