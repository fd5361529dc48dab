// A pen over the program's windows.
#include <QApplication>
#include <QScreen>
#include <QTabletEvent>
#include <QWidget>
#include <QWindow>

#include "app/studio/Studio.h"
#include "core/CoreImplementation.h"
#include "core/services/DataRoot.h"
#include "core/services/Preferences.h"
#include "support/TempFolder.h"
#include "support/WidgetApplication.h"
#include "unidevice/Control.h"
#include "unidevice/ControlChoice.h"
#include "unidevice/DriverManager.h"

namespace orv::tests {

TEST(Tablet, PensMoveControlsUntilTheyAreLifted) {
  const TempFolder folder;
  rws::core::DataRoot::Set(folder.path);
  auto studio = std::make_unique<app::Studio>(app::StudioOptions());
  std::string problem;
  ASSERT_TRUE(studio->Begin(problem)) << problem;
  QWindow* window = nullptr;
  for (QWidget* each : QApplication::topLevelWidgets())
    if (each->objectName() == "MainWindow") window = each->windowHandle();
  ASSERT_TRUE(window);
  auto& drivers = unidevice::DriverManager::instance();
  EXPECT_FALSE(drivers.findDevice("Tablet")) << "nobody has seen a pen";
  const QRect screens = window->screen()->virtualGeometry();
  const auto move = [&](QEvent::Type type, Qt::MouseButtons buttons) {
    // A quarter of the way across the window and down, and of the screens the other way round.
    const QPointF at(window->width() / 4.0, window->height() / 8.0);
    const QPointF global(screens.x() + screens.width() * 0.75,
                         screens.y() + screens.height() * 0.5);
    QTabletEvent event(type, at, global, QTabletEvent::Stylus, QTabletEvent::Pen, 0.625, 30, -15, 0,
                       -90, 0, Qt::NoModifier, 1, Qt::NoButton, buttons);
    QApplication::sendEvent(window, &event);
    drivers.updateAll();
  };
  const auto expect = [&](const char* type, std::initializer_list<double> values) {
    int index = 0;
    for (const double value : values) {
      const auto* control =
          drivers.findControl(unidevice::ControlChoice{"Tablet", type, index++}.tag());
      ASSERT_TRUE(control);
      EXPECT_DOUBLE_EQ(control->read(), value) << control->description;
    }
  };
  move(QEvent::TabletPress, Qt::LeftButton | Qt::MiddleButton);
  expect("Axis", {-0.5, 0.75, 0.5, 0.25, -0.5});
  expect("Slider", {0.625});
  expect("Button", {1.0, 0.0, 1.0, 1.0});
  studio->ScriptedCore().GetPreferences().penArea = rws::core::Preferences::PenArea::kTablet;
  move(QEvent::TabletMove, Qt::RightButton);
  expect("Axis", {0.5, 0.0, 0.5, 0.25, -0.5});
  expect("Slider", {0.0});  // it hovers, whatever pressure is told
  expect("Button", {0.0, 1.0, 0.0, 1.0});
  QEvent gone(QEvent::TabletLeaveProximity);
  QApplication::sendEvent(qApp, &gone);
  drivers.updateAll();
  expect("Axis", {0.5, 0.0, 0.5, 0.25, -0.5});
  expect("Slider", {0.0});
  expect("Button", {0.0, 0.0, 0.0, 0.0});
  studio.reset();
  EXPECT_FALSE(drivers.findDevice("Tablet") || drivers.findDevice("Keyboard"));
  rws::core::DataRoot::Set("");
}

}  // namespace orv::tests
