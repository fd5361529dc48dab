// Scene files, messages, commands.
#include <maya/MCallbackIdArray.h>
#include <maya/MConditionMessage.h>
#include <maya/MDGMessage.h>
#include <maya/MFileIO.h>
#include <maya/MFnStringArrayData.h>
#include <maya/MFnTypedAttribute.h>
#include <maya/MGlobal.h>
#include <maya/MQtUtil.h>
#include <maya/MSceneMessage.h>
#include <maya/MStringArray.h>

#include <algorithm>
#include <cstdio>

#include "adaptor/maya/probes/Probe.h"
#include "adaptor/maya/probes/ProbeFile.h"
#include "adaptor/maya/probes/ProbeScene.h"

namespace orv::rws::adaptor::maya {

namespace {

constexpr auto kOfDocs = ProbeSource::kDocumented;
constexpr auto kThought = ProbeSource::kBelief;

void MessageNumbers(ProbeRun& run) {
  run.Check(int(MSceneMessage::kBeforeNew) == 1 && int(MSceneMessage::kAfterNew) == 2, "new");
  run.Check(int(MSceneMessage::kBeforeImport) == 3 && int(MSceneMessage::kAfterImport) == 4,
            "import");
  run.Check(int(MSceneMessage::kBeforeOpen) == 5 && int(MSceneMessage::kAfterOpen) == 6, "open");
  run.Check(int(MSceneMessage::kBeforeExport) == 10 && int(MSceneMessage::kAfterExport) == 11,
            "export");
  run.Check(int(MSceneMessage::kBeforeSave) == 12 && int(MSceneMessage::kAfterSave) == 13, "save");
}

/// Which messages came, in their order.
struct Heard {
  std::vector<int> messages;
};
struct Listener {
  Heard* heard;
  int message;
};

void Hear(void* clientData) {
  auto* const listener = static_cast<Listener*>(clientData);
  listener->heard->messages.push_back(listener->message);
}

/// Listens to the messages that the plug-in uses while it lives.
class Listening {
 public:
  Listening() {
    for (const int message : {1, 2, 3, 4, 5, 6, 10, 11, 12, 13, 15, 18, 19, 23, 37, 45})
      m_listeners.push_back({&m_heard, message});
    for (Listener& listener : m_listeners) {
      MStatus status;
      const MCallbackId id = MSceneMessage::addCallback(
          static_cast<MSceneMessage::Message>(listener.message), Hear, &listener, &status);
      if (status)
        m_ids.append(id);
      else
        m_refused += " " + std::to_string(listener.message);
    }
  }
  ~Listening() { MMessage::removeCallbacks(m_ids); }
  Listening(const Listening&) = delete;
  Listening& operator=(const Listening&) = delete;

  const std::string& GetRefused() const { return m_refused; }
  std::string Take() {
    std::string text;
    for (const int message : m_heard.messages)
      text += (text.empty() ? "" : " ") + std::to_string(message);
    m_heard.messages.clear();
    return text;
  }

