#include "plugins/common/InputFilter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>
#include <vector>

#include "plugins/common/SaveChunk.h"

namespace orv::rws::addon {
namespace {

std::vector<double> Feed(InputFilter& filter, const std::vector<double>& inputs, double dt = 0.04) {
  std::vector<double> outputs;
  for (const double input : inputs) outputs.push_back(filter.Step(input, dt));
  return outputs;
}

TEST(InputFilter, TrinaryLatchesOnAPressAndReleasesOnTheNext) {
  InputFilter filter;
  filter.settings.bIsTrinaryStateValue = true;
  filter.settings.maximum = 2.0;
  using Values = std::vector<double>;
  // A slow move through half way latches once; exactly half way is no press.
  EXPECT_EQ(Feed(filter, {0.2, 0.5, 0.51, 0.9, 0.6}), (Values{0, 0, 2, 2, 2}));
  // Back to 0.4 does not release; the next rise does, and the one after it latches again.
  EXPECT_EQ(Feed(filter, {0.4, 0.6, 0.4, 0.6}), (Values{2, 0, 0, 2}));
  // A press the other way releases first, from rest it latches negative.
  EXPECT_EQ(Feed(filter, {0.0, -1.0, 0.0, -1.0, 0.0}), (Values{2, 0, 0, -2, -2}));
  // Flipping from side to side without rest between is no new press.
  EXPECT_EQ(Feed(filter, {1.0, -1.0, 1.0}), (Values{0, 0, 0}));
}

TEST(InputFilter, ChangeIsLimitedPerSecondAndItsMemoryRestsWithoutALimit) {
  for (const double dt : {0.02, 0.04, 0.08}) {
    InputFilter filter;
    filter.settings.fChangeLimit = 2.5;
    for (int i = 1; i <= 8; ++i)
      EXPECT_NEAR(filter.Step(1.0, dt), std::min(1.0, 2.5 * dt * i), 1e-12);
    EXPECT_NEAR(filter.Step(-1.0, dt), std::min(1.0, 2.5 * dt * 8) - 2.5 * dt, 1e-12);
    const double memory = filter.state.previousLimitedInput;
    filter.settings.fChangeLimit = 0.0;
    EXPECT_EQ(filter.Step(0.75, dt), 0.75);
    EXPECT_EQ(filter.state.previousLimitedInput, memory);
  }
}

TEST(InputFilter, IntegrationGivesTheAreaUnderTheInput) {
  for (const double dt : {0.02, 0.04, 1.0 / 24, 1.0 / 59.94}) {
    InputFilter filter;
    filter.settings.maximum = 3.0;
    filter.Step(0.5, dt);
    filter.settings.bIsIntegratedValue = true;  // goes on from the last value
    double output = 0.0;
    long double area = 0.5L;
    for (int i = 0; i < 1000; ++i) {
      const double input = std::sin(0.01 * i);
      output = filter.Step(input, dt);
      area += static_cast<long double>(input) * dt;
    }
    EXPECT_NEAR(output, static_cast<double>(3.0L * area), 1e-11);
    EXPECT_EQ(filter.Step(0.0, dt), output);  // no input holds the output
  }
}

TEST(InputFilter, FactorsOfZeroAndOneAreInstantAndOthersDecayByTheClosedForm) {
  for (const double factor : {0.0, 1.0}) {
    InputFilter filter;
    filter.settings.responseFactor = factor;
    EXPECT_EQ(filter.Step(0.3, 0.04), 0.3);
  }
  const std::pair<double, int> cases[] = {
      {0.02, 1}, {0.04, 2}, {0.08, 3}, {1.0 / 24, 2}, {1.0 / 60, 1}};
  for (const auto& [dt, n] : cases) {
    InputFilter filter;
    filter.settings.responseFactor = 0.3;
    const double left = std::pow(1.0 - 0.3 * (dt / 0.04) / n, n);
    double memory1 = 0.0, memory2 = 0.0;
    for (int frame = 1; frame <= 20; ++frame) {
      const double output = filter.Step(1.0, dt);
      memory1 = 1.0 - std::pow(left, frame);
      memory2 = memory1 + (memory2 - memory1) * left;
      EXPECT_NEAR(filter.state.filterMemory1, memory1, 1e-13) << dt;
      EXPECT_NEAR(output, memory2, 1e-13) << dt;
    }
  }
}

TEST(InputFilter, HistoriesThatCantBeAreRefused) {
  const InputFilterKeys keys{"c",          "limited", "integrated", "memories", "trinary",
                             "activation", "t",       "i",          "l"};
  const auto loads = [&](auto history, const char* key, auto samples) {
    for (const auto& [time, value] : samples) history.samples.push_back({time, value});
    util::DataChunk chunk;
    AddHistory(chunk, key, history);
    SaveReader reader(chunk);
    InputFilterHistory loaded;
    loaded.Load(reader, keys);
    return reader.IsGood();
  };
  using Numbers = std::vector<std::pair<double, double>>;
  using States = std::vector<std::pair<double, int>>;
  const util::AVar_Linear<double> numbers;
  const util::AVar_Latest<int> states;
  EXPECT_TRUE(loads(numbers, "integrated", Numbers{{-1, 7}, {0, 1e300}, {0.04, -3}}));
  EXPECT_FALSE(loads(numbers, "integrated", Numbers{{0, 1}, {0, 2}}));
  EXPECT_FALSE(loads(numbers, "integrated", Numbers{{0.04, 1}, {0, 2}}));
  EXPECT_FALSE(loads(numbers, "limited", Numbers{{0, NAN}}));
  EXPECT_FALSE(loads(numbers, "limited", Numbers{{INFINITY, 0}}));
  EXPECT_TRUE(loads(states, "trinary", States{{0, -1}, {1, 0}, {2, 1}}));
  EXPECT_FALSE(loads(states, "trinary", States{{0, 2}}));
  EXPECT_FALSE(loads(states, "activation", States{{0, -2}}));
  EXPECT_FALSE(loads(states, "integrated", States{{0, 1}})) << "samples of another size";
}

}  // namespace
}  // namespace orv::rws::addon
