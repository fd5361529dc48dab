#include <QElapsedTimer>
#include <QKeyEvent>
#include <cmath>
#include <random>

#include "../../unidevice/TestDevice.h"
#include "core/instances/InstanceReference.h"
#include "core/windows/InputConfigIds.h"
#include "core/windows/InputConfigWindow.h"
#include "core/windows/ProfileRow.h"
#include "gui/component/CheckBox.h"
#include "gui/component/ComboBox.h"
#include "gui/component/Graph.h"
#include "gui/component/Spinner.h"
#include "gui/componentinterface/Button.h"
#include "gui/componentinterface/Dialog.h"
#include "gui/componentinterface/Label.h"
#include "support/WindowsTest.h"

namespace orv::tests {

namespace {

using namespace rws::core;
using namespace rws::core::windows;
using namespace gui::componentinterface;
using unidevice::TestDevice;

/// The window of a car's inputs, beside a device that shakes and a pad that was not touched yet.
class InputConfig : public WindowsTest {
 protected:
  InputConfig() {
    core.StopRecording();
    Begin();
    row = Add("4WheelerExt", "Car");
    window = static_cast<InputConfigWindow*>(windows->Open(WindowKind::kInputConfig, row));
    core.KillTimer(DevicePolling::kTimer);  // the test polls by itself
  }
  ~InputConfig() override {
    windows.reset();
    unidevice::DriverManager::instance().calibrations().replace({});
  }
  template <class Interface>
  Interface& The(int id) {
    return *window->GetRoot()->Get<Interface>(id);
  }
  std::string Text(int id) { return The<Label>(id).GetShownText(); }
  bool Shows(int id) { return window->GetRoot()->Find(id)->IsVisible(); }
  unidevice::Property& Input(int i) {
    return *core.FindByIdentity(row)->GetProperties().property(i);
  }
  InputResponse Response(int i) { return InputResponse::Of(Input(i)); }
  void Poll() {
    for (double& value : shaky->hardware) value = 0.04 * noise(random);
    core.OnTimer(DevicePolling::kTimer, 0);
  }
  /// Moves the hardware until a control is found, or time is over.
  template <class Move>
  void Press(int button, const Move& move) {
    The<Button>(button).Click();
    const double from = clock;
    for (; clock < from + 12.0 && window->IsLooking(); clock += 1.0 / 60.0) {
      move(clock - from);
      Poll();
      window->Look(clock);
    }
  }
  /// As long as the window's own timer needs for some rounds.
  void Watch() {
    QElapsedTimer timer;
    for (timer.start(); timer.elapsed() < 60; Poll()) QApplication::processEvents();
  }
  TestDevice* PlugPad() { return driver.plug("Pad", {"Axis", "Axis", "Axis", "Button", "Button"}); }

