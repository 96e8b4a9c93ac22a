#include "configurator/geometry.h"

#include "platform/view/settings.h"

namespace kq_pdt {

namespace {

constexpr std::int32_t kWidth = 700;
constexpr std::int32_t kDepth = 500;
/// What has to lie within the work area of a stored position.
constexpr std::int32_t kVisibleWidth = 200;
constexpr std::int32_t kVisibleDepth = 100;

/// Every value counts, in this order: the first that is missing ends it.
bool ReadStored(TOpener opener, const TRect &work_area, TGeometry &geometry) {
    CSettings settings;
    TRect rect;
    const bool host = opener == TOpener::kHost;
    const bool read = settings.Open(ConfiguratorSettingsPath()) &&
                      (!host || settings.ReadBoolean("WinMax", geometry.maximized)) &&
                      settings.ReadInteger("WinX", rect.x) && settings.ReadInteger("WinY", rect.y) &&
                      settings.ReadInteger("WinW", rect.width) && settings.ReadInteger("WinD", rect.depth);
    const bool fits = rect.x < work_area.width - kVisibleWidth && rect.y < work_area.depth - kVisibleDepth &&
                      (!host || (rect.x > 0 && rect.y > 0));
    if (read && fits) {
        geometry.rect = rect;
    }
    return read && fits;
}

}  // namespace

std::string ConfiguratorSettingsPath() { return CSettings::GetRegistryIniPath(4) + "\\driver config tool"; }

TGeometry ReadGeometry(TOpener opener) {
    TRect work_area;
    GetWorkArea(work_area.width, work_area.depth);
    TGeometry geometry;
    if (!ReadStored(opener, work_area, geometry)) {
        geometry.rect = {(work_area.width - kWidth) / 2, (work_area.depth - kDepth) / 2, kWidth, kDepth};
    }
    return geometry;
}

TRect CentredOver(const CWindow &window, std::int32_t width, std::int32_t depth) {
    const TRect &area = window.Rect();
    return {area.x + area.width / 2 - width / 2, area.y + area.depth / 2 - depth / 2, width, depth};
}

void StoreGeometry(const CWindow &window) {
    CSettings settings;
    settings.Create(ConfiguratorSettingsPath());
    settings.WriteBoolean("WinMax", window.IsMaximized());
    if (!window.IsMaximized()) {
        settings.WriteInteger("WinX", window.Rect().x);
        settings.WriteInteger("WinY", window.Rect().y);
        settings.WriteInteger("WinW", window.Rect().width);
        settings.WriteInteger("WinD", window.Rect().depth);
    }
}

}  // namespace kq_pdt
