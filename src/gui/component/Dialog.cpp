#include "gui/component/Dialog.h"

#include <utility>

#include "gui/GuiMessages.h"

namespace orv::gui::component {

Dialog::Dialog(const util::xml::Element& tag)
    : Element(tag),
      m_padding(ReadPadding(tag.attribute("padding"), {8, 8, 8, 8})),
      m_spacing(ReadInt(tag.attribute("spacing"), kUnset)),
      m_icon(tag.attribute("icon")),
      m_closeButton(ReadFlag(tag.attribute("closebtn"), true)),
      m_minimizeButton(ReadFlag(tag.attribute("minimizebtn"), false)),
      m_titleBar(ReadFlag(tag.attribute("titlebar"), true)) {}

bool Dialog::KnowsAttribute(std::string_view name) const {
  return name == "icon" || name == "closebtn" || name == "minimizebtn" || name == "titlebar" ||
         name == "padding" || name == "spacing" || Element::KnowsAttribute(name);
}

Dialog::Window* Dialog::GetWindow() const {
  return dynamic_cast<Window*>(GetPeer());
}

void Dialog::Show() {
  Window* window = GetWindow();
  if (!window) return;
  const bool first = !std::exchange(m_shown, true);
  if (first) m_answer = 0;
  window->ShowWindow(true);
  window->RaiseWindow();
  if (first) Post(kMsgShown);
}

void Dialog::Hide() {
  if (!std::exchange(m_shown, false)) return;
  if (Window* window = GetWindow()) {
    window->EndLoop();
    window->ShowWindow(false);
  }
  Post(kMsgHidden);
}

void Dialog::Raise() {
  if (Window* window = GetWindow()) window->RaiseWindow();
}

bool Dialog::Close(bool byEscape) {
  if (!m_shown) return true;
  CloseRequest request;
  if (!Post(kMsgCloseRequest, byEscape, &request)) return true;
  if (request.refused) return false;
  Hide();
  Post(kMsgClosed);
  return true;
}

int Dialog::RunModal() {
  Window* window = GetWindow();
  if (!window || m_inLoop) return 0;
  m_modal = true;
  m_inLoop = true;
  Show();
  {
    // What the loop's events end must not take this dialog along before it has returned.
    const HoldRetired hold;
    if (m_shown) window->RunLoop();
  }
  m_inLoop = false;
  return m_answer;
}

void Dialog::EndModal(int answer) {
  m_answer = answer;
  Hide();
}

void Dialog::SetIcon(const std::string& path) {
  m_icon = path;
  Changed(kImageChange);
}

std::string Dialog::GetGeometry() const {
  const Window* window = GetWindow();
  return window ? window->ReadGeometry() : m_geometry;
}

bool Dialog::SetGeometry(const std::string& geometry) {
  m_geometry = geometry;
  Window* window = GetWindow();
  return !window || window->WriteGeometry(geometry);
}

void Dialog::FitToContent() {
  if (Window* window = GetWindow()) window->FitWindow();
}

void Dialog::PeerGoes() {
  m_geometry = GetGeometry();
  m_shown = false;
  if (Window* window = GetWindow()) window->EndLoop();
}

}  // namespace orv::gui::component
