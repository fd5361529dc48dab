// A window of a document, and who listens to it.
#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QWidget>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include "gui/GuiMessages.h"
#include "gui/Layout.h"
#include "gui/component/qt/Realise.h"

namespace orv::tests {

/// Writes down what a root posts, as "id:component:param".
class Listener : public util::MessageNode {
 public:
  Listener() : MessageNode("window") {}

  void onMessage(util::Message& message, bool) override {
    // Where things stand is told all the time.
    if (message.id < 0 || message.id == gui::kMsgMoved || message.id == gui::kMsgFocusGained ||
        message.id == gui::kMsgFocusLost)
      return;
    ids.push_back(message.id);
    sources.push_back(gui::SourceIdOf(message));
    params.push_back(message.param);
    if (then) then(message);
  }
  std::vector<int> Take() {
    sources.clear();
    params.clear();
    return std::move(ids);
  }

  std::vector<int> ids, sources, params;
  std::function<void(util::Message&)> then;
};

/// A tree of a text or of the test's document, with a log.
struct Window {
  explicit Window(const std::string& document = Everything()) {
    root = layout.LoadText(document, "test");
    if (root) listener.connect(root.get());
  }

  static std::string Everything() {
    std::ifstream in(ORV_SOURCE_DIR "/fuzz/corpus/layout/everything.xml", std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }

  template <class Interface>
  Interface& Get(int id) {
    auto* found = root->Get<Interface>(id);
    if (!found) throw std::runtime_error("no component " + std::to_string(id));
    return *found;
  }
  QWidget* Widget(int id) { return gui::component::qt::WidgetOf(*root->Find(id)); }

  QWidget* Show(int width = 400, int height = 300) {
    QWidget* widget = gui::component::qt::Realise(*root);
    widget->resize(width, height);
    widget->show();
    widget->activateWindow();
    Settle();
    listener.Take();
    return widget;
  }
  static void Settle() {
    for (int i = 0; i < 5; ++i) {
      QCoreApplication::sendPostedEvents();
      QCoreApplication::processEvents();
    }
  }

  std::vector<std::string> log;
  gui::Layout layout{{nullptr, nullptr, [this](const std::string& line) { log.push_back(line); }}};
  Listener listener;
  gui::ComponentPtr root;
};

}  // namespace orv::tests
