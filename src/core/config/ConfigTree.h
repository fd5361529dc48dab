// The configuration of one rig as a tree of groups and elements.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/config/ConfigElement.h"

namespace orv::util::xml {
class Element;
class Tag;
}  // namespace orv::util::xml

namespace orv::rws::core {

/// Built by a rig's Define, in whose order elements get their ids. Owns its elements, which never
/// move or go before the tree does.
class ConfigTree {
 public:
  using Callback = CInterface::Callback;

  /// Version of the profiles that `Write` makes.
  static constexpr const char* kVersion = "2.0";

  ConfigTree();
  ~ConfigTree();
  ConfigTree(const ConfigTree&) = delete;
  ConfigTree& operator=(const ConfigTree&) = delete;

  /// Opens the root; a second call returns to it. Adding without it opens the root as well.
  void Begin();
  void BeginGroup(std::string label, std::string tooltip);
  /// Closes the open group and returns its parent; the root stays open.
  ConfigElement* EndGroup();
  // Each returns the id of the new element. Variables and callbacks are the rig's; either may be
  // null.
  int AddSpinnerInt(std::string label, std::string tooltip, int* value, int min, int max, int step,
                    Callback* cb);
  int AddSpinner(std::string label, std::string tooltip, double* value, double min, double max,
                 double step, int decimals, Callback* cb);
  int AddCheckBox(std::string label, std::string tooltip, bool* value, Callback* cb);
  int AddTextBox(std::string label, std::string tooltip, std::string* value, Callback* cb);
  int AddComboBox(std::string label, std::string tooltip, std::vector<std::string> items,
                  int* index, Callback* cb);
  int AddButton(std::string label, std::string tooltip, Callback* cb);
  /// A line of text between the elements; it takes no id.
  void AddLabel(std::string text);

  /// Null until `Begin`.
  ConfigElement* GetRoot() const { return m_root.get(); }
  /// Expires with the tree: for who keeps pointers to elements.
  std::weak_ptr<const void> GetLife() const { return m_life; }
  /// Null when no element has this id. Constant time.
  ConfigElement* Find(int id) const;
  /// All elements with an id that have this label, in order of declaration.
  std::vector<ConfigElement*> FindAll(const std::string& label) const;
  /// Every element but the root, groups ahead of what they hold, in order of declaration.
  const std::vector<ConfigElement*>& GetElements() const { return m_elements; }

  /// Gives `profile` the present version and appends the groups and values.
  void Write(util::xml::Tag& profile) const;
  /// Sets what `profile` holds, in the order of its items, and calls the rig for each. An item with
  /// an id belongs to that element, one without to the element of its label within the group of
  /// that label. Items of unknown elements are ignored. An item whose text is no value leaves its
  /// element alone, and the result names it; numbers out of range are clamped in silence. An empty
  /// result means that all was well.
  std::string Read(const util::xml::Element& profile);
  /// Brings the items of a profile that name elements by label alone into the present form.
  void Upgrade(util::xml::Element& profile) const;

 private:
  /// A new element at the end of the open group; `takesId` gives it the next id.
  ConfigElement& Append(ConfigElement::Kind kind, std::string label, std::string tooltip,
                        bool takesId);
  ConfigElement* ResolveItem(const util::xml::Element& item, const ConfigElement* around) const;
  void ReadGroup(const util::xml::Element& group, const ConfigElement* around,
                 std::string& problem);
  void UpgradeGroup(util::xml::Element& group, const ConfigElement* around) const;

  const std::shared_ptr<const void> m_life = std::make_shared<char>();
  std::unique_ptr<ConfigElement> m_root;
  ConfigElement* m_open = nullptr;  ///< where the next element goes
  std::vector<ConfigElement*> m_elements;
  std::vector<ConfigElement*> m_byId;
};

}  // namespace orv::rws::core
