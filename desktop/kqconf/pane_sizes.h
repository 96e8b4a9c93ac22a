#pragma once

class CConfiguratorWindow;

namespace kq_desktop {

/// Gives the panes of channels and messages the heights that the person gave them last time.
void RestorePaneSizes(CConfiguratorWindow &window);
/// Keeps their heights for the next time.
void StorePaneSizes(CConfiguratorWindow &window);

}  // namespace kq_desktop
