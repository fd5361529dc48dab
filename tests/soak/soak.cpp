// Drives cars at random for as long as it is asked to: test_soak [--drives=N] [--seed=S]. Each
// drive follows from its own seed alone; that of a drive that goes wrong is told, and
// "--drives=1 --seed=THAT" repeats it.
#include <algorithm>
#include <cstdlib>
#include <random>

#include "rigs/CarScene.h"

namespace orv::tests {
namespace {

using Vector = CarScene::Vector;

/// A wheel may be this many frames in a row deeper in the ground than its radius.
constexpr int kMostSunkFrames = 10;
constexpr double kHalfGround = 150.0;  ///< m for a car of scale 1

class Dice {
 public:
  explicit Dice(unsigned seed) : m_random(seed) {}
  double In(double from, double to) {
    return from + (to - from) * (static_cast<double>(m_random()) / 4294967295.0);
  }
  int Of(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }
  bool Often(double part) { return In(0.0, 1.0) < part; }

 private:
  std::mt19937 m_random;  // the engine's numbers are fixed; those of distributions are not
};

/// Waves, ramps, kerbs and holes on a grid that has a line at each of their edges.
struct Terrain {
  explicit Terrain(Dice& dice) {
    xs = Rows(-kHalfGround, kHalfGround, 100);
    zs = Rows(-kHalfGround, kHalfGround, 200);
    const int waves = dice.Of(4);
    for (int i = 0; i < waves; ++i) {
      const double length = dice.In(8.0, 80.0), way = dice.In(0.0, 6.3);
      Add([=, size = length * dice.In(0.0, 0.03), phase = dice.In(0.0, 6.3)](double x, double z) {
        return size * std::sin((x * std::sin(way) + z * std::cos(way)) * 6.28 / length + phase);
      });
    }
    const int pieces = dice.Of(5);
    for (int i = 0; i < pieces; ++i) {
      const double begin = dice.In(-100.0, 100.0), length = dice.In(0.3, 10.0);
      const double height = dice.In(-0.2, 0.2) * (dice.Often(0.3) ? 6.0 : 1.0);
      const bool slanted = dice.Often(0.5);
      for (const double edge : {begin, begin + length})
        for (const double off : {0.0, 0.001}) zs.push_back(edge + off);
      Add([=](double, double z) {
        if (z <= begin || z > begin + length) return 0.0;
        return slanted ? height * (z - begin) / length : height;
      });
    }
    std::sort(zs.begin(), zs.end());
    if (dice.Often(0.3))
      Add([a = dice.In(-0.3, 0.3), b = dice.In(-0.3, 0.3)](double x, double z) {
        return a * x + b * z;
      });
  }
  void Add(Height height) { parts.push_back(std::move(height)); }
  double At(double x, double z) const {
    double y = 0.0;
    for (const Height& part : parts) y += part(x, z);
    return y;
  }
  /// Height of the grid's triangles; not a number outside of it.
  double OnMesh(double x, double z) const {
    if (!(std::abs(x) < kHalfGround && std::abs(z) < kHalfGround)) return NAN;
    const auto i = std::upper_bound(xs.begin(), xs.end(), x),
               j = std::upper_bound(zs.begin(), zs.end(), z);
    const double u = (x - i[-1]) / (i[0] - i[-1]), v = (z - j[-1]) / (j[0] - j[-1]);
    const double a = At(i[-1], j[-1]), b = At(i[0], j[-1]), c = At(i[-1], j[0]), d = At(i[0], j[0]);
    return u + v < 1.0 ? a + u * (b - a) + v * (c - a) : d + (1 - u) * (c - d) + (1 - v) * (b - d);
  }
  std::vector<double> xs, zs;
  std::vector<Height> parts;
};

Control RandomControl(Dice& dice, CarInput input) {
  const bool brake = input == kAbs || input == kSkidBrake;
  if (dice.Often(brake ? 0.6 : input > kSteer ? 0.4 : 0.05)) return Always(0.0);
  const double size = dice.Often(0.5) ? 1.0 : dice.In(0.0, 1.0);
  const double rate = dice.In(0.1, 8.0), phase = dice.In(0.0, 6.3);
  switch (dice.Of(4)) {
    case 0:
      return Always(dice.Often(0.3) ? -size : size);
    case 1:
      return [=](double t) { return size * std::sin(rate * t + phase); };
    case 2:
      return Between(dice.In(0.0, 3.0), dice.In(1.0, 7.0), size);
    default:
      return [=](double t) { return std::sin(rate * t + phase) > 0.0 ? size : -size; };
  }
}

/// What is wrong with the poses of a frame; empty when nothing is.
class Watch {
 public:
  Watch(CarScene& car, const Terrain& terrain, double scale)
      : m_car(car), m_terrain(terrain), m_scale(scale) {
    for (auto* node : car.scene().GetNodes())
      if (node->GetName().rfind("Car_", 0) == 0) m_nodes.push_back(node);
  }
  std::string Look(int frame) {
    for (CarScene::Node* node : m_nodes)
      for (const double number : node->WorldMatrix(m_car.Frame(frame)).m)
        if (!std::isfinite(number)) return node->GetName() + " is not finite";
    for (std::size_t i = 0; i < 4 && m_onGround; ++i) {
      const auto pose = m_car.World(CarScene::kWheels[i], frame);
      const Vector centre = pose.translation() / m_scale;
      const double ground = m_terrain.OnMesh(centre.x, centre.z);
      // Beyond the edge it falls, and may come back below the ground.
      if (std::isnan(ground)) m_onGround = false;
      m_sunk[i] = centre.y < ground ? m_sunk[i] + 1 : 0;
      if (m_sunk[i] > kMostSunkFrames)
        return std::string(CarScene::kWheels[i]) + " is " + std::to_string(ground - centre.y) +
               " scales in the ground";
    }
    return {};
  }

