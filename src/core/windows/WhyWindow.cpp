#include "core/windows/WhyWindow.h"

#include <algorithm>

#include "core/CoreImplementation.h"
#include "core/windows/ControlWords.h"
#include "core/windows/InputConfigWindow.h"
#include "core/windows/SmallWindowIds.h"
#include "core/windows/Windows.h"
#include "gui/GuiMessages.h"
#include "gui/Texts.h"
#include "gui/componentinterface/Tree.h"

namespace orv::rws::core::windows {

namespace {

using gui::componentinterface::Tree;

constexpr int kRoundsPerLook = 15;

const char* IconOf(Reason::Severity severity) {
  switch (severity) {
    case Reason::Severity::kPrevents:
      return "[coreimages]/icons/error.png";
    case Reason::Severity::kWarning:
      return "[coreimages]/icons/warning.png";
    default:
      return "[coreimages]/icons/info.png";
  }
}

bool IsSame(const Reason& a, const Reason& b) {
  return a.kind == b.kind && a.row == b.row && a.input == b.input &&
         a.text.values == b.text.values && a.text.text == b.text.text;
}

}  // namespace

WhyWindow::WhyWindow(Windows& windows) : Window(windows, "Why", "/core/layout/rws_why.xml") {}

void WhyWindow::OnShown() {
  m_wake = std::make_unique<DevicePolling::Wake>(GetCore());
  m_reasons.clear();
  Look();
}

void WhyWindow::OnLive() {
  if (++m_rounds < kRoundsPerLook) return;
  Look();
}

void WhyWindow::Look() {
  m_rounds = 0;
  std::vector<Reason> reasons = Diagnose(GetCore());
  const bool same = !reasons.empty() && reasons.size() == m_reasons.size() &&
                    std::equal(reasons.begin(), reasons.end(), m_reasons.begin(), IsSame);
  m_reasons = std::move(reasons);
  if (same) return;
  With<Tree>(kWhyReasons, [this](Tree& tree) {
    tree.SetMultiSelect(false);
    tree.Clear();
    int number = 0;
    for (const Reason& reason : m_reasons) {
      Tree::Row row;
      row.cells.resize(1);
      row.cells[0].text = Shown(reason.text);
      row.cells[0].icon = IconOf(reason.severity);
      row.strong = reason.severity == Reason::Severity::kPrevents;
      tree.AddRow(++number, Tree::kTop, -1, std::move(row));
    }
    if (number > 0) tree.SetCurrent(1);
  });
  const auto prevents = std::count_if(m_reasons.begin(), m_reasons.end(), [](const Reason& r) {
    return r.severity == Reason::Severity::kPrevents;
  });
  SetText(kWhySummary, m_reasons.empty()
                           ? gui::Translate("Nothing keeps the rigs from moving. Record a take.")
                       : prevents > 0 ? gui::Translate("Something keeps a rig from moving:")
                                      : gui::Translate("The rigs can move. Worth knowing:"));
  ShowRemedy();
}

const Reason* WhyWindow::GetSelected() const {
  const Tree* tree = Get<Tree>(kWhyReasons);
  const int key = tree ? tree->GetCurrent() : 0;
  return key > 0 && key <= static_cast<int>(m_reasons.size()) ? &m_reasons[key - 1] : nullptr;
}

void WhyWindow::ShowRemedy() {
  const Reason* reason = GetSelected();
  SetText(kWhyRemedy, reason ? Shown(reason->remedy) : std::string());
  SetEnabled(kWhyShowRig, reason && reason->row != 0,
             gui::Translate("This is of the whole take and of no rig."));
}

void WhyWindow::OnComponent(gui::Component& source, util::Message& message) {
  if (message.id == gui::kMsgSelectionChanged) return ShowRemedy();
  if (message.id != gui::kMsgClicked) return;
  if (source.GetId() == kWhyClose) return GetWindows().Close(WindowKind::kWhy);
  const Reason* reason = source.GetId() == kWhyShowRig ? GetSelected() : nullptr;
  if (!reason || reason->row == 0) return;
  GetCore().SetSelection({reason->row});
  if (reason->input < 0) return;
  if (auto* inputs = dynamic_cast<InputConfigWindow*>(
          GetWindows().Open(WindowKind::kInputConfig, reason->row)))
    inputs->Choose(reason->input);
}

}  // namespace orv::rws::core::windows
