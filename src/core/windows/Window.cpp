#include "core/windows/Window.h"

#include <QWidget>
#include <utility>

#include "core/CoreImplementation.h"
#include "core/windows/WindowSettings.h"
#include "core/windows/Windows.h"
#include "gui/GuiMessages.h"
#include "gui/Layout.h"
#include "gui/component/qt/Realise.h"
#include "gui/componentinterface/Dialog.h"
#include "gui/componentinterface/Label.h"

namespace orv::rws::core::windows {

namespace {

using gui::componentinterface::Dialog;

constexpr char kGeometry[] = "geometry";
/// A dialog with nothing in it but a list.
constexpr char kFrameDocument[] = "/core/layout/rws_frame.xml";
constexpr int kFrameContent = 1;

}  // namespace

Window::Window(Windows& windows, const std::string& name, std::string document)
    : MessageNode(name), m_windows(windows), m_document(std::move(document)) {
  m_windows.Enter(*this);
}

Window::~Window() {
  m_windows.Leave(*this);
  if (m_docked && m_root) m_root->Retire();
}

CoreImplementation& Window::GetCore() const {
  return m_windows.GetCore();
}

void Window::Adopt(gui::Component* root) {
  m_root = root;
  if (!m_root) return;
  connect(m_root);
  connect(&GetCore());
  OnBuilt();
}

bool Window::Build() {
  if (m_root) return true;
  m_docked = false;
  gui::ComponentPtr root = m_windows.GetLayout().Load(m_document);
  if (!root) return false;
  gui::Component* content = root.get();
  m_frame = dynamic_cast<Dialog*>(content) ? std::move(root) : Frame(std::move(root));
  if (!m_frame) return false;
  m_windows.Prepare(*m_frame);
  connect(m_frame.get());
  Adopt(content);
  QWidget* widget = gui::component::qt::Realise(*m_frame, m_windows.GetParentFor(*this));
  widget->setObjectName(QString::fromStdString(name()));
  GetDialog()->SetGeometry(m_windows.GetSettings().Get(name(), kGeometry));
  return true;
}

gui::ComponentPtr Window::Frame(gui::ComponentPtr root) {
  gui::ComponentPtr frame = m_windows.GetLayout().Load(kFrameDocument);
  gui::Component* inside =
      dynamic_cast<Dialog*>(frame.get()) ? frame->Find(kFrameContent) : nullptr;
  if (!inside) return nullptr;
  inside->addChild(root.release());
  return frame;
}

bool Window::BuildIn(gui::Component& container) {
  if (m_root) return true;
  m_docked = true;
  const gui::Frozen frozen(container);
  Adopt(m_windows.GetLayout().Instantiate(m_document, container));
  return m_root != nullptr;
}

Dialog* Window::GetDialog() const {
  return dynamic_cast<Dialog*>(m_frame.get());
}

bool Window::Show() {
  if (!m_root && !Build()) return false;
  if (Dialog* dialog = GetDialog()) {
    dialog->Show();
    dialog->Raise();
  } else {
    m_root->SetVisible(true);
  }
  return true;
}

void Window::Hide() {
  if (Dialog* dialog = GetDialog())
    dialog->Hide();
  else if (m_root)
    m_root->SetVisible(false);
}

bool Window::IsShown() const {
  if (!m_root) return false;
  const Dialog* dialog = GetDialog();
  return dialog ? dialog->IsShown() : m_root->IsVisible();
}

QWidget* Window::GetWidget() const {
  const gui::Component* top = m_frame ? m_frame.get() : m_root;
  return top ? gui::component::qt::WidgetOf(*top) : nullptr;
}

void Window::SetTitle(const std::string& title) {
  if (m_frame) m_frame->SetLabel(title);
}

void Window::SetEnabled(int id, bool enabled, const std::string& why) {
  if (gui::Component* component = Find(id)) component->SetEnabled(enabled, why);
}

void Window::SetText(int id, const std::string& text) {
  With<gui::componentinterface::Label>(id, [&text](auto& label) { label.SetText(text); });
}

void Window::onMessage(util::Message& message, bool) {
  if (message.id == util::MSG_DESTROYED) {
    if (m_root && message.origin == static_cast<util::MessageNode*>(m_root)) m_root = nullptr;
    return;
  }
  if (message.origin == static_cast<util::MessageNode*>(&GetCore())) {
    if (m_root) OnCore(message);
    return;
  }
  gui::Component* source = gui::SourceOf(message);
  if (!source || !m_root) return;
  if (source == m_frame.get()) {
    if (message.id == gui::kMsgShown) {
      OnShown();
    } else if (message.id == gui::kMsgHidden) {
      m_windows.GetSettings().Set(name(), kGeometry, GetDialog()->GetGeometry());
      OnHidden();
    }
  }
  OnComponent(*source, message);
}

}  // namespace orv::rws::core::windows
