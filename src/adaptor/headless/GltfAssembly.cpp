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

void appendWord(std::string& bytes, std::size_t value) {
  for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(value >> shift & 0xFF);
}

std::size_t paddingTo4(std::size_t size) {
  return (4 - size % 4) % 4;
}

std::size_t aligned(std::size_t size) {
  return (size + kAlignment - 1) / kAlignment * kAlignment;
}

}  // namespace

GltfWriter::Assembly::Assembly(const Scene& scene, GltfForm form)
    : m_scene(scene), m_form(form), m_document(scene.m_document.get()), m_nodes(scene.nodes()) {}

void GltfWriter::Assembly::run() {
  copyDocument();
  placeNodes();
  writeTree();
  findMeshes();
  for (const SceneNode* node : m_nodes) writeNode(*node);
  writeKeys();
  noteChanges();
  writeRoots();
  writeRecord();
  compact();
  layOut();
  dropEmptyLists();
}

/// How the node stands in the document that is written on; null for a node from elsewhere.
const SceneNode::Source* GltfWriter::Assembly::sourceOf(const SceneNode& node) const {
  const SceneNode::Source* source = node.m_source.get();
  return source != nullptr && source->document.get() == m_document ? source : nullptr;
}

Json& GltfWriter::Assembly::list(const char* name) {
  Json& result = m_json[name];
  if (result.is_null()) result = Json::array();
  return result;
}

std::size_t GltfWriter::Assembly::append(const char* name, Json element) {
  Json& elements = list(name);
  elements.push_back(std::move(element));
  return elements.size() - 1;
}

/// Extras of an element that we added.
Json GltfWriter::Assembly::ownMark() {
  return Json{{kOwnKey, Json{{"own", true}}}};
}

void GltfWriter::Assembly::copyDocument() {
  // An object that grows copies all that is in it: there is room for every list and "scene".
  const std::size_t members = m_document == nullptr ? 1 : m_document->json().size();
  m_json = Json::object();
  m_json.get_ref<Json::object_t&>().reserve(members + std::size(kListNames) + 1);
  if (m_document == nullptr)
    m_json["asset"] = Json{{"version", "2.0"}, {"generator", "Orvel Rigwright"}};
  else
    m_json.update(m_document->json());
  // All lists are there from the start, so that a reference to one lasts.
  for (const char* name : kListNames) list(name);
  if (m_document == nullptr) return;
  Json& views = list("bufferViews");
  m_viewBytes.resize(views.size());
  for (std::size_t i = 0; i < views.size(); ++i) {
    if (!isOwn(views[i])) continue;
    if (m_document->ownPartsApart())
      m_viewBytes[i] = held(m_document->viewBytes(i));
    else
      eraseExtra(views[i], kOwnKey);  // It can't be told from others' bytes any more.
  }
  dropStrayExactKeys();
}

/// Scenes that are not shown keep their exact keys as long as these can still be found; the shown
/// one's are written anew.
void GltfWriter::Assembly::dropStrayExactKeys() {
  const Json& views = list("bufferViews");
  for (Json& scene : list("scenes")) {
    const Json* own = ownExtras(scene);
    const Json* exact = own == nullptr ? nullptr : member(*own, "exact");
    if (exact == nullptr) continue;
    const Json* view = member(*exact, "bufferView");
    const bool found = view != nullptr && isIndex(*view) &&
                       view->get<std::size_t>() < views.size() &&
                       isOwn(views[view->get<std::size_t>()]);
    if (!found) scene["extras"][kOwnKey].erase("exact");
  }
}

