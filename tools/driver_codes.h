#pragma once

#include <cstdint>
#include <string>

/// What a code means that the driver doesn't know: one of the proxy's (kq_drv::TDriverCode), or just its number.
std::string ProxyCodeText(std::uint32_t code);
