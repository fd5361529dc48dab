// What a rig's panel does to the rig's values: nothing, unless its user does.
#include <QLocale>
#include <QtTest/QTest>

#include "core/config/ConfigTree.h"
#include "core/instances/InstanceReference.h"
#include "core/tools/Tool.h"
#include "core/windows/ToolConfigIds.h"
#include "gui/component/qt/SliderLine.h"
#include "gui/component/qt/SpinField.h"
#include "support/GermanLocale.h"
#include "support/WindowsTest.h"
#include "util/NumberText.h"

namespace orv::tests {

namespace {

using namespace rws::core;
using namespace rws::core::windows;
using gui::component::qt::SliderLine;
using gui::component::qt::SpinField;

class Values : public WindowsTest {
 protected:
  std::size_t Steps() { return session.GetAdaptor().GetUndo().entryNames().size(); }
  QWidget& Show(int row) {
    QWidget& panel = *windows->Open(WindowKind::kToolConfig, row)->GetWidget()->window();
    QApplication::processEvents();
    return panel;
  }
  /// Numbers to the bit, in hexadecimal, and texts.
  static std::vector<std::string> ValuesOf(Instance& rig) {
    std::vector<std::string> values;
    for (const ConfigElement* element : rig.GetConfig().GetElements()) {
      if (!element->HasValue() || element->IsReadOnly()) continue;
      char number[40];
      std::snprintf(number, sizeof number, "%a ", element->GetNumber());
      values.push_back(element->GetLabel() + "=" + number + element->GetValueText());
    }
    return values;
  }
  /// The visible widget of that class that is heard as `label`.
  template <class Widget>
  static Widget* Find(QWidget& panel, const std::string& label) {
    for (QWidget* widget : panel.findChildren<QWidget*>())
      if (auto* found = dynamic_cast<Widget*>(widget);
          found && found->accessibleName().toStdString() == label)
        return found;
    return nullptr;
  }
};

}  // namespace

TEST_F(Values, StayToTheBitWhenOnlyLookedAt) {
  Begin().GetViews().messageBox = [](auto&&...) { return int(rws::kAnswerCancel); };
  int fields = 0;
  for (Tool* tool : core.GetLibrary().GetTools()) {
    Instance* rig = core.Create(tool, "");
    ASSERT_TRUE(rig) << tool->GetDisplayId();
    SCOPED_TRACE(tool->GetDisplayId());
    std::string problem;
    for (const ConfigElement* element : rig->GetConfig().GetElements())
      if (element->GetId() >= 0 && element->HasValue() && !element->IsReadOnly() &&
          element->GetItems().empty())
        core.EditParameter(*rig, element->GetId(),
                           util::shortText(element->GetNumber() + 1.0 / 3.0), problem);
    const auto before = ValuesOf(*rig);
    const std::size_t steps = Steps();
    const int row = core.Find(rig->GetInstanceName())->GetId();
    for (const bool drop : {false, true}) {
      for (QWidget* widget : Show(row).findChildren<QWidget*>()) {
        if (!widget->isVisible() || !(widget->focusPolicy() & Qt::TabFocus)) continue;
        widget->setFocus(Qt::TabFocusReason);
        ++fields;
      }
      windows->Close(WindowKind::kToolConfig, row);
      if (drop) windows->Drop(WindowKind::kToolConfig, row);
      QApplication::processEvents();
    }
    EXPECT_EQ(ValuesOf(*rig), before);
    EXPECT_EQ(Steps(), steps);
  }
  EXPECT_GT(fields, 500);
}

TEST_F(Values, AreTakenAsTyped) {
  const GermanLocale german;
  QLocale::setDefault(QLocale(QLocale::German));
  Begin();
  const int row = Add("MotionFilterCam", "Cam");
  Instance& rig = *core.FindRow(row)->GetInstance();
  const ConfigElement& element = *rig.GetConfig().FindAll("Translation Response Factor").front();
  const auto type = [&](const char* text) {
    auto* field = Find<SpinField>(Show(row), element.GetLabel());
    if (!field) return -1.0;
    field->setFocus(Qt::TabFocusReason);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), text);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    return element.GetNumber();
  };
  for (const auto& [text, value] : {std::pair("1,5", 1.5),
                                    {"2", 2.0},
                                    {"1.5", 1.5},
                                    {"0.00005", 0.00005},
                                    {"0,00005", 0.00005}})
    EXPECT_EQ(type(text), value) << text;
  windows->Drop(WindowKind::kToolConfig, row);
  auto* field = Find<SpinField>(Show(row), element.GetLabel());
  ASSERT_TRUE(field);
  EXPECT_EQ(QAccessible::queryAccessibleInterface(field)->valueInterface()->currentValue(),
            0.00005);
  EXPECT_EQ(element.GetNumber(), 0.00005);
  QLocale::setDefault(QLocale::c());
}

TEST_F(Values, AreDraggedInOneStep) {
  Begin();
  const int row = Add("4WheelerExt", "Car");
  Instance& rig = *core.FindRow(row)->GetInstance();
  int dragged = 0;
  for (const ConfigElement* element : rig.GetConfig().GetElements()) {
    if (!element->HasValue() || element->IsReadOnly() || dragged == 6) continue;
    for (QWidget* widget :
         {static_cast<QWidget*>(Find<SliderLine>(Show(row), element->GetLabel())),
          static_cast<QWidget*>(Find<SpinField>(Show(row), element->GetLabel()))}) {
      if (!widget || !widget->isVisible()) continue;
      const double before = element->GetNumber();
      const std::size_t steps = Steps();
      QTest::mousePress(widget, Qt::LeftButton, {}, {4, 8});
      for (int i = 1; i <= 100; ++i) {
        QMouseEvent move(QEvent::MouseMove, QPointF(4 + i, 8), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(widget, &move);
      }
      QTest::mouseRelease(widget, Qt::LeftButton, {}, {104, 8});
      if (element->GetNumber() == before) continue;  // it stood at that end of its range
      EXPECT_EQ(Steps(), steps + 1) << element->GetLabel();
      EXPECT_TRUE(core.Undo());
      EXPECT_EQ(element->GetNumber(), before) << element->GetLabel();
      ++dragged;
    }
  }
  EXPECT_EQ(dragged, 6);
}

}  // namespace orv::tests
