// Keys on their way to widgets.
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include "gui/InputSink.h"
#include "gui/component/qt/InputWatch.h"
#include "support/WidgetApplication.h"

namespace orv::tests {

namespace {

struct Heard : gui::InputSink {
  bool OnKey(int code, bool down) override {
    keys.emplace_back(code, down);
    return takesAll;
  }
  void OnActive(bool now) override { active = now; }
  void OnTyping(bool now) override { typing = now; }
  std::vector<std::pair<int, bool>> keys;
  bool takesAll = false, active = false, typing = false;
};

}  // namespace

TEST(InputWatch, TellsPlacesFocusAndTypingAndKeepsWhatIsTaken) {
  Heard heard;
  gui::component::qt::InputWatch watch(heard);
  QWidget window;
  QVBoxLayout layout(&window);
  QLineEdit field, shown;
  QPushButton button("&Go");
  shown.setReadOnly(true);
  for (QWidget* widget : {static_cast<QWidget*>(&button), static_cast<QWidget*>(&field),
                          static_cast<QWidget*>(&shown)})
    layout.addWidget(widget);
  window.show();
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  EXPECT_TRUE(heard.active);
  button.setFocus();
  EXPECT_FALSE(heard.typing);
  field.setFocus();
  EXPECT_TRUE(heard.typing);
  gui::component::qt::InputWatch::LeaveTextField();
  EXPECT_FALSE(heard.typing);
  shown.setFocus();
  EXPECT_FALSE(heard.typing) << "nothing can be typed there";
  button.setFocus();
  QMenu menu;
  menu.addAction("Entry");
  menu.popup(window.pos());
  QTest::qWait(20);
  EXPECT_TRUE(heard.typing) << "keys choose in a menu";
  menu.close();
  QTest::qWait(20);
  EXPECT_FALSE(heard.typing);

  int clicks = 0;
  QObject::connect(&button, &QPushButton::clicked, [&clicks] { ++clicks; });
  const auto last = [&] { return heard.keys.empty() ? std::pair(0, false) : heard.keys.back(); };
  QWindow* native = window.windowHandle();
  for (const bool taken : {false, true, false}) {
    heard.takesAll = taken;
    const int before = clicks;
    QTest::keyPress(native, Qt::Key_Space);
    EXPECT_EQ(last(), std::pair(57, true));
    heard.takesAll = false;  // what was taken is kept to its end
    QTest::keyRelease(native, Qt::Key_Space);
    EXPECT_EQ(last(), std::pair(57, false));
    EXPECT_EQ(clicks, before + !taken);
  }
  heard.takesAll = true;
  QTest::keyClick(native, Qt::Key_G, Qt::AltModifier);
  EXPECT_EQ(clicks, 2) << "a shortcut is no way round";
  QTest::keyClick(native, Qt::Key_7, Qt::KeypadModifier);
  EXPECT_EQ(last(), std::pair(71, false));
  // By its place: what a German keyboard has for Z stands where others have Y.
  QKeyEvent german(QEvent::KeyPress, Qt::Key_Z, Qt::NoModifier, 29, 0, 0, "z");
  EXPECT_EQ(gui::component::qt::KeyCodeOf(german), 21);
}

}  // namespace orv::tests
