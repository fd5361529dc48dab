// Keys as a saved scene has them, evaluated here from the file's own numbers.
#include <maya/MFnAnimCurve.h>

#include <map>
#include <sstream>

#include "MayaFixture.h"
#include "adaptor/Performance.h"
#include "adaptor/common/HostChannels.h"
#include "adaptor/maya/Channels.h"
#include "support/QtApplication.h"

namespace orv::tests {
namespace {

using Real = long double;

/// A curve of the file: spans are cubics in time and value between control values at a third of
/// their tangents, which without weights are as long as the span.
class FileCurve {
 public:
  void Add(const std::string& line) {
    std::istringstream in(line);
    std::string word;
    Key k;
    in >> word >> k.at >> k.value >> k.type[0] >> k.type[1];
    for (int side : {0, 1}) in >> k.x[side] >> k.y[side];
    k.at /= 141120000.0L;
    m_keys.push_back(k);
  }
  bool weighted = false;
  std::size_t Count() const { return m_keys.size(); }
  Real First() const { return m_keys.front().at; }
  Real Last() const { return m_keys.back().at; }
  Real At(Real t) const {
    std::size_t i = 0;
    while (i + 1 < m_keys.size() && m_keys[i + 1].at <= t) ++i;
    if (t <= First() || i + 1 == m_keys.size()) return m_keys[t <= First() ? 0 : i].value;
    const Key &a = m_keys[i], &b = m_keys[i + 1];
    const Real span = b.at - a.at;
    constexpr int kLinear = 2, kStep = 5, kStepNext = 10;
    if (a.type[1] == kStep) return a.value;
    if (a.type[1] == kStepNext) return t > a.at ? b.value : a.value;
    if (a.type[1] == kLinear && b.type[0] == kLinear)
      return (a.value * (b.at - t) + b.value * (t - a.at)) / span;
    const Real out = weighted ? a.x[1] / span : 1, in = weighted ? b.x[0] / span : 1;
    const Real y1 = out * span * a.y[1] / a.x[1] / 3, y2 = in * span * b.y[0] / b.x[0] / 3;
    // Where the cubic passes t: its time rises.
    Real low = 0, high = 1;
    const auto cubic = [](Real p0, Real p1, Real p2, Real p3, Real s) {
      const Real u = 1 - s;
      return u * u * (u * p0 + 3 * s * p1) + s * s * (3 * u * p2 + s * p3);
    };
    for (int step = 0; step < 80; ++step) {
      const Real s = (low + high) / 2;
      (cubic(0, out / 3, 1 - in / 3, 1, s) * span < t - a.at ? low : high) = s;
    }
    return cubic(a.value, a.value + y1, b.value - y2, b.value, low);
  }