 private:
  CarScene& m_car;
  const Terrain& m_terrain;
  const double m_scale;
  std::vector<CarScene::Node*> m_nodes;
  std::array<int, 4> m_sunk{};
  bool m_onGround = true;
};

/// One drive. What went wrong in it, else nothing.
std::string Drive(unsigned seed) {
  static const std::vector<std::string> profiles = CarProfiles();
  Dice dice(seed);
  const double fps = dice.Often(0.5) ? std::array{12.0, 24.0, 29.97, 60.0, 120.0}[dice.Of(5)]
                                     : dice.In(12.0, 120.0);
  const double scale = dice.Often(0.3) ? 1.0 : std::pow(10.0, dice.In(-2.0, 2.0));
  const std::string profile = profiles[dice.Of(static_cast<int>(profiles.size()))];
  const Terrain terrain(dice);
  CarScene car(fps);
  if (const std::string problem = car.core().LoadProfile("Car", profile); !problem.empty())
    return problem;
  const bool fast = scale < 3.0 && dice.Often(0.5);
  if (fast) car.Edit("Use Fast Ray Cast", 1);
  car.AddGround(GridMesh([&](double x, double z) { return terrain.At(x, z); }, terrain.xs,
                         terrain.zs, scale));
  const double x = dice.In(-20.0, 20.0), z = dice.In(-20.0, 80.0),
               half = dice.Often(0.5) ? 0.0 : dice.In(-1.6, 1.6);
  car.Place(Vector(x, terrain.At(x, z) + dice.In(0.0, 0.5), z) * scale,
            {0.0, std::sin(half), 0.0, std::cos(half)}, scale);
  Inputs inputs;
  for (int i = kGas; i <= kForce; ++i) inputs[CarInput(i)] = RandomControl(dice, CarInput(i));
  car.Drive(8.0, inputs);
  const std::string what = profile + (fast ? ", fast rays" : "") + ", " + util::shortText(fps) +
                           " frames/s, scale " + util::shortText(scale) + ": ";
  if (!car.messages.empty()) return what + car.messages[0];
  Watch watch(car, terrain, scale);
  for (int i = 0; i <= car.FrameOf(8.0); ++i)
    if (const std::string wrong = watch.Look(i); !wrong.empty())
      return what + wrong + " at frame " + std::to_string(i);
  return {};
}

unsigned seed = 1;
unsigned drives = 40;

TEST(Soak, RandomDrivesStayWithinBounds) {
  for (unsigned i = 0; i < drives; ++i) {
    const std::string wrong = Drive(seed + i);
    EXPECT_EQ(wrong, "") << "--drives=1 --seed=" << seed + i;
  }
}

}  // namespace
}  // namespace orv::tests

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    const auto value = argument.find('=') + 1;
    const auto number = static_cast<unsigned>(std::strtoul(argument.c_str() + value, nullptr, 10));
    if (argument.rfind("--drives=", 0) == 0 && number > 0) {
      orv::tests::drives = number;
    } else if (argument.rfind("--seed=", 0) == 0) {
      orv::tests::seed = number;
    } else {
      std::fprintf(stderr, "%s: unknown (give --drives=N or --seed=S)\n", argv[i]);
      return 2;
    }
  }
  return RUN_ALL_TESTS();
}
