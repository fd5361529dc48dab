// The desktop program's scene for the main window.
#pragma once

#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

#include "adaptor/headless/HostObservers.h"
#include "core/windows/SceneBrowser.h"

namespace orv::rws::adaptor::headless {
class HeadlessAdaptor;
class HeadlessNode;
class SceneNode;
}  // namespace orv::rws::adaptor::headless
namespace orv::rws::core {
class CoreImplementation;
class Instance;
}  // namespace orv::rws::core

namespace orv::app {

/// A SceneBrowser over the headless host. What it does to a scene the session does.
class HeadlessBrowser : public rws::core::windows::SceneBrowser,
                        private rws::adaptor::headless::HostObserver {
 public:
  /// An empty answer of `setFrameRate` (frames per second) means success. Core and host outlive
  /// this one.
  HeadlessBrowser(rws::core::CoreImplementation& core,
                  rws::adaptor::headless::HeadlessAdaptor& host,
                  std::function<std::string(double fps)> setFrameRate);
  ~HeadlessBrowser() override;

  void AddObserver(Observer& observer) override;
  void RemoveObserver(Observer& observer) override;
  std::vector<Node> GetNodes() override;
  std::vector<int> GetSelection() override;
  void Select(const std::vector<int>& keys) override;
  void SelectNamed(const std::vector<std::string>& names);
  std::vector<int> GetDriven(int rigRow) override;
  int GetKey(const rws::adaptor::headless::SceneNode& node) { return KeyOf(node); }
  /// Null for a node that is gone.
  rws::adaptor::headless::SceneNode* GetNode(int key) { return Find(key); }
  bool GetPose(int key, Space space, Pose& pose) override;
  std::string SetPose(int key, Space space, const Pose& pose) override;
  std::string MoveUnder(const std::vector<int>& keys, int parent) override;
  std::string UseAsGround(int rigRow, const std::vector<int>& keys, std::string& told) override;
  std::string WhyNotFit(int rigRow) override;
  Car GuessCar(int key) override;
  std::string FitCar(int rigRow, const Car& car, std::string& told) override;
  std::string SetFrameRate(double fps) override { return m_setFrameRate(fps); }
  UndoSteps GetUndoSteps() override;
  bool GoToStep(std::size_t position) override;

 private:
  using SceneNode = rws::adaptor::headless::SceneNode;
  using HostNode = rws::adaptor::headless::HeadlessNode;

  // HostObserver
  void OnTree() override;
  void OnSelection() override;
  void OnRefresh() override;

  void Number();
  int KeyOf(const SceneNode& node);
  /// Null for a node that is gone.
  SceneNode* Find(int key);
  HostNode* FindHostNode(int key);
  rws::core::Instance* FindRig(int row) const;
  std::string Hang(HostNode& node, HostNode* parent);
  template <class Tell>
  void ForObservers(Tell&& tell);

  rws::core::CoreImplementation& m_core;
  rws::adaptor::headless::HeadlessAdaptor& m_host;
  std::function<std::string(double)> m_setFrameRate;
  std::vector<Observer*> m_observers;
  /// A node that undo has taken out of the scene has its key back with it.
  std::unordered_map<const SceneNode*, int> m_keys;
  std::unordered_map<int, SceneNode*> m_nodes;  ///< in the scene when it was numbered last
  /// Here rather than at the host, where each selection is a step of undo and cuts off what could
  /// be redone; what a rig selects there is taken over.
  std::vector<int> m_selection;
  const void* m_scene = nullptr;  ///< whose nodes these are
  int m_lastKey = 0;
  bool m_isOld = true;
};

}  // namespace orv::app
