#include "app/session/Losses.h"

#include <algorithm>
#include <limits>
#include <set>
#include <utility>

#include "adaptor/headless/Scene.h"
#include "app/session/anyhost/Names.h"
#include "app/session/anyhost/TimeSpan.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "unidevice/Property.h"

namespace orv::app {

namespace headless = rws::adaptor::headless;

namespace {

const std::vector<double> kNone;

}  // namespace

/// Counts what is gone and keeps where it lay.
class Losses::Tally {
 public:
  /// `frame` in seconds.
  explicit Tally(double frame) : m_frame(frame) {}

  /// How many of `before` lie outside of `now`; both in rising order. The frame at which a take
  /// begins is not recorded, and the last frame of another rate may lie almost one before.
  std::size_t Outside(const std::vector<double>& before, const std::vector<double>& now) {
    if (now.empty()) return Note(before.begin(), before.end());
    const auto first =
        std::lower_bound(before.begin(), before.end(), now.front() - 1.001 * m_frame);
    const auto last = std::upper_bound(first, before.end(), now.back() + 0.999 * m_frame);
    return Note(before.begin(), first) + Note(last, before.end());
  }
  void Add(std::size_t count, const std::string& owner) {
    if (count == 0) return;
    m_count += count;
    m_owners.push_back(owner);
  }
  std::string Text(const std::string& thing, const std::string& owner) const {
    if (m_count == 0) return {};
    constexpr std::size_t kNamed = 3;
    const std::size_t count = m_owners.size();
    std::vector<std::string> named(m_owners.begin(), m_owners.begin() + std::min(kNamed, count));
    if (count > kNamed) named.back() += " and " + std::to_string(count - kNamed) + " more";
    return std::to_string(m_count) + " " + thing + (m_count == 1 ? "" : "s") + " of " +
           std::to_string(count) + " " + owner + (count == 1 ? "" : "s") + " from " +
           RangeText({m_first, m_last}) + " (" + Joined(named) + ")";
  }

 private:
  using At = std::vector<double>::const_iterator;
  std::size_t Note(At from, At to) {
    if (from == to) return 0;
    m_first = std::min(m_first, *from);
    m_last = std::max(m_last, *std::prev(to));
    return static_cast<std::size_t>(to - from);
  }

  double m_frame;
  std::size_t m_count = 0;
  std::vector<std::string> m_owners;
  double m_first = std::numeric_limits<double>::infinity();
  double m_last = -std::numeric_limits<double>::infinity();
};

Losses::Losses(rws::core::CoreImplementation& core, const headless::Scene& scene)
    : m_core(core), m_scene(scene) {
  for (const headless::SceneNode* node : scene.GetNodes())
    if (node->HasKeys()) m_keys.push_back({node->GetName(), node, node->GetAnimation()});
  for (rws::core::Instance* rig : core.List(false)) {
    const auto& tracks = rig->GetTracks();
    const auto& entries = rig->GetProperties().entries;
    for (std::size_t i = 0; i < std::min(tracks.size(), entries.size()); ++i) {
      Input input{rig->GetInstanceName() + ":" + entries[i].first, rig, i, {}};
      for (const auto& sample : tracks[i].samples) input.times.push_back(sample.time);
      if (!input.times.empty()) m_inputs.push_back(std::move(input));
    }
  }
}

Losses::Tally Losses::LostKeys() const {
  const std::vector<headless::SceneNode*> nodes = m_scene.GetNodes();
  const std::set<const headless::SceneNode*> there(nodes.begin(), nodes.end());
  Tally tally(m_scene.GetFrameDuration());
  for (const Keys& keys : m_keys) {
    // A run makes what it fires anew, under the same names.
    const headless::SceneNode* node = keys.node;
    if (there.count(node) == 0) node = m_scene.Find(keys.name);
    const headless::NodeAnimation now = node ? node->GetAnimation() : headless::NodeAnimation();
    std::size_t most = 0;  // a key of a node is one, whatever it moves
    for (std::size_t i = 0; i < now.channels.size(); ++i) {
      const auto& before = keys.before.channels[i];
      if (!before || before == now.channels[i]) continue;
      const auto& after = now.channels[i];
      most = std::max(most, tally.Outside(before->GetTimes(), after ? after->GetTimes() : kNone));
    }
    tally.Add(most, keys.name);
  }
  return tally;
}

Losses::Tally Losses::LostInput() const {
  const std::vector<rws::core::Instance*> rigs = m_core.List(false);
  Tally tally(m_scene.GetFrameDuration());
  for (const Input& input : m_inputs) {
    const auto rig = std::find(rigs.begin(), rigs.end(), input.rig);
    std::vector<double> now;
    if (rig != rigs.end() && input.index < (*rig)->GetTracks().size())
      for (const auto& sample : (*rig)->GetTracks()[input.index].samples)
        now.push_back(sample.time);
    tally.Add(tally.Outside(input.times, now), input.name);
  }
  return tally;
}

LossReport Losses::Report() const {
  return {LostKeys().Text("key", "node"), LostInput().Text("recorded sample", "input")};
}

}  // namespace orv::app
