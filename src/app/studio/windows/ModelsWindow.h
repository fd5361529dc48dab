// The pre-rigged models that can be added to a scene.
#pragma once

#include <string>
#include <vector>

#include "app/session/models/RiggedModel.h"
#include "app/studio/windows/PictureView.h"
#include "core/windows/ModalWindow.h"

namespace orv::app {

/// What a user has chosen: a model, and the ground of its rigs.
struct ModelChoice {
  std::string path;
  std::string ground;  ///< name of a node; empty: none
};

/// Lists the models that come with the program, those in the user's folder and files that the user
/// looks up, with picture and text. Modal.
class ModelsWindow : public rws::core::windows::ModalWindow {
 public:
  /// `grounds`: nodes that rigs may take as their ground, the likeliest first.
  ModelsWindow(rws::core::windows::Windows& windows, std::vector<std::string> grounds);
  ~ModelsWindow() override;

  /// Begins with `choice.path`, if it names a model. False when the user cancels.
  bool Run(ModelChoice& choice);

  /// Where the user's own models lie: "models" in the data root.
  static std::string GetUserFolder();
  static std::string GetFilter();

 protected:
  void OnBuilt() override;
  void OnComponent(gui::Component& source, util::Message& message) override;
  void Accept() override;

 private:
  void AddFolder(const std::string& folder);
  /// Number of its line in the list.
  int AddModel(const std::string& path);
  void AddFromFile();
  void ShowModel();
  const RiggedModelInfo* GetSelected() const;

  const std::vector<std::string> m_grounds;
  std::vector<std::string> m_paths;  ///< by the item's id, less one
  std::vector<RiggedModelInfo> m_infos;
  PictureView m_picture;
  ModelChoice m_choice;
};

}  // namespace orv::app
