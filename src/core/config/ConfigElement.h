// One element of a rig's configuration tree.
#pragma once

#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "core/interface/CInterface.h"

namespace orv::rws::core {

/// What Define declared by one call: a group, a button, or a value bound to a variable of the rig.
/// The variable stays the rig's; the element reads and writes it, and tells the rig of a user's
/// change by `Apply`. Elements belong to their ConfigTree and keep their address.
class ConfigElement {
 public:
  enum class Kind {
    kGroup,
    kSpinnerInt,
    kSpinner,
    kCheckBox,
    kTextBox,
    kComboBox,
    kButton,
    kLabel,
  };

  /// Limits and display of a spinner.
  struct Range {
    double min = 0.0;
    double max = 0.0;
    double step = 0.0;
    int decimals = 0;  ///< digits shown of a real value
  };

  ConfigElement(const ConfigElement&) = delete;
  ConfigElement& operator=(const ConfigElement&) = delete;

  Kind GetKind() const { return m_kind; }
  /// Number in the order of declaration, from 0; -1 for groups and labels.
  int GetId() const { return m_id; }
  const std::string& GetLabel() const { return m_label; }
  const std::string& GetTooltip() const { return m_tooltip; }
  /// The group around this element; null for the root.
  ConfigElement* GetParent() const { return m_parent; }
  /// Elements of a group, in order of declaration.
  const std::vector<std::unique_ptr<ConfigElement>>& GetChildren() const { return m_children; }
  const Range& GetRange() const { return m_range; }
  const std::vector<std::string>& GetItems() const { return m_items; }
  /// Replaces the items of a combo box; the rig's index stays as it is.
  void SetItems(std::vector<std::string> items) { m_items = std::move(items); }
  /// True for a gauge: the rig computes the value and a user's edit is refused.
  bool IsReadOnly() const { return m_readOnly; }
  void SetReadOnly() { m_readOnly = true; }

  /// True when a variable stands behind the element.
  bool HasValue() const;
  /// The value of spinners, check boxes (0 or 1) and combo boxes (index); 0 for all others. A
  /// spinner of whole numbers gives the fraction too that small increments have added up, as long
  /// as its variable still is what `SetNumber` rounded it to.
  double GetNumber() const;
  /// Writes the variable, clamped to the range. False, with nothing changed, for a value that is
  /// not finite and for elements that hold no number. Does not call the rig.
  bool SetNumber(double value);

  /// The value as text, such that `SetValueText` brings the same value back. A combo box gives the
  /// text of its item.
  std::string GetValueText() const;
  /// Writes the variable from text: a number; true, false, on, off, 0 or 1 for a check box; the
  /// item or its index for a combo box. False, with nothing changed and `problem` filled, when the
  /// text is no value for this element. A number out of range is clamped: the result is true, and
  /// `problem` says so (else it is empty). Does not call the rig.
  bool SetValueText(const std::string& text, std::string& problem);

  /// Tells the rig that the user has changed the value or pressed the button.
  void Apply();

 private:
  friend class ConfigTree;
  using Variable = std::variant<std::monostate, int*, double*, bool*, std::string*>;

  ConfigElement(Kind kind, int id, std::string label, std::string tooltip)
      : m_kind(kind), m_id(id), m_label(std::move(label)), m_tooltip(std::move(tooltip)) {}

  template <class T>
  T* GetVariable() const {
    T* const* held = std::get_if<T*>(&m_variable);
    return held ? *held : nullptr;
  }
  double Clamped(double value) const;
  bool SetFlagText(const std::string& text, std::string& problem);
  bool SetItemText(const std::string& text, std::string& problem);
  bool SetNumberText(const std::string& text, std::string& problem);

  Kind m_kind;
  int m_id;
  std::string m_label;
  std::string m_tooltip;
  ConfigElement* m_parent = nullptr;
  std::vector<std::unique_ptr<ConfigElement>> m_children;
  Variable m_variable;  ///< the rig's, not owned
  Range m_range;
  std::vector<std::string> m_items;
  CInterface::Callback* m_callback = nullptr;  ///< not owned
  bool m_readOnly = false;
  /// What a spinner of whole numbers was last set to, and what its variable then became.
  double m_exact = 0.0;
  int m_rounded = 0;
};

}  // namespace orv::rws::core
