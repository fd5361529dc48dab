#include "app/studio/windows/PreviewWindow.h"

#include <cmath>
#include <utility>

#include "app/studio/windows/StudioWindowIds.h"
#include "gui/GuiMessages.h"
#include "gui/Texts.h"
#include "gui/componentinterface/CheckBox.h"
#include "gui/componentinterface/ComboBox.h"
#include "gui/componentinterface/Spinner.h"

namespace orv::app {

using namespace gui::componentinterface;

PreviewWindow::PreviewWindow(rws::core::windows::Windows& windows, std::vector<Camera> cameras,
                             std::string frames)
    : ModalWindow(windows, "Preview", "/core/layout/rws_preview.xml", kPreviewAccept,
                  kPreviewCancel, Size::kContent),
      m_cameras(std::move(cameras)),
      m_frames(std::move(frames)) {}

bool PreviewWindow::Run(Choice& choice) {
  m_choice = choice;
  if (!Ask()) return false;
  choice = m_choice;
  return true;
}

void PreviewWindow::OnBuilt() {
  std::vector<Item> items(1);
  items[0].id = 0;
  items[0].text = gui::Translate("The view's own eye");
  for (const Camera& camera : m_cameras) {
    Item item;
    item.id = static_cast<int>(items.size());
    item.text = camera.name;
    items.push_back(std::move(item));
  }
  With<ComboBox>(kPreviewCamera, [&](ComboBox& box) {
    box.SetItems(std::move(items));
    box.SelectId(m_choice.camera + 1);
  });
  With<Spinner>(kPreviewWidth, [this](Spinner& spinner) { spinner.SetValue(m_choice.width); });
  With<CheckBox>(kPreviewSigns, [this](CheckBox& box) { box.SetOn(m_choice.signs); });
  With<CheckBox>(kPreviewOverlay, [this](CheckBox& box) { box.SetOn(m_choice.overlay); });
  SetText(kPreviewFrames, m_frames);
  ShowHeight();
}

/// As high as what the camera sees.
void PreviewWindow::ShowHeight() {
  if (m_choice.camera >= 0) {
    const double aspect = m_cameras[static_cast<std::size_t>(m_choice.camera)].aspect;
    m_choice.height = std::max(1, static_cast<int>(std::lround(m_choice.width / aspect)));
  }
  With<Spinner>(kPreviewHeight, [this](Spinner& spinner) { spinner.SetValue(m_choice.height); });
}

void PreviewWindow::OnComponent(gui::Component& source, util::Message& message) {
  ModalWindow::OnComponent(source, message);
  const int id = source.GetId();
  if (message.id != gui::kMsgValueChanged) return;
  const auto* spinner = dynamic_cast<Spinner*>(&source);
  if (id == kPreviewCamera) m_choice.camera = message.param - 1;
  if (id == kPreviewSigns) m_choice.signs = message.param != 0;
  if (id == kPreviewOverlay) m_choice.overlay = message.param != 0;
  if (id == kPreviewWidth && spinner)
    m_choice.width = static_cast<int>(std::lround(spinner->GetValue()));
  if (id == kPreviewHeight && spinner)
    m_choice.height = static_cast<int>(std::lround(spinner->GetValue()));
  if (id == kPreviewCamera || id == kPreviewWidth) ShowHeight();
}

}  // namespace orv::app
