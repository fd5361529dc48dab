#include "adaptor/headless/GltfAssembly.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <limits>
#include <utility>

#include "adaptor/headless/GltfDocument.h"
#include "adaptor/headless/GltfUri.h"

namespace orv::rws::adaptor::headless {

namespace {

/// Our data starts at multiples of this, as doubles want it (bytes).
constexpr std::size_t kAlignment = 8;
/// Bytes that go to the file at once.
constexpr std::size_t kBlockSize = std::size_t{1} << 20;

void AppendWord(std::string& bytes, std::size_t value) {
  for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(value >> shift & 0xFF);
}

std::size_t PaddingTo4(std::size_t size) {
  return (4 - size % 4) % 4;
}

std::size_t Aligned(std::size_t size) {
  return (size + kAlignment - 1) / kAlignment * kAlignment;
}

}  // namespace

GltfWriter::Assembly::Assembly(const Scene& scene, GltfForm form, const std::string* folder)
    : m_scene(scene),
      m_form(form),
      m_folder(folder),
      m_document(scene.m_document.get()),
      m_nodes(scene.GetNodes()) {}

void GltfWriter::Assembly::Run() {
  CopyDocument();
  PlaceNodes();
  WriteTree();
  FindMeshes();
  for (const SceneNode* node : m_nodes) WriteNode(*node);
  WriteKeys();
  NoteChanges();
  WriteRoots();
  WriteRecord();
  Compact();
  LayOut();
  DropEmptyLists();
}

/// How the node stands in the document that is written on; null for a node from elsewhere.
const SceneNode::Source* GltfWriter::Assembly::SourceOf(const SceneNode& node) const {
  const SceneNode::Source* source = node.m_source.get();
  const bool isHere =
      source != nullptr && m_document != nullptr && m_document->Includes(source->document.get());
  return isHere ? source : nullptr;
}

Json& GltfWriter::Assembly::List(const char* name) {
  Json& result = m_json[name];
  if (result.is_null()) result = Json::array();
  return result;
}

std::size_t GltfWriter::Assembly::Append(const char* name, Json element) {
  Json& elements = List(name);
  elements.push_back(std::move(element));
  return elements.size() - 1;
}

/// Extras of an element that we added.
Json GltfWriter::Assembly::OwnMark() {
  return Json{{kOwnKey, Json{{"own", true}}}};
}

void GltfWriter::Assembly::CopyDocument() {
  // An object that grows copies all that is in it: there is room for every list and "scene".
  const std::size_t members = m_document == nullptr ? 1 : m_document->GetJson().size();
  m_json = Json::object();
  m_json.get_ref<Json::object_t&>().reserve(members + std::size(kListNames) + 1);
  if (m_document == nullptr)
    m_json["asset"] = Json{{"version", "2.0"}, {"generator", "Orvel Rigwright"}};
  else
    m_json.update(m_document->GetJson());
  // All lists are there from the start, so that a reference to one lasts.
  for (const char* name : kListNames) List(name);
  if (m_document == nullptr) return;
  Json& views = List("bufferViews");
  m_viewBytes.resize(views.size());
  for (std::size_t i = 0; i < views.size(); ++i) {
    if (!IsOwn(views[i])) continue;
    if (m_document->OwnPartsApart())
      m_viewBytes[i] = Held(m_document->ViewBytes(i));
    else
      EraseExtra(views[i], kOwnKey);  // It can't be told from others' bytes any more.
  }
  DropStrayExactKeys();
}

/// Scenes that are not shown keep their exact keys as long as these can still be found; the shown
/// one's are written anew.
void GltfWriter::Assembly::DropStrayExactKeys() {
  const Json& views = List("bufferViews");
  for (Json& scene : List("scenes")) {
    const Json* own = OwnExtras(scene);
    const Json* exact = own == nullptr ? nullptr : Member(*own, "exact");
    if (exact == nullptr) continue;
    const Json* view = Member(*exact, "bufferView");
    const bool found = view != nullptr && IsIndex(*view) &&
                       view->get<std::size_t>() < views.size() &&
                       IsOwn(views[view->get<std::size_t>()]);
    if (!found) scene["extras"][kOwnKey].erase("exact");
  }
}

/// Gives each node of the scene its index: nodes of the document in their order, then new ones.
void GltfWriter::Assembly::PlaceNodes() {
  Json& nodes = List("nodes");
  std::vector<bool> removed(nodes.size(), false);
  if (m_document != nullptr) removed = m_document->loaded;
  for (const SceneNode* node : m_nodes)
    if (const auto* source = SourceOf(*node))
      removed[static_cast<std::size_t>(source->index)] = false;
  std::vector<int> map(nodes.size(), -1);
  Json kept = Json::array();
  for (std::size_t i = 0; i < nodes.size(); ++i)
    if (!removed[i]) map[i] = static_cast<int>(kept.size()), kept.push_back(Json());
  if (kept.size() != nodes.size()) {
    RefuseLostJoints(removed);
    const std::string extension = UnknownExtension(m_json);
    if (!extension.empty())
      m_warnings.push_back("nodes were removed; what the extension " + extension +
                           " says about nodes by number may not fit any more");
    for (std::size_t i = 0; i < nodes.size(); ++i)
      if (map[i] >= 0) kept[static_cast<std::size_t>(map[i])] = std::move(nodes[i]);
    nodes = std::move(kept);
    RemapNodes(m_json, map);
    m_keysChanged = true;
  }
  Json& placed = List("nodes");
  for (const SceneNode* node : m_nodes) {
    const auto* source = SourceOf(*node);
    if (source != nullptr) {
      m_indices[node] = static_cast<std::size_t>(map[static_cast<std::size_t>(source->index)]);
    } else {
      m_indices[node] = placed.size();
      placed.push_back(Json::object());
    }
  }
}

/// A skin must keep its joints as long as a node that stays uses it; a skin that nobody uses goes.
void GltfWriter::Assembly::RefuseLostJoints(const std::vector<bool>& removed) {
  const Json& nodes = List("nodes");
  const Json& skins = List("skins");
  std::vector<bool> unused(skins.size(), false);
  const auto lost = [&removed](const Json& node) {
    return IsIndex(node) && node.get<std::size_t>() < removed.size() &&
           removed[node.get<std::size_t>()];
  };
  for (std::size_t s = 0; s < skins.size(); ++s) {
    const Json* joints = Member(skins[s], "joints");
    const Json* skeleton = Member(skins[s], "skeleton");
    const bool loses = (skeleton != nullptr && lost(*skeleton)) ||
                       (joints != nullptr && joints->is_array() &&
                        std::any_of(joints->begin(), joints->end(), lost));
    if (!loses) continue;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
      const Json* skin = Member(nodes[i], "skin");
      if (removed[i] || skin == nullptr || *skin != s) continue;
      const Json* name = Member(nodes[i], "name");
      const std::string user = name == nullptr ? "" : " " + name->dump();
      throw GltfError("skins[" + std::to_string(s) + "]",
                      "a joint of it was removed, but nodes[" + std::to_string(i) + "]" + user +
                          " is still bound to it (remove that node too, or bring the joint back)");
    }
    unused[s] = true;
  }
  DropSkins(unused);
}

