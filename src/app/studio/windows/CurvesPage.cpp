#include "app/studio/windows/CurvesPage.h"

#include <QStringList>
#include <utility>

#include "app/studio/timeline/CurveStrip.h"
#include "core/windows/MainWindowIds.h"
#include "gui/GuiMessages.h"
#include "gui/Texts.h"
#include "gui/componentinterface/Button.h"
#include "gui/componentinterface/Spinner.h"
#include "gui/componentinterface/Tree.h"
#include "gui/componentinterface/View.h"
#include "util/NumberText.h"

namespace orv::app {

using namespace rws::core::windows;
using namespace gui::componentinterface;
using gui::Translate;

namespace {

constexpr std::pair<int, CurveStrip::Tool> kCurveTools[] = {
    {kCurvePoints, CurveStrip::Tool::kPoints},
    {kCurveDraw, CurveStrip::Tool::kDraw},
    {kCurveSmooth, CurveStrip::Tool::kSmooth}};
constexpr char kCurvesShown[] = "curves", kCurvesHidden[] = "hidden curves",
               kCurvesBrush[] = "brush";

}  // namespace

CurvesPage::CurvesPage(MainWindowFrame& window, CurveStrip& strip)
    : MainWindowPage(window), m_strip(strip) {}

CurvesPage::~CurvesPage() {
  m_strip.changed = nullptr;
}

void CurvesPage::OnBuilt() {
  With<View>(kMainCurves, [this](View& view) { view.SetHandler(&m_strip); });
  for (const QString& name : QString::fromStdString(GetWindow().GetKept(kCurvesHidden))
                                 .split('\t', QString::SkipEmptyParts))
    m_strip.ShowInput(name.toStdString(), false);
  double radius = 0.0;
  if (util::parseNumber(GetWindow().GetKept(kCurvesBrush), radius)) m_strip.SetRadius(radius);
  m_strip.SetVisible(GetWindow().GetKept(kCurvesShown) == "yes");
  m_strip.changed = [this] { Show(); };
  OnSettingsChanged();
}

void CurvesPage::OnSettingsChanged() {
  With<Tree>(kCurveInputs, [](Tree& tree) {
    tree.SetColumns({{"", 200, true}});
    tree.SetEmptyText(Translate("No inputs recorded"));
  });
  m_shown.clear();
  Show();
}

void CurvesPage::Keep() {
  QStringList hidden;
  for (const std::string& name : m_strip.GetHidden()) hidden << QString::fromStdString(name);
  GetWindow().Keep(kCurvesHidden, hidden.join('\t').toStdString());
}

void CurvesPage::Show() {
  GetWindow().Keep(kCurvesShown, m_strip.IsVisible() ? "yes" : "");
  for (const int id : {kMainCurves, kCurvePanel})
    if (gui::Component* part = GetWindow().Find(id)) part->SetVisible(m_strip.IsVisible());
  if (!m_strip.IsVisible()) return;
  for (const auto& [id, tool] : kCurveTools)
    With<Button>(id, [&, tool = tool](Button& b) { b.SetDown(m_strip.GetTool() == tool); });
  With<Spinner>(kCurveBrush, [this](Spinner& spinner) {
    if (!spinner.IsBeingEdited()) spinner.SetValue(m_strip.GetRadius());
  });
  std::vector<std::string> names;
  for (const CurveStrip::Input& input : m_strip.GetInputs())
    names.push_back(input.name + (input.isShown ? "+" : "-"));
  if (names == m_shown) return;
  m_shown = names;
  With<Tree>(kCurveInputs, [this](Tree& tree) {
    tree.Clear();
    for (const CurveStrip::Input& input : m_strip.GetInputs()) {
      Tree::Row row;
      row.cells.resize(1);
      row.cells[0].text = Translate(input.name);
      row.hasCheck = true;
      row.check = input.isShown ? CheckState::kOn : CheckState::kOff;
      tree.AddRow(input.index + 1, Tree::kTop, -1, std::move(row));
    }
  });
}

void CurvesPage::OnComponent(gui::Component& source, util::Message& message) {
  const int id = source.GetId();
  for (const auto& [button, tool] : kCurveTools)
    if (message.id == gui::kMsgClicked && id == button) m_strip.SetTool(tool);
  if (id == kCurveBrush && message.id == gui::kMsgValueChanged) {
    const auto* spinner = dynamic_cast<Spinner*>(&source);
    if (!spinner) return;
    m_strip.SetRadius(spinner->GetValue());
    GetWindow().Keep(kCurvesBrush, util::shortText(spinner->GetValue()));
  }
  if (id != kCurveInputs || message.id != gui::kMsgRowChecked) return;
  const auto* tree = dynamic_cast<Tree*>(&source);
  const auto* row = tree ? tree->FindRow(message.param) : nullptr;
  if (!row) return;
  for (const CurveStrip::Input& input : m_strip.GetInputs())
    if (input.index + 1 == message.param) {
      m_strip.ShowInput(std::string(input.name), row->row.check == CheckState::kOn);
      break;
    }
  Keep();
}

}  // namespace orv::app
