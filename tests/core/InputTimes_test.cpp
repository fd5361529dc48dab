// What a frame of a take has its inputs from: not from when it was stepped.
#include <utility>

#include "../unidevice/TestDevice.h"
#include "support/CoreTest.h"
#include "support/FeltControl.h"
#include "unidevice/Property.h"

namespace orv::tests {
namespace {

using rws::core::Instance;

/// Time goes on by millisecond, with the pad held at the number of the millisecond.
class InputTimes : public CoreTest {
 protected:
  InputTimes() {
    core.tickCount = [this] { return m_now; };
    core.CreateTool("Probe");
    core.MapInput(Rig(), 2, pad->control(0));
  }
  Instance& Rig() { return *core.List(false).front(); }
  void GoTo(unsigned ms) {
    m_now = ms;
    if (pad) pad->hardware[0] = ms;
  }
  /// Ticks each millisecond up to `ms`.
  void TickTo(unsigned ms) {
    while (m_now < ms) GoTo(m_now + 1), Tick(m_now);
  }
  std::vector<double> Recorded() {
    std::vector<double> values;
    for (const auto& sample : Rig().GetTracks()[2].samples) values.push_back(sample.value);
    return values;
  }
  void Begin() {
    GoTo(1000);
    core.StartRecording();
    Tick(1000);
  }

  unidevice::TestDriver driver{"times"};
  unidevice::TestDevice* pad = driver.plug("Pad", {"Axis"});

 private:
  unsigned m_now = 0;
};

}  // namespace

TEST_F(InputTimes, FramesThatAreSteppedTogetherTakeWhatStoodWhenEachFellDue) {
  Begin();
  TickTo(1050);
  // Something holds the take up, but polls around it.
  for (const unsigned ms : {1070u, 1090u, 1125u}) GoTo(ms), core.PollInputs();
  GoTo(1170);
  Tick(1170);
  EXPECT_EQ(Recorded(), (std::vector<double>{1000, 1040, 1070, 1090, 1125}))
      << "due at 1000, 1040, 1080, 1120 and 1160";
  EXPECT_EQ(pad->control(0)->current, 1170.0) << "read now";
  EXPECT_FALSE(core.IsBehind());
  GoTo(1205);
  EXPECT_TRUE(core.IsBehind());
  Tick(1205);
  EXPECT_EQ(Recorded().back(), 1170.0) << "the latest that was polled before 1200";
  core.StopRecording();

  const std::vector<double> fed = plugin.log.inputs;
  plugin.log.inputs.clear();
  core.BeginResimulation(0.0, 6 * 0.04);
  while (core.StepResimulation()) {
  }
  core.EndResimulation();
  EXPECT_EQ(plugin.log.inputs, fed);
}

TEST_F(InputTimes, FollowTheSlowFactorAndTheCountdown) {
  core.SetSlowFactorIndex(2);
  core.GetPreferences().countdownSeconds = 1;
  Begin();
  TickTo(3010);  // the countdown is slow too
  GoTo(3100);
  core.PollInputs();
  GoTo(3170);
  Tick(3170);
  EXPECT_EQ(Recorded(), (std::vector<double>{3000, 3010, 3100}));
}

TEST_F(InputTimes, TellHowLongAMoveTookToItsFrameOnceEach) {
  Begin();
  EXPECT_TRUE(core.TakeInputAges().empty());
  TickTo(1010);
  EXPECT_TRUE(core.TakeInputAges().empty()) << "no frame has taken it";
  TickTo(1040);
  GoTo(1060);
  const std::vector<double> ages = core.TakeInputAges();
  ASSERT_EQ(ages.size(), 40u);
  EXPECT_NEAR(ages.front(), 59.0, 1e-6);
  EXPECT_NEAR(ages.back(), 20.0, 1e-6);
  EXPECT_TRUE(core.TakeInputAges().empty());
}

TEST_F(InputTimes, APlayedDeviceFollowsTheFramesHoweverOftenItIsPolled) {
  struct Played : unidevice::TestDevice {
    using TestDevice::TestDevice;
    const rws::core::CoreImplementation* core = nullptr;
    bool isPlayed() const override { return true; }
    bool update() override {
      hardware[0] = core->GetFrameTime();
      return TestDevice::update();
    }
  };
  auto* player = new Played("Player", {"Axis"});
  player->core = &core;
  driver.driver->addDevice(player);
  core.MapInput(Rig(), 2, player->control(0));
  Begin();
  TickTo(1090);
  core.PollInputs();
  GoTo(1300);
  for (int i = 0; i < 5; ++i) Tick(1300);
  ASSERT_EQ(Recorded().size(), 8u);
  for (const auto& sample : Rig().GetTracks()[2].samples) EXPECT_EQ(sample.value, sample.time);
}

TEST_F(InputTimes, ADeviceThatIsUnpluggedInATakeKeepsItsMapping) {
  Begin();
  TickTo(1030);
  std::exchange(pad, nullptr)->destroy();
  TickTo(1060);
  pad = driver.plug("Pad", {"Axis"});
  TickTo(1100);
  EXPECT_EQ(Recorded(), (std::vector<double>{1000, 0, 1080}));
}

TEST_F(InputTimes, ForcesAreThereInTakesAloneAndWhenAskedFor) {
  FeltControl control;
  unidevice::Property& input = *Rig().GetProperties().property(2);
  input.bind(&control);
  const auto frame = [&](unsigned ms, double push, double kick) {
    input.feel.push = push;
    input.feel.kick = kick;
    GoTo(ms);
    Tick(ms);
  };
  input.feel.push = 1.0;  // of some time before
  Begin();
  EXPECT_EQ(input.feel.push, 0.0);
  frame(1040, 0.5, 0.0);
  EXPECT_TRUE(input.effects.empty()) << "off at first";
  core.GetPreferences().steeringForce = 50;
  core.GetPreferences().kickForce = 100;
  frame(1080, -0.5, 1.0);
  EXPECT_EQ(control.push, 0.25);
  EXPECT_EQ(control.shake, 1.0);
  frame(1120, 0.5, 0.0);
  EXPECT_EQ(control.shake, 1.0) << "a blow can be felt";
  frame(1180, 0.0, 0.0);
  EXPECT_EQ(control.push, 0.0);
  EXPECT_EQ(control.shake, 0.0);
  frame(1220, 1.0, 0.0);
  EXPECT_EQ(control.push, 0.5);
  core.StopRecording();
  EXPECT_EQ(control.push, 0.0);
  EXPECT_TRUE(input.effects.empty());
  core.BeginResimulation(0.0, 0.2);
  input.feel.push = 1.0;
  core.StepResimulation();
  EXPECT_TRUE(input.effects.empty());
  core.EndResimulation();
}

}  // namespace orv::tests
