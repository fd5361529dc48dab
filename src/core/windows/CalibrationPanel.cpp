#include "core/windows/CalibrationPanel.h"

#include <utility>

#include "core/CoreImplementation.h"
#include "core/windows/ControlWords.h"
#include "core/windows/InputConfigIds.h"
#include "core/windows/LiveBar.h"
#include "core/windows/Windows.h"
#include "gui/Component.h"
#include "gui/GuiMessages.h"
#include "gui/Texts.h"
#include "gui/componentinterface/ComboBox.h"
#include "gui/componentinterface/Label.h"
#include "unidevice/Control.h"
#include "unidevice/DriverManager.h"

namespace orv::rws::core::windows {

namespace {

using gui::Translate;
using gui::componentinterface::ComboBox;
using gui::componentinterface::Item;
using gui::componentinterface::Label;
using unidevice::Calibration;
using unidevice::CalibrationMeasure;

}  // namespace

std::string CalibrationWords(const Calibration* calibration) {
  if (!calibration || calibration->kind == Calibration::Kind::kNone)
    return Translate("Not calibrated");
  if (calibration->kind == Calibration::Kind::kPedal)
    return Translate("Rests at %1, full at %2",
                     {BarNumber(calibration->rest), BarNumber(calibration->full)});
  return Translate(
      "Centre at %1, ends at %2 and %3",
      {BarNumber(calibration->rest), BarNumber(calibration->low), BarNumber(calibration->full)});
}

CalibrationPanel::CalibrationPanel(Windows& windows) : m_windows(windows) {
  m_watch.setInterval(kWatchPeriod);
  QObject::connect(&m_watch, &QTimer::timeout, &m_watch, [this] { Look(); });
}

void CalibrationPanel::Build(gui::Component& into) {
  m_root = m_windows.GetLayout().Instantiate("/core/layout/rows/calibration.xml", into);
  Show();
}

void CalibrationPanel::SetControls(std::vector<unidevice::ControlChoice> controls) {
  if (controls == m_controls) return;
  Cancel();
  m_notice.clear();
  m_controls = std::move(controls);
  m_index = 0;
  Show();
}

const unidevice::ControlChoice* CalibrationPanel::GetControl() const {
  return m_index < m_controls.size() ? &m_controls[m_index] : nullptr;
}

// --- what is shown ---

void CalibrationPanel::SetText(int id, const std::string& text) {
  if (auto* label = m_root->Get<Label>(id)) label->SetText(text);
}

void CalibrationPanel::Show() {
  if (!m_root) return;
  if (auto* box = m_root->Get<ComboBox>(kCalibrationControl)) {
    std::vector<Item> items;
    for (const unidevice::ControlChoice& control : m_controls) {
      Item item;
      item.id = static_cast<int>(items.size());
      item.text = ControlWords(control);
      items.push_back(std::move(item));
    }
    box->SetItems(std::move(items));
    box->SelectIndex(static_cast<int>(m_index));
    box->GetComponent().SetVisible(m_controls.size() > 1);
  }
  ShowState();
  ShowButtons();
  ShowLive();
}

void CalibrationPanel::ShowState() {
  const unidevice::ControlChoice* control = GetControl();
  const auto& table = unidevice::DriverManager::instance().calibrations();
  std::string text = control ? CalibrationWords(table.find(*control)) : std::string();
  if (!m_measure && !m_notice.empty()) text = m_notice;
  SetText(kCalibrationState, text);
  if (gui::Component* state = m_root->Find(kCalibrationState))
    state->SetVisible(!m_measure && !text.empty());
  if (gui::Component* buttons = m_root->Find(kCalibrationButtons)) buttons->SetVisible(!m_measure);
  if (gui::Component* measure = m_root->Find(kMeasure)) measure->SetVisible(m_measure.has_value());
  if (!m_measure) return;
  const bool there = control && control->present();
  const std::string ask =
      there ? Shown(m_measure->text()) + " " + Translate("Then press Next.")
            : Translate("%1 is not there. Plug it in.", {m_measure->control().device});
  SetText(kMeasureText, m_notice.empty() ? ask : m_notice + " " + ask);
}

void CalibrationPanel::ShowButtons() {
  const unidevice::ControlChoice* control = GetControl();
  std::string why;
  if (!control)
    why = Translate("Choose a control first.");
  else if (control->kind() != unidevice::kInfiniteControl)
    why = Translate("Only an axis or a slider can be calibrated.");
  else if (control->device.empty())
    why = Translate("This may be any device. Map the input to a control of one first.");
  else if (m_windows.GetCore().IsRecording())
    why = Translate("A take runs. Stop it first.");
  const bool known = control && unidevice::DriverManager::instance().calibrations().find(*control);
  const auto enable = [this](int id, const std::string& reason) {
    if (gui::Component* button = m_root->Find(id)) button->SetEnabled(reason.empty(), reason);
  };
  enable(kCalibrationForget, why.empty() && !known ? Translate("It is not calibrated.") : why);
  if (why.empty() && !control->present())
    why = Translate("%1 is not there. Plug it in.", {control->device});
  enable(kCalibratePedal, why);
  enable(kCalibrateAxis, why);
}

void CalibrationPanel::ShowLive() {
  if (m_root && m_measure) SetText(kMeasureValue, BarNumber(m_measure->value()));
}

// --- measuring ---

void CalibrationPanel::Begin(Calibration::Kind kind) {
  const unidevice::ControlChoice* control = GetControl();
  if (!control) return;
  m_measure.emplace(*control, kind);
  m_notice.clear();
  m_watch.start();
  Look();
  Show();
  if (gui::Component* next = m_root->Find(kMeasureNext)) next->TakeFocus();
}

void CalibrationPanel::Look() {
  if (m_measure) m_measure->look();
}

void CalibrationPanel::Next() {
  if (!m_measure) return;
  m_notice = Shown(m_measure->next());
  if (m_measure->step() != CalibrationMeasure::Step::kDone) return Show();
  const auto choice = m_measure->control();
  const std::string problem = m_windows.GetCore().SetCalibration(choice, m_measure->result());
  End(problem.empty() ? Shown(m_measure->text()) : problem);
}

void CalibrationPanel::Cancel() {
  if (m_measure) End({});
}

void CalibrationPanel::End(const std::string& text) {
  m_watch.stop();
  m_measure.reset();
  m_notice = text;
  Show();
}

bool CalibrationPanel::OnComponent(gui::Component& source, const util::Message& message) {
  if (!m_root) return false;
  const gui::Component* around = &source;
  while (around && around != m_root) around = around->parent();
  if (!around) return false;
  if (message.id == gui::kMsgValueChanged && source.GetId() == kCalibrationControl) {
    Cancel();
    m_notice.clear();
    m_index = static_cast<std::size_t>(message.param);
    Show();
  }
  if (message.id != gui::kMsgClicked) return true;
  switch (source.GetId()) {
    case kCalibratePedal:
      Begin(Calibration::Kind::kPedal);
      break;
    case kCalibrateAxis:
      Begin(Calibration::Kind::kAxis);
      break;
    case kCalibrationForget:
      if (const unidevice::ControlChoice* control = GetControl())
        m_notice = m_windows.GetCore().ClearCalibration(*control);
      Show();
      break;
    case kMeasureNext:
      Next();
      break;
    case kMeasureCancel:
      Cancel();
      break;
    default:
      break;
  }
  return true;
}

}  // namespace orv::rws::core::windows
