#include "core/windows/ParameterRows.h"

#include <QString>
#include <algorithm>
#include <utility>

#include "core/config/ConfigTree.h"
#include "core/windows/SoftRange.h"
#include "core/windows/ToolConfigIds.h"
#include "gui/Component.h"
#include "gui/Layout.h"
#include "gui/Texts.h"
#include "gui/componentinterface/Button.h"
#include "gui/componentinterface/CheckBox.h"
#include "gui/componentinterface/ComboBox.h"
#include "gui/componentinterface/Group.h"
#include "gui/componentinterface/Label.h"
#include "gui/componentinterface/Slider.h"
#include "gui/componentinterface/Spinner.h"
#include "gui/componentinterface/TextBox.h"
#include "util/NumberText.h"

namespace orv::rws::core::windows {

namespace {

using namespace gui::componentinterface;
using Kind = ConfigElement::Kind;

/// Numbers of groups' rows lie behind those of elements, which are their ids from 1 up.
constexpr int kFirstGroupRow = 1000000;

const char* DocumentOf(const ConfigElement& element) {
  if (element.GetKind() == Kind::kLabel) return kNoteRow;
  if (element.IsReadOnly()) return kGaugeRow;
  switch (element.GetKind()) {
    case Kind::kCheckBox:
      return kCheckBoxRow;
    case Kind::kTextBox:
      return kTextBoxRow;
    case Kind::kComboBox:
      return kComboBoxRow;
    case Kind::kButton:
      return kButtonRow;
    default:
      return kSpinnerRow;
  }
}

std::string Small(const std::string& text) {
  return QString::fromStdString(text).toLower().toStdString();
}

std::string WordsOf(const ConfigElement& element) {
  return Small(element.GetLabel() + " " + gui::Translate(element.GetLabel()) + " " +
               element.GetTooltip() + " " + gui::Translate(element.GetTooltip()));
}

/// The component of a row as the type that it is when the document is ours.
template <class Interface, class Use>
void With(gui::Component& root, int id, Use&& use) {
  if (auto* component = root.Get<Interface>(id)) use(*component);
}

std::vector<Item> ItemsOf(const ConfigElement& element) {
  std::vector<Item> items;
  int id = 0;
  for (const std::string& text : element.GetItems()) {
    Item item;
    item.id = id++;
    item.text = text;
    item.english = true;
    items.push_back(std::move(item));
  }
  return items;
}

/// Digits of the fraction that a gauge shows; its own value would flicker with all of them.
std::string GaugeText(const ConfigElement& element) {
  if (element.GetKind() != Kind::kSpinner) return element.GetValueText();
  return QString::number(element.GetNumber(), 'f', std::max(0, element.GetRange().decimals))
      .toStdString();
}

}  // namespace

ParameterRows::ParameterRows(gui::Layout& layout, gui::Component& container)
    : m_layout(layout), m_container(container) {}

void ParameterRows::Clear() {
  while (gui::Component* child = m_container.child(m_container.childCount() - 1)) child->Retire();
  m_rows.clear();
  m_groups.clear();
  m_byId.clear();
}

void ParameterRows::Build(const ConfigTree& config, const ProfileValues& factory,
                          const std::set<std::string>& folded) {
  const gui::Frozen frozen(m_container);
  Clear();
  m_tree = config.GetLife();
  if (!config.GetRoot()) return;
  for (const auto& child : config.GetRoot()->GetChildren())
    if (child->GetKind() == Kind::kGroup)
      AddGroup(*child, m_container, {}, factory, folded);
    else
      AddRow(*child, m_container, {}, factory);
  Refresh();
}

void ParameterRows::AddGroup(const ConfigElement& group, gui::Component& into,
                             const std::string& around, const ProfileValues& factory,
                             const std::set<std::string>& folded) {
  gui::Component* root = m_layout.Instantiate(kGroupRow, into);
  if (!root) return;
  root->SetRow(kFirstGroupRow + static_cast<int>(m_groups.size()));
  m_groups.push_back({&group, root, {}, group.GetLabel()});
  With<Group>(*root, kGroupBox, [&](Group& box) {
    box.GetComponent().SetLabel(gui::Translate(group.GetLabel()));
    box.GetComponent().SetTooltip(gui::Translate(group.GetTooltip()));
    box.SetFolded(folded.count(group.GetLabel()) != 0);
  });
  gui::Component* rows = root->Find(kGroupRows);
  const std::string words = around + " " + WordsOf(group);
  for (const auto& child : group.GetChildren())
    if (child->GetKind() == Kind::kGroup)
      AddGroup(*child, rows ? *rows : *root, words, factory, folded);
    else
      AddRow(*child, rows ? *rows : *root, words, factory);
}

void ParameterRows::AddRow(const ConfigElement& element, gui::Component& into,
                           const std::string& around, const ProfileValues& factory) {
  gui::Component* root = m_layout.Instantiate(DocumentOf(element), into);
  if (!root) return;
  root->SetRow(element.GetId() + 1);
  const std::string label = gui::Translate(element.GetLabel());
  With<Label>(*root, kRowLabel, [&label](Label& text) { text.SetText(label); });
  const std::string tooltip = gui::Translate(element.GetTooltip());
  for (const int id : {kRowLabel, kRowValue, kRowSlider})
    if (gui::Component* component = root->Find(id)) {
      component->SetTooltip(tooltip);
      if (id != kRowLabel) component->SetAccessibleName(label);
    }
  if (gui::Component* reset = root->Find(kRowReset))
    reset->SetAccessibleName(gui::Translate("Reset %1", {label}));

  const ConfigElement::Range& range = element.GetRange();
  With<Spinner>(*root, kRowValue, [&](Spinner& spinner) {
    spinner.SetRange(range.min, range.max);
    spinner.SetStep(range.step);
    spinner.SetDecimals(element.GetKind() == Kind::kSpinner ? range.decimals : 0);
  });
  With<Slider>(*root, kRowSlider, [&](Slider& slider) {
    double usual = 0.0;
    util::parseNumber(factory.GetText(element.GetId()), usual);
    const SoftRange soft = SoftRangeOf(range, element.GetNumber(), usual);
    slider.SetRange(soft.from, soft.to);
    slider.SetStep(range.step);
  });
  With<Button>(*root, kRowValue, [&](Button& button) { button.GetComponent().SetLabel(label); });
  With<CheckBox>(*root, kRowValue, [&](CheckBox& box) {
    if (!root->Find(kRowLabel)) box.GetComponent().SetLabel(label);
  });
  if (element.GetId() >= 0) m_byId[element.GetId()] = m_rows.size();
  m_rows.push_back({&element, root, around + " " + WordsOf(element), {}});
}

void ParameterRows::ShowValue(const Row& row) {
  const ConfigElement& element = *row.element;
  if (!element.HasValue()) return;
  gui::Component& root = *row.root;
  With<Spinner>(root, kRowValue, [&](Spinner& spinner) { spinner.SetValue(element.GetNumber()); });
  With<Slider>(root, kRowSlider, [&](Slider& slider) { slider.SetValue(element.GetNumber()); });
  With<CheckBox>(root, kRowValue, [&](CheckBox& box) { box.SetOn(element.GetNumber() != 0.0); });
  With<ComboBox>(root, kRowValue, [&](ComboBox& box) {
    const auto& shown = box.GetItems();
    const bool same =
        std::equal(shown.begin(), shown.end(), element.GetItems().begin(), element.GetItems().end(),
                   [](const Item& a, const std::string& b) { return a.text == b; });
    if (!same) box.SetItems(ItemsOf(element));
    box.SelectIndex(static_cast<int>(element.GetNumber()));
  });
  With<TextBox>(root, kRowValue, [&](TextBox& box) { box.SetText(element.GetValueText()); });
  if (element.IsReadOnly())
    With<Label>(root, kRowValue, [&](Label& label) { label.SetText(GaugeText(element)); });
}

void ParameterRows::ShowMark(const Row& row) const {
  if (row.element->GetId() < 0 || row.element->IsReadOnly() || !row.element->HasValue()) return;
  const bool differs = m_base.Differs(*row.element);
  if (gui::Component* label = row.root->Find(kRowLabel)) label->SetMarked(differs);
  if (gui::Component* reset = row.root->Find(kRowReset)) {
    reset->SetVisible(differs);
    if (differs)
      reset->SetTooltip(gui::Translate("Back to %1", {m_base.GetText(row.element->GetId())}));
  }
}

void ParameterRows::Refresh() {
  const gui::Frozen frozen(m_container);
  for (const Row& row : m_rows) {
    ShowValue(row);
    ShowMark(row);
  }
}

void ParameterRows::RefreshElement(int element) {
  const auto found = m_byId.find(element);
  if (found == m_byId.end()) return;
  ShowValue(m_rows[found->second]);
  ShowMark(m_rows[found->second]);
}

void ParameterRows::RefreshLive(const std::vector<int>& liveElements) {
  for (const Row& row : m_rows)
    if (row.element->IsReadOnly()) ShowValue(row);
  for (const int element : liveElements) {
    const auto found = m_byId.find(element);
    if (found != m_byId.end()) ShowValue(m_rows[found->second]);
  }
}

void ParameterRows::ShowBase(ProfileValues base) {
  m_base = std::move(base);
  const gui::Frozen frozen(m_container);
  for (const Row& row : m_rows) ShowMark(row);
}

void ParameterRows::ShowMixed(const std::set<int>& elements) {
  for (const Row& row : m_rows) {
    const bool mixed = elements.count(row.element->GetId()) != 0;
    With<Label>(*row.root, kRowLabel, [&](Label& label) {
      const std::string text = gui::Translate(row.element->GetLabel());
      // "not equal" behind the label
      label.SetText(mixed ? text + " \u2260" : text);
    });
  }
}

void ParameterRows::SetFilter(const std::string& text) {
  const gui::Frozen frozen(m_container);
  const std::string wanted = Small(QString::fromStdString(text).trimmed().toStdString());
  std::set<const ConfigElement*> shownGroups;
  for (const Row& row : m_rows) {
    const bool shown = row.words.find(wanted) != std::string::npos;
    row.root->SetVisible(shown);
    if (!shown) continue;
    for (const ConfigElement* group = row.element->GetParent(); group; group = group->GetParent())
      shownGroups.insert(group);
  }
  for (const Row& group : m_groups)
    group.root->SetVisible(wanted.empty() || shownGroups.count(group.element) != 0);
}

bool ParameterRows::IsLocked(const ConfigElement& element) const {
  return !m_whyLocked.empty() && !element.IsReadOnly();
}

void ParameterRows::SetLocked(const std::string& why) {
  if (why == m_whyLocked) return;
  m_whyLocked = why;
  const gui::Frozen frozen(m_container);
  for (const Row& row : m_rows)
    for (const int id : {kRowValue, kRowSlider, kRowReset})
      if (gui::Component* component = row.root->Find(id))
        component->SetEnabled(!IsLocked(*row.element), why);
}

int ParameterRows::ElementOf(const gui::Component& source) const {
  const int element = source.GetRow() - 1;
  return m_byId.count(element) != 0 ? element : -1;
}

const ConfigElement* ParameterRows::GroupOf(const gui::Component& source) const {
  const int index = source.GetRow() - kFirstGroupRow;
  return index >= 0 && index < static_cast<int>(m_groups.size()) ? m_groups[index].element
                                                                 : nullptr;
}

std::set<std::string> ParameterRows::GetFolded() const {
  std::set<std::string> folded;
  for (const Row& group : m_groups)
    if (const auto* fold = group.root->Get<Group>(kGroupBox); fold && fold->IsFolded())
      folded.insert(group.label);
  return folded;
}

std::vector<int> ParameterRows::GetChanged(const ConfigElement* group) const {
  std::vector<int> changed;
  for (const Row& row : m_rows) {
    const ConfigElement* around = row.element->GetParent();
    while (group && around && around != group) around = around->GetParent();
    if ((!group || around) && row.element->GetId() >= 0 && m_base.Differs(*row.element))
      changed.push_back(row.element->GetId());
  }
  return changed;
}

}  // namespace orv::rws::core::windows