/// Gives each node of the scene its index: nodes of the document in their order, then new ones.
void GltfWriter::Assembly::placeNodes() {
  Json& nodes = list("nodes");
  std::vector<bool> removed(nodes.size(), false);
  if (m_document != nullptr) removed = m_document->loaded;
  for (const SceneNode* node : m_nodes)
    if (const auto* source = sourceOf(*node))
      removed[static_cast<std::size_t>(source->index)] = false;
  std::vector<int> map(nodes.size(), -1);
  Json kept = Json::array();
  for (std::size_t i = 0; i < nodes.size(); ++i)
    if (!removed[i]) map[i] = static_cast<int>(kept.size()), kept.push_back(Json());
  if (kept.size() != nodes.size()) {
    refuseLostJoints(removed);
    const std::string extension = unknownExtension(m_json);
    if (!extension.empty())
      m_warnings.push_back("nodes were removed; what the extension " + extension +
                           " says about nodes by number may not fit any more");
    for (std::size_t i = 0; i < nodes.size(); ++i)
      if (map[i] >= 0) kept[static_cast<std::size_t>(map[i])] = std::move(nodes[i]);
    nodes = std::move(kept);
    remapNodes(m_json, map);
    m_keysChanged = true;
  }
  Json& placed = list("nodes");
  for (const SceneNode* node : m_nodes) {
    const auto* source = sourceOf(*node);
    if (source != nullptr) {
      m_indices[node] = static_cast<std::size_t>(map[static_cast<std::size_t>(source->index)]);
    } else {
      m_indices[node] = placed.size();
      placed.push_back(Json::object());
    }
  }
}

/// A skin must keep its joints as long as a node that stays uses it; a skin that nobody uses goes.
void GltfWriter::Assembly::refuseLostJoints(const std::vector<bool>& removed) {
  const Json& nodes = list("nodes");
  const Json& skins = list("skins");
  std::vector<bool> unused(skins.size(), false);
  const auto lost = [&removed](const Json& node) {
    return isIndex(node) && node.get<std::size_t>() < removed.size() &&
           removed[node.get<std::size_t>()];
  };
  for (std::size_t s = 0; s < skins.size(); ++s) {
    const Json* joints = member(skins[s], "joints");
    const Json* skeleton = member(skins[s], "skeleton");
    const bool loses = (skeleton != nullptr && lost(*skeleton)) ||
                       (joints != nullptr && joints->is_array() &&
                        std::any_of(joints->begin(), joints->end(), lost));
    if (!loses) continue;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
      const Json* skin = member(nodes[i], "skin");
      if (removed[i] || skin == nullptr || *skin != s) continue;
      const Json* name = member(nodes[i], "name");
      const std::string user = name == nullptr ? "" : " " + name->dump();
      throw GltfError("skins[" + std::to_string(s) + "]",
                      "a joint of it was removed, but nodes[" + std::to_string(i) + "]" + user +
                          " is still bound to it (remove that node too, or bring the joint back)");
    }
    unused[s] = true;
  }
  dropSkins(unused);
}

void GltfWriter::Assembly::dropSkins(const std::vector<bool>& unused) {
  Json kept = Json::array();
  std::vector<std::size_t> map(unused.size(), 0);
  Json& skins = list("skins");
  for (std::size_t s = 0; s < unused.size(); ++s) {
    map[s] = kept.size();
    if (!unused[s]) kept.push_back(std::move(skins[s]));
  }
  skins = std::move(kept);
  for (Json& node : list("nodes")) {
    const Json* skin = member(node, "skin");
    if (skin == nullptr || !isIndex(*skin)) continue;
    const auto old = skin->get<std::size_t>();
    if (old < map.size() && !unused[old]) node["skin"] = map[old];
  }
}

void GltfWriter::Assembly::writeTree() {
  Json& nodes = list("nodes");
  for (const SceneNode* node : m_nodes) {
    Json children = Json::array();
    for (const auto& child : node->children()) children.push_back(m_indices.at(child.get()));
    Json& json = nodes[m_indices.at(node)];
    if (children.empty())
      json.erase("children");
    else
      json["children"] = std::move(children);
  }
}

