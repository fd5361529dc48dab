// Commands on files, references and namespaces.
#include <algorithm>
#include <fstream>

#include "Command.h"
#include "Fn.h"
#include "Mel.h"

namespace mayahost {
namespace {

bool Answer(const std::string& text, Words& result) { return result = {text}, true; }
bool OnOff(bool on, Words& result) { return Answer(on ? "1" : "0", result); }

bool AskFile(const Args& args, const std::string& name, Words& result) {
  const NodePtr reference = FindReference(name);
  if (args.Has("mf")) return OnOff(TheScene().modified, result);
  if (args.Has("ex")) return OnOff(std::ifstream(name).good(), result);
  if (args.Has("type")) return Answer("mayaAscii", result);
  if (args.Has("r")) {
    for (const auto& [serial, node] : TheScene().nodes)
      if (node->info->name == "reference" && (name.empty() ? !node->reference : reference && node->reference == reference.get()))
        result.push_back(FileOf(node));
    return true;
  }
  if (!args.Has("rfn") && !args.Has("ns") && !args.Has("dr")) {
    const std::string& file = TheScene().file;
    return Answer(args.Has("shn") ? file.substr(file.rfind('/') + 1) : file, result);
  }
  if (!reference) return Fail("No such reference: " + name);
  if (args.Has("dr")) return OnOff(NodesOf(reference.get()).empty(), result);
  return Answer(args.Has("rfn") ? reference->name : Short(SpaceOf(*reference)), result);
}
bool ChangeReference(const Args& args, Words& result) {
  const std::string name = args.Has("rfn") ? args["rfn"] : args.rest.empty() ? "" : args.rest[0];
  const NodePtr reference = FindReference(name);
  if (!reference) return Fail("No such reference: " + name);
  result = {FileOf(reference)};
  if (args.Has("lr") && args.rest.size() > (args.Has("rfn") ? 0u : 1u)) {
    const auto data = std::make_shared<Data>(MFn::kStringData);
    data->text = args.rest.back(), result = {data->text};
    Put(NumberOf(reference, "fileNames"), {0, data});
  }
  if (args.Has("ir")) return ImportReference(reference);
  return args.Has("lr") ? LoadReference(reference) : RemoveReference(reference, args.Has("ur"));
}
/// What brings nodes: an open, an import, a new reference.
bool BringIn(const Args& args, const std::string& name) {
  if (args.Has("o")) return (args.Has("f") || !TheScene().modified || Fail("Unsaved changes.")) && OpenScene(name);
  if (args.Has("i")) return ImportScene(name, args.Has("ns") ? FullNamespace(args["ns"]) : "", args["type"], args["op"]);
  const NodePtr made = ReferenceScene(name, args["ns"]);
  return made && (!args.Has("dr") || !IsOn(args["dr"]) || RemoveReference(made, true));
}
bool File(const Words& words, Words& result) {
  const Args args = Sort(words,
                         "new/newFile f/force o/open s/save i/import r/reference rr/removeReference es/exportSelected ea/exportAll rn/rename:1 mf/modified:1 "
                         "sn/sceneName exn/expandName shn/shortName ns/namespace:1 type/type:1 op/options:1 pr/preserveReferences lr/loadReference "
                         "ur/unloadReference ir/importReference rfn/referenceNode:1 rnn/returnNewNodes dr/deferReference:1 iv/ignoreVersion "
                         "mnc/mergeNamespacesOnClash:1 pmt/prompt:1 ex/exists l/list lrd/loadReferenceDepth:1 esc/executeScriptNodes:1");
  const std::string name = args.rest.empty() ? "" : args.rest[0];
  if (args.bad) return false;
  if (args.Has("q")) return AskFile(args, name, result);
  if (args.Has("new")) return (args.Has("f") || !TheScene().modified || Fail("Unsaved changes.")) && NewScene() && Answer("untitled", result);
  if (args.Has("rr") || args.Has("ur") || args.Has("lr") || args.Has("ir")) return ChangeReference(args, result);
  if (args.Has("o") || args.Has("i") || args.Has("r")) {
    const std::map<int, NodePtr> before = TheScene().nodes;
    if (!BringIn(args, name)) return false;
    if (!args.Has("rnn")) return Answer(name, result);
    for (const auto& [serial, node] : TheScene().nodes) {
      const auto paths = PathsTo(node);
      if (!before.count(serial)) result.push_back(paths.empty() ? node->name : PathName(paths[0], true));
    }
    return true;
  }
  if (args.Has("rn")) TheScene().file = args["rn"], result = {args["rn"]};
  if (args.Has("mf")) TheScene().modified = IsOn(args["mf"]);
  if (args.Has("s")) return SaveScene(TheScene().file) && Answer(TheScene().file, result);
  if (args.Has("ea") || args.Has("es")) return ExportScene(name, args.Has("es"), args["type"], args["op"]) && Answer(name, result);
  return true;
}
bool ReferenceQuery(const Words& words, Words& result) {
  const Args args = Sort(words,
                         "inr/isNodeReferenced f/filename rfn/referenceNode il/isLoaded n/nodes ns/namespace shn/shortName un/unresolvedName "
                         "wcn/withoutCopyNumber p/parent tr/topReference dp/dagPath");
  const std::string name = args.rest.empty() ? "" : args.rest[0];
  const auto found = Resolve(name);
  const NodePtr node = found.size() == 1 ? NodeOf(found[0].node) : nullptr;
  if (args.bad) return false;
  if (args.Has("inr")) return OnOff(node && node->reference, result);
  NodePtr reference = FindReference(name);
  if (!reference && node && node->reference) reference = node->reference->Ptr();
  if (!reference) return Fail("referenceQuery: '" + name + "' is neither a reference nor a referenced node.");
  while (args.Has("tr") && reference->reference) reference = reference->reference->Ptr();
  if (args.Has("p")) reference = reference->reference ? reference->reference->Ptr() : nullptr;
  if (!reference) return Answer("", result);
  if (args.Has("il")) return OnOff(!NodesOf(reference.get()).empty(), result);
  if (args.Has("ns")) return Answer(args.Has("shn") ? Short(SpaceOf(*reference)) : ":" + SpaceOf(*reference), result);
  if (args.Has("rfn")) return Answer(reference->name, result);
  if (args.Has("n")) {
    for (const auto& [serial, one] : TheScene().nodes)
      if (one->reference == reference.get()) result.push_back(NodeName(one));
    return true;
  }
  std::string file = args.Has("wcn") ? WithoutCopy(FileOf(reference)) : FileOf(reference);
  return args.Has("f") ? Answer(args.Has("shn") ? file.substr(file.rfind('/') + 1) : file, result) : Fail("referenceQuery: what is asked?");
}

bool RemoveNamespace(const Args& args, const std::string& gone) {
  if (!TheScene().namespaces.count(gone)) return Fail("No namespace matches name: " + gone);
  if (args.Has("mnr")) return MoveNamespace(gone, ""), true;
  if (args.Has("mnp")) return MoveNamespace(gone, NamespaceOf(gone)), true;
  const std::string ahead = gone + ":";
  for (const auto& [serial, node] : std::map<int, NodePtr>(TheScene().nodes)) {
    if (node->name.find(ahead) != 0 || !node->inScene) continue;
    if (!args.Has("dnc")) return Fail("The namespace '" + gone + "' is not empty.");
    if (!DeleteNode(node)) return Fail("The namespace '" + gone + "' has nodes that can't be deleted.");
  }
  std::set<std::string> after;
  for (const std::string& space : TheScene().namespaces)
    if (space != gone && (space.find(ahead) != 0 || !args.Has("dnc"))) after.insert(space);
  if (!args.Has("dnc") && std::any_of(after.begin(), after.end(), [&](const std::string& space) { return space.find(ahead) == 0; }))
    return Fail("The namespace '" + gone + "' is not empty.");
  Do([=] { TheScene().namespaces = after; }, [before = TheScene().namespaces] { TheScene().namespaces = before; });
  return true;
}
bool Namespace(const Words& words, Words& result) {
  const Args args = Sort(words,
                         "add/add:1 p/parent:1 ex/exists:1! rm/removeNamespace:1 set/setNamespace:1 mnr/mergeNamespaceWithRoot mnp/mergeNamespaceWithParent "
                         "dnc/deleteNamespaceContent ren/rename:1 mv/moveNamespace:1 f/force");
  auto& spaces = TheScene().namespaces;
  if (args.bad) return false;
  if (args.Has("ex")) return OnOff(FullNamespace(args["ex"]).empty() || spaces.count(FullNamespace(args["ex"])), result);
  if (args.Has("add")) {
    const std::string above = args.Has("p") ? FullNamespace(args["p"]) : "", full = above.empty() ? FullNamespace(args["add"]) : above + ":" + args["add"];
    if (spaces.count(full) || LegalName(full) != full) return Fail("The namespace '" + full + "' already exists or isn't legal.");
    // All that it stands in are made with it.
    std::set<std::string> made = spaces;
    for (std::string space = full; !space.empty(); space = NamespaceOf(space)) made.insert(space);
    Do([made] { TheScene().namespaces = made; }, [before = spaces] { TheScene().namespaces = before; });
    result = {full};
  }
  if (args.Has("set")) {
    const std::string full = FullNamespace(args["set"]);
    if (!full.empty() && !spaces.count(full)) return Fail("The namespace '" + full + "' doesn't exist.");
    Do([full] { TheScene().currentNamespace = full; }, [before = TheScene().currentNamespace] { TheScene().currentNamespace = before; });
  }
  if (args.Has("ren") || args.Has("mv")) {
    const std::string from = FullNamespace(args.Has("ren") ? args["ren"] : args["mv"]);
    if (args.rest.empty() || !spaces.count(from)) return Fail("No namespace matches name: " + from);
    if (args.Has("mv")) return MoveNamespace(from, FullNamespace(args.rest[0])), true;
    const std::string above = args.Has("p") ? FullNamespace(args["p"]) : NamespaceOf(from), to = (above.empty() ? "" : above + ":") + args.rest[0];
    if (spaces.count(to)) return Fail("The namespace '" + to + "' already exists.");
    return MoveNamespace(from, to), Answer(to, result);
  }
  return !args.Has("rm") || RemoveNamespace(args, FullNamespace(args["rm"]));
}
bool FileInfo(const Words& words, Words& result) {
  const Args args = Sort(words, "rm/remove:1");
  auto& info = TheScene().info;
  if (args.Has("q")) {
    for (const auto& [key, text] : info)
      if (args.rest.empty() ? (result.push_back(key), true) : key == args.rest[0]) result.push_back(text);
    return true;
  }
  if (args.Has("rm")) info.erase(args["rm"]);
  if (args.rest.size() > 1) info[args.rest[0]] = args.rest[1];
  return TheScene().modified = true, !args.bad;
}

}  // namespace

const std::map<std::string, Builtin>& FileCommands() {
  static const std::map<std::string, Builtin> kCommands = {
      {"file", File}, {"referenceQuery", ReferenceQuery}, {"namespace", Namespace}, {"fileInfo", FileInfo}};
  return kCommands;
}
}  // namespace mayahost
