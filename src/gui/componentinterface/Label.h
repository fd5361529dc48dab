// A text or an image.
#pragma once

#include <string>

#include "gui/componentinterface/Interface.h"

namespace orv::gui::componentinterface {

/// A mnemonic ("&Name") gives the focus to the component behind it in its list.
class Label : public Interface {
 public:
  /// Shown as it is. With `hyperlinks` it may hold <a href="...">...</a>, and a click on such posts
  /// kMsgClicked with a LinkClicked; without, marks are shown as letters.
  virtual void SetText(const std::string& text) = 0;
  virtual const std::string& GetText() const = 0;
  /// As it is shown.
  virtual std::string GetShownText() const = 0;
  virtual bool HasLinks() const = 0;
  virtual bool Wraps() const = 0;
  /// An image in place of the text; an empty path goes back to the text.
  virtual void SetImage(const std::string& path) = 0;
  virtual const std::string& GetImage() const = 0;
};

}  // namespace orv::gui::componentinterface
