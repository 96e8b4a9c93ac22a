#include "desktop/peers/colors.h"

namespace kq_desktop {

QColor Mix(const QColor &color, const QColor &other, double share) {
    const auto part = [share](int from, int to) { return static_cast<int>(from + (to - from) * share); };
    return {part(color.red(), other.red()), part(color.green(), other.green()), part(color.blue(), other.blue())};
}

QColor Dim(const QColor &page, const QColor &text, double share) {
    constexpr int kBlack = 16;
    return Mix(page, text, page.lightness() < kBlack ? (1 + share) / 2 : share);
}

}  // namespace kq_desktop
