#include "core/windows/MainWindowPose.h"

#include <cmath>

#include "core/CoreImplementation.h"
#include "core/windows/LengthUnit.h"
#include "core/windows/MainWindowIds.h"
#include "core/windows/MainWindowScene.h"
#include "gui/GuiMessages.h"
#include "gui/Texts.h"
#include "gui/componentinterface/ComboBox.h"
#include "gui/componentinterface/Spinner.h"

namespace orv::rws::core::windows {

namespace {

using gui::Translate;
using gui::componentinterface::ComboBox;
using gui::componentinterface::Spinner;

constexpr int kNumbers = 9;
constexpr char kSpace[] = "space";

double& NumberOf(SceneBrowser::Pose& pose, int number) {
  auto& vector = number < 3 ? pose.translation : number < 6 ? pose.rotation : pose.scale;
  return number % 3 == 0 ? vector.x : number % 3 == 1 ? vector.y : vector.z;
}

/// What a user reads of a number: no remainders of arithmetic.
double Rounded(double number) {
  constexpr double kParts = 1e6;
  const double rounded = std::round(number * kParts) / kParts;
  return rounded == 0.0 ? 0.0 : rounded;  // no -0
}

}  // namespace

void MainWindowPose::OnBuilt() {
  With<ComboBox>(kNodeSpace,
                 [this](ComboBox& box) { box.SelectId(GetWindow().GetKept(kSpace) == "1"); });
  OnSettingsChanged();
}

void MainWindowPose::OnSettingsChanged() {
  const LengthUnit unit = UnitOf(GetCore().GetPreferences().units);
  m_unit = unit.perMetre;
  for (int i = 0; i < 6; ++i)
    With<Spinner>(kNodeNumbers + i,
                  [&](Spinner& spinner) { spinner.SetUnit(i < 3 ? unit.name : "\u00b0"); });
  Show();
}

SceneBrowser::Space MainWindowPose::GetSpace() const {
  const ComboBox* box = Get<ComboBox>(kNodeSpace);
  return box && box->GetSelectedId() == 1 ? SceneBrowser::Space::kWorld
                                          : SceneBrowser::Space::kParent;
}

double MainWindowPose::Factor(int number) const {
  return number < 3 ? m_unit : 1.0;
}

void MainWindowPose::Show() {
  SceneBrowser* browser = GetBrowser();
  gui::Component* fields = GetWindow().Find(kNodeFields);
  if (!browser || !fields || m_edited) return;
  const int node = m_scene.GetCurrent();
  SceneBrowser::Pose pose;
  const bool there = node != 0 && browser->GetPose(node, GetSpace(), pose);
  const std::string locked = GetWindow().WhyLocked();
  for (int i = 0; i < kNumbers; ++i) {
    GetWindow().SetEnabled(kNodeNumbers + i, there && locked.empty(),
                           there ? locked : Translate("Select a node in the scene first."));
    With<Spinner>(kNodeNumbers + i, [&](Spinner& spinner) {
      const double shown = Rounded(NumberOf(pose, i) * Factor(i));
      if (spinner.GetValue() != shown && !spinner.IsBeingEdited()) spinner.SetValue(shown);
    });
  }
  m_pose = pose;
}

void MainWindowPose::OnComponent(gui::Component& source, util::Message& message) {
  const int id = source.GetId();
  if (id == kNodeSpace && message.id == gui::kMsgValueChanged) {
    GetWindow().Keep(kSpace, std::to_string(message.param));
    return Show();
  }
  const int number = id - kNodeNumbers;
  if (number < 0 || number >= kNumbers) return;
  const Spinner* spinner = Get<Spinner>(id);
  if (message.id == gui::kMsgEditBegin) {
    m_edited = true;
  } else if (message.id == gui::kMsgEditEnd) {
    m_edited = false;
    if (message.param == 0) Apply(number, spinner->GetValue());
  } else if (message.id == gui::kMsgValueChanged && !m_edited) {
    Apply(number, spinner->GetValue());
  }
}

void MainWindowPose::Apply(int number, double shown) {
  const int node = m_scene.GetCurrent();
  double& held = NumberOf(m_pose, number);
  if (!GetBrowser() || node == 0 || !GetWindow().WhyLocked().empty()) return Show();
  if (Rounded(held * Factor(number)) != shown) {
    held = shown / Factor(number);
    Tell(kNodeNotice, GetBrowser()->SetPose(node, GetSpace(), m_pose));
  }
  Show();
}

}  // namespace orv::rws::core::windows
