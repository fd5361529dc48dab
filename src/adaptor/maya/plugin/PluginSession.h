// The plug-in while it is loaded.
#pragma once

#include <QObject>
#include <memory>
#include <string>
#include <vector>

#include "core/windows/Program.h"
#include "util/MessageNode.h"

namespace orv::app {
class Devices;
}
namespace orv::rws::core {
class CoreImplementation;
class Instance;
}  // namespace orv::rws::core
namespace orv::rws::core::windows {
class KeyFilter;
class WindowInput;
class Windows;
}  // namespace orv::rws::core::windows

namespace orv::rws::adaptor::maya {

class MayaAdaptorInterface;
class SceneStorage;
class TakeKeys;

/// Core, adaptor, windows and devices from the plug-in's loading to its unloading, and what they do
/// about the host's scene. Main thread only.
class PluginSession : public core::windows::Program, public util::MessageNode {
 public:
  /// `withWindows` is false where the host has none.
  explicit PluginSession(bool withWindows);
  ~PluginSession() override;
  PluginSession(const PluginSession&) = delete;
  PluginSession& operator=(const PluginSession&) = delete;

  /// Null while the plug-in is not loaded.
  static PluginSession* Get();
  /// Reads the rigs of the scene that is open, and readies what needs the host's event loop.
  void Start();

  core::CoreImplementation& GetCore() { return *m_core; }
  MayaAdaptorInterface& GetAdaptor() { return *m_adaptor; }
  SceneStorage& GetStorage() { return *m_storage; }
  bool HasWindows() const { return m_hasWindows; }
  /// Into the host's script editor and the log.
  void Tell(const std::string& warning);

  /// A command is about to change rigs. One that the host runs because a take has moved its time,
  /// as a script of the user's, ends the take first.
  void BeforeEdit();

  // Of the host's scene, see Callbacks.
  void BeforeScene();  ///< a new one, or another
  void AfterNew();
  void AfterOpen();
  void BeforeImport();
  void AfterImport();
  void AfterReference();
  void AfterImportReference() { AfterImport(); }
  void BeforeSave();
  void AfterSave();
  void TimeChanged();
  void PlaybackStarted();
  /// False while a file is read: the nodes that come are looked at when it has been.
  bool FollowsNodes() const;

  // Program
  bool HasCommand(int /*id*/) const override { return false; }
  void RunCommand(int /*id*/) override {}
  QWidget* GetHostWindow() override;
  void ApplyAppearance() override;
  bool RulesTheme() const override { return true; }
  void OnPreferences() override;

  // MessageNode
  void onMessage(util::Message& message, bool broadcast) override;

 private:
  void EndWork();
  void DropScene();
  bool HasNodesAlive(core::Instance& rig) const;
  void SettleLater(int milliseconds);
  void Settle();
  void LookAtFailedOpen();

  bool m_hasWindows;
  QObject m_later;  ///< what waits for it goes with it: our code may be unloaded by then
  bool m_inSceneChange = false;
  bool m_inSave = false;
  std::vector<std::string> m_standing;  ///< rigs with nodes when the scene began to change
  std::unique_ptr<MayaAdaptorInterface> m_adaptor;
  std::unique_ptr<core::CoreImplementation> m_core;
  std::unique_ptr<SceneStorage> m_storage;
  std::unique_ptr<app::Devices> m_devices;
  std::unique_ptr<core::windows::Windows> m_windows;
  std::unique_ptr<core::windows::WindowInput> m_input;
  std::unique_ptr<core::windows::KeyFilter> m_keys;  ///< ahead of it with every key
  std::unique_ptr<TakeKeys> m_startKey;
};

}  // namespace orv::rws::adaptor::maya
