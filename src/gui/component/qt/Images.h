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
QPixmap LoadPixmap(const Component& component, const std::string& path, const QWidget& widget);
/// The same with a disabled look where it is a mask.
QIcon LoadIcon(const Component& component, const std::string& path, const QWidget& widget);

}  // namespace orv::gui::component::qt
