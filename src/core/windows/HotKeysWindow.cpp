#include "core/windows/HotKeysWindow.h"

#include <QKeySequence>
#include <QString>
#include <set>

#include "core/HotKeys.h"
#include "core/windows/MainWindowFrame.h"
#include "core/windows/MainWindowIds.h"
#include "core/windows/SmallWindowIds.h"
#include "core/windows/Windows.h"
#include "gui/GuiMessages.h"
#include "gui/Menu.h"
#include "gui/Texts.h"
#include "gui/componentinterface/Menubar.h"
#include "gui/componentinterface/Tree.h"

namespace orv::rws::core::windows {

using gui::MenuItem;
using gui::componentinterface::Menubar;
using gui::componentinterface::Tree;

namespace {

/// Entries that are there and have a key.
void ListKeyed(const std::vector<MenuItem>& items, std::vector<const MenuItem*>& keyed) {
  for (const MenuItem& item : items) {
    if (!item.visible) continue;
    if (!item.shortcut.empty()) keyed.push_back(&item);
    ListKeyed(item.items, keyed);
  }
}

std::string PlainLabel(const MenuItem& item) {
  std::string label = item.english ? gui::Translate(item.label) : item.label, plain;
  for (std::size_t i = 0; i < label.size(); ++i) {
    // An ampersand marks a letter; two stand for one.
    if (label[i] == '&' && i + 1 < label.size()) ++i;
    plain += label[i];
  }
  return plain;
}

}  // namespace

HotKeysWindow::HotKeysWindow(Windows& windows)
    : Window(windows, "HotKeys", "/core/layout/rws_hotkeys.xml") {}

void HotKeysWindow::OnBuilt() {
  std::vector<const MenuItem*> commands;
  if (auto* main = dynamic_cast<MainWindowFrame*>(GetWindows().Find(WindowKind::kMain)))
    main->With<Menubar>(
        kMainMenu, [&commands](Menubar& bar) { ListKeyed(bar.GetMenu().GetItems(), commands); });
  With<Tree>(kHotKeyList, [&commands](Tree& tree) {
    Tree::Column keys, what, when;
    keys.title = gui::Translate("Key");
    what.title = gui::Translate("What it does");
    what.stretch = true;
    when.title = gui::Translate("When");
    tree.SetColumns({keys, what, when});
    tree.Clear();
    std::set<std::string> told;  // a key with two codes has two rows of one text
    int number = 0;
    for (const HotKey& key : HotKeys()) {
      if (!told.insert(std::string(key.keys) + key.text).second) continue;
      Tree::Row row;
      row.cells.resize(3);
      row.cells[0].text = gui::Translate(key.keys);
      row.cells[1].text = gui::Translate(key.text);
      row.cells[2].text = key.when == HotKeyTime::kInTake ? gui::Translate("in a take")
                                                          : gui::Translate("at any other time");
      tree.AddRow(++number, Tree::kTop, -1, std::move(row));
    }
    for (const MenuItem* item : commands) {
      Tree::Row row;
      row.cells.resize(3);
      row.cells[0].text = QKeySequence(QString::fromStdString(item->shortcut))
                              .toString(QKeySequence::NativeText)
                              .toStdString();
      row.cells[1].text = PlainLabel(*item);
      row.cells[2].text = gui::Translate("at any other time");
      tree.AddRow(++number, Tree::kTop, -1, std::move(row));
    }
  });
}

void HotKeysWindow::OnComponent(gui::Component& source, util::Message& message) {
  if (message.id == gui::kMsgClicked && source.GetId() == kHotKeysClose)
    GetWindows().Close(WindowKind::kHotKeys);
}

}  // namespace orv::rws::core::windows
