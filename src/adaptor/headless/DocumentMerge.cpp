#include "adaptor/headless/DocumentMerge.h"

#include <set>
#include <utility>

#include "adaptor/headless/GltfReferences.h"
#include "adaptor/headless/GltfUri.h"

namespace orv::rws::adaptor::headless {

namespace {

/// Lists of the file that come in, but for buffers, which go with their views.
constexpr const char* kMergedLists[] = {"nodes",     "meshes",      "skins",    "cameras",
                                        "materials", "textures",    "samplers", "images",
                                        "accessors", "bufferViews", "buffers"};
constexpr const char* kLights = "KHR_lights_punctual";

Json& ListOf(Json& json, const char* name) {
  Json& result = json[name];
  if (!result.is_array()) result = Json::array();
  return result;
}

std::size_t SizeOf(const Json& json, const char* name) {
  const Json* list = Member(json, name);
  return list != nullptr && list->is_array() ? list->size() : 0;
}

/// Takes an extension out of all elements.
void EraseExtension(Json& value, const std::string& name) {
  if (value.is_object()) {
    const auto extensions = value.find("extensions");
    if (extensions != value.end() && extensions->is_object()) {
      extensions->erase(name);
      if (extensions->empty()) value.erase("extensions");
    }
  }
  if (value.is_structured())
    for (Json& part : value) EraseExtension(part, name);
}

void EraseText(Json& list, const std::string& text) {
  Json kept = Json::array();
  for (Json& element : list)
    if (element != text) kept.push_back(std::move(element));
  list = std::move(kept);
}

const Json* LightsOf(const Json& json) {
  const Json* extensions = Member(json, "extensions");
  const Json* lights = extensions == nullptr ? nullptr : Member(*extensions, kLights);
  const Json* list = lights == nullptr ? nullptr : Member(*lights, "lights");
  return list != nullptr && list->is_array() ? list : nullptr;
}

std::string MimeOf(std::string_view bytes) {
  if (bytes.substr(0, 4) == "\x89PNG") return "image/png";
  if (bytes.substr(0, 3) == "\xFF\xD8\xFF") return "image/jpeg";
  if (bytes.substr(0, 4) == "RIFF") return "image/webp";
  return {};
}

}  // namespace

DocumentMerge::DocumentMerge(std::shared_ptr<const GltfDocument> base,
                             const std::shared_ptr<const GltfDocument>& added)
    : m_base(std::move(base)),
      m_added(added),
      m_result(std::make_shared<GltfDocument>()),
      m_json(added->GetJson()),
      m_buffers(added->GetBuffers()) {}

std::size_t DocumentMerge::first(const char* list) const {
  return m_base == nullptr ? 0 : SizeOf(m_base->GetJson(), list);
}

std::shared_ptr<const GltfDocument> DocumentMerge::run() {
  RefuseCompressed();
  for (const char* name : {"asset", "scene", "scenes", "animations"}) m_json.erase(name);
  DropUnknownExtensions();
  TakeImagesIn();
  MarkOwn();
  if (m_base == nullptr)
    *m_result->m_json = Json{{"asset", {{"version", "2.0"}, {"generator", "Orvel Rigwright"}}},
                             {"scene", 0},
                             {"scenes", Json::array({Json::object()})}};
  else
    *m_result->m_json = m_base->GetJson();
  MergeLights();
  Renumber();
  Append();
  AppendBuffers();
  if (!m_added->GetFurtherChunks().empty())
    m_warnings.push_back("the file's further chunks were left out");
  return m_result;
}

void DocumentMerge::RefuseCompressed() const {
  const Json* used = Member(m_json, "extensionsUsed");
  if (used == nullptr) return;
  for (const Json& name : *used) {
    if (name == "EXT_meshopt_compression" || name == "KHR_meshopt_compression" ||
        name == "KHR_draco_mesh_compression")
      throw GltfError("extensionsUsed",
                      "its meshes are compressed by " + name.get<std::string>() +
                          ", which is not read here (export without compression)");
  }
  for (std::size_t i = 0; i < m_buffers.size(); ++i)
    if (m_buffers[i].origin == GltfDocument::Origin::kAbsent)
      throw GltfError("buffers[" + std::to_string(i) + "]", "has no bytes");
}

/// What we don't know may refer to parts by numbers that we can't adapt.
void DocumentMerge::DropUnknownExtensions() {
  for (std::string name = UnknownExtension(m_json); !name.empty();
       name = UnknownExtension(m_json)) {
    m_warnings.push_back("the extension " + name + " is not known here and was left out");
    EraseExtension(m_json, name);
    EraseText(ListOf(m_json, "extensionsUsed"), name);
    EraseText(ListOf(m_json, "extensionsRequired"), name);
  }
}

/// Images beside the file become part of it: the scene that it comes into lies elsewhere.
void DocumentMerge::TakeImagesIn() {
  for (Json& image : ListOf(m_json, "images")) {
    const Json* uri = Member(image, "uri");
    if (uri == nullptr || !uri->is_string() || IsDataUri(uri->get<std::string>())) continue;
    const std::string text = uri->get<std::string>();
    std::string relative;
    std::string error = Quoted(text) + " names no file beside this one";
    auto bytes = std::make_shared<std::string>();
    if (m_added->FromMemory() || !DecodeRelativeUri(text, relative) ||
        !ReadSideFile(m_added->GetFolder() + relative, *bytes, error)) {
      m_warnings.push_back("images: " + error + "; the texture stays without it");
      continue;
    }
    const std::string mime = MimeOf(*bytes);
    if (mime.empty()) {
      m_warnings.push_back("images: " + Quoted(text) +
                           " is no PNG and no JPEG; the texture stays without it");
      continue;
    }
    Json& views = ListOf(m_json, "bufferViews");
    Json& buffers = ListOf(m_json, "buffers");
    views.push_back(
        Json{{"buffer", buffers.size()}, {"byteOffset", 0}, {"byteLength", bytes->size()}});
    buffers.push_back(Json{{"byteLength", bytes->size()}});
    image.erase("uri");
    image["mimeType"] = mime;
    image["bufferView"] = views.size() - 1;
    GltfDocument::Buffer buffer;
    buffer.origin = GltfDocument::Origin::kDataUri;
    buffer.bytes = *bytes;
    buffer.storage = std::move(bytes);
    m_buffers.push_back(std::move(buffer));
  }
}

void DocumentMerge::MarkOwn() {
  for (const Table table : kTables) {
    for (Json& element : ListOf(m_json, NameOf(table))) {
      if (!element.is_object()) continue;
      Json& own = ExtrasObject(element)[kOwnKey];
      if (!own.is_object()) own = Json::object();
      own["own"] = true;
    }
  }
}

void DocumentMerge::MergeLights() {
  const Json* added = LightsOf(m_json);
  Json& base = *m_result->m_json;
  const std::size_t before = LightsOf(base) == nullptr ? 0 : LightsOf(base)->size();
  if (added != nullptr) {
    Json& lights = base["extensions"][kLights]["lights"];
    if (!lights.is_array()) lights = Json::array();
    for (const Json& light : *added) lights.push_back(light);
  }
  for (Json& node : ListOf(m_json, "nodes")) {
    if (!node.is_object() || Member(node, "extensions") == nullptr) continue;
    const Json* light = Member(node["extensions"], kLights);
    const Json* index = light == nullptr ? nullptr : Member(*light, "light");
    if (index != nullptr && IsIndex(*index))
      node["extensions"][kLights]["light"] = index->get<std::size_t>() + before;
  }
  // Of what a file as a whole has two can't be told apart: names of material variants, for one.
  if (Member(m_json, "extensions") == nullptr) return;
  for (auto& [name, value] : m_json["extensions"].items()) {
    if (name == kLights) continue;
    const std::string extension = name;
    m_warnings.push_back("the extension " + extension + " was left out");
    for (const char* list : kMergedLists) EraseExtension(ListOf(m_json, list), extension);
    EraseText(ListOf(m_json, "extensionsUsed"), extension);
    EraseText(ListOf(m_json, "extensionsRequired"), extension);
  }
}

void DocumentMerge::Renumber() {
  for (const Table table : kTables) {
    const std::size_t offset = first(NameOf(table));
    VisitReferences(m_json, table,
                    [offset](Json& index) { index = index.get<std::size_t>() + offset; });
  }
  std::vector<int> map(SizeOf(m_json, "nodes"));
  for (std::size_t i = 0; i < map.size(); ++i) map[i] = static_cast<int>(first("nodes") + i);
  RemapNodes(m_json, map);
  for (Json& view : ListOf(m_json, "bufferViews"))
    view["buffer"] = view["buffer"].get<std::size_t>() + first("buffers");
}

void DocumentMerge::Append() {
  Json& json = *m_result->m_json;
  // In a file where somebody has moved bytes about, ours can't be told from others' any more.
  if (m_base != nullptr && !m_base->OwnPartsApart())
    for (Json& view : ListOf(json, "bufferViews")) EraseExtra(view, kOwnKey);
  for (const char* name : kMergedLists) {
    if (SizeOf(m_json, name) == 0) continue;
    Json& list = ListOf(json, name);
    for (Json& element : m_json[name]) list.push_back(std::move(element));
  }
  for (const char* name : {"extensionsUsed", "extensionsRequired"}) {
    if (SizeOf(m_json, name) == 0) continue;
    Json& list = ListOf(json, name);
    for (Json& extension : m_json[name]) {
      EraseText(list, extension.is_string() ? extension.get<std::string>() : std::string());
      list.push_back(std::move(extension));
    }
  }
}

void DocumentMerge::AppendBuffers() {
  GltfDocument& result = *m_result;
  if (m_base != nullptr) {
    result.m_buffers = m_base->m_buffers;
    result.m_chunk = m_base->m_chunk;
    result.m_hasChunk = m_base->m_hasChunk;
    result.m_furtherChunks = m_base->m_furtherChunks;
    result.m_content = m_base->m_content;
    result.m_folder = m_base->m_folder;
    result.m_fromMemory = m_base->m_fromMemory;
    result.m_budget = m_base->m_budget;
    result.sceneIndex = m_base->sceneIndex;
    result.loaded = m_base->loaded;
  } else {
    result.sceneIndex = 0;
  }
  for (GltfDocument::Buffer& buffer : m_buffers) {
    // A writer drops a buffer without foreign bytes, unless it is empty.
    if (buffer.bytes.empty()) {
      buffer.storage = std::make_shared<const std::string>(4, '\0');
      buffer.bytes = *buffer.storage;
    }
    buffer.foreignSize = 0;
    result.m_buffers.push_back(std::move(buffer));
  }
  result.m_budget += m_added->m_budget;
  result.loaded.resize(first("nodes"), false);
  result.loaded.resize(SizeOf(*result.m_json, "nodes"), true);
  result.m_base = m_base;
}

}  // namespace orv::rws::adaptor::headless
