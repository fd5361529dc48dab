// Images of components.
#pragma once

#include <QIcon>
#include <QPixmap>
#include <QWidget>
#include <string>

#include "gui/Component.h"

namespace orv::gui::component::qt {

/// The first of the files that `path` may stand for (see Component::ResolvePath) which is an image;
/// null without. A file called "...-symbolic.png" is a mask that is drawn in the widget's text
/// colour. Loaded images are shared. A file "...@2x.png" beside it serves screens of double
/// density.
///
/// Where "folder/name.png" is no file, the set "folder/light/name_16.png", "_24", "_32", "_48" and
/// "_64", or that in "folder/dark", stands in for it: dark when the widget's palette is, and the
/// size that fits. Of a set a pixmap is `size` wide, in pixels at 96 dpi.
QPixmap LoadPixmap(const Component& component, const std::string& path, const QWidget& widget,
                   int size = 24);
/// The same in all sizes, and with a disabled look.
QIcon LoadIcon(const Component& component, const std::string& path, const QWidget& widget);

}  // namespace orv::gui::component::qt
