// The rows of a rig's parameters in a window.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "core/config/ConfigElement.h"
#include "core/config/ProfileValues.h"

namespace orv::gui {
class Component;
class Layout;
}  // namespace orv::gui

namespace orv::rws::core {
class ConfigTree;
}

namespace orv::rws::core::windows {

/// Shows the elements of a configuration tree, a row each, below a container. A row's number
/// (gui::Component::GetRow) tells its element; groups have numbers of their own.
class ParameterRows {
 public:
  /// `container` outlives the rows.
  ParameterRows(gui::Layout& layout, gui::Component& container);

  /// Makes the rows of a rig, in place of others. The tree stays until the next call or Clear.
  void Build(const ConfigTree& config, const ProfileValues& factory,
             const std::set<std::string>& folded);
  void Clear();
  /// Whether the tree is there. A rig's goes before that is told, and a rig that comes back by undo
  /// has another. Without it all that asks for elements is not to be called.
  bool HasTree() const { return !m_tree.expired(); }

  /// Brings what is shown to what the rig holds; a value that the user is editing stays.
  void Refresh();
  void RefreshElement(int element);
  /// Gauges and live spinners, whose values change by themselves.
  void RefreshLive(const std::vector<int>& liveElements);
  /// Marks what differs from these values, and offers to put it back.
  void ShowBase(ProfileValues base);
  /// Elements in which several rigs differ.
  void ShowMixed(const std::set<int>& elements);
  /// Rows whose label, group or tooltip holds the text, in English or as shown, stay; an empty text
  /// shows all.
  void SetFilter(const std::string& text);
  /// Nothing can be edited, for the reason given; empty: it can.
  void SetLocked(const std::string& why);

  /// -1 when the row is none of an element.
  int ElementOf(const gui::Component& source) const;
  /// Null when the component lies in no group's row.
  const ConfigElement* GroupOf(const gui::Component& source) const;
  /// Names of the groups that are folded; also without the tree.
  std::set<std::string> GetFolded() const;
  /// Elements that can be put back, of the whole tree or of one group.
  std::vector<int> GetChanged(const ConfigElement* group = nullptr) const;

 private:
  struct Row {
    const ConfigElement* element;
    gui::Component* root;  ///< of the row's document
    std::string words;     ///< what a search looks in, in small letters
    std::string label;     ///< of a group, as the core has it
  };

  void AddGroup(const ConfigElement& group, gui::Component& into, const std::string& around,
                const ProfileValues& factory, const std::set<std::string>& folded);
  void AddRow(const ConfigElement& element, gui::Component& into, const std::string& around,
              const ProfileValues& factory);
  static void ShowValue(const Row& row);
  void ShowMark(const Row& row) const;
  bool IsLocked(const ConfigElement& element) const;

  gui::Layout& m_layout;
  gui::Component& m_container;
  std::weak_ptr<const void> m_tree;
  std::vector<Row> m_rows;            ///< of elements and notes, in order
  std::vector<Row> m_groups;          ///< in order, those around others first
  std::map<int, std::size_t> m_byId;  ///< element's id to its row
  ProfileValues m_base;
  std::string m_whyLocked;
};

}  // namespace orv::rws::core::windows
