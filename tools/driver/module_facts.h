#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// What a driver module is.
struct TModuleFacts {
    bool usable = false;
    std::string message;                   ///< why it isn't usable; UTF-8
    std::optional<std::uint32_t> version;  ///< only of a usable module, like the next
    std::optional<std::string> description;
    bool wide = false;
    std::uint32_t generation = 0;  ///< the highest of which it exports an entry, 0 without any
    bool enumerates_channels = false;
    bool searches_devices = false;
    std::vector<std::string> missing;  ///< a name, or names of which one would do, parted by ", "
};

/// Looks at a module: at its names alone first, and only if none is missing it is loaded and asked for its version and
/// description.
TModuleFacts LookAtModule(const std::string &name);
