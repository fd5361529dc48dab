#include "app/studio/windows/FollowWindow.h"

#include <algorithm>
#include <utility>

#include "app/studio/windows/StudioWindowIds.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "core/instances/InstanceReference.h"
#include "core/interface/CCamera.h"
#include "core/tools/Tool.h"
#include "gui/GuiMessages.h"
#include "gui/Texts.h"
#include "gui/componentinterface/CheckBox.h"
#include "gui/componentinterface/ComboBox.h"
#include "gui/componentinterface/TextBox.h"

namespace orv::app {

using namespace gui::componentinterface;
using gui::Translate;
using rws::core::Instance;

namespace {

std::vector<Item> ItemsOf(const std::vector<std::string>& names) {
  std::vector<Item> items;
  for (const std::string& name : names) {
    Item item;
    item.id = static_cast<int>(items.size());
    item.text = name;
    items.push_back(std::move(item));
  }
  return items;
}

}  // namespace

std::vector<Instance*> FollowWindow::GetRigs(const rws::core::CoreImplementation& core) {
  std::vector<Instance*> rigs = core.List(false);
  rigs.erase(std::remove_if(rigs.begin(), rigs.end(),
                            [](const Instance* rig) {
                              return !rig->GetRig()->HasExtension(rws::kFollowLine);
                            }),
             rigs.end());
  return rigs;
}

FollowWindow::FollowWindow(rws::core::windows::Windows& windows)
    : ModalWindow(windows, "Follow", "/core/layout/rws_follow.xml", kFollowAccept, kFollowCancel,
                  Size::kContent) {
  const std::vector<int> selected = GetCore().GetSelection();
  for (const Instance* rig : GetRigs(GetCore())) {
    m_rigs.push_back(rig->GetInstanceName());
    const int row = GetCore().Find(m_rigs.back())->GetId();
    if (m_wish.rig.empty() || std::count(selected.begin(), selected.end(), row) > 0)
      m_wish.rig = m_rigs.back();
  }
}

bool FollowWindow::Run(FollowWish& wish) {
  if (!Ask()) return false;
  wish = m_wish;
  if (wish.inPlace) wish.name.clear();
  return true;
}

void FollowWindow::OnBuilt() {
  With<ComboBox>(kFollowRig, [this](ComboBox& box) {
    box.SetItems(ItemsOf(m_rigs));
    box.SelectId(
        static_cast<int>(std::find(m_rigs.begin(), m_rigs.end(), m_wish.rig) - m_rigs.begin()));
  });
  ShowProfiles();
  ShowName();
}

void FollowWindow::ShowProfiles() {
  m_profiles = {""};
  if (Instance* const rig = GetCore().FindInstance(m_wish.rig))
    for (const std::string& name : rig->GetTool()->GetConfigProfiles().GetNames())
      m_profiles.push_back(name);
  const auto chosen = std::find(m_profiles.begin(), m_profiles.end(), m_wish.profile);
  if (chosen == m_profiles.end()) m_wish.profile.clear();
  With<ComboBox>(kFollowProfile, [&](ComboBox& box) {
    std::vector<Item> items = ItemsOf(m_profiles);
    items.front().text = Translate("As the rig stands");
    box.SetItems(std::move(items));
    box.SelectId(static_cast<int>(chosen == m_profiles.end() ? 0 : chosen - m_profiles.begin()));
  });
}

void FollowWindow::ShowName() {
  SetEnabled(kFollowName, !m_wish.inPlace, Translate("No copy is made."));
}

void FollowWindow::OnComponent(gui::Component& source, util::Message& message) {
  // The name as it is typed: who clicks the button has not left the text yet.
  if (source.GetId() == kFollowName)
    With<TextBox>(kFollowName, [this](TextBox& box) { m_wish.name = box.GetText(); });
  if (message.id == gui::kMsgValueChanged) {
    const auto item = static_cast<std::size_t>(message.param);
    const bool on = message.param != 0;
    switch (source.GetId()) {
      case kFollowRig:
        m_wish.rig = m_rigs.at(item);
        ShowProfiles();
        break;
      case kFollowProfile:
        m_wish.profile = m_profiles.at(item);
        break;
      case kFollowInPlace:
        m_wish.inPlace = on;
        ShowName();
        break;
      case kFollowToEnd:
        m_wish.toEnd = on;
        break;
      case kFollowAsProfile:
        m_wish.asProfile = on;
        break;
      default:
        break;
    }
  }
  ModalWindow::OnComponent(source, message);
}

}  // namespace orv::app
