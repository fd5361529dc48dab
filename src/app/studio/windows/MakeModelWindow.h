// What a pre-rigged model is made of.
#pragma once

#include <map>
#include <string>

#include "app/session/models/RiggedModel.h"
#include "app/studio/windows/PictureView.h"
#include "core/windows/ModalWindow.h"

namespace orv::rws::core::windows {
class SceneBrowser;
}

namespace orv::app {

/// Asks for the rigs and nodes, of which those that are selected in the scene are ticked at first,
/// and for title, text and picture. Modal.
class MakeModelWindow : public rws::core::windows::ModalWindow {
 public:
  MakeModelWindow(rws::core::windows::Windows& windows, rws::core::windows::SceneBrowser& browser);
  ~MakeModelWindow() override;

  /// False when the user cancels.
  bool Run(ModelSelection& selection, ModelCard& card);

 protected:
  void OnBuilt() override;
  void OnComponent(gui::Component& source, util::Message& message) override;

 private:
  struct Part {
    bool isRig;
    std::string name;
    bool chosen;
  };

  void AddPart(bool isRig, const std::string& name, bool chosen);
  void ChoosePicture();
  void SetPicture(const std::string& bytes, const std::string& problem);
  void ShowAccept();

  std::map<int, Part> m_parts;  ///< by the row's key
  ModelCard m_card;
  PictureView m_picture;
};

}  // namespace orv::app
