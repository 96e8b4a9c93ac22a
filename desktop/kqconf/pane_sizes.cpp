#include "desktop/kqconf/pane_sizes.h"

#include <algorithm>

#include "configurator/kq_pdt.h"
#include "desktop/kqconf/settings_path.h"
#include "platform/view/settings.h"

namespace kq_desktop {

namespace {

constexpr const char *kMessages = "MessagesDepth";
constexpr const char *kChannels = "ChannelsDepth";
/// A pane below leaves at least this much to the one above, whatever the window's size is now.
constexpr std::int32_t kLeastUpper = 100;

void Restore(const CSettings &settings, const char *name, CSplitterPane &splitter) {
    std::int32_t lower = 0;
    if (settings.ReadInteger(name, lower) && lower > 0) {
        splitter.UserSplit(std::max(splitter.Rect().depth - lower, kLeastUpper));
    }
}

}  // namespace

void RestorePaneSizes(CConfiguratorWindow &window) {
    CSettings settings;
    if (settings.Open(kSettingsPath)) {
        Restore(settings, kMessages, window.WindowSplitter());
        Restore(settings, kChannels, window.SheetSplitter());
    }
}

void StorePaneSizes(CConfiguratorWindow &window) {
    CSettings settings;
    settings.Create(kSettingsPath);
    const auto lower = [](const CSplitterPane &splitter) { return splitter.Rect().depth - splitter.SplitPosition(); };
    settings.WriteInteger(kMessages, lower(window.WindowSplitter()));
    settings.WriteInteger(kChannels, lower(window.SheetSplitter()));
}

}  // namespace kq_desktop
