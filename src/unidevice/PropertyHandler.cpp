#include "unidevice/PropertyHandler.h"

#include "unidevice/Property.h"

namespace orv::unidevice {

PropertyHandler::~PropertyHandler() {
  // The length is read anew on each turn: a property's end may add or drop entries.
  for (std::size_t i = 0; i < entries.size(); ++i) delete entries[i].second;
}

Property* PropertyHandler::add(std::unique_ptr<Property> property) {
  entries.emplace_back(property->name, property.get());
  return property.release();
}

Property* PropertyHandler::find(const std::string& name) const {
  for (const Entry& entry : entries)
    if (entry.first == name) return entry.second;
  return nullptr;
}

Property* PropertyHandler::property(int i) const {
  return i >= 0 && i < count() ? entries[static_cast<std::size_t>(i)].second : nullptr;
}

int PropertyHandler::rebind() {
  int bound = 0;
  for (const Entry& entry : entries) bound += entry.second->rebind() ? 1 : 0;
  return bound;
}

}  // namespace orv::unidevice
