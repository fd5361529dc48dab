#include "plugins/release/crawlertracks/CrawlerActions.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "core/interface/CNode.h"
#include "plugins/common/HandOver.h"
#include "plugins/release/crawlertracks/CrawlerTrack.h"
#include "plugins/release/crawlertracks/CrawlerUndo.h"
#include "plugins/release/crawlertracks/CrawlerWheel.h"

namespace orv::rws::addon {

using Matrix = CrawlerTracks::Matrix;
using Vector = CrawlerTracks::Vector;

namespace {

/// Distance to the wheel before, of a wheel that is added (units of the Frame).
constexpr double kWheelSpacing = 1.25;
// A support wheel that is added: a small one that the upper run lies on.
constexpr double kSupportScale = 0.3;
constexpr double kSupportRise = 0.35;
constexpr double kSupportSpacing = 0.6;

template <class List>
std::string FreeName(const List& wheels, const std::string& base) {
  for (int number = 1;; ++number) {
    const std::string name = base + (number < 10 ? "0" : "") + std::to_string(number);
    if (std::none_of(wheels.begin(), wheels.end(),
                     [&](const auto& wheel) { return wheel->GetName() == name; }))
      return name;
  }
}

Matrix Beside(const Vector& by, double scale = 1.0) {
  Matrix matrix;
  matrix.setRowLengths({1.0, scale, scale});
  matrix.setTranslation(by);
  return matrix;
}

}  // namespace

bool CrawlerTracks::RefuseWithTrack(const char* text) const {
  if (m_track) Tell("Operation not possible", text, kIconWarning);
  return m_track != nullptr;
}

bool CrawlerTracks::RefuseWithoutTrack() const {
  if (!m_track) Tell("Operation not possible", "No track attached", kIconWarning);
  return m_track == nullptr;
}

// --- wheels ---

std::shared_ptr<CrawlerTracks::Wheel> CrawlerTracks::MakeWheel(const std::string& name,
                                                               const Matrix& place) {
  WheelKind kind{m_settings.staticWheel, m_settings.innerWheel, m_settings.trackWheel, false};
  kind.support = name.compare(0, 7, "support") == 0;
  if (kind.support) kind.innerWheel = kind.trackWheel = false;
  auto wheel = std::make_shared<Wheel>(*this, name, m_frame, kind);
  if (wheel->Create() != 0) {
    Tell("Error", "Could not create Wheel Node", kIconCritical);
    return nullptr;
  }
  wheel->Place(m_pInterface->GetTime(), place);
  wheel->ShowKind();
  return wheel;
}

void CrawlerTracks::AddWheel() {
  if (RefuseWithTrack("Remove track before adding more wheels.")) return;
  auto undo = std::make_unique<WheelUndo>(*this);
  const double now = m_pInterface->GetTime();
  const Matrix last = m_frame.ReadMatrix(now).affineInverse() * m_wheels.back()->ReadMatrix(now);
  const Vector place = last.translation() - Vector(0.0, 0.0, kWheelSpacing);
  const auto wheel =
      MakeWheel(FreeName(m_wheels, "bogie"), m_frame.ReadMatrix(now) * Beside(place));
  if (!wheel) return;
  m_wheels.push_back(wheel);
  // Behind the step of the node: a redo has it back before the list looks for it.
  m_pInterface->PushUndo(undo.release());
  ShowWheels();
}

void CrawlerTracks::AddSupportWheel() {
  if (RefuseWithTrack("Remove track before adding more wheels.")) return;
  auto undo = std::make_unique<WheelUndo>(*this);
  const double now = m_pInterface->GetTime();
  const Matrix frame = m_frame.ReadMatrix(now);
  const Vector drive =
      frame.affineInverse().transformPoint(m_wheels.front()->ReadMatrix(now).translation());
  const double along = kSupportSpacing * static_cast<double>(m_supportWheels.size() + 1);
  const Vector place = drive + Vector(0.0, kSupportRise, -along);
  const auto wheel =
      MakeWheel(FreeName(m_supportWheels, "supportBogie"), frame * Beside(place, kSupportScale));
  if (!wheel) return;
  m_supportWheels.push_back(wheel);
  m_pInterface->PushUndo(undo.release());
  ShowWheels();
}

void CrawlerTracks::RemoveLast(WheelList& wheels) {
  m_pInterface->PushUndo(new WheelUndo(*this));
  const std::shared_ptr<Wheel> gone = wheels.back();
  wheels.pop_back();
  HandOverChildren(*m_pInterface, *gone, m_frame);
  gone->Delete();
  ShowWheels();
}

void CrawlerTracks::RemoveWheel() {
  if (RefuseWithTrack("The track must be removed before any wheels can be removed.")) return;
  if (m_wheels.size() > 1)
    RemoveLast(m_wheels);
  else
    Tell("Operation not possible", "Cannot remove the driveWheel.", kIconWarning);
}

void CrawlerTracks::RemoveSupportWheel() {
  if (RefuseWithTrack("The track must be removed before any Support Wheels can be removed."))
    return;
  if (!m_supportWheels.empty())
    RemoveLast(m_supportWheels);
  else
    Tell("Operation not possible", "Cannot remove any more Support Wheels.", kIconWarning);
}

// --- the track ---

void CrawlerTracks::CreateTrack() {
  if (m_track) {
    const int answer = m_pInterface->MessageBox(
        "Create new track",
        "Track already created. Do you want to remove current track and create a new one?",
        kButtonsYesNo | kIconQuestion);
    if (answer != kAnswerYes) return;
  }
  LayTrack(m_settings.nrSteps);
}

/// Lays a track of this many steps in place of the one there is. False, and the user told, when
/// there can be none; only a host that can't make the nodes then leaves the old one removed.
bool CrawlerTracks::LayTrack(int steps) {
  if (steps < 1) {
    Tell("Error",
         "Track could not be created. Number of steps was set to less than 1. Increase number of "
         "steps to create the track.",
         kIconCritical);
    return false;
  }
  const std::optional<BeltPath> path = FindPath();
  if (!path || !DropTrack()) return false;
  bool isMesh = false;
  auto track = std::make_shared<Track>(
      *this, m_gravityDirection.MeshOf(m_templateStep.GetNode(), m_pInterface->GetTime(), isMesh));
  track->density = m_settings.trackDensity;
  if (m_caterpillar.Create() != 0) {
    Tell("Error", "Could not create StepActor...", kIconCritical);
    return false;
  }
  if (!MakeSteps(*track, *path, steps)) {
    for (const auto& step : track->steps) step->Delete();
    m_caterpillar.Delete();
    return false;
  }
  m_track = track;
  SettleTrack();
  m_pInterface->PushUndo(new BulletTrackCreationUndo(*this, track));
  return true;
}

/// Removes the track where there is one. False when a node could not be removed; the user is told.
bool CrawlerTracks::DropTrack() {
  if (!m_track) return true;
  m_pInterface->PushUndo(new BulletTrackRemovalUndo(*this));
  const TrackPointer gone = std::exchange(m_track, nullptr);
  const auto remove = [&](RigSceneNode& node, const char* problem) {
    HandOverChildren(*m_pInterface, node, m_frame);
    CNode* const old = node.GetNode();
    node.Delete();
    if (!old || !node.Find() || node.GetNode() != old) return true;
    Tell("Deletion Error", problem, kIconCritical);
    return false;
  };
  bool removed = true;
  for (auto step = gone->steps.rbegin(); removed && step != gone->steps.rend(); ++step)
    removed = remove(**step, "Could'nt delete track.");
  return removed && remove(m_caterpillar, "Could'nt delete track..");
}

void CrawlerTracks::RemoveTrack() {
  if (!RefuseWithoutTrack()) DropTrack();
}

void CrawlerTracks::AddStep() {
  if (RefuseWithoutTrack()) return;
  const int count = static_cast<int>(m_track->steps.size()) + 1;
  if (count <= kMostSteps && LayTrack(count)) SetByAction(m_settings.nrSteps, count);
}

void CrawlerTracks::RemoveStep() {
  if (RefuseWithoutTrack()) return;
  const int count = static_cast<int>(m_track->steps.size()) - 1;
  if (LayTrack(count)) SetByAction(m_settings.nrSteps, count);
}

void CrawlerTracks::SelectSteps() {
  if (RefuseWithoutTrack()) return;
  CNode* const group = m_caterpillar.GetNode();
  if (group) group->Extension(kBeginGroupSelection, nullptr, nullptr);
  for (const auto& step : m_track->steps) step->OnCallback(kSelectSteps);
  if (group) group->Extension(kEndGroupSelection, nullptr, nullptr);
}

}  // namespace orv::rws::addon
