#include "core/windows/ToolConfigPanel.h"

#include <QString>
#include <QStringList>
#include <algorithm>
#include <utility>

#include "core/CoreImplementation.h"
#include "core/CoreMessages.h"
#include "core/config/ConfigTree.h"
#include "core/host/AdaptorInterface.h"
#include "core/instances/Instance.h"
#include "core/instances/InstanceReference.h"
#include "core/tools/Tool.h"
#include "core/windows/ToolConfigIds.h"
#include "core/windows/Windows.h"
#include "gui/GuiMessages.h"
#include "gui/Texts.h"
#include "gui/componentinterface/Scroll.h"
#include "gui/componentinterface/Slider.h"
#include "gui/componentinterface/Spinner.h"
#include "gui/componentinterface/TextBox.h"
#include "util/NumberText.h"

namespace orv::rws::core::windows {

namespace {

using namespace gui::componentinterface;

constexpr char kFolds[] = "folded";
constexpr char kOffset[] = "scroll";
constexpr QChar kFoldSeparator('\n');

std::string JoinFolds(const std::set<std::string>& folds) {
  QStringList list;
  for (const std::string& fold : folds) list << QString::fromStdString(fold);
  return list.join(kFoldSeparator).toStdString();
}

std::set<std::string> SplitFolds(const std::string& text) {
  std::set<std::string> folds;
  for (const QString& fold : QString::fromStdString(text).split(kFoldSeparator))
    if (!fold.isEmpty()) folds.insert(fold.toStdString());
  return folds;
}

/// The value that a row's component holds, as text for the core; doubles to the bit.
std::string ValueOf(gui::Component& source, const util::Message& message) {
  if (auto* spinner = dynamic_cast<Spinner*>(&source)) return util::shortText(spinner->GetValue());
  if (auto* slider = dynamic_cast<Slider*>(&source)) return util::shortText(slider->GetValue());
  if (auto* text = dynamic_cast<TextBox*>(&source)) return text->GetText();
  return std::to_string(message.param);
}

}  // namespace

ToolConfigPanel::ToolConfigPanel(Windows& windows, int row)
    : Window(windows, "ToolConfig", kToolConfigLayout),
      m_rigs{row},
      m_profiles(windows, row, ProfileRequests::Kind::kConfig,
                 [this](const std::string& text) { Tell(text); }) {
  if (const Instance* rig = FindRig()) {
    m_kind = rig->GetTool()->GetDisplayId();
    setName("ToolConfig_" + m_kind);
  }
}

ToolConfigPanel::~ToolConfigPanel() {
  if (m_dragged >= 0) GetCore().EndEdit();
  if (GetRoot()) KeepLook();
}

Instance* ToolConfigPanel::FindRig(int row) const {
  const InstanceReference* found = GetCore().FindRow(row);
  return found ? found->GetInstance() : nullptr;
}

std::vector<Instance*> ToolConfigPanel::FindRigs() const {
  std::vector<Instance*> rigs;
  for (const int row : m_rigs)
    if (Instance* rig = FindRig(row)) rigs.push_back(rig);
  return rigs;
}

bool ToolConfigPanel::HasRig() const {
  return m_rows && m_rows->HasTree() && FindRig();
}

void ToolConfigPanel::SetOthers(const std::vector<int>& rows) {
  std::vector<int> rigs{m_rigs.front()};
  for (const int row : rows) {
    const Instance* rig = row == m_rigs.front() ? nullptr : FindRig(row);
    if (rig && rig->GetTool()->GetDisplayId() == m_kind) rigs.push_back(row);
  }
  if (rigs == m_rigs) return;
  m_rigs = std::move(rigs);
  if (!GetRoot() || !HasRig()) return;
  ShowTitle();
  ShowMixed();
}

// --- what is shown ---

void ToolConfigPanel::OnBuilt() {
  ShowAll();
}

void ToolConfigPanel::OnSettingsChanged() {
  KeepLook();
  ShowAll();
}

void ToolConfigPanel::ShowAll() {
  Instance* rig = FindRig();
  gui::Component* rows = Find(kConfigRows);
  if (!rig || !rows) return;
  const WindowSettings& settings = GetWindows().GetSettings();
  m_rows = std::make_unique<ParameterRows>(GetWindows().GetLayout(), *rows);
  m_rows->Build(rig->GetConfig(), GetCore().GetBaseValues(*rig, ParameterBase::kFactory),
                SplitFolds(settings.Get(name(), kFolds)));
  ShowTitle();
  if (gui::Component* profiles = Find(kConfigProfiles)) m_profiles.Build(*profiles);
  ShowBase();
  ShowMixed();
  With<TextBox>(kConfigSearch, [this](TextBox& box) { m_rows->SetFilter(box.GetText()); });
  int offset = 0;
  if (util::parseNumber(settings.Get(name(), kOffset), offset))
    With<Scroll>(kConfigScroll, [offset](Scroll& scroll) { scroll.SetOffset(0, offset); });
}

void ToolConfigPanel::ShowTitle() {
  const std::vector<Instance*> rigs = FindRigs();
  if (rigs.empty()) return;
  std::string title = rigs.front()->GetInstanceName();
  if (rigs.size() > 1)
    title = gui::Translate("%1 and %2 more", {title, std::to_string(rigs.size() - 1)});
  SetText(kConfigTitle, title);
  SetTitle(title);
}

void ToolConfigPanel::ShowBase() {
  if (const Instance* rig = FindRig())
    m_rows->ShowBase(GetCore().GetBaseValues(*rig, ParameterBase::kProfile));
}

void ToolConfigPanel::ShowMixed() {
  const std::vector<Instance*> rigs = FindRigs();
  std::set<int> mixed;
  for (std::size_t i = 1; i < rigs.size(); ++i)
    for (const ConfigElement* element : rigs.front()->GetConfig().GetElements()) {
      const ConfigElement* other = rigs[i]->GetConfig().Find(element->GetId());
      if (other && other->HasValue() && other->GetValueText() != element->GetValueText())
        mixed.insert(element->GetId());
    }
  m_rows->ShowMixed(mixed);
}

void ToolConfigPanel::KeepLook() {
  if (!m_rows) return;
  WindowSettings& settings = GetWindows().GetSettings();
  settings.Set(name(), kFolds, JoinFolds(m_rows->GetFolded()));
  With<Scroll>(kConfigScroll, [&](Scroll& scroll) {
    settings.Set(name(), kOffset, std::to_string(scroll.GetOffsetY()));
  });
}

void ToolConfigPanel::OnLive() {
  if (!GetCore().IsRecording() && !GetCore().IsResimulating()) return;
  if (!HasRig()) return;
  std::vector<int> live;
  for (const auto& [element, property] : FindRig()->GetLiveSpinners())
    if (element != m_dragged) live.push_back(element);
  m_rows->RefreshLive(live);
}

void ToolConfigPanel::OnCore(const util::Message& message) {
  if (const auto* deleted = NewsIn<RowDeleted>(message); deleted && deleted->row == m_rigs.front())
    return GetWindows().Drop(WindowKind::kToolConfig, deleted->row);
  // A rig is gone before that is told.
  if (!HasRig()) return;
  if (const auto* changed = NewsIn<ParametersChanged>(message)) {
    if (std::find(m_rigs.begin(), m_rigs.end(), changed->row) == m_rigs.end()) return;
    if (changed->row == m_rigs.front()) m_rows->Refresh();
    if (m_rigs.size() > 1) ShowMixed();
  } else if (const auto* profile = NewsIn<ProfileChanged>(message)) {
    if (profile->row != m_rigs.front()) return;
    m_profiles.Show();
    ShowBase();
  } else if (const auto* list = NewsIn<ProfileListChanged>(message)) {
    if (list->tool != m_kind || list->inputs) return;
    m_profiles.Show();
    ShowBase();
  } else if (NewsIn<RowRenamed>(message)) {
    ShowTitle();
  } else if (NewsIn<TimeChanged>(message)) {
    if (!GetCore().IsRecording()) m_rows->RefreshLive({});
  } else if (const auto* deleted = NewsIn<RowDeleted>(message)) {
    m_rigs.erase(std::remove(m_rigs.begin(), m_rigs.end(), deleted->row), m_rigs.end());
    ShowTitle();
  }
}

// --- what the user does ---

void ToolConfigPanel::OnComponent(gui::Component& source, util::Message& message) {
  if (!HasRig()) return;
  if (m_profiles.OnComponent(source, message)) return;
  if (message.id == gui::kMsgMenuItem) return OnMenu(message.param, source);
  const int element = m_rows->ElementOf(source);
  if (element >= 0) return OnRow(element, source, message);
  switch (source.GetId()) {
    case kConfigSearch:
      if (message.id == gui::kMsgTyped) m_rows->SetFilter(Get<TextBox>(kConfigSearch)->GetText());
      break;
    case kConfigInputs:
      if (message.id == gui::kMsgClicked)
        GetWindows().Open(WindowKind::kInputConfig, m_rigs.front());
      break;
    default:
      break;
  }
}

void ToolConfigPanel::OnRow(int element, gui::Component& source, const util::Message& message) {
  switch (message.id) {
    case gui::kMsgEditBegin:
      BeginEdit(element);
      break;
    case gui::kMsgEditEnd:
      EndEdit(element, message.param == 1);
      break;
    case gui::kMsgValueChanged:
      Edit(element, ValueOf(source, message));
      break;
    case gui::kMsgClicked:
      if (source.GetId() == kRowReset) {
        Reset({element});
      } else if (source.GetId() == kRowValue) {
        for (Instance* rig : FindRigs()) GetCore().PressButton(*rig, element);
      }
      break;
    default:
      break;
  }
}

void ToolConfigPanel::BeginEdit(int element) {
  Instance* rig = FindRig();
  std::string problem;
  if (rig && GetCore().BeginEdit(*rig, element, problem)) {
    m_dragged = element;
    m_dragValue.clear();
  } else {
    Tell(problem);
  }
}

void ToolConfigPanel::Edit(int element, const std::string& text) {
  Instance* rig = FindRig();
  if (!rig) return;
  std::string problem;
  if (m_dragged == element && GetCore().DragEdit(*rig, element, text, problem)) {
    m_dragValue = text;
    // The slider follows the spinner, and the other way round.
    m_rows->RefreshElement(element);
    return;
  }
  m_dragged = -1;
  SetAll(element, text);
}

void ToolConfigPanel::EndEdit(int element, bool cancelled) {
  if (m_dragged != element) return;
  m_dragged = -1;
  if (cancelled) {
    GetCore().CancelEdit();
  } else if (m_rigs.size() > 1 && !m_dragValue.empty()) {
    // One step for all: the first one's is made again together with the others'.
    GetCore().CancelEdit();
    SetAll(element, m_dragValue);
  } else {
    GetCore().EndEdit();
  }
  m_rows->RefreshElement(element);
}

void ToolConfigPanel::SetAll(int element, const std::string& text) {
  const std::vector<Instance*> rigs = FindRigs();
  if (rigs.empty()) return;
  AdaptorInterface* adaptor = GetCore().GetAdaptor();
  const bool several = rigs.size() > 1;
  if (several) adaptor->BeginUndoBlock(rigs.front()->GetConfig().Find(element)->GetLabel());
  std::string problem;
  for (Instance* rig : rigs) GetCore().EditParameter(*rig, element, text, problem);
  if (several) adaptor->EndUndoBlock();
  Tell(problem);
  m_rows->RefreshElement(element);
}

void ToolConfigPanel::Reset(const std::vector<int>& elements) {
  if (elements.empty()) return;
  AdaptorInterface* adaptor = GetCore().GetAdaptor();
  const std::vector<Instance*> rigs = FindRigs();
  if (rigs.size() > 1) adaptor->BeginUndoBlock("Reset");
  std::string problem;
  for (Instance* rig : rigs) {
    const std::string why = GetCore().ResetParameters(*rig, elements, ParameterBase::kProfile);
    if (!why.empty()) problem = why;
  }
  if (rigs.size() > 1) adaptor->EndUndoBlock();
  Tell(problem);
}

void ToolConfigPanel::OnMenu(int item, const gui::Component& source) {
  if (item == kResetGroup) return Reset(m_rows->GetChanged(m_rows->GroupOf(source)));
  if (item == kResetAll) return Reset(m_rows->GetChanged());
}

void ToolConfigPanel::Tell(const std::string& text) {
  SetText(kConfigNotice, text);
  if (gui::Component* notice = Find(kConfigNotice)) notice->SetVisible(!text.empty());
}

}  // namespace orv::rws::core::windows