 private:
  Heard m_heard;
  std::vector<Listener> m_listeners;
  MCallbackIdArray m_ids;
  std::string m_refused;
};

void MessagesTaken(ProbeRun& run) {
  const Listening listening;
  run.Check(listening.GetRefused().empty(),
            "no callback can be had for the messages" + listening.GetRefused());
}

void MessagesInOrder(ProbeRun& run) {
  Listening listening;
  const ProbeFile file("order");
  const auto expect = [&](const char* what, const std::string& order) {
    const std::string heard = listening.Take();
    run.Note(std::string(what) + ": " + heard);
    run.Check(heard == order, std::string(what) + " tells " + heard + ", not " + order);
  };
  MFileIO::newFile(true);
  expect("a new scene", "1 2");
  ProbeTransform("probeSaved");
  MFileIO::saveAs(file.GetPath(), "mayaAscii", true);
  expect("saving", "12 13");
  MFileIO::open(file.GetPath(), "mayaAscii", true);
  // A scene gives way to an empty one first.
  const std::string opened = listening.Take();
  run.Note("opening: " + opened);
  run.Check(opened == "5 6" || opened == "5 1 2 6" || opened == "1 5 2 6",
            "opening tells " + opened);
  MFileIO::import(file.GetPath(), "mayaAscii");
  expect("importing", "3 4");
  MFileIO::newFile(true);
}

void MakeSaved(void* clientData) {
  ProbeTransform(static_cast<const char*>(clientData));
}

void MadeBeforeSave(ProbeRun& run) {
  MFileIO::newFile(true);
  ProbeTransform("probeBefore");
  char name[] = "probeMadeThen";
  MStatus status;
  const MCallbackId id =
      MSceneMessage::addCallback(MSceneMessage::kBeforeSave, MakeSaved, name, &status);
  const ProbeFile file("made");
  MFileIO::saveAs(file.GetPath(), "mayaAscii", true);
  MMessage::removeCallback(id);
  MFileIO::newFile(true);
  MFileIO::open(file.GetPath(), "mayaAscii", true);
  MSelectionList list;
  run.Check(list.add("probeMadeThen") == MStatus::kSuccess && list.length() == 1,
            "a node made before saving is not in the file");
  MFileIO::newFile(true);
}

void TextsSurviveFiles(ProbeRun& run) {
  MFileIO::newFile(true);
  const MObject node = ProbeTransform("probeTexts");
  MFnTypedAttribute maker;
  MObject one = maker.create("probeText", "probeText", MFnData::kString);
  MFnDependencyNode fn(node);
  fn.addAttribute(one);
  MObject many = maker.create("probeList", "probeList", MFnData::kStringArray);
  fn.addAttribute(many);
  std::string text = "<a b=\"1\">\n\t\\ 'x' \xc3\xa4</a>";
  for (int i = 0; i < 12; ++i) text += text.substr(0, 4096);
  ProbePlug(node, "probeText").setString(text.c_str());
  MStringArray words;
  words.append("Rig_01/Node");
  words.append("");
  words.append("a \"b\"");
  MFnStringArrayData data;
  MObject value = data.create(words);
  ProbePlug(node, "probeList").setMObject(value);
  const ProbeFile file("texts");
  MFileIO::saveAs(file.GetPath(), "mayaAscii", true);
  MFileIO::newFile(true);
  MFileIO::open(file.GetPath(), "mayaAscii", true);
  MSelectionList list;
  MObject read;
  if (!run.Check(list.add("probeTexts") == MStatus::kSuccess &&
                     list.getDependNode(0, read) == MStatus::kSuccess,
                 "the node is not in the file"))
    return;
  run.Check(ProbePlug(read, "probeText").asString() == text.c_str(),
            "a long text with quotes, breaks and other letters comes back changed");
  MStatus status;
  MFnStringArrayData back(ProbePlug(read, "probeList").asMObject(), &status);
  run.Check(
      status == MStatus::kSuccess && back.length() == 3 && back[1] == "" && back[2] == "a \"b\"",
      "a list of texts comes back changed");
  MFileIO::newFile(true);
}

void UnsetLists(ProbeRun& run) {
  const MObject node = ProbeTransform("probeUnset");
  MFnTypedAttribute maker;
  MObject many = maker.create("probeUnsetList", "probeUnsetList", MFnData::kStringArray);
  MFnDependencyNode(node).addAttribute(many);
  MStatus status;
  const MObject value = ProbePlug(node, "probeUnsetList").asMObject();
  MFnStringArrayData data(value, &status);
  run.Check(status != MStatus::kSuccess || data.length() == 0, "a list that nobody set has words");
}

bool IsModified() {
  int modified = 0;
  MGlobal::executeCommand("file -q -modified", modified);
  return modified != 0;
}

void OwnTypesSurviveFiles(ProbeRun& run) {
  MFileIO::newFile(true);
  MFnDependencyNode fn;
  MStatus status;
  const MObject node = fn.create("CStorageNode", "probeStored", &status);
  if (status != MStatus::kSuccess) return run.Skip("the plug-in's node types are not registered");
  ProbePlug(node, "PluginName").setString("probe");
  ProbePlug(node, "UserDataSize").setInt(7);
  const ProbeFile file("types");
  MFileIO::saveAs(file.GetPath(), "mayaAscii", true);
  MFileIO::newFile(true);
  MFileIO::open(file.GetPath(), "mayaAscii", true);
  MSelectionList list;
  MObject read;
  list.add("probeStored");
  list.getDependNode(0, read);
  run.Check(!read.isNull() && ProbePlug(read, "PluginName").asString() == "probe" &&
                ProbePlug(read, "UserDataSize").asInt() == 7,
            "a node of a plug-in's type comes back changed");
  MFileIO::newFile(true);
}

void EmptyQueue(ProbeRun& run) {
  MGlobal::executeCommand("createNode transform -n probeQueued", false, true);
  int empty = 0;
  MGlobal::executeCommand("flushUndo");
  MGlobal::executeCommand("undoInfo -q -undoQueueEmpty", empty);
  run.Check(empty == 1, "the queue is not empty when it was flushed");
}

void ModifiedCanBeSet(ProbeRun& run) {
  MFileIO::newFile(true);
  ProbeTransform("probeChange");
  MGlobal::executeCommand("file -modified 0");
  run.Check(!IsModified(), "it stays set");
  MGlobal::executeCommand("file -modified 1");
  run.Check(IsModified(), "it stays unset");
}

void NoteReading(MObject&, void* clientData) {
  auto* const reading = static_cast<bool*>(clientData);
  *reading = *reading || MFileIO::isReadingFile();
}

void ReadingIsTold(ProbeRun& run) {
  MFileIO::newFile(true);
  ProbeTransform("probeRead");
  const ProbeFile file("reading");
  MFileIO::saveAs(file.GetPath(), "mayaAscii", true);
  bool reading = false;
  const MCallbackId id = MDGMessage::addNodeAddedCallback(NoteReading, "dependNode", &reading);
  MFileIO::import(file.GetPath(), "mayaAscii");
  MMessage::removeCallback(id);
  run.Check(reading, "a node comes with a file that nobody reads");
  run.Check(!MFileIO::isReadingFile(), "a file is read when that is done");
  MFileIO::newFile(true);
}

void ImportRenames(ProbeRun& run) {
  MFileIO::newFile(true);
  const MObject own = ProbeTransform("probeImported");
  const ProbeFile file("import");
  MFileIO::saveAs(file.GetPath(), "mayaAscii", true);
  MFileIO::import(file.GetPath(), "mayaAscii");
  run.Check(MFnDependencyNode(own).name() == "probeImported", "an import renames the scene's own");
  MSelectionList list;
  list.add("*probeImported*");
  run.Check(list.length() == 2, "the imported one of the same name is not there");
  MFileIO::newFile(true);
}

void UndoByCommand(ProbeRun& run) {
  int state = 0;
  MGlobal::executeCommand("undoInfo -q -state", state);
  if (state == 0) return run.Skip("the user's undo is off");
  MGlobal::executeCommand("createNode transform -n probeUndone", false, true);
  MSelectionList there, gone;
  run.Check(there.add("probeUndone") == MStatus::kSuccess, "\"createNode\" makes nothing");
  run.Check(MGlobal::executeCommand("undo", false, false) == MStatus::kSuccess, "\"undo\" fails");
  run.Check(gone.add("probeUndone") != MStatus::kSuccess,
            "a command run with undo on is not undone");
}

void WentAndCame(MObject&, void* clientData) {
  ++*static_cast<int*>(clientData);
}

void NodeCallbacks(ProbeRun& run) {
  int came = 0, went = 0;
  const MCallbackId added = MDGMessage::addNodeAddedCallback(WentAndCame, "dependNode", &came);
  const MCallbackId removed = MDGMessage::addNodeRemovedCallback(WentAndCame, "dependNode", &went);
  MGlobal::executeCommand("createNode transform -n probeFollowed", false, true);
  MGlobal::executeCommand("delete probeFollowed", false, true);
  run.Check(came >= 1 && went >= 1, "nodes come and go untold");
  const int before = came;
  MGlobal::executeCommand("undo", false, false);
  run.Check(came > before, "a deleted node comes back by undo untold");
  MMessage::removeCallback(added);
  MMessage::removeCallback(removed);
}

void PlayingCondition(ProbeRun& run) {
  MStatus status;
  const bool plays = MConditionMessage::getConditionState("playingBack", &status);
  run.Check(status == MStatus::kSuccess && !plays, "there is no such condition");
}

void MainWindow(ProbeRun& run) {
  if (MGlobal::mayaState() != MGlobal::kInteractive) return run.Skip("there are no windows");
  run.Check(MQtUtil::mainWindow() != nullptr, "the host names no main window");
}

void HotKeySets(ProbeRun& run) {
  if (MGlobal::mayaState() != MGlobal::kInteractive) return run.Skip("there are no windows");
  MString set;
  run.Check(MGlobal::executeCommand("hotkeySet -q -current", set) == MStatus::kSuccess &&
                set.length() > 0,
            "the present set of hot keys has no name");
}

/// In a set of its own, which goes again.
void HotKeysBound(ProbeRun& run) {
  if (MGlobal::mayaState() != MGlobal::kInteractive) return run.Skip("there are no windows");
  MString before, bound;
  MGlobal::executeCommand("hotkeySet -q -current", before);
  MGlobal::executeCommand("hotkeySet -source \"Maya_Default\" -current \"orvelProbe\"");
  MGlobal::executeCommand("nameCommand -ann \"orvelProbe\" -command \"\" orvelProbe");
  MGlobal::executeCommand("hotkey -k \"-\" -ctl -alt -name \"orvelProbe\"");
  MGlobal::executeCommand("hotkey -q -name Dash -ctl -alt", bound);
  MGlobal::executeCommand("hotkeySet -e -current \"" + before + "\"");
  MGlobal::executeCommand("hotkeySet -e -delete \"orvelProbe\"");
  run.Check(bound == "orvelProbe", "a key does not tell what it was bound to");
  MString current;
  MGlobal::executeCommand("hotkeySet -q -current", current);
  run.Check(current == before, "the set that was current does not come back");
}

void NoteWriting(void* clientData) {
  *static_cast<bool*>(clientData) = MFileIO::isWritingFile();
}

void WritingIsTold(ProbeRun& run) {
  const ProbeFile file("writing");
  bool before = false;
  const MCallbackId id =
      MSceneMessage::addCallback(MSceneMessage::kBeforeSave, NoteWriting, &before);
  MFileIO::saveAs(file.GetPath(), "mayaAscii", true);
  MMessage::removeCallback(id);
  run.Note(before ? "isWritingFile is true before a save" : "isWritingFile is false before a save");
  run.Check(!MFileIO::isWritingFile(), "it is told when none is written");
}

void ShelfTabs(ProbeRun& run) {
  if (MGlobal::mayaState() != MGlobal::kInteractive) return run.Skip("there are no windows");
  run.Check(MGlobal::executeCommand("global string $gShelfTopLevel;if(`tabLayout -exists "
                                    "$gShelfTopLevel`){}") == MStatus::kSuccess,
            "the shelf's layout can't be asked for");
}

}  // namespace

void AddSceneProbes(std::vector<Probe>& list) {
  const Probe probes[] = {
      {1, Feature::kStorage, kOfDocs, "scene messages have their numbers", MessageNumbers},
      {2, Feature::kStorage, kOfDocs, "all scene messages can be heard", MessagesTaken},
      {3, Feature::kStorage, kThought, "scene messages come in their order", MessagesInOrder},
      {4, Feature::kStorage, kThought, "nodes made before a save are in the file", MadeBeforeSave},
      {5, Feature::kStorage, kThought, "texts and lists of texts survive a file",
       TextsSurviveFiles},
      {6, Feature::kStorage, kThought, "a list that nobody set is empty", UnsetLists},
      {7, Feature::kStorage, kOfDocs, "the scene's modified flag can be set", ModifiedCanBeSet},
      {8, Feature::kImport, kOfDocs, "an import leaves the names of the scene alone",
       ImportRenames},
      {9, Feature::kUndo, kOfDocs, "a command run with undo on is one entry", UndoByCommand},
      {10, Feature::kNodeEvents, kThought, "callbacks tell of nodes that come, go and come back",
       NodeCallbacks},
      {11, Feature::kTakes, kOfDocs, "there is a condition \"playingBack\"", PlayingCondition},
      {12, Feature::kWindows, kOfDocs, "the host names its main window", MainWindow},
      {13, Feature::kHotKeys, kOfDocs, "the present set of hot keys has a name", HotKeySets},
      {18, Feature::kHotKeys, kThought, "keys tell what they are bound to", HotKeysBound},
      {14, Feature::kShelf, kThought, "the shelf's layout has a global name", ShelfTabs},
      {15, Feature::kStorage, kOfDocs, "nodes of a plug-in's types survive a file",
       OwnTypesSurviveFiles},
      {17, Feature::kNodeEvents, kOfDocs, "a file that is read is told", ReadingIsTold},
      {19, Feature::kStorage, kOfDocs, "a file that is written is told", WritingIsTold},
      {16, Feature::kUndo, kOfDocs, "the undo queue can be flushed, and tells that it is empty",
       EmptyQueue},
  };
  list.insert(list.end(), std::begin(probes), std::end(probes));
}

}  // namespace orv::rws::adaptor::maya
