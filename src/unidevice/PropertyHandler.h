// The inputs of one rig.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "util/DynamicObject.h"

namespace orv::unidevice {

class Property;

/// Ordered list of named properties; owns them. A property's index never changes.
class PropertyHandler : public util::DynamicObject {
 public:
  using Entry = std::pair<std::string, Property*>;

  PropertyHandler() = default;
  PropertyHandler(const PropertyHandler&) = delete;
  PropertyHandler& operator=(const PropertyHandler&) = delete;

  /// Destroys each property, first to last.
  ~PropertyHandler() override;

  /// Appends `property` under its name and gives it back. If the name is taken, the entry that came
  /// first is the one that `find` gives.
  Property* add(std::unique_ptr<Property> property);

  /// Exact search; null if there is none.
  Property* find(const std::string& name) const;

  /// Null when `i` is out of range on either side.
  Property* property(int i) const;

  int count() const { return static_cast<int>(entries.size()); }

  /// Property::rebind on all; the number of those that got a control. To be called when
  /// DriverManager::generation() has changed since the last call.
  int rebind();

  std::vector<Entry> entries;
};

}  // namespace orv::unidevice