 private:
  struct Key {
    Real at, value, x[2], y[2];
    int type[2];
  };
  std::vector<Key> m_keys;
};

std::map<std::string, FileCurve> CurvesOfFile() {
  std::map<std::string, FileCurve> curves;
  std::istringstream file(mayahost::SceneText());
  std::string node;
  for (std::string line; std::getline(file, line);) {
    if (line.rfind("node ", 0) == 0)
      node =
          line.substr(line.find('"') + 1, line.find('"', line.find('"') + 1) - line.find('"') - 1);
    if (line.rfind("curve ", 0) == 0) curves[node].weighted = line.back() == '1';
    if (line.rfind("key ", 0) == 0) curves[node].Add(line);
  }
  return curves;
}

const FileCurve& CurveOfPlug(const std::map<std::string, FileCurve>& curves, CoreNode* node,
                             const char* channel) {
  const MObject object = static_cast<maya::CMayaNode*>(node)->GetObject();
  const MObject curve = maya::CurveOf(maya::FindPlug(object, channel));
  return curves.at(MFnDependencyNode(curve).name().asUTF8());
}

TEST(MayaKeys, OfATakeAreItsPosesToWhoReadsTheFile) {
  for (const double fps : {24.0, 24000.0 / 1001.0}) {
    MayaFixture host({true, MDistance::kCentimeters});
    Performance car(host, "4WheelerExt", fps);
    car.Resimulate();
    const auto curves = CurvesOfFile();
    int keyed = 0;
    for (CoreNode* node : car.Nodes()) {
      if (!node->HasKeys()) continue;
      ++keyed;
      for (int step = 0; step <= 5 * kFrames; ++step) {
        const Real time = step * car.core.GetFrameDuration() / 5;
        std::array<double, 9> values{};
        for (std::size_t i = 0; i < 9; ++i) {
          const MPlug plug = maya::FindPlug(static_cast<maya::CMayaNode*>(node)->GetObject(),
                                            maya::kPoseChannels[i]);
          const Real ticks = std::round(time * 141120000.0L) / 141120000.0L;
          values[i] =
              static_cast<double>(CurveOfPlug(curves, node, maya::kPoseChannels[i]).At(ticks));
          ASSERT_NEAR(maya::ValueAt(plug, static_cast<double>(time)), values[i],
                      1e-12 * std::max(1.0, std::abs(values[i])));
        }
        if (step % 5 != 0 || !node->GetParent()) continue;
        const Matrix<double> pose =
            Compose(rws::adaptor::PoseOf({{values[0], values[1], values[2]},
                                          {values[3], values[4], values[5]},
                                          {values[6], values[7], values[8]}},
                                         {}));
        const Matrix<double> rig =
            static_cast<maya::CMayaNode*>(node)->GetLocalPose(static_cast<double>(time));
        for (int i = 0; i < 16; ++i) ASSERT_NEAR(pose[i], rig[i], 1e-12) << node->GetSceneName();
      }
    }
    EXPECT_GT(keyed, 10);
  }
}

TEST(MayaKeys, OfEveryTangentAreThoseOfTheFileAndOfACopy) {
  MayaFixture host;
  CoreNode* const hook = host.UserNode("Hook");
  const double values[] = {0, 3, 3, -2, 5, 4.5, 8, 8, 1};
  int channel = 0;
  for (const auto tangent :
       {MFnAnimCurve::kTangentFixed, MFnAnimCurve::kTangentFlat, MFnAnimCurve::kTangentSmooth,
        MFnAnimCurve::kTangentStep, MFnAnimCurve::kTangentClamped, MFnAnimCurve::kTangentPlateau,
        MFnAnimCurve::kTangentStepNext, MFnAnimCurve::kTangentAuto, MFnAnimCurve::kTangentLinear}) {
    MDGModifier modifier;
    const MPlug plug = maya::FindPlug(static_cast<maya::CMayaNode*>(hook)->GetObject(),
                                      maya::kPoseChannels[static_cast<std::size_t>(channel)]);
    MFnAnimCurve curve(maya::CurveFor(plug, modifier));
    modifier.doIt();
    curve.setIsWeighted(channel % 2 == 0);
    for (int i = 0; i < 9; ++i)
      curve.addKey(maya::ToHostTime((i * 7 + i % 3) / 24.0), values[i] + channel, tangent, tangent);
    for (unsigned i = 0; i < 9 && tangent == MFnAnimCurve::kTangentFixed; ++i) {
      curve.setTangentsLocked(i, false);
      curve.setTangent(i, 0.25f, 2.0f - i, true);
      curve.setTangent(i, 0.5f, 0.5f * i, false);
    }
    ++channel;
  }
  host.Maya().BeginUndoBlock("Copy");
  CoreNode* const copy = host.Maya().DuplicateNode(hook, {nullptr, "Copy", "Copy"},
                                                   static_cast<CoreNode*>(hook->GetParent()));
  host.Maya().EndUndoBlock();
  const auto curves = CurvesOfFile();
  for (const char* name : maya::kPoseChannels) {
    const FileCurve& own = CurveOfPlug(curves, hook, name);
    const FileCurve& copied = CurveOfPlug(curves, copy, name);
    ASSERT_EQ(copied.Count(), 9u);
    EXPECT_EQ(copied.weighted, own.weighted);
    const MPlug plug = maya::FindPlug(static_cast<maya::CMayaNode*>(hook)->GetObject(), name);
    for (int tick = -10; tick <= 700; ++tick) {
      const double time = (tick + 0.37) / 240.0;  // at no key
      const double size = std::max(1.0, std::abs(static_cast<double>(own.At(time))));
      EXPECT_NEAR(maya::ValueAt(plug, time), own.At(time), 1e-9 * size) << name << " at " << time;
      EXPECT_NEAR(copied.At(time), own.At(time), 1e-9 * size) << name << " at " << time;
    }
  }
  host.Maya().ClearUndoHistory();
}

}  // namespace
}  // namespace orv::tests