void GltfWriter::Assembly::DropSkins(const std::vector<bool>& unused) {
  Json kept = Json::array();
  std::vector<std::size_t> map(unused.size(), 0);
  Json& skins = List("skins");
  for (std::size_t s = 0; s < unused.size(); ++s) {
    map[s] = kept.size();
    if (!unused[s]) kept.push_back(std::move(skins[s]));
  }
  skins = std::move(kept);
  for (Json& node : List("nodes")) {
    const Json* skin = Member(node, "skin");
    if (skin == nullptr || !IsIndex(*skin)) continue;
    const auto old = skin->get<std::size_t>();
    if (old < map.size() && !unused[old]) node["skin"] = map[old];
  }
}

void GltfWriter::Assembly::WriteTree() {
  Json& nodes = List("nodes");
  for (const SceneNode* node : m_nodes) {
    Json children = Json::array();
    for (const auto& child : node->GetChildren()) children.push_back(m_indices.at(child.get()));
    Json& json = nodes[m_indices.at(node)];
    if (children.empty())
      json.erase("children");
    else
      json["children"] = std::move(children);
  }
}

/// Roots of the shown scene; other scenes lose nodes that are gone or are roots no longer.
void GltfWriter::Assembly::WriteRoots() {
  std::vector<bool> isChild(List("nodes").size(), false);
  for (const auto& [node, index] : m_indices) isChild[index] = node->GetParent() != nullptr;
  Json roots = Json::array();
  for (const auto& root : m_scene.GetRoots()) roots.push_back(m_indices.at(root.get()));
  const int shown = m_document == nullptr ? -1 : m_document->sceneIndex;
  if (shown < 0 && (m_document == nullptr || SomethingChanged())) {
    m_json["scene"] = 0;
    List("scenes").push_back(Json::object());
  }
  Json& scenes = List("scenes");
  for (std::size_t s = 0; s < scenes.size(); ++s) {
    Json nodes = Json::array();
    if (static_cast<int>(s) == std::max(shown, 0)) {
      nodes = roots;
    } else if (const Json* old = Member(scenes[s], "nodes")) {
      for (const Json& node : *old)
        if (IsIndex(node) && !isChild[node.get<std::size_t>()]) nodes.push_back(node);
    }
    if (nodes.empty())
      scenes[s].erase("nodes");
    else
      scenes[s]["nodes"] = std::move(nodes);
  }
}

