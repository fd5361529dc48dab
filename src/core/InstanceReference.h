// A row of the instance tree.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace orv::rws::core {

class Instance;

/// A row: an instance, or a group of rows. Owns its instance and its children.
class InstanceReference {
 public:
  /// A group row.
  explicit InstanceReference(std::string label);
  explicit InstanceReference(std::unique_ptr<Instance> instance);
  ~InstanceReference();

  Instance* GetInstance() const { return m_instance.get(); }
  bool IsGroup() const { return !m_instance; }
  /// The instance's name, or the group's own label.
  const std::string& GetLabel() const;

  bool checked = true;  ///< on means that the rig takes part in the take
  InstanceReference* parent = nullptr;
  std::vector<std::unique_ptr<InstanceReference>> children;

 private:
  std::string m_label;
  std::unique_ptr<Instance> m_instance;
};

}  // namespace orv::rws::core
