#include "adaptor/maya/plugin/Callbacks.h"

#include <maya/MConditionMessage.h>
#include <maya/MDGMessage.h>
#include <maya/MObject.h>
#include <maya/MSceneMessage.h>
#include <maya/MTime.h>

#include "adaptor/maya/MayaAdaptorInterface.h"
#include "adaptor/maya/plugin/PluginSession.h"

namespace orv::rws::adaptor::maya {

namespace {

PluginSession& SessionOf(void* clientData) {
  return *static_cast<PluginSession*>(clientData);
}

template <void (PluginSession::*handler)()>
void Forward(void* clientData) {
  (SessionOf(clientData).*handler)();
}

/// Nothing: rigs of referenced files are closed anyway.
void Ignore(void*) {}

struct SceneRow {
  int message;  ///< of MSceneMessage::Message
  MMessage::MBasicFunction handler;
};

/// The host keeps its numbers from version to version, and has had several names for some.
const SceneRow kSceneRows[] = {
    {1, &Forward<&PluginSession::BeforeScene>},
    {2, &Forward<&PluginSession::AfterNew>},
    {5, &Forward<&PluginSession::BeforeScene>},
    {12, &Forward<&PluginSession::BeforeSave>},
    {13, &Forward<&PluginSession::AfterSave>},
    {6, &Forward<&PluginSession::AfterOpen>},
    {4, &Forward<&PluginSession::AfterImport>},
    {15, &Forward<&PluginSession::AfterReference>},        // created
    {19, &Forward<&PluginSession::AfterImportReference>},  // made part of the scene
    {23, &Ignore},                                         // unloaded
    {37, &Forward<&PluginSession::AfterReference>},        // loaded again
    {45, &Forward<&PluginSession::AfterReference>},        // created, with its edits
    {3, &Forward<&PluginSession::BeforeImport>},
    {18, &Forward<&PluginSession::BeforeImport>},  // before a reference becomes part of the scene
    {10, &Forward<&PluginSession::BeforeSave>},    // export
    {11, &Forward<&PluginSession::AfterSave>},
};

void NodeCame(MObject& node, void* clientData) {
  PluginSession& session = SessionOf(clientData);
  if (session.FollowsNodes()) session.GetAdaptor().NodeAdded(node);
}

void NodeWent(MObject& node, void* clientData) {
  PluginSession& session = SessionOf(clientData);
  if (session.FollowsNodes()) session.GetAdaptor().NodeRemoved(node);
}

void PlaybackChanged(bool plays, void* clientData) {
  if (plays) SessionOf(clientData).PlaybackStarted();
}

void TimeMoved(MTime&, void* clientData) {
  SessionOf(clientData).TimeChanged();
}

}  // namespace

bool Callbacks::AddScene(std::string& problem) {
  for (const SceneRow& row : kSceneRows) {
    MStatus status;
    const MCallbackId id = MSceneMessage::addCallback(
        static_cast<MSceneMessage::Message>(row.message), row.handler, &m_session, &status);
    if (!status) {
      problem = "addCallback of the scene's message " + std::to_string(row.message) + " failed";
      return false;
    }
    m_ids.push_back(id);
  }
  return true;
}

bool Callbacks::AddOthers(std::string& problem) {
  MStatus status;
  const auto keep = [&](MCallbackId id, const char* what) {
    if (status)
      m_ids.push_back(id);
    else
      problem = std::string("addCallback of ") + what + " failed";
    return bool(status);
  };
  return keep(MDGMessage::addNodeAddedCallback(NodeCame, "dependNode", &m_session, &status),
              "new nodes") &&
         keep(MDGMessage::addNodeRemovedCallback(NodeWent, "dependNode", &m_session, &status),
              "nodes that go") &&
         keep(MConditionMessage::addConditionCallback("playingBack", PlaybackChanged, &m_session,
                                                      &status),
              "playingBack") &&
         keep(MDGMessage::addTimeChangeCallback(TimeMoved, &m_session, &status), "time");
}

bool Callbacks::Add(std::string& problem) {
  if (AddScene(problem) && AddOthers(problem)) return true;
  Remove();
  return false;
}

void Callbacks::Remove() {
  for (auto id = m_ids.rbegin(); id != m_ids.rend(); ++id) MMessage::removeCallback(*id);
  m_ids.clear();
}

}  // namespace orv::rws::adaptor::maya
