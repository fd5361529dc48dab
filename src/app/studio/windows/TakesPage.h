// The list of kept takes in the main window.
#pragma once

#include <QPointer>
#include <functional>
#include <string>
#include <vector>

#include "app/studio/windows/TakePainter.h"
#include "app/studio/windows/TakePictures.h"
#include "core/windows/MainWindowPage.h"
#include "gui/component/qt/ViewHandler.h"

class QListWidget;

namespace orv::app {

class KeptTakes;
class SceneDocument;

/// Each take with the picture of its path, its marks, name, stars and note, which are edited below
/// the list. A double click or Enter uses a take.
class TakesPage : public rws::core::windows::MainWindowPage,
                  public gui::component::qt::ViewHandler {
 public:
  /// What the program does with a take, with its questions and progress; they are told of by it.
  struct Actions {
    std::function<void(int number)> use, remove, exportOne;
    std::function<void()> import;
  };

  TakesPage(rws::core::windows::MainWindowFrame& window, SceneDocument& document, Actions actions);
  ~TakesPage() override;

  // MainWindowPage
  void OnBuilt() override;
  void OnComponent(gui::Component& source, util::Message& message) override;
  void OnCore(const util::Message& message) override;
  void OnSceneChanged() override { Show(); }
  void OnSettingsChanged() override;
  void OnLive() override { Show(); }

  // ViewHandler
  void Paint(QPainter&, QWidget&) override {}
  QWidget* MakeContent(QWidget* parent) override;

 private:
  /// What the list shows; nothing is made anew while it stays the same.
  std::vector<std::string> Describe();
  void Show();
  /// Has the pictures made that are not there, while the list is seen.
  void PaintMissing();
  void Fill();
  void ShowChosen();
  int GetChosen() const;
  KeptTakes& GetTakes() const;

  SceneDocument& m_document;
  Actions m_actions;
  TakePictures m_pictures;
  TakePainter m_painter;
  QPointer<QListWidget> m_list;
  std::vector<std::string> m_shown;
  bool m_isFilling = false;
};

}  // namespace orv::app
