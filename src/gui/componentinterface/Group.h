// Components under a heading.
#pragma once

#include "gui/componentinterface/Interface.h"

namespace orv::gui::componentinterface {

/// The heading is the label. The user can fold one that is foldable (attribute `fold`), by mouse
/// and keyboard; that posts kMsgFolded.
class Group : public Interface {
 public:
  virtual void SetFoldable(bool foldable) = 0;
  virtual bool IsFoldable() const = 0;
  virtual void SetFolded(bool folded) = 0;
  virtual bool IsFolded() const = 0;
};

}  // namespace orv::gui::componentinterface
