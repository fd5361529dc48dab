// What tests do with the stand-in that no plug-in can.
#pragma once
#include <maya/MPxCommand.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <string>
#include <vector>

namespace mayahost {

using OPENMAYA_MAJOR_NAMESPACE::MObject;
using OPENMAYA_MAJOR_NAMESPACE::MPxCommand;
using OPENMAYA_MAJOR_NAMESPACE::MStatus;

/// As after starting: an empty scene, no texts, no options, hot keys or shelves, undo on. Plug-ins
/// stay loaded and callbacks registered.
void Reset();
/// The whole scene with time, ranges, units and selection as text; equal scenes give equal texts.
std::string Dump();
/// The scene as a file holds it.
std::string SceneText();

// Plug-ins, by their entry points.

using EntryPoint = MStatus (*)(MObject);
/// False when it failed; then it counts as not loaded, and its way out isn't called.
bool Load(const std::string& name, EntryPoint initialize, const std::string& path = "");
bool Unload(const std::string& name, EntryPoint uninitialize);
/// What is registered: "command X", "node X", "callback 12".
std::vector<std::string> Registered();
/// The next registration of this name fails: a command, a node type, or "callback N" with a scene
/// message's number.
void FailRegistration(const std::string& name);
/// The run of this number of a modifier from here on, be it undone or done, fails and does nothing.
/// 0: none. The answer is how many have been run since the last call.
int FailModifier(int number);
void RegisterCommand(const std::string& name, MPxCommand* (*creator)());

// The user.

/// Runs a line as one that a user typed: it can be undone. The result's texts, joined by blanks.
std::string Type(const std::string& mel);
/// Whether the last typed line failed.
bool Failed();
bool Undo();
bool Redo();
/// Names of the entries of the undo queue, the oldest first.
std::vector<std::string> UndoQueue();
std::vector<std::string> RedoQueue();
/// Runs what waits for an idle moment.
void Idle();
/// The user plays or moves the time slider.
void Play(bool on);
void SetBatch(bool batch);
void SetCondition(const std::string& condition, bool state);

// What was said and asked for.

/// Texts since the last Reset: "info: ...", "warning: ...", "error: ...", "status: ...", "box:
/// title|text", "shelf: ...".
std::vector<std::string>& Said();
int Refreshes();
/// Every line that was executed, also from within.
std::vector<std::string>& Executed();

/// A behaviour that is made wrong, so that tests of beliefs see one refuted.
enum class Wrong {
  kNone,
  kAxis,
  kTimeUnit,
  kCurveLinear,
  kUndoQueue,
  kCallbackOrder,
  kRename,
  kMeshPoints,
  kHandles,
  kNamespaces,
  kStringArrays,
  kHotKeys
};
void Pretend(Wrong behaviour);
bool Pretends(Wrong behaviour);

}  // namespace mayahost
