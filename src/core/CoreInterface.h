// The core as the host's side sees it.
#pragma once

#include <string>
#include <vector>

#include "util/MessageNode.h"
#include "util/xml/Tag.h"

namespace orv::gui {
class Component;
}
namespace orv::util {
template <class T>
class AbstractFactory;
}

namespace orv::rws::core {

class Instance;
class InstanceReference;

/// What takes the XML of a saved scene: a tag that gets one child per tool.
using XmlSink = util::xml::Tag;

/// Answers of ShowMainWindow and HideMainWindow.
inline constexpr int kWindowIsOpen = 10002;
inline constexpr int kWindowIsNotOpen = 10003;

/// All that commands and host events reach the core by. Who connects to it follows what happens by
/// the messages of CoreMessages.h. Main thread only. Times are seconds.
class CoreInterface : public util::MessageNode {
 public:
  CoreInterface() : MessageNode("CORE") {}
  ~CoreInterface() override = default;

  /// Appends the record of every instance and the groups, if there are any; a rig that can't be
  /// stored is named in the log.
  virtual void SaveScene(XmlSink& out) = 0;
  /// Appends the record head of each instance whose nodes the scene still holds.
  virtual void GetSceneTools(XmlSink& out) = 0;
  /// The new instance's name; empty when the kind is unknown or refused.
  virtual std::string CreateTool(const std::string& name) = 0;
  /// Last first, until none is left.
  virtual void DeleteAllTools() = 0;
  virtual int ShowMainWindow(void* parent) = 0;
  virtual int HideMainWindow() = 0;
  virtual bool IsMainWindowOpen() = 0;
  /// Component root of the main window; null while it is closed.
  virtual gui::Component* GetRootComponent() = 0;
  /// Hands a component factory table to the layout subsystem; without one it is ignored.
  virtual void RegisterFactories(util::AbstractFactory<gui::Component>* table) = 0;
  virtual void GetCountdownSeconds(int& out) = 0;
  /// The host's time changed.
  virtual void UpdateTime(double time) = 0;
  virtual bool IsRecording() = 0;
  virtual bool IsResimulating() = 0;
  /// Virtual-key codes that the keyboard hook watches.
  virtual void SetHotKeys(const std::vector<int>& keys) = 0;
  virtual int StartRecording() = 0;
  virtual void StopRecording() = 0;
  virtual int GetSlowFactorIndex() = 0;
  virtual void SetSlowFactorIndex(int index) = 0;
  virtual int Resimulate(double from, double to) = 0;
  /// Row of the instance with that name, or null.
  virtual InstanceReference* FindTool(const std::string& name) = 0;
  /// Applies a named config profile; an empty text means success.
  virtual std::string LoadProfile(const std::string& toolName, const std::string& profileName) = 0;
  /// As CreateTool, with a wish for the instance's name.
  virtual Instance* CreateToolFromFactory(const std::string& kind, const std::string& name) = 0;
  /// Looks again for tools that the user has added, changed or removed since the start. Rigs that
  /// stand keep theirs. False, with nothing done, while a take or resimulation runs.
  virtual bool RescanTools() = 0;
  /// The clone's name; empty, with `problem` filled, when it can't be made.
  virtual std::string CloneTool(const std::string& name, std::string& problem) = 0;
  /// As FindTool, and the row found becomes the one that is selected.
  virtual InstanceReference* SelectTool(const std::string& name) = 0;
  virtual bool DeleteTool(const std::string& name) = 0;
  /// Gives a layout the path aliases "[images]" and "[coreimages]": "core/images" of the data root,
  /// and what the program carries.
  virtual void RegisterImageAliases(gui::Component* component) = 0;
  /// Hands a text to the log window and the log.
  virtual void ShowError(const std::string& text) = 0;
  /// Whether the licence allows this tool.
  virtual bool CheckLicence(const std::string& feature) = 0;
  virtual int MessageBox(const std::string& title, const std::string& text, unsigned flags) = 0;
};

}  // namespace orv::rws::core
