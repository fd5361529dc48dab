// What the host calls.
#pragma once

#include <maya/MMessage.h>

#include <string>
#include <vector>

namespace orv::rws::adaptor::maya {

class PluginSession;

/// The plug-in's callbacks; they are taken back, last first, when it goes.
class Callbacks {
 public:
  explicit Callbacks(PluginSession& session) : m_session(session) {}
  ~Callbacks() { Remove(); }
  Callbacks(const Callbacks&) = delete;
  Callbacks& operator=(const Callbacks&) = delete;

  /// All of them or, with `problem` filled, none.
  bool Add(std::string& problem);
  void Remove();

 private:
  bool AddScene(std::string& problem);
  bool AddOthers(std::string& problem);

  PluginSession& m_session;
  std::vector<MCallbackId> m_ids;
};

}  // namespace orv::rws::adaptor::maya