/// Bytes that stay where they are until the file is written.
GltfWriter::Assembly::ViewBytes GltfWriter::Assembly::Held(std::string_view bytes) {
  return {bytes.size(), [bytes](const Emit& emit) { emit(bytes); }};
}

std::size_t GltfWriter::Assembly::AddView(ViewBytes bytes, int target) {
  Json view{{"buffer", 0}, {"byteOffset", 0}, {"byteLength", bytes.size}};
  if (target != 0) view["target"] = target;
  view["extras"] = OwnMark();
  m_viewBytes.push_back(std::move(bytes));
  return Append("bufferViews", std::move(view));
}

std::size_t GltfWriter::Assembly::AddView(std::string bytes, int target) {
  m_storage.push_back(std::move(bytes));
  return AddView(Held(m_storage.back()), target);
}

std::size_t GltfWriter::Assembly::AddAccessor(const std::vector<float>& values, const char* type,
                                              int components, int target, bool bounds) {
  const auto n = static_cast<std::size_t>(components);
  std::string bytes(values.size() * sizeof(float), '\0');
  std::memcpy(bytes.data(), values.data(), bytes.size());
  const std::size_t view = AddView(std::move(bytes), target);
  Json accessor{
      {"bufferView", view}, {"componentType", 5126}, {"count", values.size() / n}, {"type", type}};
  if (bounds) {
    std::vector<float> least(values.begin(), values.begin() + components);
    std::vector<float> most = least;
    for (std::size_t i = n; i < values.size(); ++i) {
      least[i % n] = std::min(least[i % n], values[i]);
      most[i % n] = std::max(most[i % n], values[i]);
    }
    accessor["min"] = least;
    accessor["max"] = most;
  }
  accessor["extras"] = OwnMark();
  return Append("accessors", std::move(accessor));
}

std::size_t GltfWriter::Assembly::AddIndices(const std::vector<std::uint32_t>& values) {
  std::string bytes(values.size() * sizeof(std::uint32_t), '\0');
  std::memcpy(bytes.data(), values.data(), bytes.size());
  const std::size_t view = AddView(std::move(bytes), 34963);
  return Append("accessors", Json{{"bufferView", view},
                                  {"componentType", 5125},
                                  {"count", values.size()},
                                  {"type", "SCALAR"},
                                  {"extras", OwnMark()}});
}

/// Leaves out what only an earlier save of ours needed.
void GltfWriter::Assembly::Compact() {
  std::vector<int> map;
  for (const Table table : kTables) map = DropUnusedOwn(m_json, table);  // the last: buffer views
  std::vector<ViewBytes> bytes(List("bufferViews").size());
  for (std::size_t i = 0; i < map.size(); ++i)
    if (map[i] >= 0) bytes[static_cast<std::size_t>(map[i])] = std::move(m_viewBytes[i]);
  m_viewBytes = std::move(bytes);
}

/// A buffer that holds nothing but what an earlier save of ours put there.
bool GltfWriter::Assembly::IsDropped(std::size_t buffer) const {
  const auto& source = m_document->GetBuffers()[buffer];
  return source.foreignSize == 0 && !source.bytes.empty();
}

void GltfWriter::Assembly::LayOut() {
  Json kept = Json::array();
  std::vector<std::size_t> map;
  const std::size_t count = m_document == nullptr ? 0 : m_document->GetBuffers().size();
  for (std::size_t i = 0; i < count; ++i) {
    map.push_back(kept.size());
    if (IsDropped(i)) continue;
    const GltfDocument::Buffer& source = m_document->GetBuffers()[i];
    Json json = std::move(List("buffers")[i]);
    EraseExtra(json, kOwnKey);
    const bool toChunk = m_form == GltfForm::kBinary && kept.empty() &&
                         source.origin != GltfDocument::Origin::kAbsent;
    const std::string_view foreign = source.bytes.substr(0, source.foreignSize);
    if (toChunk) {
      m_foreign = foreign;
      m_hasChunk = true;
      json.erase("uri");
    } else if (source.origin == GltfDocument::Origin::kChunk ||
               (source.origin == GltfDocument::Origin::kDataUri &&
                foreign.size() < source.bytes.size())) {
      json["uri"] = EncodeDataUri(foreign);
    } else if (source.origin == GltfDocument::Origin::kDataUri) {
      json["uri"] = source.uri;
    }
    if (source.origin != GltfDocument::Origin::kAbsent) json["byteLength"] = foreign.size();
    m_bufferSources.push_back(static_cast<int>(i));
    kept.push_back(std::move(json));
  }
  for (Json& view : List("bufferViews"))
    if (!IsOwn(view)) view["buffer"] = map[view["buffer"].get<std::size_t>()];
  List("buffers") = std::move(kept);
  LayOutOwn();
}

