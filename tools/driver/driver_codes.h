#pragma once

#include <cstdint>
#include <string>

/// What one of the proxy's codes (kq_drv::TDriverCode) means; empty for any other, which is the driver's.
std::string ProxyCodeText(std::uint32_t code);
