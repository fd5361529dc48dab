#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "util/AVar_Latest.h"
#include "util/AVar_Linear.h"
#include "util/AVar_Matrix.h"
#include "util/AVar_Nearest.h"

using namespace orv::util;

namespace {

template <class Variable>
std::vector<unsigned char> flat(const Variable& variable) {
  std::vector<unsigned char> bytes(variable.flatSize());
  variable.save(bytes.data(), bytes.size());
  return bytes;
}

}  // namespace

// Times on a grid of 1/8 s make ties and exact hits common and all arithmetic exact.
TEST(AVar, AgreesWithALinearScanOnRandomSamplesSetInAnyOrder) {
  std::mt19937 random(3);
  for (int round = 0; round < 60; ++round) {
    AVar_Linear<double> linear;
    AVar_Nearest<double> near;
    AVar_Latest<int> latest;
    EXPECT_EQ(linear.find(1.0), -1);
    linear.defaultValue = 42.0;
    EXPECT_EQ(linear.value(1.0), 42.0);
    std::vector<double> times;
    const int span = round % 2 ? 40 : 4000;
    for (int i = 0; i < 1 + round * 2; ++i) {
      const double time = static_cast<int>(random() % span) / 8.0;
      linear.set(time, time * time);
      near.set(time, time);
      const int index = latest.set(time, static_cast<int>(time * 8));
      if (std::find(times.begin(), times.end(), time) == times.end()) times.push_back(time);
      std::sort(times.begin(), times.end());
      ASSERT_EQ(times[index], time);
      ASSERT_EQ(latest.samples.size(), times.size());
    }
    for (int i = -8; i < 2 * span + 8; ++i) {
      const double time = i / 16.0;
      int n = 0;  // the nearest, the later one on a tie
      for (int k = 1; k < static_cast<int>(times.size()); ++k)
        if (std::abs(times[k] - time) <= std::abs(times[n] - time)) n = k;
      ASSERT_EQ(near.find(time), n);
      ASSERT_EQ(near.value(time), times[n]);
      const auto after = std::upper_bound(times.begin(), times.end(), time);
      const double a = after == times.begin() ? times.front() : after[-1];
      ASSERT_EQ(latest.value(time), static_cast<int>(a * 8));
      const double b = after == times.begin() || after == times.end() ? a : *after;
      const double expected = a == b ? a * a : a * a + (b * b - a * a) * (time - a) / (b - a);
      ASSERT_NEAR(linear.value(time), expected, 1e-9 * (1 + expected));
    }
    AVar_Linear<double> cut = linear;
    EXPECT_TRUE(cut == linear);
    const double middle = times[times.size() / 2];
    cut.cutFrom(middle);
    EXPECT_EQ(cut.samples.size(), times.size() / 2);
    EXPECT_TRUE(cut != linear);
  }
}

TEST(AVar, EachKindReadsItsOwnWayBetweenTwoSamples) {
  AVar_Linear<bool> flag;
  flag.samples = {{0, false}, {1, true}};
  EXPECT_TRUE(!flag.value(0) && flag.value(0.001));
  AVar_Linear<int> whole;
  whole.samples = {{0, 0}, {1, 3}, {2, -3}, {3, 0}};
  EXPECT_EQ(whole.value(0.5), 1);
  EXPECT_EQ(whole.value(2.5), -1);  // towards zero
  AVar_Linear<int> wide;
  wide.samples = {{0, std::numeric_limits<int>::min()}, {1, std::numeric_limits<int>::max()}};
  EXPECT_EQ(wide.value(0.75), 1073741823);
  AVar_Nearest<bool>::Sample out;
  const AVar_Nearest<bool> nearer;
  EXPECT_EQ(nearer.interpolate(out, {1.0, true}, {2.0, false}, 1.4).time, 1.0);
}

