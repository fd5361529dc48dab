#include "core/windows/PreferencesWindow.h"

#include <QDesktopServices>
#include <QString>
#include <QUrl>
#include <algorithm>

#include "core/CoreImplementation.h"
#include "core/services/DataRoot.h"
#include "core/services/Translation.h"
#include "core/windows/Program.h"
#include "core/windows/SmallWindowIds.h"
#include "core/windows/Windows.h"
#include "gui/GuiMessages.h"
#include "gui/Layout.h"
#include "gui/Texts.h"
#include "gui/componentinterface/CheckBox.h"
#include "gui/componentinterface/ComboBox.h"
#include "gui/componentinterface/Label.h"
#include "gui/componentinterface/Spinner.h"
#include "gui/componentinterface/TextBox.h"
#include "util/NumberText.h"

namespace orv::rws::core::windows {

namespace {

using namespace gui::componentinterface;

/// What a window calls a preference and its values; those that are not here are no matter of it.
struct ShownPreference {
  const char* key;
  const char* label;
  double most;                      ///< of a number
  std::vector<const char*> values;  ///< in the order of Preferences::Words
  bool isAppearance = false;
};

const std::vector<ShownPreference>& ShownPreferences() {
  static const std::vector<ShownPreference> all{
      {"countdown", Translatable("Seconds before a take"), 3600.0, {}, false},
      {"autosave", Translatable("Minutes between autosaves (0: none)"), 120.0, {}, false},
      {"updateviewport", Translatable("Show frames while a resimulation runs"), 0.0, {}, false},
      {"keeptakes", Translatable("Keep every take with its scene"), 0.0, {}, false},
      {"mosttakes", Translatable("Takes kept with a scene (0: all)"), 100000.0, {}, false},
      {"units",
       Translatable("Lengths in"),
       0.0,
       {Translatable("Metres"), Translatable("Centimetres"), Translatable("Millimetres"),
        Translatable("Feet"), Translatable("Inches")},
       false},
      {"osc", Translatable("Port for OSC messages (0: none)"), 65535.0, {}, false},
      {"oscopen", Translatable("Take OSC messages of other machines"), 0.0, {}, false},
      {"midi", Translatable("Take MIDI controllers and notes"), 0.0, {}, false},
      {"pen",
       Translatable("A pen's position is that in"),
       0.0,
       {Translatable("The window"), Translatable("The tablet")},
       false},
      {"steeringforce", Translatable("Force of a car's steering (%)"), 100.0, {}, false},
      {"roadforce", Translatable("Force of the ground on a wheel (%)"), 100.0, {}, false},
      {"kickforce", Translatable("Force of a gun's kick (%)"), 100.0, {}, false},
      {"language",
       Translatable("Language"),
       0.0,
       {Translatable("The system's"), "English", "Deutsch"},
       true},
      {"theme",
       Translatable("Theme"),
       0.0,
       {Translatable("The system's"), Translatable("Light"), Translatable("Dark")},
       true},
      {"updatecheck", Translatable("Ask a server for newer versions once a week"), 0.0, {}, false},
  };
  return all;
}

const ShownPreference& ShownOf(const std::string& key) {
  const auto& all = ShownPreferences();
  return *std::find_if(all.begin(), all.end(),
                       [&key](const ShownPreference& s) { return key == s.key; });
}

bool IsSwitch(const ShownPreference& shown) {
  return shown.most <= 0.0 && shown.values.empty();
}

}  // namespace

PreferencesWindow::PreferencesWindow(Windows& windows)
    : Window(windows, "Preferences", "/core/layout/rws_preferences.xml") {}

void PreferencesWindow::OnBuilt() {
  m_rows.clear();
  const std::vector<std::string> keys = Preferences::Keys();
  for (const ShownPreference& shown : ShownPreferences()) {
    if (shown.key == std::string("theme") && GetWindows().GetProgram().RulesTheme()) continue;
    if (shown.key == std::string("updatecheck") && !GetCore().IsOffered()) continue;
    if (std::find(keys.begin(), keys.end(), shown.key) != keys.end()) AddRow(shown.key);
  }
  With<TextBox>(kDataRootPath, [](TextBox& box) { box.SetText(DataRoot::Get()); });
  ShowValues();
}

void PreferencesWindow::AddRow(const std::string& key) {
  gui::Component* rows = Find(kPreferenceRows);
  if (!rows) return;
  const ShownPreference& shown = ShownOf(key);
  const char* document = "/core/layout/rows/preference_choice.xml";
  if (IsSwitch(shown)) document = "/core/layout/rows/preference_switch.xml";
  if (shown.most > 0.0) document = "/core/layout/rows/preference_number.xml";
  gui::Component* root = GetWindows().GetLayout().Instantiate(document, *rows);
  if (!root) return;
  m_rows.push_back({key, root});
  root->SetRow(static_cast<int>(m_rows.size()));
  const std::string label = gui::Translate(shown.label);
  if (auto* text = root->Get<Label>(kPreferenceLabel)) text->SetText(label);
  if (gui::Component* value = root->Find(kPreferenceValue)) {
    value->SetAccessibleName(label);
    if (IsSwitch(shown)) value->SetLabel(label);
    value->SetTooltip(gui::Translate(Preferences::Description(key)));
  }
  if (auto* spinner = root->Get<Spinner>(kPreferenceValue)) spinner->SetRange(0.0, shown.most);
  if (auto* box = root->Get<ComboBox>(kPreferenceValue)) {
    std::vector<Item> items;
    for (const char* value : shown.values) {
      Item item;
      item.id = static_cast<int>(items.size());
      item.text = value;
      item.english = true;
      items.push_back(std::move(item));
    }
    box->SetItems(std::move(items));
  }
}

void PreferencesWindow::ShowValues() {
  for (const Row& row : m_rows) {
    const std::string text = GetCore().GetPreferences().Text(row.key);
    double number = 0.0;
    if (auto* spinner = row.root->Get<Spinner>(kPreferenceValue);
        spinner && util::parseNumber(text, number))
      spinner->SetValue(number);
    if (auto* box = row.root->Get<CheckBox>(kPreferenceValue)) box->SetOn(text == "on");
    if (auto* box = row.root->Get<ComboBox>(kPreferenceValue)) {
      const auto words = Preferences::Words(row.key);
      const auto found = std::find(words.begin(), words.end(), text);
      box->SelectIndex(found == words.end() ? -1 : static_cast<int>(found - words.begin()));
    }
  }
}

void PreferencesWindow::Set(const Row& row, gui::Component& source, const util::Message& message) {
  std::string text;
  if (auto* spinner = dynamic_cast<Spinner*>(&source)) {
    text = util::shortText(spinner->GetValue());
  } else if (dynamic_cast<CheckBox*>(&source)) {
    text = message.param != 0 ? "on" : "off";
  } else {
    const auto words = Preferences::Words(row.key);
    const auto index = static_cast<std::size_t>(message.param);
    if (index < words.size()) text = words[index];
  }
  Preferences& preferences = GetCore().GetPreferences();
  std::string problem;
  if (preferences.Set(row.key, text, problem)) preferences.Save(&problem, {row.key});
  SetText(kPreferenceNotice, problem);
  if (gui::Component* notice = Find(kPreferenceNotice)) notice->SetVisible(!problem.empty());
  const bool isAppearance = ShownOf(row.key).isAppearance;
  if (isAppearance)
    GetWindows().GetProgram().ApplyAppearance();
  else
    GetWindows().ShowSettings();
  GetWindows().GetProgram().OnPreferences();
}

void PreferencesWindow::OnComponent(gui::Component& source, util::Message& message) {
  const int row = source.GetRow();
  if (row > 0 && message.id == gui::kMsgValueChanged)
    return Set(m_rows[static_cast<std::size_t>(row - 1)], source, message);
  if (message.id != gui::kMsgClicked) return;
  if (source.GetId() == kDataRootOpen)
    QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(DataRoot::Get())));
  if (source.GetId() == kPreferencesClose) GetWindows().Close(WindowKind::kPreferences);
}

}  // namespace orv::rws::core::windows
