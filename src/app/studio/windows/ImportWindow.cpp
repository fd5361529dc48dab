#include "app/studio/windows/ImportWindow.h"

#include <cmath>
#include <iterator>

#include "app/session/anyhost/Names.h"
#include "app/studio/windows/StudioWindowIds.h"
#include "gui/GuiMessages.h"
#include "gui/Texts.h"
#include "gui/componentinterface/ComboBox.h"
#include "gui/componentinterface/Spinner.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

using namespace gui::componentinterface;
using gui::Translate;

/// Metres of the units in the order of the document; any other length comes behind them.
constexpr double kUnits[] = {1.0, 0.01, 0.001, 0.0254, 0.3048};
constexpr int kAnotherUnit = static_cast<int>(std::size(kUnits));

/// To four digits, which tell a wrong unit from a right one.
std::string LengthText(double length) {
  if (length <= 0.0) return "0";
  const double digit = std::pow(10.0, std::floor(std::log10(length)) - 3.0);
  return util::shortText(digit < 1.0 ? std::round(length / digit) / std::round(1.0 / digit)
                                     : std::round(length));
}

}  // namespace

ImportWindow::ImportWindow(rws::core::windows::Windows& windows, const std::string& path,
                           const ModelFacts& facts)
    : ModalWindow(windows, "Import", "/core/layout/rws_import.xml", kImportAccept, kImportCancel,
                  Size::kContent),
      m_path(path),
      m_facts(facts),
      m_unit(facts.unitMeters.value),
      m_up(facts.up.value) {}

bool ImportWindow::Run(ImportOptions& options) {
  if (!Ask()) return false;
  options.unitMeters = m_unit;
  options.up = m_up;
  return true;
}

void ImportWindow::OnBuilt() {
  const auto number = [](std::size_t count) { return std::to_string(count); };
  SetText(kImportFile, FileNameOf(m_path));
  SetText(kImportContent, Translate("%1; nodes: %2, meshes: %3, triangles: %4",
                                    {m_facts.format, number(m_facts.nodes), number(m_facts.meshes),
                                     number(m_facts.triangles)}));
  std::string odd;
  for (const std::string& text : m_facts.odd) odd += (odd.empty() ? "" : "\n") + Translate(text);
  SetText(kImportOdd, odd);
  if (gui::Component* label = Find(kImportOdd)) label->SetVisible(!odd.empty());
  const bool unit = m_facts.unitMeters.told, up = m_facts.up.told;
  SetText(kImportSource,
          unit && up ? Translate("Both are what the file tells.")
          : unit     ? Translate("The unit is what the file tells, up is a guess.")
          : up       ? Translate("Up is what the file tells, the unit is a guess.")
                     : Translate("Both are guesses: the file tells neither. Look at the size."));
  With<ComboBox>(kImportUp, [this](ComboBox& box) { box.SelectId(m_up == UpAxis::kZ ? 1 : 0); });
  ShowUnit();
}

void ImportWindow::ShowUnit() {
  int unit = kAnotherUnit;
  for (int i = 0; i < kAnotherUnit; ++i)
    if (std::abs(kUnits[i] - m_unit) <= 1e-9 * m_unit) unit = i;
  With<ComboBox>(kImportUnit, [unit](ComboBox& box) { box.SelectId(unit); });
  With<Spinner>(kImportMetres, [this](Spinner& spinner) { spinner.SetValue(m_unit); });
  ShowSize();
}

void ImportWindow::ShowSize() {
  const util::Vector3<double>& size = m_facts.size;
  const bool z = m_up == UpAxis::kZ;
  SetText(kImportSize,
          m_facts.meshes == 0
              ? Translate("There is no mesh in it, and so no size to see.")
              : Translate("%1 m wide, %2 m high, %3 m deep",
                          {LengthText(size.x * m_unit), LengthText((z ? size.z : size.y) * m_unit),
                           LengthText((z ? size.y : size.z) * m_unit)}));
}

void ImportWindow::OnComponent(gui::Component& source, util::Message& message) {
  ModalWindow::OnComponent(source, message);
  const int id = source.GetId();
  if (message.id != gui::kMsgValueChanged) return;
  if (id == kImportUnit && message.param >= 0 && message.param < kAnotherUnit) {
    m_unit = kUnits[message.param];
    ShowUnit();
  } else if (id == kImportMetres) {
    With<Spinner>(kImportMetres, [this](Spinner& spinner) { m_unit = spinner.GetValue(); });
    ShowUnit();
  } else if (id == kImportUp) {
    m_up = message.param == 1 ? UpAxis::kZ : UpAxis::kY;
    ShowSize();
  }
}

}  // namespace orv::app
