// The program around a scene: undo, texts, hot keys, plug-ins.
#pragma once
#include <deque>

#include "../Host.h"
#include "Report.h"
#include "Scene.h"

namespace mayahost {

struct Entry {
  std::string name;
  Journal journal;
};
struct Command {
  MCreatorFunction creator = nullptr;
  MCreateSyntaxFunction syntax = nullptr;
  std::string plugin;
};
struct Translator {
  MCreatorFunction creator = nullptr;
  std::string options;
};
struct HotKey {
  std::string name, release;
};
struct State {
  std::deque<Entry> undo, redo;
  int undoLength = 50;
  int chunks = 0;           ///< open ones
  bool chunkBegun = false;  ///< the queue's last entry is of the open one
  std::string chunkName;
  bool undoOn = true, undoInfinite = false, undoing = false, redoing = false;
  std::map<std::string, Command> commands;
  std::map<std::string, Translator> translators;
  std::set<std::string> failing;
  std::vector<std::string> said, executed, idle;
  std::map<std::string, std::string> options, nameCommands;
  std::map<std::string, std::map<std::string, HotKey>> hotKeys{{"Maya_Default", {}}};  ///< by set and key
  std::string hotKeySet = "Maya_Default";
  std::map<std::string, int> shelves;  ///< how many buttons
  std::map<std::string, bool> evaluators{{"cache", true}};
  std::map<std::string, bool> conditions;
  std::set<std::string> userEvents;
  bool library = false;  ///< run by a program of its own
  bool alone = false;    ///< a program of its own, which says what it has to say on its streams
  int refreshes = 0;
  bool computed = false;  ///< some node of a plug-in has values that may grow old
  bool batch = false, failed = false;
  bool reading = false, writing = false, opening = false, newing = false, importing = false, referencing = false;
  std::string asked;  ///< the file of what is going on
  Wrong wrong = Wrong::kNone;
};
State& TheState();

/// Runs MEL; false with what went wrong said.
bool Run(const std::string& mel, bool undo, std::vector<std::string>& result);
void FlushUndo();
bool StepBack();
bool StepForward();
/// Whether a registration of this name is to fail, which it does once.
bool MustFail(const std::string& name);

// Files.
std::string WriteScene(bool everything, const std::vector<NodePtr>* only = nullptr);
/// Reads text into the scene, names below a namespace (or none); null reference: the nodes are its own.
bool ReadScene(const std::string& text, const std::string& space, Node* reference, bool settings);
bool NewScene();
/// Formats of plug-ins are told by their names, or found by the file's; the stand-in's own has the host's two.
bool OpenScene(const std::string& file, const std::string& type = "");
bool SaveScene(const std::string& file);
bool ImportScene(const std::string& file, const std::string& space, const std::string& type = "", const std::string& options = "");
bool ExportScene(const std::string& file, bool selected, const std::string& type = "", const std::string& options = "");
NodePtr ReferenceScene(const std::string& file, const std::string& space);
/// The file of a reference, with the number of the copy ("{1}") of all but the first.
std::string FileOf(const NodePtr& reference);
std::string WithoutCopy(const std::string& file);
std::string SpaceOf(const Node& reference);
/// By the name of its node or its file.
NodePtr FindReference(const std::string& name);
/// Also nodes of references within it.
std::vector<NodePtr> NodesOf(const Node* reference);
bool RemoveReference(const NodePtr& reference, bool unload);
bool LoadReference(const NodePtr& reference);
/// Its nodes become the scene's own.
bool ImportReference(const NodePtr& reference);

}  // namespace mayahost
