// What all typed interfaces have in common.
#pragma once

namespace orv::gui {
class Component;
}

namespace orv::gui::componentinterface {

/// A component as code works with it: what is special to its element. What a setter sets is not
/// posted as a message. The rest (label, enabled, visible ...) is at the component.
class Interface {
 public:
  virtual Component& GetComponent() = 0;

 protected:
  ~Interface() = default;
};

}  // namespace orv::gui::componentinterface
