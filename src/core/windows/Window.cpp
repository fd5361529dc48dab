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
  m_windows.Prepare(*m_root);
  connect(m_root);
  connect(&GetCore());
  OnBuilt();
}

bool Window::Build() {
  if (m_root) return true;
  m_docked = false;
  m_owned = m_windows.GetLayout().Load(m_document);
  Adopt(m_owned.get());
  if (!m_root) return false;
  QWidget* parent = m_windows.GetParentFor(*this);
  QWidget* widget = gui::component::qt::Realise(*m_root, parent);
  widget->setObjectName(QString::fromStdString(name()));
  if (auto* dialog = dynamic_cast<Dialog*>(m_root))
    dialog->SetGeometry(m_windows.GetSettings().Get(name(), kGeometry));
  return true;
}

bool Window::BuildIn(gui::Component& container) {
  if (m_root) return true;
  m_docked = true;
  const gui::Frozen frozen(container);
  Adopt(m_windows.GetLayout().Instantiate(m_document, container));
  return m_root != nullptr;
}

bool Window::Show() {
  if (!m_root && !Build()) return false;
  if (auto* dialog = dynamic_cast<Dialog*>(m_root)) {
    dialog->Show();
    dialog->Raise();
  } else {
    m_root->SetVisible(true);
  }
  return true;
}

void Window::Hide() {
  if (auto* dialog = dynamic_cast<Dialog*>(m_root))
    dialog->Hide();
  else if (m_root)
    m_root->SetVisible(false);
}

bool Window::IsShown() const {
  if (!m_root) return false;
  const auto* dialog = dynamic_cast<const Dialog*>(m_root);
  return dialog ? dialog->IsShown() : m_root->IsVisible();
}

QWidget* Window::GetWidget() const {
  return m_root ? gui::component::qt::WidgetOf(*m_root) : nullptr;
}

void Window::SetEnabled(int id, bool enabled, const std::string& why) {
  if (gui::Component* component = Find(id)) component->SetEnabled(enabled, why);
}

void Window::SetText(int id, const std::string& text) {
  With<gui::componentinterface::Label>(id, [&text](auto& label) { label.SetText(text); });
}

void Window::onMessage(util::Message& message, bool) {
  if (message.id == util::MSG_DESTROYED) {
    if (m_root && message.origin == m_root) m_root = nullptr;
    return;
  }
  if (message.origin == static_cast<util::MessageNode*>(&GetCore())) {
    if (m_root) OnCore(message);
    return;
  }
  gui::Component* source = gui::SourceOf(message);
  if (!source || !m_root) return;
  if (source == m_root) {
    if (message.id == gui::kMsgShown) {
      OnShown();
    } else if (message.id == gui::kMsgHidden) {
      if (const auto* dialog = dynamic_cast<const Dialog*>(m_root))
        m_windows.GetSettings().Set(name(), kGeometry, dialog->GetGeometry());
      OnHidden();
    }
  }
  OnComponent(*source, message);
}

}  // namespace orv::rws::core::windows
