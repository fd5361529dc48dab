// Windows on the real core and the headless host, as real widgets.
#pragma once

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QWidget>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessSession.h"
#include "adaptor/headless/Scene.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "core/services/DataRoot.h"
#include "core/windows/AllWindows.h"
#include "core/windows/Program.h"
#include "core/windows/Window.h"
#include "core/windows/Windows.h"
#include "gui/component/qt/Realise.h"
#include "plugins/release/all/AllRigs.h"
#include "support/TempFolder.h"
#include "support/WidgetApplication.h"

namespace orv::tests {

/// A program around the windows that notes what it is asked for.
class NotingProgram : public rws::core::windows::Program {
 public:
  bool HasCommand(int id) const override { return has.count(id) != 0; }
  void RunCommand(int id) override { ran.push_back(id); }
  std::string GetSceneTitle() const override { return title; }
  bool IsSceneChanged() const override { return changed; }
  void OpenDropped(const std::vector<std::string>& paths) override { dropped = paths; }
  bool MayClose() override { return mayClose; }
  void OnMainWindowClosed() override { ++closed; }
  rws::core::windows::SceneBrowser* GetSceneBrowser() override { return browser; }
  gui::component::qt::ViewHandler* GetTimeline() override { return timeline; }
  void MakePages(rws::core::windows::MainWindowFrame& window, const AddPage& add) override {
    if (makePages) makePages(window, add);
  }

  std::set<int> has;
  std::vector<int> ran;
  std::string title = "scene.glb";
  bool changed = false, mayClose = true;
  int closed = 0;
  std::vector<std::string> dropped;
  rws::core::windows::SceneBrowser* browser = nullptr;
  gui::component::qt::ViewHandler* timeline = nullptr;
  std::function<void(rws::core::windows::MainWindowFrame&, const AddPage&)> makePages;
};

class WindowsTest : public testing::Test {
 protected:
  WindowsTest() : session((rws::core::DataRoot::Set(folder.path), rws::addon::AllRigs())) {}
  ~WindowsTest() override {
    windows.reset();
    rws::core::DataRoot::Set("");
  }

  rws::core::windows::Windows& Begin() {
    windows = std::make_unique<rws::core::windows::Windows>(core, program);
    rws::core::windows::AddAllWindows(*windows);
    return *windows;
  }
  /// Row of a new rig.
  int Add(const char* kind, const std::string& name) {
    return core.CreateToolFromFactory(kind, name)->GetIdentity();
  }
  /// One round of what windows do by themselves.
  void Live() {
    for (auto* window : {windows->Find(rws::core::windows::WindowKind::kMain)})
      if (window) window->OnLive();
    QApplication::processEvents();
  }

  TempFolder folder;
  rws::adaptor::headless::HeadlessSession session;
  rws::core::CoreImplementation& core = session.GetCore();
  NotingProgram program;
  std::unique_ptr<rws::core::windows::Windows> windows;
};

/// Names of what in a window can have the focus and says nothing to who does not see it.
inline std::vector<std::string> Unnamed(QWidget& window) {
  std::vector<std::string> found;
  for (QWidget* widget : window.findChildren<QWidget*>()) {
    if (!(widget->focusPolicy() & Qt::TabFocus) || !widget->isVisibleTo(&window)) continue;
    // Parts of a field speak by the field.
    if (widget->focusProxy() ||
        (widget->parentWidget() && widget->parentWidget()->focusProxy() == widget))
      continue;
    QAccessibleInterface* heard = QAccessible::queryAccessibleInterface(widget);
    if (!heard || heard->text(QAccessible::Name).trimmed().isEmpty())
      found.push_back(std::string(widget->metaObject()->className()) + " " +
                      widget->objectName().toStdString());
  }
  return found;
}

}  // namespace orv::tests
