#pragma once

#include <string>
#include <vector>

#include "devices.h"

namespace simulator {

/// Appends a section for each device to a parameter file, with numbers of signals and channels that are free there. The
/// file may hold mistakes; it needs only be readable. Devices for which no number is left are
/// named in a comment at the end, since the host takes nothing else. False if the file can't be read or written.
bool AppendDevices(const std::string &path, const std::vector<const TDevice *> &devices);

}  // namespace simulator
