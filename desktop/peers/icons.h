#pragma once

#include <QIcon>

namespace kq_desktop {

/// A picture of the program by its name. What is neutral in it has the colour of the palette's texts at the time when
/// it is drawn, what means something by its colour keeps it; a disabled one is all dim. It is drawn for the pixels that
/// it has on the display.
QIcon LoadIcon(const QString &name);

}  // namespace kq_desktop
