// The crawler's parameters, its input and events.
#include <string>
#include <utility>

#include "plugins/common/ReplayedEvent.h"
#include "plugins/release/crawlertracks/CrawlerActions.h"
#include "plugins/release/crawlertracks/crawlertracks_CrawlerTracks.h"
#include "unidevice/Control.h"

namespace orv::rws::addon {

namespace {

using S = CrawlerSettings;
using Row = ParameterRow<S>;
constexpr int kBoxes = CrawlerSettings::kSavedBoxes * kSavedPart;
constexpr Row kRows[] = {
    Row::Group("General Modes", "What is shown"),
    Row::Flag(kBoxes, "hideHelpers", "Hide Helpers",
              "Hides TemplateStep, GravityDirection and the text.", &S::hideHelpers,
              Hides::kAlways),
    Row::Flag(kBoxes, "hideHelpersDuringRecording", "Hide Helpers During Recording",
              "Hides the helpers while a take runs.", &S::hideHelpersDuringRecording,
              Hides::kDuringTakes),
    Row::Flag(kBoxes, "hideTrackText", "Hide Track Text",
              "Hides the text that tells where forward is.", &S::hideTrackText, Hides::kAlways),
    Row::EndGroup(),
    Row::Group("Track Properties", "How the track moves; these take effect at once"),
    Row::Number(0, "gravity", "Gravity", "Strength of the gravity", &S::gravity,
                {-1000.0, 1000.0, 0.1, 3})
        .AsInput(),
    Row::Number(1, "flaccid", "Bending Stiffness", "How much the track resists being bent",
                &S::flaccid, {0.01, 2.0, 0.01, 3})
        .AsInput(),
    Row::Number(2, "trackDamping", "Bending Damping", "How soon a bend comes to rest",
                &S::trackDamping, {0.01, 3.0, 0.01, 3})
        .AsInput(),
    Row::Number(3, "transFlaccid", "Displacement Stiffness", "How firmly the steps hold together",
                &S::transFlaccid, {0.01, 2.0, 0.01, 3})
        .AsInput(),
    Row::Number(4, "trackTransDamping", "Displacement Damping",
                "How soon a gap between two steps comes to rest", &S::trackTransDamping,
                {0.01, 1.0, 0.01, 3})
        .AsInput(),
    Row::Number(5, "twistFlaccid", "Twist Stiffness", "How much the track resists being twisted",
                &S::twistFlaccid, {0.01, 1.0, 0.01, 3})
        .AsInput(),
    Row::Number(6, "trackTwistDamping", "Twist Damping", "How soon a twist comes to rest",
                &S::trackTwistDamping, {0.01, 3.0, 0.01, 3})
        .AsInput(),
    Row::Number(7, "trackFriction", "Friction", "Friction of the steps on wheels and ground",
                &S::trackFriction, {0.0, 10.0, 0.01, 3})
        .AsInput(),
    Row::Count(11, "trackAccuracy", "Accuracy",
               "Iterations of the physics' solver. Can slow down simulation considerably",
               &S::trackAccuracy, {1, 50}),
    Row::Count(12, "trackIterations", "Flaccidity Reduction",
               "Steps of the physics in each sub-frame: more make the track firmer and the "
               "simulation slower",
               &S::trackIterations, {1, 50}),
    Row::Count(13, "subFrames", "SubFrames", "Extra steps within a frame", &S::subFrames, {0, 50}),
    Row::Flag(15, "setSubFrames", "Set keyframes on SubFrames",
              "Keys the track at every extra step too", &S::setSubFrames),
    Row::EndGroup(),
    Row::Group("Track Creation Properties", "To be set before the track is made"),
    Row::Flag(16, "staticWheel", "Static Wheel", "The next wheel does not turn with the driveWheel",
              &S::staticWheel),
    Row::Flag(17, "innerWheel", "Inner Wheel",
              "The track runs round the next wheel; off: along its outside", &S::innerWheel),
    Row::Flag(18, "trackWheel", "Track Wheel", "The track is laid round the next wheel",
              &S::trackWheel),
    Row::Button(kAddWheel, "Adds a wheel behind the last one"),
    Row::Button(kRemoveWheel, "Removes the last wheel"),
    Row::Button(kAddSupportWheel, "Adds a wheel that carries the track without leading it"),
    Row::Button(kRemoveSupportWheel, "Removes the last support wheel"),
    Row::Count(14, "nrSteps", "Number of Steps", "Steps of the track", &S::nrSteps,
               {0, kMostSteps}),
    Row::Number(8, "trackGap", "Gap Between Steps",
                "Gap that the steps are counted with, in Frame units", &S::trackGap,
                {-kMostGap, kMostGap, 0.1, 3}),
    Row::Button(kCalculateSteps, "Finds how many steps go round the wheels with the gap as it is"),
    Row::Button(kCalculateGap, "Finds the gap for the steps as many as they are"),
    Row::Button(kCreateTrack, "Lays the track round the wheels"),
    Row::Button(kRemoveTrack, "Removes the track"),
    Row::Button(kAddStep, "Lays the track anew with one step more"),
    Row::Button(kRemoveStep, "Lays the track anew with one step less"),
    Row::Button(kSelectSteps, "Selects the nodes of all steps"),
    Row::EndGroup(),
    Row::Group("Input Properties", "What the input does"),
    Row::Number(9, "rotationInput", "Maximum (Input Driven) Rotation Speed",
                "Speed of the driveWheel at full input (radians per second)", &S::rotationInput,
                {-100.0, 100.0, 0.1, 3})
        .AsInput(),
    Row::EndGroup(),
    Row::Number(10, "trackDensity", nullptr, nullptr, &S::trackDensity, {-1e9, 1e9}),
};

}  // namespace

std::vector<Parameter> ParametersOf(CrawlerSettings& settings) {
  return ParametersOf(kRows, settings);
}

int CrawlerTracks::Define() {
  m_pInterface->BeginConfig();
  DefineParameters(ParametersOf(m_settings));
  m_pInterface->EndConfig();
  m_input =
      m_pInterface->AddInput("Forward/Backward", "Turns the driveWheel", unidevice::kAnyControl);
  return 0;
}

// --- events ---

void CrawlerTracks::OnCallback(std::string name) {
  if (m_hideModes.OnCallback(*m_pInterface, *this, name)) return;
  const ReplayedEvent event(name);
  // A take runs on what its start found.
  if (!event.IsReplay() && !m_inTake) RunAction(std::string(event.label));
}

bool CrawlerTracks::RunAction(const std::string& label) {
  const std::pair<const char*, void (CrawlerTracks::*)()> actions[] = {
      {kAddWheel, &CrawlerTracks::AddWheel},
      {kRemoveWheel, &CrawlerTracks::RemoveWheel},
      {kAddSupportWheel, &CrawlerTracks::AddSupportWheel},
      {kRemoveSupportWheel, &CrawlerTracks::RemoveSupportWheel},
      {kCalculateSteps, &CrawlerTracks::CalculateSteps},
      {kCalculateGap, &CrawlerTracks::CalculateGap},
      {kCreateTrack, &CrawlerTracks::CreateTrack},
      {kRemoveTrack, &CrawlerTracks::RemoveTrack},
      {kAddStep, &CrawlerTracks::AddStep},
      {kRemoveStep, &CrawlerTracks::RemoveStep},
      {kSelectSteps, &CrawlerTracks::SelectSteps}};
  for (const auto& [name, action] : actions) {
    if (label != name) continue;
    (this->*action)();
    return true;
  }
  return false;
}

}  // namespace orv::rws::addon