/// Puts our bytes behind the binary chunk's, or into one further buffer.
void GltfWriter::Assembly::LayOutOwn() {
  Json& views = List("bufferViews");
  Json& buffers = List("buffers");
  const bool inChunk = m_form == GltfForm::kBinary && (m_hasChunk || buffers.empty());
  const std::size_t start = inChunk ? Aligned(m_foreign.size()) : 0;
  const std::size_t buffer = inChunk ? 0 : buffers.size();
  bool any = false;
  std::size_t size = 0;
  for (std::size_t i = 0; i < views.size(); ++i) {
    if (!IsOwn(views[i])) continue;
    any = true;
    size = Aligned(size);
    views[i]["buffer"] = buffer;
    views[i]["byteOffset"] = start + size;
    size += m_viewBytes[i].size;
  }
  if (!any) return;
  if (buffer == buffers.size()) {
    buffers.push_back(Json{{"byteLength", 0}});
    m_bufferSources.push_back(-1);
  }
  Json& json = buffers[buffer];
  json["byteLength"] = start + size;
  ExtrasObject(json)[kOwnKey] = Json{{"from", inChunk ? m_foreign.size() : 0}};
  if (inChunk) {
    m_hasChunk = true;
    m_ownStart = start - m_foreign.size();
    m_ownSize = m_ownStart + size;
  } else {
    std::string all;
    SendOwn([&all](std::string_view part) {
      all.append(part);
      return true;
    });
    json["uri"] = EncodeDataUri(all);
  }
}

bool GltfWriter::Assembly::SendOwn(const Sink& sink) const {
  std::string block(m_ownStart, '\0');
  bool going = true;
  const Emit emit = [&](std::string_view part) {
    if (block.size() + part.size() < kBlockSize) {
      block.append(part);
      return;
    }
    going = going && sink(block) && sink(part);
    block.clear();
  };
  std::size_t size = 0;
  for (const ViewBytes& view : m_viewBytes) {
    if (!view.send) continue;
    block.append(Aligned(size) - size, '\0');
    size = Aligned(size) + view.size;
    if (going) view.send(emit);
  }
  return going && sink(block);
}

bool GltfWriter::Assembly::SendBinary(const Sink& sink) {
  std::string text = std::exchange(m_json, nullptr).dump();
  text.append(PaddingTo4(text.size()), ' ');
  const std::string_view further =
      m_document == nullptr ? std::string_view() : m_document->GetFurtherChunks();
  const std::size_t bin = m_foreign.size() + m_ownSize;
  const std::size_t padding = PaddingTo4(bin);
  const std::size_t total =
      20 + text.size() + (m_hasChunk ? 8 + bin + padding : 0) + further.size();
  if (total > std::numeric_limits<std::uint32_t>::max())
    throw GltfError("", "is larger than the 4 GB that a .glb can hold (write a .gltf)");
  std::string head = "glTF";
  AppendWord(head, 2);
  AppendWord(head, total);
  AppendWord(head, text.size());
  head += "JSON";
  if (!sink(head) || !sink(text)) return false;
  if (m_hasChunk) {
    std::string chunk;
    AppendWord(chunk, bin + padding);
    chunk += std::string_view("BIN\0", 4);
    if (!sink(chunk) || !sink(m_foreign) || !SendOwn(sink) || !sink(std::string(padding, '\0')))
      return false;
  }
  return sink(further);
}

void GltfWriter::Assembly::DropEmptyLists() {
  for (const char* name : kListNames) {
    const auto found = m_json.find(name);
    if (found == m_json.end() || !found->empty()) continue;
    // An empty list that others left stays as they left it.
    if (m_document == nullptr || Member(m_document->GetJson(), name) == nullptr ||
        !Member(m_document->GetJson(), name)->empty())
      m_json.erase(name);
  }
}

}  // namespace orv::rws::adaptor::headless
