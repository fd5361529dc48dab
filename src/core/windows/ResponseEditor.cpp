#include "core/windows/ResponseEditor.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "core/windows/InputConfigIds.h"
#include "core/windows/InputRows.h"
#include "gui/Component.h"
#include "gui/GuiMessages.h"
#include "gui/Texts.h"
#include "gui/componentinterface/CheckBox.h"
#include "gui/componentinterface/Graph.h"
#include "gui/componentinterface/Spinner.h"
#include "unidevice/Control.h"
#include "unidevice/Property.h"

namespace orv::rws::core::windows {

namespace {

using gui::Translate;
using namespace gui::componentinterface;

constexpr int kSamples = 64;            ///< of the curve, on each side of the dead zone
constexpr double kRoom = 1.25;          ///< of the drawing above what the input gives
constexpr double kMostDeadzone = 0.95;  ///< that a drag leads to
constexpr double kLeastExponent = 0.1;  ///< that a drag leads to, and
constexpr double kMostExponent = 10.0;  ///< the most
constexpr double kVisible = 0.002;      ///< a smaller move of the live point is not seen

struct NumberField {
  int id;
  double InputResponse::*field;
};
constexpr NumberField kNumberFields[] = {{kInputDeadzone, &InputResponse::deadzone},
                                         {kInputExponent, &InputResponse::exponent},
                                         {kInputMultiplier, &InputResponse::multiplier},
                                         {kInputOffset, &InputResponse::offset}};

/// To the decimals that a hundredth of `span` has.
double Rounded(double value, double span) {
  const double digits = std::max(0.0, -std::floor(std::log10(span / 100.0)));
  const double power = std::pow(10.0, digits);
  return std::round(value * power) / power;
}

}  // namespace

ResponseEditor::ResponseEditor(CoreImplementation& core, int row,
                               std::function<void(const std::string&)> tell)
    : m_core(core), m_row(row), m_tell(std::move(tell)) {}

ResponseEditor::~ResponseEditor() {
  if (m_dragging) m_core.EndEdit();
}

unidevice::Property* ResponseEditor::FindInput() const {
  const Instance* rig = m_core.FindByIdentity(m_row);
  return rig && m_root ? rig->GetProperties().property(m_input) : nullptr;
}

// --- what is shown ---

void ResponseEditor::Choose(int input) {
  if (m_dragging) End(false);
  m_input = input;
  Show();
}

void ResponseEditor::Show() {
  const unidevice::Property* input = FindInput();
  if (!input) return;
  const InputResponse response = InputResponse::Of(*input);
  for (const NumberField& number : kNumberFields)
    if (auto* spinner = m_root->Get<Spinner>(number.id)) spinner->SetValue(response.*number.field);
  if (auto* box = m_root->Get<CheckBox>(kInputInvert)) box->SetOn(response.multiplier < 0.0);
  // While the mouse holds a square the drawing must not move below it.
  if (!m_dragging) m_range = kRoom * OutputRange(response.multiplier, response.offset);
  m_from = input->flags == unidevice::kBinaryControl ? 0.0 : -1.0;
  ShowCurve(*input);
  ShowHandles(*input);
  if (auto* graph = m_root->Get<Graph>(kInputGraph)) graph->HideLivePoint();
  ShowLive();
}

void ResponseEditor::ShowCurve(const unidevice::Property& input) {
  auto* graph = m_root->Get<Graph>(kInputGraph);
  if (!graph) return;
  graph->SetAxes({m_from, 1.0, Translate("control"), true},
                 {-m_range, m_range, Translate("input"), true});
  Graph::Curve curve;
  const double zone = std::clamp(input.deadzone, 0.0, 1.0);
  const auto sample = [&](double from, double to) {
    for (int i = 0; i <= kSamples; ++i) {
      const double x = from + (to - from) * i / kSamples;
      curve.points.push_back({x, input.respond(x)});
    }
  };
  if (m_from < 0.0) sample(m_from, -zone);
  sample(zone, 1.0);
  std::vector<Graph::Curve> curves;
  for (const double edge : {-zone, zone})
    if (edge >= m_from)
      curves.push_back({{{edge, -m_range}, {edge, m_range}}, Graph::Role::kWeak, true});
  curves.push_back(std::move(curve));
  graph->SetCurves(std::move(curves));
}

void ResponseEditor::ShowHandles(const unidevice::Property& input) {
  auto* graph = m_root->Get<Graph>(kInputGraph);
  if (!graph) return;
  const double zone = std::clamp(input.deadzone, 0.0, 1.0);
  const double half = zone + (1.0 - zone) / 2.0;
  std::vector<Graph::Handle> handles(4);
  handles[kDeadzone] = {{zone, input.offset}, Translate("Dead zone"), true, false};
  handles[kExponent] = {{half, input.respond(half)}, Translate("Exponent"), false, true};
  handles[kMultiplier] = {{1.0, input.respond(1.0)}, Translate("Multiplier"), false, true};
  handles[kOffset] = {{m_from, input.respond(m_from)}, Translate("Offset"), false, true};
  graph->SetHandles(std::move(handles));
}

void ResponseEditor::ShowLive() {
  const unidevice::Property* input = FindInput();
  auto* graph = input ? m_root->Get<Graph>(kInputGraph) : nullptr;
  if (!graph) return;
  if (!input->control) {
    if (graph->GetLivePoint()) graph->HideLivePoint();
    return;
  }
  const double raw = input->raw();
  if (graph->GetLivePoint() && std::abs(raw - m_liveAt) < kVisible) return;
  m_liveAt = raw;
  graph->SetLivePoint({raw, input->respond(raw)});
}

void ResponseEditor::SetLocked(const std::string& why) {
  if (!m_root) return;
  for (const int id :
       {kInputGraph, kInputDeadzone, kInputExponent, kInputMultiplier, kInputOffset, kInputInvert})
    if (gui::Component* component = m_root->Find(id)) component->SetEnabled(why.empty(), why);
}

// --- what the user does ---

bool ResponseEditor::OnComponent(gui::Component& source, const util::Message& message) {
  const int id = source.GetId();
  const unidevice::Property* input =
      id >= kInputGraph && id <= kInputInvert ? FindInput() : nullptr;
  if (!input) return false;
  InputResponse response = InputResponse::Of(*input);
  switch (message.id) {
    case gui::kMsgEditBegin:
      Begin();
      break;
    case gui::kMsgEditEnd:
      End(message.param == 1);
      break;
    case gui::kMsgHandleMoved:
      Set(Dragged(*input, message.param));
      break;
    case gui::kMsgValueChanged:
      if (id == kInputInvert) response.multiplier = 0.0 - response.multiplier;
      for (const NumberField& number : kNumberFields)
        if (number.id == id) response.*number.field = m_root->Get<Spinner>(id)->GetValue();
      Set(response);
      break;
    default:
      break;
  }
  return true;
}

InputResponse ResponseEditor::Dragged(const unidevice::Property& input, int handle) const {
  InputResponse response = InputResponse::Of(input);
  const auto* graph = m_root->Get<Graph>(kInputGraph);
  if (!graph) return response;
  const Graph::Point to = graph->GetDragged();
  const double rise = (to.y - response.offset) / response.multiplier;  // of the whole way
  switch (handle) {
    case kDeadzone:
      response.deadzone = std::clamp(Rounded(to.x, 1.0), 0.0, kMostDeadzone);
      break;
    case kExponent:
      // Halfway behind the dead zone the curve stands at 0.5 to the power of it.
      if (std::isfinite(rise)) {
        const double power = rise > 0.0 ? std::log(rise) / std::log(0.5) : kMostExponent;
        response.exponent = std::clamp(Rounded(power, 1.0), kLeastExponent, kMostExponent);
      }
      break;
    case kMultiplier:
      response.multiplier = Rounded(to.y - response.offset, m_range);
      break;
    case kOffset:
      response.offset = Rounded(to.y - (input.respond(m_from) - response.offset), m_range);
      break;
    default:
      break;
  }
  return response;
}

void ResponseEditor::Begin() {
  Instance* rig = m_core.FindByIdentity(m_row);
  if (!rig) return;
  const std::string problem = m_core.BeginResponseEdit(*rig, m_input);
  m_dragging = problem.empty();
  m_tell(problem);
}

void ResponseEditor::Set(const InputResponse& response) {
  Instance* rig = m_core.FindByIdentity(m_row);
  if (!rig) return;
  if (m_dragging) {
    if (m_core.DragResponse(*rig, m_input, response).empty()) return;
    Begin();  // something else has ended the edit: the rest of the drag is another
    if (m_dragging && m_core.DragResponse(*rig, m_input, response).empty()) return;
  }
  m_tell(m_core.SetInputResponse(*rig, m_input, response));
  Show();
}

void ResponseEditor::End(bool cancelled) {
  if (!std::exchange(m_dragging, false)) return;
  if (cancelled)
    m_core.CancelEdit();
  else
    m_core.EndEdit();
  Show();
}

}  // namespace orv::rws::core::windows