/// Roots of the shown scene; other scenes lose nodes that are gone or are roots no longer.
void GltfWriter::Assembly::writeRoots() {
  std::vector<bool> isChild(list("nodes").size(), false);
  for (const auto& [node, index] : m_indices) isChild[index] = node->parent() != nullptr;
  Json roots = Json::array();
  for (const auto& root : m_scene.roots()) roots.push_back(m_indices.at(root.get()));
  const int shown = m_document == nullptr ? -1 : m_document->sceneIndex;
  if (shown < 0 && (m_document == nullptr || somethingChanged())) {
    m_json["scene"] = 0;
    list("scenes").push_back(Json::object());
  }
  Json& scenes = list("scenes");
  for (std::size_t s = 0; s < scenes.size(); ++s) {
    Json nodes = Json::array();
    if (static_cast<int>(s) == std::max(shown, 0)) {
      nodes = roots;
    } else if (const Json* old = member(scenes[s], "nodes")) {
      for (const Json& node : *old)
        if (isIndex(node) && !isChild[node.get<std::size_t>()]) nodes.push_back(node);
    }
    if (nodes.empty())
      scenes[s].erase("nodes");
    else
      scenes[s]["nodes"] = std::move(nodes);
  }
}

/// Bytes that stay where they are until the file is written.
GltfWriter::Assembly::ViewBytes GltfWriter::Assembly::held(std::string_view bytes) {
  return {bytes.size(), [bytes](const Emit& emit) { emit(bytes); }};
}

std::size_t GltfWriter::Assembly::addView(ViewBytes bytes, int target) {
  Json view{{"buffer", 0}, {"byteOffset", 0}, {"byteLength", bytes.size}};
  if (target != 0) view["target"] = target;
  view["extras"] = ownMark();
  m_viewBytes.push_back(std::move(bytes));
  return append("bufferViews", std::move(view));
}

std::size_t GltfWriter::Assembly::addView(std::string bytes, int target) {
  m_storage.push_back(std::move(bytes));
  return addView(held(m_storage.back()), target);
}

std::size_t GltfWriter::Assembly::addAccessor(const std::vector<float>& values, const char* type,
                                              int components, int target, bool bounds) {
  const auto n = static_cast<std::size_t>(components);
  std::string bytes(values.size() * sizeof(float), '\0');
  std::memcpy(bytes.data(), values.data(), bytes.size());
  const std::size_t view = addView(std::move(bytes), target);
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
  accessor["extras"] = ownMark();
  return append("accessors", std::move(accessor));
}

std::size_t GltfWriter::Assembly::addIndices(const std::vector<std::uint32_t>& values) {
  std::string bytes(values.size() * sizeof(std::uint32_t), '\0');
  std::memcpy(bytes.data(), values.data(), bytes.size());
  const std::size_t view = addView(std::move(bytes), 34963);
  return append("accessors", Json{{"bufferView", view},
                                  {"componentType", 5125},
                                  {"count", values.size()},
                                  {"type", "SCALAR"},
                                  {"extras", ownMark()}});
}

/// Leaves out what only an earlier save of ours needed.
void GltfWriter::Assembly::compact() {
  for (const Table table : {Table::kMeshes, Table::kCameras, Table::kMaterials, Table::kAccessors})
    dropUnusedOwn(m_json, table);
  const std::vector<int> map = dropUnusedOwn(m_json, Table::kBufferViews);
  std::vector<ViewBytes> bytes(list("bufferViews").size());
  for (std::size_t i = 0; i < map.size(); ++i)
    if (map[i] >= 0) bytes[static_cast<std::size_t>(map[i])] = std::move(m_viewBytes[i]);
  m_viewBytes = std::move(bytes);
}

/// A buffer that holds nothing but what an earlier save of ours put there.
bool GltfWriter::Assembly::isDropped(std::size_t buffer) const {
  const auto& source = m_document->buffers()[buffer];
  return source.foreignSize == 0 && !source.bytes.empty();
}

