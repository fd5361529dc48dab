#include "core/windows/LogWindow.h"

#include <QApplication>
#include <QClipboard>
#include <algorithm>
#include <utility>

#include "core/CoreImplementation.h"
#include "core/windows/SmallWindowIds.h"
#include "gui/GuiMessages.h"
#include "gui/Texts.h"
#include "gui/componentinterface/CheckBox.h"
#include "gui/componentinterface/ComboBox.h"
#include "gui/componentinterface/ListBox.h"
#include "gui/componentinterface/TextBox.h"

namespace orv::rws::core::windows {

namespace {

using namespace gui::componentinterface;

Item ItemOf(const LogHistory::Line& line) {
  Item item;
  item.id = line.number;
  item.text = line.text;
  item.dim = line.level == LogLevel::kDebug;
  item.strong = line.level == LogLevel::kError;
  if (line.level == LogLevel::kWarning) item.icon = "[coreimages]/icons/warning.png";
  if (line.level == LogLevel::kError) item.icon = "[coreimages]/icons/error.png";
  return item;
}

}  // namespace

LogHistory::LogHistory(CoreImplementation& core) : MessageNode("LogHistory") {
  connect(&core);
}

void LogHistory::onMessage(util::Message& message, bool) {
  const auto* line = NewsIn<LogLine>(message);
  if (!line) return;
  m_lines.push_back({++m_last, line->level, line->text});
  if (m_lines.size() > kMost) m_lines.pop_front();
}

LogWindow::LogWindow(Windows& windows, std::shared_ptr<LogHistory> history)
    : Window(windows, "Log", "/core/layout/rws_log.xml"), m_history(std::move(history)) {}

bool LogWindow::IsShownLine(const LogHistory::Line& line) const {
  return line.level >= m_least;
}

void LogWindow::ShowAll() {
  std::vector<Item> items;
  for (const auto& line : m_history->GetLines()) {
    if (IsShownLine(line)) items.push_back(ItemOf(line));
    m_shown = line.number;
  }
  With<ListBox>(kLogLines, [&](ListBox& list) {
    list.SetMultiSelect(true);
    list.SetItems(std::move(items));
    list.SetFollow(true);
  });
  ShowCount();
}

void LogWindow::OnLive() {
  std::vector<Item> items;
  for (const auto& line : m_history->GetLines()) {
    if (line.number > m_shown && IsShownLine(line)) items.push_back(ItemOf(line));
    m_shown = std::max(m_shown, line.number);
  }
  if (items.empty()) return;
  With<ListBox>(kLogLines, [&](ListBox& list) {
    list.AddItems(items);
    const int over = static_cast<int>(list.GetItems().size()) - static_cast<int>(LogHistory::kMost);
    if (over > 0) list.RemoveFirst(over);
  });
  ShowCount();
}

void LogWindow::ShowCount() {
  With<ListBox>(kLogLines, [this](ListBox& list) {
    SetText(kLogCount,
            gui::Translate("%1 of %2 lines", {std::to_string(list.GetItems().size()),
                                              std::to_string(m_history->GetLines().size())}));
  });
}

void LogWindow::Copy() {
  With<ListBox>(kLogLines, [](ListBox& list) {
    const std::vector<int> selected = list.GetSelected();
    QString text;
    for (const Item& item : list.GetItems())
      if (selected.empty() ||
          std::find(selected.begin(), selected.end(), item.id) != selected.end())
        text += QString::fromStdString(item.text) + "\n";
    QApplication::clipboard()->setText(text);
  });
}

void LogWindow::OnComponent(gui::Component& source, util::Message& message) {
  switch (source.GetId()) {
    case kLogLevel:
      if (message.id != gui::kMsgValueChanged) return;
      m_least = static_cast<LogLevel>(message.param);
      return ShowAll();
    case kLogSearch:
      if (message.id != gui::kMsgTyped) return;
      return With<ListBox>(kLogLines, [this](ListBox& list) {
        list.SetFilter(Get<TextBox>(kLogSearch)->GetText());
      });
    case kLogFollow:
      if (message.id != gui::kMsgChecked) return;
      return With<ListBox>(kLogLines,
                           [&message](ListBox& list) { list.SetFollow(message.param != 0); });
    case kLogCopy:
      if (message.id == gui::kMsgClicked) Copy();
      return;
    default:
      return;
  }
}

}  // namespace orv::rws::core::windows
