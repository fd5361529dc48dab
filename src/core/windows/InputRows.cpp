#include "core/windows/InputRows.h"

#include <algorithm>
#include <cmath>

#include "core/CoreImplementation.h"
#include "core/config/InputConflicts.h"
#include "core/instances/Instance.h"
#include "core/windows/ControlWords.h"
#include "core/windows/InputConfigIds.h"
#include "gui/Component.h"
#include "gui/Layout.h"
#include "gui/Texts.h"
#include "gui/componentinterface/Button.h"
#include "gui/componentinterface/CheckBox.h"
#include "gui/componentinterface/Label.h"
#include "gui/componentinterface/View.h"
#include "unidevice/Property.h"

namespace orv::rws::core::windows {

namespace {

using gui::Translate;
using namespace gui::componentinterface;

void SetText(gui::Component& root, int id, const std::string& text) {
  if (auto* label = root.Get<Label>(id)) label->SetText(text);
}

/// What speaks against each input's mapping, a text an input.
std::vector<std::string> Conflicts(const CoreImplementation& core, const Instance& rig) {
  std::vector<std::string> texts(static_cast<std::size_t>(rig.GetProperties().count()));
  const auto add = [&texts](int input, const std::string& text) {
    std::string& all = texts[static_cast<std::size_t>(input)];
    all += (all.empty() ? "" : " ") + text;
  };
  for (const SharedControl& shared : FindSharedControls(core, false))
    for (const InputUse& mine : shared.uses) {
      if (mine.row != rig.GetIdentity()) continue;
      for (const InputUse& other : shared.uses) {
        if (other.row == mine.row && other.input == mine.input) continue;
        const std::string words = ControlWords(shared.control);
        const std::string name = Translate(other.name);
        add(mine.input, other.row == mine.row
                            ? Translate("%1 feeds %2 as well.", {words, name})
                            : Translate("%1 feeds %2 of %3 as well.", {words, name, other.rig}));
        break;  // one is enough to be told
      }
    }
  for (const HotKeyConflict& conflict : FindHotKeyConflicts(rig))
    for (int i = 0; i < rig.GetProperties().count(); ++i)
      if (rig.GetProperties().property(i)->name == conflict.inputs.front())
        add(i, Shown(conflict.text));
  return texts;
}

}  // namespace

double OutputRange(double multiplier, double offset) {
  const double range = std::max(1.0, std::abs(multiplier) + std::abs(offset));
  return std::isfinite(range) ? range : 1.0;
}

void InputRows::Release() {
  for (const Row& row : m_rows)
    if (auto* view = row.root->Get<View>(kInputRowBars)) view->SetHandler(nullptr);
  m_rows.clear();
}

void InputRows::Build(gui::Component& container, const Instance& rig) {
  const gui::Frozen frozen(container);
  Release();
  while (gui::Component* old = container.child(container.childCount() - 1)) old->Retire();
  for (int i = 0; i < rig.GetProperties().count(); ++i) {
    gui::Component* root = m_layout.Instantiate("/core/layout/rows/input.xml", container);
    if (!root) return;
    root->SetRow(i + 1);
    const std::string name = Translate(rig.GetProperties().property(i)->name);
    if (gui::Component* button = root->Find(kInputRowName)) {
      button->SetLabel(gui::EscapeMnemonics(name));
      button->SetAccessibleName(name);
      button->SetTooltip(Translate(rig.GetProperties().property(i)->displayName));
    }
    if (gui::Component* box = root->Find(kInputRowArmed))
      box->SetAccessibleName(Translate("Record %1", {name}));
    m_rows.push_back({root, std::make_unique<LiveBar>(2)});
    if (auto* view = root->Get<View>(kInputRowBars)) view->SetHandler(m_rows.back().bars.get());
  }
}

void InputRows::Refresh(const CoreImplementation& core, const Instance& rig) {
  const std::vector<std::string> conflicts = Conflicts(core, rig);
  for (std::size_t i = 0; i < m_rows.size(); ++i) {
    gui::Component& root = *m_rows[i].root;
    SetText(root, kInputRowMapping,
            MappingWords(*rig.GetProperties().property(static_cast<int>(i))));
    SetText(root, kInputRowConflictText, conflicts[i]);
    if (auto* box = root.Get<CheckBox>(kInputRowArmed))
      box->SetOn(!rig.IsPlayed(static_cast<int>(i)));
    if (gui::Component* conflict = root.Find(kInputRowConflict))
      conflict->SetVisible(!conflicts[i].empty());
  }
}

void InputRows::RefreshLive(const Instance& rig) {
  for (std::size_t i = 0; i < m_rows.size(); ++i) {
    const unidevice::Property& input = *rig.GetProperties().property(static_cast<int>(i));
    const double after = input.read();
    const double range = OutputRange(input.multiplier, input.offset);
    const std::array<LiveBar::Line, 2> lines{{{input.raw(), 0.0, 0.0}, {after / range, 0.0, 0.0}}};
    if (!m_rows[i].bars->Set(lines, BarNumber(after))) continue;
    if (auto* view = m_rows[i].root->Get<View>(kInputRowBars)) view->Repaint();
  }
}

void InputRows::Choose(int input) {
  for (std::size_t i = 0; i < m_rows.size(); ++i)
    if (auto* button = m_rows[i].root->Get<Button>(kInputRowName))
      button->SetDown(static_cast<int>(i) == input);
}

int InputRows::InputOf(const gui::Component& source) const {
  const int input = source.GetRow() - 1;
  return input >= 0 && input < GetCount() ? input : -1;
}

}  // namespace orv::rws::core::windows
