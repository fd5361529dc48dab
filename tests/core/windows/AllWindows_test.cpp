#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include "support/WindowsTest.h"

namespace orv::tests {

using rws::core::windows::Window;
using rws::core::windows::WindowKind;

using AllWindows = WindowsTest;

TEST_F(AllWindows, AreReachedAndHeardWithoutAMouse) {
  Begin();
  const int car = Add("4WheelerExt", "Car");
  core.SetSelection({car});
  for (const WindowKind kind :
       {WindowKind::kMain, WindowKind::kDevices, WindowKind::kPreferences, WindowKind::kLog,
        WindowKind::kHotKeys, WindowKind::kWhy, WindowKind::kAbout, WindowKind::kToolConfig,
        WindowKind::kInputConfig}) {
    Window* window = windows->Open(kind, kind >= WindowKind::kToolConfig ? car : 0);
    if (!window) continue;  // this build has none of this kind
    QApplication::processEvents();
    SCOPED_TRACE(window->name());
    QWidget& top = *window->GetWidget()->window();
    EXPECT_EQ(Unnamed(top), std::vector<std::string>{});
    // Tab comes back to where it began and has been everywhere.
    std::set<QWidget*> round;
    QWidget* at = &top;
    do round.insert(at);
    while ((at = at->nextInFocusChain()) != &top);
    for (QWidget* widget : top.findChildren<QWidget*>()) {
      const bool reachable = widget->isVisible() && (widget->focusPolicy() & Qt::TabFocus);
      if (!reachable || widget->window() != &top) continue;
      EXPECT_EQ(round.count(widget), 1u) << widget->objectName().toStdString();
    }
    for (QMenuBar* bar : top.findChildren<QMenuBar*>())
      for (QAction* menu : bar->actions()) {
        EXPECT_NE(menu->text().indexOf('&'), -1) << menu->text().toStdString();
        if (!menu->menu()) continue;
        std::set<QChar> letters;
        for (QAction* entry : menu->menu()->actions()) {
          const int mark = entry->text().indexOf('&');
          if (entry->isSeparator() || !entry->isVisible()) continue;
          EXPECT_NE(mark, -1) << entry->text().toStdString();
          EXPECT_TRUE(letters.insert(entry->text()[mark + 1].toLower()).second)
              << entry->text().toStdString();
        }
      }
  }
}

}  // namespace orv::tests