TEST(AVar, MatricesTurnEvenlyAndScaleLinearly) {
  const auto pose = [](double degrees, const Vector3<double>& scale, double x) {
    auto m = Matrix<double>::rotationAxisAngle(degrees, 2 / 3.0, -1 / 3.0, 2 / 3.0) *
             Matrix<double>::rotationAxisAngle(70, 0, 0.6, 0.8);
    m.setRowLengths(scale);
    m.setTranslation({x, 2 * x, 0});
    return m;
  };
  AVar_Matrix<double> variable;
  variable.set(10.0, pose(170, {1, 0.1, 3}, 0));
  variable.set(12.0, pose(250, {3, 0.7, 7}, 4));
  variable.set(13.0, variable.value(12.0));
  for (const double u : {0.0, 0.25, 0.5, 0.7, 1.0}) {
    const auto m = variable.value(10 + 2 * u);
    const auto expected = pose(170 + 80 * u, {1 + 2 * u, 0.1 + 0.6 * u, 3 + 4 * u}, 4 * u);
    for (int i = 0; i < 16; ++i) EXPECT_NEAR(m[i], expected[i], 3e-6) << u << " " << i;
  }
  const auto same = variable.value(12.3);
  for (int i = 0; i < 16; ++i) EXPECT_NEAR(same[i], variable.value(12.0)[i], 1e-6);
  // Lengths pass through single precision: a take that was stored so must read so again.
  const double length = static_cast<float>((0.7 - 0.1) * static_cast<double>(0.65f) + 0.1);
  EXPECT_NEAR(variable.value(11.3).rowLengths().y, length, 1e-14);
}

TEST(AVar, TheFlatFormIsTheSameBytesEverywhere) {
  AVar_Linear<int> whole;
  whole.set(1.0, -2);
  const std::vector<unsigned char> expected = {
      16, 0, 0, 0, 12, 0, 0,    0,    100,  0,    0,    0,   1, 0, 0, 0,  // header
      0,  0, 0, 0, 0,  0, 0xf0, 0x3f, 0xfe, 0xff, 0xff, 0xff};
  EXPECT_EQ(flat(whole), expected);

  const auto sizeOfOne = [](auto variable) {
    variable.set(0.0, {});
    return variable.flatSize() - 16;
  };
  EXPECT_EQ(sizeOfOne(AVar_Linear<double>()), 16u);
  EXPECT_EQ(sizeOfOne(AVar_Latest<bool>()), 9u);
  EXPECT_EQ(sizeOfOne(AVar_Linear<Vector3<double>>()), 32u);
  EXPECT_EQ(sizeOfOne(AVar_Nearest<Quat<double>>()), 40u);
  EXPECT_EQ(sizeOfOne(AVar_Nearest<QTransform<double>>()), 64u);
  EXPECT_EQ(sizeOfOne(AVar_Matrix<double>()), 136u);

  AVar_Nearest<QTransform<double>> poses, read;
  for (int i = 0; i < 5; ++i) poses.set(i, {{i + 0.1, 0, -i * 1.0}, {0.5, -0.5, 0.5, 0.5}});
  read.load(flat(poses).data());
  EXPECT_TRUE(read == poses);
  std::vector<unsigned char> tooShort(poses.flatSize() - 1, 0xaa);
  poses.save(tooShort.data(), tooShort.size());
  EXPECT_EQ(tooShort[4], 64 * 5 % 256);
  EXPECT_EQ(tooShort[12], 0);
  EXPECT_EQ(tooShort[16], 0xaa);
}

TEST(AVar, DamagedFlatFormsChangeNothingOrLeaveEmptySamples) {
  AVar_Linear<double> good;
  for (int i = 0; i < 3; ++i) good.set(i, i);
  const auto loaded = [&](int offset, unsigned char byte, std::size_t size) {
    std::vector<unsigned char> bytes = flat(good);
    bytes[offset] = byte;
    AVar_Linear<double> variable;
    variable.set(5.0, 6.0);
    variable.load(bytes.data(), size);
    return variable.samples;
  };
  const std::vector<AVar_Linear<double>::Sample> old = {{5.0, 6.0}}, empty(3);
  const std::size_t all = good.flatSize();
  EXPECT_EQ(loaded(0, 16, all), good.samples);
  EXPECT_EQ(loaded(0, 17, all), old);    // header size
  EXPECT_EQ(loaded(8, 101, all), old);   // version
  EXPECT_EQ(loaded(4, 49, all), empty);  // payload size
  EXPECT_EQ(loaded(15, 1, all), empty);  // a count of 16 million: what the buffer could hold
  EXPECT_EQ(loaded(12, 4, all).size(), 4u);
  EXPECT_EQ(loaded(0, 16, all - 1), empty);
  EXPECT_EQ(loaded(0, 17, all - 1), old);
  EXPECT_EQ(loaded(0, 16, 15), old);
}
