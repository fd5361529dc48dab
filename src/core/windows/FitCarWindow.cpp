#include "core/windows/FitCarWindow.h"

#include <set>

#include "core/CoreImplementation.h"
#include "core/windows/MainWindowIds.h"
#include "gui/GuiMessages.h"
#include "gui/Texts.h"
#include "gui/componentinterface/ComboBox.h"

namespace orv::rws::core::windows {

namespace {

using gui::Translate;
using gui::componentinterface::ComboBox;
using gui::componentinterface::Item;

}  // namespace

FitCarWindow::FitCarWindow(Windows& windows, SceneBrowser& browser, int rigRow)
    : ModalWindow(windows, "FitCar", kFitCarLayout, kFitAccept, kFitCancel, Size::kAsKept),
      m_browser(browser),
      m_rig(rigRow) {}

int* FitCarWindow::PartOf(SceneBrowser::Car& car, int id) {
  if (id == kFitBody) return &car.body;
  return id >= kFitWheels && id < kFitWheels + 4 ? &car.wheels[id - kFitWheels] : nullptr;
}

bool FitCarWindow::Run(SceneBrowser::Car& car) {
  m_car = car;
  if (!Ask()) return false;
  car = m_car;
  return true;
}

void FitCarWindow::OnBuilt() {
  const InstanceReference* rig = GetCore().FindRow(m_rig);
  SetText(kFitText, Translate("%1 takes the size and place of your car and carries it from then "
                              "on. Which nodes are its body and its wheels?",
                              {rig ? rig->GetLabel() : std::string()}));
  std::vector<Item> items;
  for (const SceneBrowser::Node& node : m_browser.GetNodes()) {
    if (node.ofRig) continue;
    Item item;
    item.id = node.key;
    item.text = node.name;
    items.push_back(std::move(item));
  }
  for (int id = kFitBody; int* part = PartOf(m_car, id); ++id)
    With<ComboBox>(id, [&](ComboBox& box) {
      box.SetItems(items);
      if (!box.SelectId(*part)) box.SelectIndex(-1);
    });
  ShowAccept();
}

void FitCarWindow::ShowAccept() {
  std::set<int> chosen{m_car.body};
  chosen.insert(m_car.wheels.begin(), m_car.wheels.end());
  const bool all = chosen.count(0) == 0;
  SetEnabled(kFitAccept, all && chosen.size() == 5,
             all ? Translate("A node can't be two parts of the car.")
                 : Translate("Choose a node for each part."));
}

void FitCarWindow::OnComponent(gui::Component& source, util::Message& message) {
  ModalWindow::OnComponent(source, message);
  int* part = PartOf(m_car, source.GetId());
  if (!part || message.id != gui::kMsgValueChanged) return;
  *part = message.param;
  ShowAccept();
}

}  // namespace orv::rws::core::windows
