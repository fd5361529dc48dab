// What is asked before a model is imported.
#pragma once

#include <string>

#include "app/session/models/ModelFile.h"
#include "core/windows/ModalWindow.h"

namespace orv::app {

/// Asks for the length of a unit and the axis that points up, begins with what the file tells or
/// what was guessed, and shows the size that comes of it. Modal.
class ImportWindow : public rws::core::windows::ModalWindow {
 public:
  ImportWindow(rws::core::windows::Windows& windows, const std::string& path,
               const ModelFacts& facts);

  /// False when the user cancels.
  bool Run(ImportOptions& options);

 protected:
  void OnBuilt() override;
  void OnComponent(gui::Component& source, util::Message& message) override;

 private:
  void ShowUnit();
  void ShowSize();

  const std::string m_path;
  const ModelFacts& m_facts;
  double m_unit;  ///< m
  UpAxis m_up;
};

}  // namespace orv::app
