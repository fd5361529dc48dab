// How kept takes are stored.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <random>

#include "app/session/takes/TakeCode.h"

namespace orv::tests {
namespace {

TEST(KeptTakes, AHundredDrivesAreSmallAndExact) {
  std::mt19937 random(7);
  app::TakeList list;
  for (int n = 1; n <= 100; ++n) {
    app::KeptTake take;
    take.number = ++list.lastNumber;
    take.rate = 25.0;
    take.range = {0.0, 60.0};
    app::KeptRig rig;
    rig.name = "Car";
    rig.memory.resize(20000);
    for (auto& byte : rig.memory) byte = static_cast<unsigned char>(random());
    for (int i = 0; i < 150; ++i) rig.parameters.push_back({i, i == n ? 0.1 * n : i / 3.0, ""});
    for (int axis = 0; axis < 5; ++axis) {
      rig.inputs.push_back({"axis" + std::to_string(axis), {}});
      for (int frame = 1; frame <= 1500; ++frame) {
        const int whole = static_cast<int>(random() % 65536) - 32768;
        double value = whole < 0 ? whole / 32768.0 : whole / 32767.0;
        if (axis == 4 && n == 1) value = std::sin(0.1 * frame);
        if (axis == 4 && n > 1) value = frame == 3 ? -0.0 : 0.0;
        rig.inputs.back().track.set(frame * (1.0 / 25.0), value);
      }
    }
    take.rigs.push_back(std::move(rig));
    list.takes.push_back(std::move(take));
  }
  const std::string bytes = app::EncodeTakes(list);
  const double megabytes = static_cast<double>(bytes.size()) * 4.0 / 3.0 / 1e6;
  std::printf("100 takes of 60 s: %.2f MB in the file\n", megabytes);
  EXPECT_LT(megabytes, 7.0);
  app::TakeList read;
  ASSERT_EQ(app::DecodeTakes(bytes, read), "");
  ASSERT_EQ(read.takes.size(), list.takes.size());
  for (std::size_t i = 0; i < list.takes.size(); ++i) {
    const app::KeptRig &a = list.takes[i].rigs[0], &b = read.takes[i].rigs[0];
    EXPECT_EQ(a.memory, b.memory);
    EXPECT_TRUE(a.parameters == b.parameters);
    for (std::size_t k = 0; k < a.inputs.size(); ++k) {
      EXPECT_TRUE(a.inputs[k].track == b.inputs[k].track);
      EXPECT_EQ(std::signbit(a.inputs[k].track.samples[2].value),
                std::signbit(b.inputs[k].track.samples[2].value));
    }
  }
  for (int i = 0; i < 20; ++i) {  // damage is told or harmless, and never more than that
    std::string damaged = bytes.substr(0, i % 2 ? random() % bytes.size() : bytes.size());
    if (!damaged.empty()) damaged[random() % damaged.size()] ^= 1 << random() % 8;
    app::TakeList kept;
    EXPECT_TRUE(app::DecodeTakes(damaged, kept).empty() || kept.takes.empty());
  }
}

}  // namespace
}  // namespace orv::tests
