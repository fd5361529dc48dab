#include "core/windows/HotKeysWindow.h"

#include <set>

#include "core/HotKeys.h"
#include "core/windows/SmallWindowIds.h"
#include "core/windows/Windows.h"
#include "gui/GuiMessages.h"
#include "gui/Texts.h"
#include "gui/componentinterface/Tree.h"

namespace orv::rws::core::windows {

using gui::componentinterface::Tree;

HotKeysWindow::HotKeysWindow(Windows& windows)
    : Window(windows, "HotKeys", "/core/layout/rws_hotkeys.xml") {}

void HotKeysWindow::OnBuilt() {
  With<Tree>(kHotKeyList, [](Tree& tree) {
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
  });
}

void HotKeysWindow::OnComponent(gui::Component& source, util::Message& message) {
  if (message.id == gui::kMsgClicked && source.GetId() == kHotKeysClose)
    GetWindows().Close(WindowKind::kHotKeys);
}

}  // namespace orv::rws::core::windows
