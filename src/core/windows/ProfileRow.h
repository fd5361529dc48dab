// The row of profiles in a rig's window.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/config/ProfileRequests.h"

namespace orv::gui {
class Component;
}
namespace orv::util {
class Message;
}

namespace orv::rws::core::windows {

class Windows;

/// Within the row's document.
enum ProfileRowId : int {
  kProfileChoice = 1,  ///< combo box
  kProfileSave = 2,    ///< button
  kProfileMore = 3,    ///< button whose popup holds the other requests

  // Entries of the popup.
  kProfileSaveAs = 220,
  kProfileRename,
  kProfileDelete,
  kProfileImport,
  kProfileExport,
  kProfileFactory,
  kProfileStart,
  kResetAll,  ///< the window's; hidden where there is no such thing
};

/// Chooses, saves, renames, deletes, imports and exports the config profiles or the input profiles
/// of one rig. Which input profile a rig stands at is not noted by the core: it is one whose values
/// the inputs have, the one chosen here before others; when none is, the one that it was, which
/// then is told to be changed, unless all inputs were set to other values at once.
class ProfileRow {
 public:
  using Kind = ProfileRequests::Kind;

  /// `tell` shows what a request had to say, or clears it by an empty text.
  ProfileRow(Windows& windows, int row, Kind kind, std::function<void(const std::string&)> tell);

  /// Makes the row in `into`, in place of an old one.
  void Build(gui::Component& into);
  /// `all` says that more than one value may be another.
  void Show(bool all = true);
  /// Nothing can be chosen, for the reason given; empty: it can.
  void SetLocked(const std::string& why);
  /// False when it was none of the row's.
  bool OnComponent(gui::Component& source, const util::Message& message);

 private:
  using Entry = ProfileRequests::Entry;

  const Entry* FindCurrent() const;
  void TakeCurrent(bool all);
  void ShowMenu() const;
  void OnMenu(int item);
  /// Asks, and repeats the request with a yes.
  template <class Request>
  void Ask(Request&& request);
  void Answer(const ProfileResult& result);
  void Load(int index);
  void SaveAs();
  void Rename();
  void Import();
  void Export();
  /// For a file dialog.
  std::string Filter(bool all) const;

  Windows& m_windows;
  int m_row;
  Kind m_kind;
  std::function<void(const std::string&)> m_tell;
  gui::Component* m_root = nullptr;  ///< its window's; null before it is built
  std::vector<Entry> m_entries;
  std::string m_current;  ///< name; empty: none
  std::string m_whyLocked;
};

}  // namespace orv::rws::core::windows