void GltfWriter::Assembly::layOut() {
  Json kept = Json::array();
  std::vector<std::size_t> map;
  const std::size_t count = m_document == nullptr ? 0 : m_document->buffers().size();
  for (std::size_t i = 0; i < count; ++i) {
    map.push_back(kept.size());
    if (isDropped(i)) continue;
    const GltfDocument::Buffer& source = m_document->buffers()[i];
    Json json = std::move(list("buffers")[i]);
    eraseExtra(json, kOwnKey);
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
      json["uri"] = encodeDataUri(foreign);
    } else if (source.origin == GltfDocument::Origin::kDataUri) {
      json["uri"] = source.uri;
    }
    if (source.origin != GltfDocument::Origin::kAbsent) json["byteLength"] = foreign.size();
    m_bufferSources.push_back(static_cast<int>(i));
    kept.push_back(std::move(json));
  }
  for (Json& view : list("bufferViews"))
    if (!isOwn(view)) view["buffer"] = map[view["buffer"].get<std::size_t>()];
  list("buffers") = std::move(kept);
  layOutOwn();
}

/// Puts our bytes behind the binary chunk's, or into one further buffer.
void GltfWriter::Assembly::layOutOwn() {
  Json& views = list("bufferViews");
  Json& buffers = list("buffers");
  const bool inChunk = m_form == GltfForm::kBinary && (m_hasChunk || buffers.empty());
  const std::size_t start = inChunk ? aligned(m_foreign.size()) : 0;
  const std::size_t buffer = inChunk ? 0 : buffers.size();
  bool any = false;
  std::size_t size = 0;
  for (std::size_t i = 0; i < views.size(); ++i) {
    if (!isOwn(views[i])) continue;
    any = true;
    size = aligned(size);
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
  extrasObject(json)[kOwnKey] = Json{{"from", inChunk ? m_foreign.size() : 0}};
  if (inChunk) {
    m_hasChunk = true;
    m_ownStart = start - m_foreign.size();
    m_ownSize = m_ownStart + size;
  } else {
    std::string all;
    sendOwn([&all](std::string_view part) {
      all.append(part);
      return true;
    });
    json["uri"] = encodeDataUri(all);
  }
}

bool GltfWriter::Assembly::sendOwn(const Sink& sink) const {
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
    block.append(aligned(size) - size, '\0');
    size = aligned(size) + view.size;
    if (going) view.send(emit);
  }
  return going && sink(block);
}

bool GltfWriter::Assembly::sendBinary(const Sink& sink) {
  std::string text = std::exchange(m_json, nullptr).dump();
  text.append(paddingTo4(text.size()), ' ');
  const std::string_view further =
      m_document == nullptr ? std::string_view() : m_document->furtherChunks();
  const std::size_t bin = m_foreign.size() + m_ownSize;
  const std::size_t padding = paddingTo4(bin);
  const std::size_t total =
      20 + text.size() + (m_hasChunk ? 8 + bin + padding : 0) + further.size();
  if (total > std::numeric_limits<std::uint32_t>::max())
    throw GltfError("", "is larger than the 4 GB that a .glb can hold (write a .gltf)");
  std::string head = "glTF";
  appendWord(head, 2);
  appendWord(head, total);
  appendWord(head, text.size());
  head += "JSON";
  if (!sink(head) || !sink(text)) return false;
  if (m_hasChunk) {
    std::string chunk;
    appendWord(chunk, bin + padding);
    chunk += std::string_view("BIN\0", 4);
    if (!sink(chunk) || !sink(m_foreign) || !sendOwn(sink) || !sink(std::string(padding, '\0')))
      return false;
  }
  return sink(further);
}

void GltfWriter::Assembly::dropEmptyLists() {
  for (const char* name : kListNames) {
    const auto found = m_json.find(name);
    if (found == m_json.end() || !found->empty()) continue;
    // An empty list that others left stays as they left it.
    if (m_document == nullptr || member(m_document->json(), name) == nullptr ||
        !member(m_document->json(), name)->empty())
      m_json.erase(name);
  }
}

}  // namespace orv::rws::adaptor::headless