  unidevice::TestDriver driver{"inputs"};
  TestDevice* shaky = driver.plug("Shaky", {"Axis", "Axis"});
  TestDevice* pad = PlugPad();
  std::mt19937 random{5};
  std::normal_distribution<double> noise;
  double clock = 0.0;
  int row = 0;
  InputConfigWindow* window = nullptr;
};

}  // namespace

TEST_F(InputConfig, MapsWhatIsMovedTwentyTimesOfTwenty) {
  ASSERT_TRUE(window);
  const char* const wanted[] = {"Pad: Button", "Pad: Axis", "Pad: Axis"};
  for (int i = 0; i < 20; ++i) {
    pad->destroy();
    pad = PlugPad();
    window->Choose(i % 3);
    const double from = 0.05 + 0.15 * (i % 7), speed = 0.5 + 0.4 * i;
    Press(kInputPress, [&](double t) {
      if (t < from) return;
      const double way = std::min((t - from) * speed, 1.0);
      pad->hardware[2] = i % 3 == 2 ? 2.0 * way - 1.0 : -1.0;
      if (i % 3 == 1) pad->hardware[1] = -way;
      if (i % 3 == 0) pad->hardware[4] = 1.0;
    });
    ASSERT_FALSE(window->IsLooking()) << i;
    const unidevice::Control* control = Input(i % 3).control;
    ASSERT_TRUE(control && control->device == pad) << i << Text(kInputNotice);
    EXPECT_EQ(control, pad->control(i % 3 == 0 ? 4 : i % 3)) << i << Text(kInputNotice);
    EXPECT_EQ(Text(kInputMapping).find(wanted[i % 3]), 0u) << Text(kInputMapping);
    ASSERT_TRUE(core.Undo());
    EXPECT_FALSE(Input(i % 3).control);
  }
  // Two controls; the first of them is not to be had for another input, which says so.
  window->Choose(0);
  std::fill(pad->hardware.begin(), pad->hardware.end(), 0.0);
  Press(kInputPressPair, [&](double t) {
    pad->hardware[3] = t > 0.5 && t < 1.0;
    pad->hardware[4] = t > 1.5;
  });
  Poll();
  EXPECT_EQ(Input(0).raw(), -1.0);
  window->Choose(1);
  Press(kInputPress, [&](double t) { pad->hardware[3] = t > 0.5; });
  EXPECT_NE(Text(kInputNotice).find("another input"), std::string::npos) << Text(kInputNotice);
  EXPECT_FALSE(Input(1).control);
  // Escape ends the wait, and only then the window.
  The<Button>(kInputPress).Click();
  EXPECT_TRUE(Shows(kInputTask));
  QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
  QApplication::sendEvent(window->GetWidget(), &escape);
  EXPECT_TRUE(window->IsShown());
  EXPECT_FALSE(window->IsLooking());
  // A control that is taken twice is told on the row of each.
  core.MapInput(*core.FindByIdentity(row), 2, pad->control(3));
  gui::Component* first = window->GetRoot()->Find(kInputRows)->child(0);
  EXPECT_TRUE(first->Find(kInputRowConflict)->IsVisible());
  The<Button>(kInputUnmap).Click();
  The<Button>(kInputPress).Click();
  EXPECT_TRUE(dynamic_cast<Dialog*>(window->GetRoot())->Close());
  EXPECT_FALSE(window->IsLooking());
}

TEST_F(InputConfig, StaysCalmWhenDeviceOrRigGo) {
  Window* devices = windows->Open(WindowKind::kDevices);
  ASSERT_TRUE(devices);
  core.MapInput(*core.FindByIdentity(row), 0, pad->control(0));
  const auto unplug = [&] {
    pad->destroy();
    devices->OnLive();
    window->OnLive();
    window->Look(clock);
    Poll();
    QApplication::processEvents();
    devices->OnLive();
    EXPECT_NE(Text(kInputMapping).find("(not there)"), std::string::npos) << Text(kInputMapping);
    EXPECT_TRUE(devices->GetRoot()->Find(kDevicesAbsent)->IsVisible());
    pad = PlugPad();
    Poll();
    EXPECT_EQ(Text(kInputMapping), "Pad: Axis");
    EXPECT_FALSE(devices->GetRoot()->Find(kDevicesAbsent)->IsVisible());
  };
  unplug();
  The<Button>(kInputPress).Click();
  unplug();
  EXPECT_TRUE(window->IsLooking());
  The<Button>(kInputTaskCancel).Click();
  gui::Component& calibration = *window->GetRoot()->Find(kInputCalibration);
  calibration.Get<Button>(kCalibratePedal)->Click();
  unplug();
  pad->destroy();
  Poll();
  calibration.Get<Button>(kMeasureNext)->Click();
  EXPECT_NE(calibration.Get<Label>(kMeasureText)->GetShownText().find("not there"),
            std::string::npos);
  core.DeleteTool("Car");
  QApplication::processEvents();
  EXPECT_FALSE(windows->Find(WindowKind::kInputConfig, row));
}

TEST_F(InputConfig, AProfileLoadedByMistakeIsOneStepBack) {
  Instance& rig = *core.FindByIdentity(row);
  for (int i = 0; i < 3; ++i) core.MapInput(rig, i, pad->control(i));
  ProfileRequests profiles(core, row, ProfileRequests::Kind::kInputs);
  ASSERT_TRUE(profiles.SaveAs("Mine", false).Done());
  auto& box =
      *window->GetRoot()->Find(kInputProfiles)->Get<gui::component::ComboBox>(kProfileChoice);
  EXPECT_EQ(box.GetText(), "Mine");
  core.SetInputResponse(rig, 1, {-2.5, 1.7, 0.05, 0.3});
  EXPECT_EQ(box.GetText(), "Mine (changed)");
  std::vector<std::string> before;
  const auto saved = [&] {
    std::vector<std::string> texts;
    for (int i = 0; i < rig.GetProperties().count(); ++i) {
      util::xml::Tag tag("");
      Input(i).save(tag);
      texts.push_back(tag.toText());
    }
    return texts;
  };
  before = saved();
  const auto names = profiles.List();
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (names[i].name == "Mine") continue;
    box.ChooseByUser(static_cast<int>(i));
    EXPECT_EQ(box.GetText(), names[i].name);
    ASSERT_TRUE(core.Undo());
    EXPECT_EQ(saved(), before) << names[i].name;
    EXPECT_EQ(box.GetIndex(), -1) << "none has these values";
  }
}

