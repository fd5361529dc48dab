// A row of the instance tree.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace orv::rws::core {

class Instance;

/// A row: an instance, or a group of rows. Owns its instance and its children. The setters leave
/// nothing to undo; what a user does goes through the InstanceManager.
class InstanceReference {
 public:
  /// A group row.
  InstanceReference(int id, std::string label);
  explicit InstanceReference(std::unique_ptr<Instance> instance);
  ~InstanceReference();

  /// Unique in the core; the identity of the row's instance.
  int GetId() const;
  Instance* GetInstance() const { return m_instance.get(); }
  bool IsGroup() const { return !m_instance; }
  /// The instance's name, or the group's own label.
  const std::string& GetLabel() const;
  /// Of a group.
  void SetLabel(std::string label) { m_label = std::move(label); }

  /// The row's own check state. A rig takes part in takes when its row and all groups around it are
  /// checked, so that one click sets a group aside and another brings back what was on in it.
  bool IsChecked() const { return m_checked; }
  void SetChecked(bool checked) { m_checked = checked; }
  /// Whether this row is `row` or stands somewhere below it.
  bool IsUnder(const InstanceReference& row) const;

  InstanceReference* parent = nullptr;
  std::vector<std::unique_ptr<InstanceReference>> children;

 private:
  int m_groupId = 0;
  std::string m_label;
  bool m_checked = true;
  std::unique_ptr<Instance> m_instance;
};

}  // namespace orv::rws::core
