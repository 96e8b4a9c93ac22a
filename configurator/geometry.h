#pragma once

#include "platform/view/window.h"

namespace kq_pdt {

/// Who opens a window: a caller that names the files, or a host with a callback.
enum class TOpener : std::uint8_t { kCaller, kHost };

struct TGeometry {
    TRect rect;
    bool maximized = false;
};

/// The path of the configurator's settings.
std::string ConfiguratorSettingsPath();
/// The position and size that the last window had, if all of it is stored and the window would lie within the work
/// area; otherwise 700 by 500 in its middle. Under a host it must also lie off the area's left and upper edges, and
/// whether it was maximised must be stored; without a host a window never starts maximised.
TGeometry ReadGeometry(TOpener opener);
/// Stores them for the next window. The rectangle of a maximised one isn't stored.
void StoreGeometry(const CWindow &window);
/// An area of a size over the middle of a window, in the coordinates of what the window lies in.
TRect CentredOver(const CWindow &window, std::int32_t width, std::int32_t depth);

}  // namespace kq_pdt
