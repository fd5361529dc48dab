// A window.
#pragma once

#include <string>

#include "gui/componentinterface/Interface.h"

namespace orv::gui::componentinterface {

/// Its title is the label. Closing hides it; the component stays and can be shown again.
class Dialog : public Interface {
 public:
  /// Shows it, raised, at the place and size that it had. It must be realised.
  virtual void Show() = 0;
  /// Without a question.
  virtual void Hide() = 0;
  virtual bool IsShown() const = 0;
  /// In front of the others, with the keyboard.
  virtual void Raise() = 0;
  /// As the user's close button: posts kMsgCloseRequest, and unless a listener refuses it hides the
  /// dialog and posts kMsgClosed. True when it is closed.
  virtual bool Close() = 0;
  /// While it is shown, the windows that it stands over take no input. Set before it is shown.
  virtual void SetModal(bool modal) = 0;
  virtual bool IsModal() const = 0;
  /// Answers of a dialog that is accepted or not.
  static constexpr int kCancelled = 0, kAccepted = 1;
  /// Shows it, modal, and returns when it is closed: kCancelled, or what EndModal was given. The
  /// event loop runs inside.
  virtual int RunModal() = 0;
  virtual void EndModal(int answer) = 0;
  /// Path of an image.
  virtual void SetIcon(const std::string& path) = 0;
  virtual const std::string& GetIcon() const = 0;
  /// Place, size and whether it is maximised, as a line to be kept; empty before it is realised.
  virtual std::string GetGeometry() const = 0;
  /// Takes such a line, brought onto a screen that is there. False when it is damaged.
  virtual bool SetGeometry(const std::string& geometry) = 0;
  /// As large as its content wishes.
  virtual void FitToContent() = 0;
};

}  // namespace orv::gui::componentinterface