TEST_F(InputConfig, ADragInTheCurveIsOneStepAndGivesTheFormulasValues) {
  Instance& rig = *core.FindByIdentity(row);
  core.SetInputResponse(rig, 0, {1.0, 1.0, 0.1, 0.0});
  auto& graph = The<gui::component::Graph>(kInputGraph);
  const auto drag = [&](int handle, double x, double y, bool cancelled = false) {
    const Graph::Point from = graph.GetHandles()[handle].at;
    graph.BeginDrag();
    for (int i = 1; i <= 100; ++i)
      graph.DragHandle(handle,
                       {from.x + (x - from.x) * i / 100.0, from.y + (y - from.y) * i / 100.0});
    graph.EndDrag(cancelled);
  };
  const InputResponse start = Response(0);
  drag(ResponseEditor::kDeadzone, 0.3, 0.0);
  drag(ResponseEditor::kMultiplier, 0.0, 0.8);
  drag(ResponseEditor::kOffset, 0.0, -0.6);
  drag(ResponseEditor::kExponent, 0.0, 0.2 + 0.8 * 0.25);
  auto& profile =
      *window->GetRoot()->Find(kInputProfiles)->Get<gui::component::ComboBox>(kProfileChoice);
  EXPECT_EQ(profile.GetText(), "Start Profile (changed)");
  const InputResponse end = Response(0);
  EXPECT_EQ(end.deadzone, 0.3);
  EXPECT_EQ(end.multiplier, 0.8);
  EXPECT_NEAR(end.offset, 0.2, 1e-12);  // at -1 it gives offset - multiplier
  EXPECT_NEAR(end.exponent, 2.0, 1e-12);
  for (const Graph::Point& point : graph.GetCurves().back().points) {
    const double way = std::max(std::abs(point.x) - 0.3, 0.0) / 0.7;
    EXPECT_NEAR(point.y, 0.2 + (point.x < 0 ? -0.8 : 0.8) * way * way, 1e-9);
  }
  drag(ResponseEditor::kMultiplier, 0.0, -0.5, true);
  EXPECT_TRUE(Response(0) == end);
  auto& spinner = The<gui::component::Spinner>(kInputMultiplier);
  EXPECT_EQ(spinner.GetValue(), 0.8);
  for (int i = 0; i < 4; ++i) ASSERT_TRUE(core.Undo());
  EXPECT_TRUE(Response(0) == start) << "four drags, four steps";
  spinner.EnterByUser(-3.0);
  EXPECT_EQ(Response(0).multiplier, -3.0);
  The<gui::component::CheckBox>(kInputInvert).CheckByUser(CheckState::kOff);
  EXPECT_EQ(Response(0).multiplier, 3.0);
}

TEST_F(InputConfig, CalibratesBelowTheControlsValue) {
  core.MapInput(*core.FindByIdentity(row), 0, pad->control(2));
  gui::Component& calibration = *window->GetRoot()->Find(kInputCalibration);
  const auto step = [&](int button, double hardware) {
    pad->hardware[2] = hardware;
    Poll();
    calibration.Get<Button>(button)->Click();
    Watch();
  };
  pad->hardware[2] = -0.5;
  Poll();
  step(kCalibratePedal, -1.0);
  step(kMeasureNext, -1.0);
  pad->hardware[2] = 0.8;
  Watch();
  step(kMeasureNext, 0.8);
  pad->hardware[2] = -0.1;
  Poll();
  EXPECT_NEAR(pad->control(2)->current, 0.5, 1e-12);
  EXPECT_EQ(Input(0).raw(), pad->control(2)->current);
  EXPECT_EQ(calibration.Get<Label>(kCalibrationState)->GetShownText(),
            "It rests at -1 and is full at 0.8.");
  calibration.Get<Button>(kCalibrationForget)->Click();
  Poll();
  EXPECT_EQ(pad->control(2)->current, -0.1);
}

}  // namespace orv::tests
