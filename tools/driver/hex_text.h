#pragma once

#include <cstdint>
#include <string>

/// A number in the form 0x00030000, in which versions and codes of modules are read.
std::string HexText(std::uint32_t number);
