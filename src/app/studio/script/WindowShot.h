// A picture of a window as a user sees it.
#pragma once

#include <QPixmap>

class QWidget;

namespace orv::app {

/// With its menus and lists that have popped up over it; where these stick out of it the picture is
/// larger than the window, and what is beside both is see-through.
QPixmap GrabWithPopups(QWidget& window);

}  // namespace orv::app
