// Locators of plug-ins.
#pragma once
#include <maya/MPxNode.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MPxLocatorNode : public MPxNode {
 public:
  Type type() const override { return kLocatorNode; }
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
