// Samples and pixels against modelled machines.
#include "app/studio/view/packet/QualityControl.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace orv::tests {

using namespace app::view;

TEST(QualityControl, SettlesOnWhatTheMachineBears) {
  // A picture's cost: what its meshes take, and what its pixels do (ms).
  struct Machine {
    bool isSoftware;
    double meshes, pixels;
    PictureQuality wanted;
  };
  const Machine machines[] = {{false, 1.0, 1.0, {4, 1.0}},  {false, 1.0, 20.0, {2, 1.0}},
                              {true, 5.0, 20.0, {0, 1.0}},  {true, 5.0, 60.0, {0, 0.75}},
                              {true, 5.0, 150.0, {0, 0.5}}, {true, 200.0, 5.0, {0, 1.0}}};
  for (const Machine& machine : machines) {
    QualityControl control(machine.isSoftware);
    int changes = 0;
    for (int i = 0; i < 3000; ++i) {
      const PictureQuality now = control.Get();
      const double noise = 1.0 + 0.05 * std::sin(i * 12.9898);
      control.Note(noise * (machine.meshes +
                            machine.pixels * std::max(1, now.samples) * now.scale * now.scale));
      changes += control.Get().scale != now.scale || control.Get().samples != now.samples;
    }
    EXPECT_EQ(control.Get().samples, machine.wanted.samples) << machine.pixels;
    EXPECT_EQ(control.Get().scale, machine.wanted.scale) << machine.pixels;
    EXPECT_LT(changes, 10) << machine.pixels;
    EXPECT_EQ(control.GetAtRest().scale, 1.0);
  }
}

}  // namespace orv::tests
