#include "app/studio/view/WindowPictures.h"

#include <QGuiApplication>
#include <QOpenGLContext>
#include <QOpenGLFunctions_3_3_Core>
#include <QOpenGLWidget>
#include <QWindow>
#include <utility>

namespace orv::app::view {

namespace {

/// Only here native windows within windows have been tried.
bool HasWindowsInWindows() {
  return QGuiApplication::platformName() == "xcb";
}

void MakeNative(QWidget& widget) {
  if (!HasWindowsInWindows()) return;
  widget.setAttribute(Qt::WA_DontCreateNativeAncestors);
  widget.setAttribute(Qt::WA_NativeWindow);
}

QOpenGLFunctions_3_3_Core* Functions() {
  return QOpenGLContext::currentContext()->versionFunctions<QOpenGLFunctions_3_3_Core>();
}

}  // namespace

WindowPictures::WindowPictures(QOpenGLWidget& widget) : m_widget(widget) {
  MakeNative(widget);
}

void WindowPictures::Raise(QWidget& child) {
  MakeNative(child);
}

/// By a child without a window of its own, which only the put together window shows.
bool WindowPictures::IsCovered() const {
  for (const QObject* child : m_widget.children()) {
    const auto* widget = qobject_cast<const QWidget*>(child);
    if (widget && !widget->isWindow() && widget->isVisible() &&
        !widget->testAttribute(Qt::WA_NativeWindow))
      return true;
  }
  return false;
}

bool WindowPictures::Begin() {
  QWindow* const window = m_widget.windowHandle();
  QOpenGLContext* const context = m_widget.context();
  if (m_isRefused || m_fence || !window || !context || !window->isExposed() || IsCovered())
    return false;
  if (!context->makeCurrent(window)) {
    m_isRefused = true;
    return false;
  }
  auto* const gl = Functions();
  GLint depth = 0;
  gl->glBindFramebuffer(GL_FRAMEBUFFER, 0);
  gl->glGetFramebufferAttachmentParameteriv(GL_FRAMEBUFFER, GL_DEPTH,
                                            GL_FRAMEBUFFER_ATTACHMENT_DEPTH_SIZE, &depth);
  m_isRefused = depth < 24;
  if (m_isRefused) m_widget.doneCurrent();
  return !m_isRefused;
}

void WindowPictures::End() {
  auto* const gl = Functions();
  m_fence = gl->glFenceSync(GL_SYNC_GPU_COMMANDS_COMPLETE, 0);
  gl->glFlush();
}

bool WindowPictures::Poll() {
  QWindow* const window = m_widget.windowHandle();
  QOpenGLContext* const context = m_widget.context();
  // It mostly still is current; to make it so asks the window system, which takes its time.
  const bool isCurrent =
      context && QOpenGLContext::currentContext() == context && context->surface() == window;
  if (!m_fence || !window || !context || !(isCurrent || context->makeCurrent(window))) {
    m_fence = nullptr;
    return false;
  }
  const bool isDone =
      Functions()->glClientWaitSync(static_cast<GLsync>(m_fence), 0, 0) != GL_TIMEOUT_EXPIRED;
  if (isDone) {
    Drop();
    context->swapBuffers(window);
    m_widget.doneCurrent();
  }
  return isDone;
}

void WindowPictures::Drop() {
  if (m_fence) Functions()->glDeleteSync(static_cast<GLsync>(std::exchange(m_fence, nullptr)));
}

}  // namespace orv::app::view
