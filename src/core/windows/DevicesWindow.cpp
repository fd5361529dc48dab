#include "core/windows/DevicesWindow.h"

#include <algorithm>
#include <map>
#include <utility>

#include "core/CoreImplementation.h"
#include "core/CoreMessages.h"
#include "core/config/InputConflicts.h"
#include "core/instances/Instance.h"
#include "core/windows/ControlWords.h"
#include "core/windows/InputConfigIds.h"
#include "core/windows/Windows.h"
#include "gui/GuiMessages.h"
#include "gui/Texts.h"
#include "gui/componentinterface/Button.h"
#include "gui/componentinterface/Label.h"
#include "gui/componentinterface/View.h"
#include "unidevice/Control.h"
#include "unidevice/Device.h"
#include "unidevice/Driver.h"
#include "unidevice/DriverManager.h"
#include "unidevice/DummyDriver.h"

namespace orv::rws::core::windows {

namespace {

using gui::Translate;
using namespace gui::componentinterface;
using unidevice::DriverManager;

constexpr char kDeviceDocument[] = "/core/layout/rows/device.xml";
constexpr char kControlDocument[] = "/core/layout/rows/device_control.xml";
constexpr double kLeastNoise = 0.005;  ///< that is worth a word
constexpr double kMostNoise = 0.25;    ///< more is a movement

std::string NameOf(const unidevice::Control& control) {
  return control.description.empty() ? control.type + " " + std::to_string(control.index)
                                     : control.description;
}

}  // namespace

DevicesWindow::DevicesWindow(Windows& windows)
    : Window(windows, "Devices", "/core/layout/rws_devices.xml"), m_calibration(windows) {}

DevicesWindow::~DevicesWindow() {
  if (GetRoot()) Release();
}

// --- what is shown ---

void DevicesWindow::OnBuilt() {
  if (gui::Component* calibration = Find(kDevicesCalibration)) m_calibration.Build(*calibration);
  ShowDevices();
}

void DevicesWindow::OnShown() {
  m_wake = std::make_unique<DevicePolling::Wake>(GetCore());
  if (m_generation != DriverManager::generation()) ShowDevices();
}

void DevicesWindow::OnHidden() {
  m_calibration.Cancel();
  m_wake.reset();
}

void DevicesWindow::OnSettingsChanged() {
  ShowDevices();
}

/// Takes the views their painters.
void DevicesWindow::Release() {
  const auto release = [](gui::Component& root, int id) {
    if (auto* view = root.Get<View>(id)) view->SetHandler(nullptr);
  };
  for (const DeviceRow& device : m_devices) {
    release(*device.root, kDeviceLamps);
    for (const ControlRow& control : device.controls) release(*control.root, kControlBar);
  }
  m_devices.clear();
}

void DevicesWindow::ShowDevices() {
  gui::Component* rows = Find(kDevicesRows);
  if (!rows) return;
  const gui::Frozen frozen(*rows);
  Release();
  while (gui::Component* old = rows->child(rows->childCount() - 1)) old->Retire();
  DriverManager& drivers = DriverManager::instance();
  m_generation = DriverManager::generation();
  for (int i = 0; i < drivers.count(); ++i) {
    // The devices of that one are this program's own.
    if (drivers.driver(i) == &drivers.dummyDriver()) continue;
    for (unidevice::Device* device : drivers.driver(i)->devices) AddDevice(*device, *rows);
  }
  SetText(kDevicesHint,
          m_devices.empty()
              ? Translate("No device is there. Plug in a pad or a wheel.")
              : Translate("Move a control to see it. The grey band is where it was in the last "
                          "second. Choose an axis to calibrate it."));
  Choose(m_chosen);
  ShowCalibrations();
  ShowAbsent();
}

void DevicesWindow::AddDevice(unidevice::Device& device, gui::Component& into) {
  gui::Component* root = GetWindows().GetLayout().Instantiate(kDeviceDocument, into);
  if (!root) return;
  if (gui::Component* group = root->Find(kDeviceGroup))
    group->SetLabel(gui::EscapeMnemonics(device.name));
  m_devices.push_back({&device, root, {}, {}, nullptr});
  DeviceRow& row = m_devices.back();
  for (int i = 0; i < device.controlCount(); ++i) {
    const unidevice::Control& control = *device.control(i);
    if (control.flags == unidevice::kBinaryControl)
      row.buttons.push_back(i);
    else
      AddControl(row, control, i);
  }
  if (!row.buttons.empty()) AddLamps(row);
}

void DevicesWindow::AddControl(DeviceRow& row, const unidevice::Control& control, int index) {
  gui::Component* list = row.root->Find(kDeviceControls);
  gui::Component* root =
      list ? GetWindows().GetLayout().Instantiate(kControlDocument, *list) : nullptr;
  if (!root) return;
  // Thousands for the device, as none has as many controls.
  root->SetRow(static_cast<int>(m_devices.size()) * 1000 + static_cast<int>(row.controls.size()));
  const unidevice::ControlChoice choice{row.device->name, control.type, control.index};
  ControlRow added{choice, index, root, std::make_unique<LiveBar>(1), {}, {}};
  added.recent.fill(control.current);
  if (gui::Component* button = root->Find(kControlName)) {
    button->SetLabel(gui::EscapeMnemonics(NameOf(control)));
    button->SetAccessibleName(ControlWords(choice));
  }
  if (auto* view = root->Get<View>(kControlBar)) {
    view->SetHandler(added.bar.get());
    view->GetComponent().SetAccessibleName(ControlWords(choice));
  }
  row.controls.push_back(std::move(added));
}

void DevicesWindow::AddLamps(DeviceRow& row) {
  std::vector<std::string> names;
  for (const int index : row.buttons) names.push_back(NameOf(*row.device->control(index)));
  row.lamps = std::make_unique<ControlLamps>(names);
  auto* view = row.root->Get<View>(kDeviceLamps);
  if (!view) return;
  view->SetHandler(row.lamps.get());
  view->GetComponent().SetVisible(true);
}

void DevicesWindow::ShowCalibrations() {
  const auto& table = DriverManager::instance().calibrations();
  for (const DeviceRow& device : m_devices)
    for (const ControlRow& control : device.controls) {
      const unidevice::Calibration* calibration = table.find(control.choice);
      if (auto* label = control.root->Get<Label>(kControlCalibration)) {
        label->SetText(calibration ? Translate("calibrated") : std::string());
        label->GetComponent().SetTooltip(CalibrationWords(calibration));
      }
    }
}

void DevicesWindow::ShowAbsent() {
  std::map<std::string, std::vector<std::string>> away;  // inputs by their device
  for (const Instance* rig : GetCore().List(false))
    for (const auto& entry : rig->GetProperties().entries)
      for (const unidevice::ControlChoice& control : ControlsOf(*entry.second)) {
        if (control.device.empty() || control.present()) continue;
        auto& inputs = away[control.device];
        const std::string words =
            Translate("%1 of %2", {Translate(entry.second->name), rig->GetInstanceName()});
        if (std::find(inputs.begin(), inputs.end(), words) == inputs.end()) inputs.push_back(words);
      }
  std::string text;
  for (const auto& [device, inputs] : away) {
    std::string all;
    for (const std::string& input : inputs) all += (all.empty() ? "" : ", ") + input;
    text += (text.empty() ? "" : "\n") +
            Translate("%1 is not there, or lacks the control. Mapped to it: %2.", {device, all});
  }
  SetText(kDevicesAbsentText, text);
  if (gui::Component* absent = Find(kDevicesAbsent)) absent->SetVisible(!text.empty());
}

// --- live ---

void DevicesWindow::OnLive() {
  if (m_generation != DriverManager::generation()) ShowDevices();
  ++m_round;
  for (DeviceRow& device : m_devices) ShowLive(device);
  m_calibration.ShowLive();
}

void DevicesWindow::ShowLive(DeviceRow& row) {
  for (ControlRow& control : row.controls) ShowLive(control, *row.device->control(control.index));
  if (!row.lamps) return;
  std::vector<bool> lit;
  for (const int index : row.buttons) lit.push_back(row.device->control(index)->current > 0.5);
  if (!row.lamps->Set(lit)) return;
  if (auto* view = row.root->Get<View>(kDeviceLamps)) view->Repaint();
}

void DevicesWindow::ShowLive(ControlRow& row, const unidevice::Control& control) {
  row.recent[static_cast<std::size_t>(m_round % kRecent)] = control.current;
  const auto [low, high] = std::minmax_element(row.recent.begin(), row.recent.end());
  // A text that changes with each round could not be read.
  if (m_round % kRecent == 0) {
    const double shaking = (*high - *low) / 2.0;
    const bool shakes = shaking >= kLeastNoise && shaking <= kMostNoise;
    row.noise = shakes ? " \u00b1" + BarNumber(shaking) : "";
  }
  const std::string text = BarNumber(control.current) + row.noise;
  if (!row.bar->Set({{{control.current, *low, *high}, {}}}, text)) return;
  if (auto* view = row.root->Get<View>(kControlBar)) view->Repaint();
}

// --- what the user does ---

void DevicesWindow::Choose(const unidevice::ControlChoice& choice) {
  m_chosen = choice;
  for (const DeviceRow& device : m_devices)
    for (const ControlRow& control : device.controls)
      if (auto* button = control.root->Get<Button>(kControlName))
        button->SetDown(control.choice == choice);
  const bool none = choice.type.empty();
  SetText(kDevicesControl, none ? Translate("No control is chosen") : ControlWords(choice));
  m_calibration.SetControls(none ? std::vector<unidevice::ControlChoice>()
                                 : std::vector<unidevice::ControlChoice>{choice});
}

void DevicesWindow::OnComponent(gui::Component& source, util::Message& message) {
  const bool escape = message.id == gui::kMsgCloseRequest && message.param != 0;
  if (escape && m_calibration.IsMeasuring()) {
    gui::DataOf<gui::CloseRequest>(message)->refused = true;
    return m_calibration.Cancel();
  }
  if (m_calibration.OnComponent(source, message)) return;
  if (source.GetId() != kControlName || message.id != gui::kMsgValueChanged) return;
  for (const DeviceRow& device : m_devices)
    for (const ControlRow& control : device.controls)
      if (control.root == source.GetRowRoot()) return Choose(control.choice);
}

void DevicesWindow::OnCore(const util::Message& message) {
  if (NewsIn<DevicesChanged>(message)) {
    ShowDevices();
    m_calibration.Show();
  } else if (NewsIn<CalibrationsChanged>(message)) {
    ShowCalibrations();
    m_calibration.Show();
  } else if (NewsIn<RunStateChanged>(message)) {
    if (GetCore().IsRecording()) m_calibration.Cancel();
    m_calibration.Show();
  } else if (NewsIn<InputsChanged>(message) || NewsIn<RowDeleted>(message) ||
             NewsIn<RowCreated>(message) || NewsIn<RowRenamed>(message)) {
    ShowAbsent();
  }
}

}  // namespace orv::rws::core::windows
