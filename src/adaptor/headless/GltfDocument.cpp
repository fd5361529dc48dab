#include "adaptor/headless/GltfDocument.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <limits>
#include <utility>

#include "adaptor/headless/GltfAccessor.h"
#include "adaptor/headless/GltfJson.h"
#include "adaptor/headless/GltfMesh.h"
#include "adaptor/headless/GltfUri.h"
#include "util/AtomicFile.h"
#include "util/CMesh.h"

namespace orv::rws::adaptor::headless {

namespace {

constexpr std::uint32_t kMagic = 0x46546C67;      // "glTF"
constexpr std::uint32_t kJsonChunk = 0x4E4F534A;  // "JSON"
constexpr std::uint32_t kBinChunk = 0x004E4942;   // "BIN\0"
constexpr std::size_t kHeaderSize = 12;
constexpr std::size_t kChunkHeaderSize = 8;
/// Brackets within brackets that are accepted in the JSON.
constexpr std::size_t kDeepestJson = 256;
/// Elements of an accessor without bytes of its own, which a file could ask for at no cost.
constexpr std::size_t kMostZeros = std::size_t{1} << 24;
/// What a file of no bytes may decode (numbers), and what each of its bytes adds.
constexpr std::size_t kBudgetBase = std::size_t{1} << 22;
constexpr std::size_t kBudgetPerByte = 8;

std::uint32_t WordAt(std::string_view bytes, std::size_t offset) {
  const auto* b = reinterpret_cast<const unsigned char*>(bytes.data()) + offset;
  return b[0] | b[1] << 8 | b[2] << 16 | static_cast<std::uint32_t>(b[3]) << 24;
}

std::string Number(std::size_t value) {
  return std::to_string(value);
}

/// Refuses JSON so deep that copying or writing it would need a deep stack.
void CheckDepth(std::string_view text) {
  std::size_t depth = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '"') {
      for (++i; i < text.size() && text[i] != '"'; ++i)
        if (text[i] == '\\') ++i;
    } else if (c == '[' || c == '{') {
      if (++depth > kDeepestJson)
        throw GltfError("JSON", "nested deeper than " + Number(kDeepestJson) + " levels");
    } else if ((c == ']' || c == '}') && depth > 0) {
      --depth;
    }
  }
}

struct ElementType {
  const char* name;
  int components;
  int columns;  ///< 0 unless a matrix
};
constexpr ElementType kElementTypes[] = {{"SCALAR", 1, 0}, {"VEC2", 2, 0}, {"VEC3", 3, 0},
                                         {"VEC4", 4, 0},   {"MAT2", 4, 2}, {"MAT3", 9, 3},
                                         {"MAT4", 16, 4}};

const ElementType& ElementTypeOf(const Json& accessor, const Place& place) {
  const std::string name = TextAt(accessor, "type", place);
  for (const ElementType& type : kElementTypes)
    if (name == type.name) return type;
  place.In("type").Fail(name.empty() ? "is missing" : "\"" + name + "\" is no accessor type");
}

ComponentType ComponentTypeOf(const Json& object, const Place& place) {
  const std::size_t value = WholeAt(object, "componentType", place);
  const auto type = static_cast<ComponentType>(value);
  if (value > 0xFFFF || SizeOf(type) == 0)
    place.In("componentType").Fail(Number(value) + " is no component type");
  return type;
}

/// Columns of a matrix start at multiples of 4 bytes.
std::size_t ElementSize(const ElementType& element, ComponentType type) {
  const std::size_t width = SizeOf(type);
  if (element.columns == 0) return width * static_cast<std::size_t>(element.components);
  const auto columns = static_cast<std::size_t>(element.columns);
  const std::size_t column = (columns * width + 3) / 4 * 4;
  return column * columns;
}

bool IsCompressed(const Json& view) {
  const Json* extensions = Member(view, "extensions");
  return extensions != nullptr && (Member(*extensions, "EXT_meshopt_compression") != nullptr ||
                                   Member(*extensions, "KHR_meshopt_compression") != nullptr);
}

}  // namespace

GltfDocument::GltfDocument() : m_json(std::make_unique<Json>()) {}
GltfDocument::~GltfDocument() = default;

void GltfDocument::Load(std::string content, const std::string* folder) {
  m_fromMemory = folder == nullptr;
  if (folder != nullptr) m_folder = *folder;
  m_content = std::make_shared<const std::string>(std::move(content));
  m_budget = kBudgetBase + kBudgetPerByte * m_content->size();
  Parse(SplitContainer(m_content));
  // The text of a .gltf is not needed any more, and may be large.
  if (!m_hasChunk && m_furtherChunks.empty()) m_content.reset();
  CheckAsset();
  LoadBuffers(m_content, folder);
  CheckViews();
  CheckAccessors();
  SeparateOwnParts();
}

/// Gives the JSON text, and notes the binary chunk of a `.glb`.
std::string_view GltfDocument::SplitContainer(const std::shared_ptr<const std::string>& content) {
  const std::string_view all = *content;
  if (all.size() < 4 || WordAt(all, 0) != kMagic) {
    if (all.empty()) throw GltfError("", "the file is empty");
    return all;
  }
  if (all.size() < kHeaderSize) throw GltfError("header", "the file ends in it");
  if (WordAt(all, 4) != 2)
    throw GltfError("header", "version " + Number(WordAt(all, 4)) + " is not glTF 2");
  const std::size_t length = WordAt(all, 8);
  if (length > all.size())
    throw GltfError("header", "the file is cut off: it has " + Number(all.size()) + " of " +
                                  Number(length) + " bytes");
  std::string_view text;
  std::size_t offset = kHeaderSize;
  for (std::size_t i = 0; offset < length; ++i) {
    const Place place("chunk", i);
    if (length - offset < kChunkHeaderSize) place.Fail("the file ends in its header");
    const std::size_t size = WordAt(all, offset);
    const std::uint32_t type = WordAt(all, offset + 4);
    if (size > length - offset - kChunkHeaderSize) place.Fail("reaches behind the file's end");
    const std::string_view body = all.substr(offset + kChunkHeaderSize, size);
    if (i == 0) {
      if (type != kJsonChunk) place.Fail("is no JSON chunk");
      text = body;
    } else if (i == 1 && type == kBinChunk) {
      m_chunk = body;
      m_hasChunk = true;
    } else {
      m_furtherChunks = all.substr(offset, length - offset);
      break;
    }
    offset += kChunkHeaderSize + size;
  }
  if (offset == kHeaderSize) throw GltfError("chunk[0]", "is missing");
  return text;
}

void GltfDocument::Parse(std::string_view text) {
  CheckDepth(text);
  try {
    *m_json = Json::parse(text.begin(), text.end());
  } catch (const Json::exception& e) {
    // "[json.exception.parse_error.101] parse error at line 3, column 7: ...": the name goes.
    const std::string what = e.what();
    const std::size_t bracket = what.find("] ");
    throw GltfError("JSON", bracket == std::string::npos ? what : what.substr(bracket + 2));
  }
  if (!m_json->is_object()) throw GltfError("JSON", "is no object");
}

void GltfDocument::CheckAsset() const {
  for (const char* name : kListNames) ListAt(*m_json, name, Place(""));
  const Place place("asset");
  const Json* asset = ObjectAt(*m_json, "asset", Place(""));
  if (asset == nullptr) place.Fail("is missing: this is no glTF file");
  const std::string version = TextAt(*asset, "version", place);
  if (version.rfind("2.", 0) != 0) place.In("version").Fail("\"" + version + "\" is not glTF 2");
  const std::string least = TextAt(*asset, "minVersion", place);
  if (!least.empty() && least != "2.0")
    place.In("minVersion").Fail("the file asks for glTF " + least + ", this program reads 2.0");
}

void GltfDocument::LoadBuffers(const std::shared_ptr<const std::string>& content,
                               const std::string* folder) {
  m_buffers.resize(ListAt(*m_json, "buffers", Place("")).size());
  for (std::size_t i = 0; i < m_buffers.size(); ++i) {
    LoadBuffer(i, content, folder);
    if (m_buffers[i].origin != Origin::kChunk)
      m_budget += kBudgetPerByte * m_buffers[i].bytes.size();
  }
}

void GltfDocument::LoadBuffer(std::size_t index, const std::shared_ptr<const std::string>& content,
                              const std::string* folder) {
  const Place place("buffers", index);
  Json& json = (*m_json)["buffers"][index];
  if (!json.is_object()) place.Fail("is no object");
  Buffer& buffer = m_buffers[index];
  const std::size_t length = WholeAt(json, "byteLength", place);
  std::size_t found = 0;
  if (Member(json, "uri") == nullptr) {
    if (index == 0 && m_hasChunk) {
      buffer.origin = Origin::kChunk;
      buffer.storage = content;
      buffer.bytes = m_chunk;
      found = m_chunk.size();
    } else if (Member(json, "extensions") == nullptr) {
      place.Fail(m_hasChunk ? "has no uri" : "has no uri, and the file has no binary chunk");
    } else {
      return;  // An extension brings the bytes.
    }
  } else {
    buffer.uri = TextAt(json, "uri", place);
    auto bytes = std::make_shared<std::string>();
    if (IsDataUri(buffer.uri)) {
      buffer.origin = Origin::kDataUri;
      if (!DecodeDataUri(buffer.uri, *bytes)) place.In("uri").Fail("is a damaged data: URI");
      json["uri"] = "";
    } else {
      buffer.origin = Origin::kFile;
      std::string relative;
      if (!DecodeRelativeUri(buffer.uri, relative))
        place.In("uri").Fail("\"" + buffer.uri + "\" names no file beside this one");
      if (folder == nullptr)
        place.In("uri").Fail("\"" + buffer.uri +
                             "\" is a file beside this one, which is out of "
                             "reach for a file in memory");
      std::string error;
      if (!ReadSideFile(*folder + relative, *bytes, error)) place.In("uri").Fail(error);
    }
    found = bytes->size();
    buffer.bytes = *bytes;
    buffer.storage = std::move(bytes);
  }
  if (found < length)
    place.Fail("has " + Number(found) + " of the " + Number(length) +
               " bytes that byteLength promises");
  buffer.bytes = buffer.bytes.substr(0, length);
  buffer.foreignSize = length;
}

void GltfDocument::CheckViews() const {
  const Json& views = ListAt(*m_json, "bufferViews", Place(""));
  for (std::size_t i = 0; i < views.size(); ++i) {
    const Place place("bufferViews", i);
    if (!views[i].is_object()) place.Fail("is no object");
    const int buffer = IndexAt(views[i], "buffer", m_buffers.size(), place);
    if (buffer < 0) place.In("buffer").Fail("is missing");
    const std::size_t offset = WholeAt(views[i], "byteOffset", 0, place);
    const std::size_t length = WholeAt(views[i], "byteLength", place);
    const std::size_t stride = WholeAt(views[i], "byteStride", 0, place);
    if (stride > 252) place.In("byteStride").Fail(Number(stride) + " is more than 252");
    const Buffer& source = m_buffers[static_cast<std::size_t>(buffer)];
    if (source.origin == Origin::kAbsent) continue;
    const std::size_t size = source.bytes.size();
    if (offset > size || length > size - offset)
      place.Fail("reaches behind the end of buffers[" + Number(static_cast<std::size_t>(buffer)) +
                 "], which has " + Number(size) + " bytes");
  }
}

std::string_view GltfDocument::ViewBytes(std::size_t view) const {
  const Json& json = (*m_json)["bufferViews"][view];
  const Place place("bufferViews", view);
  const Buffer& buffer = m_buffers[WholeAt(json, "buffer", place)];
  if (buffer.origin == Origin::kAbsent) return {};
  return buffer.bytes.substr(WholeAt(json, "byteOffset", 0, place),
                             WholeAt(json, "byteLength", place));
}

void GltfDocument::CheckAccessors() const {
  const Json& accessors = ListAt(*m_json, "accessors", Place(""));
  for (std::size_t i = 0; i < accessors.size(); ++i) {
    if (!accessors[i].is_object()) Place("accessors", i).Fail("is no object");
    Accessor(i);
  }
}

AccessorView GltfDocument::Accessor(std::size_t index) const {
  const Place place("accessors", index);
  const Json& json = (*m_json)["accessors"][index];
  const Json& views = ListAt(*m_json, "bufferViews", Place(""));
  const ElementType& element = ElementTypeOf(json, place);
  AccessorView result;
  result.type = ComponentTypeOf(json, place);
  result.components = element.components;
  result.matrix = element.columns > 0;
  const Json* normalized = Member(json, "normalized");
  result.normalized = normalized != nullptr && *normalized == true;
  result.count = WholeAt(json, "count", place);
  if (result.count == 0) place.In("count").Fail("is 0");
  const std::size_t size = ElementSize(element, result.type);

  // `needed` bytes from `offset` of a view, or null when an extension would have to unpack them.
  const auto bytesOf = [&](const Json& holder, const Place& at, std::size_t stride,
                           std::size_t count, std::size_t width, std::size_t* viewStride) {
    const int view = IndexAt(holder, "bufferView", views.size(), at);
    if (view < 0) return static_cast<const unsigned char*>(nullptr);
    const Json& viewJson = views[static_cast<std::size_t>(view)];
    const std::size_t offset = WholeAt(holder, "byteOffset", 0, at);
    if (viewStride != nullptr) {
      stride = WholeAt(viewJson, "byteStride", stride, at);
      if (stride < width) at.Fail("its elements overlap: byteStride is too small");
      *viewStride = stride;
    }
    const std::size_t length = WholeAt(viewJson, "byteLength", at);
    if (width > length || offset > length - width ||
        (count - 1) > (length - width - offset) / stride)
      at.Fail(Number(count) + " elements reach behind the end of bufferViews[" +
              Number(static_cast<std::size_t>(view)) + "], which has " + Number(length) + " bytes");
    const std::string_view bytes = ViewBytes(static_cast<std::size_t>(view));
    if (bytes.empty() || IsCompressed(viewJson)) {
      result.compressed = true;
      return static_cast<const unsigned char*>(nullptr);
    }
    return reinterpret_cast<const unsigned char*>(bytes.data()) + offset;
  };

  result.data = bytesOf(json, place, size, result.count, size, &result.stride);
  if (result.data == nullptr && !result.compressed && result.count > kMostZeros)
    place.In("count").Fail(Number(result.count) + " elements, but no bufferView with them");

  const Json* sparse = ObjectAt(json, "sparse", place);
  if (sparse == nullptr) return result;
  const Place here = place.In("sparse");
  result.sparseCount = WholeAt(*sparse, "count", here);
  const Json* indices = ObjectAt(*sparse, "indices", here);
  const Json* values = ObjectAt(*sparse, "values", here);
  if (result.sparseCount == 0 || result.sparseCount > result.count)
    here.In("count").Fail(Number(result.sparseCount) + " of " + Number(result.count) + " elements");
  if (indices == nullptr || values == nullptr || Member(*indices, "bufferView") == nullptr ||
      Member(*values, "bufferView") == nullptr)
    here.Fail("indices or values are missing");
  result.sparseType = ComponentTypeOf(*indices, here.In("indices"));
  if (result.sparseType != ComponentType::kUnsignedByte &&
      result.sparseType != ComponentType::kUnsignedShort &&
      result.sparseType != ComponentType::kUnsignedInt)
    here.In("indices").In("componentType").Fail("is not unsigned");
  const std::size_t width = SizeOf(result.sparseType);
  const Place indicesPlace = here.In("indices");
  const Place valuesPlace = here.In("values");
  result.sparseIndices = bytesOf(*indices, indicesPlace, width, result.sparseCount, width, nullptr);
  result.sparseValues = bytesOf(*values, valuesPlace, size, result.sparseCount, size, nullptr);
  if (result.compressed) {
    result.sparseCount = 0;
  } else if (!result.SparseInOrder()) {
    here.In("indices").Fail("do not rise within 0 to " + Number(result.count - 1));
  }
  return result;
}

/// Finds the end of what is not ours in each buffer. When somebody has moved things about, all
/// counts as not ours.
void GltfDocument::SeparateOwnParts() {
  for (std::size_t i = 0; i < m_buffers.size(); ++i) {
    const Json* own = OwnExtras((*m_json)["buffers"][i]);
    const Json* from = own == nullptr ? nullptr : Member(*own, "from");
    if (from == nullptr) continue;
    m_buffers[i].foreignSize = from->is_number_unsigned()
                                   ? std::min(from->get<std::size_t>(), m_buffers[i].bytes.size())
                                   : m_buffers[i].bytes.size();
  }
  const Json& views = ListAt(*m_json, "bufferViews", Place(""));
  for (std::size_t i = 0; i < views.size(); ++i) {
    const Place place("bufferViews", i);
    const Buffer& buffer = m_buffers[WholeAt(views[i], "buffer", place)];
    const std::size_t offset = WholeAt(views[i], "byteOffset", 0, place);
    const std::size_t end = offset + WholeAt(views[i], "byteLength", place);
    if (IsOwn(views[i]) ? offset < buffer.foreignSize : end > buffer.foreignSize)
      m_ownPartsApart = false;
  }
  if (m_ownPartsApart) return;
  for (Buffer& buffer : m_buffers) buffer.foreignSize = buffer.bytes.size();
}

void GltfDocument::Spend(std::size_t amount, const Place& place) const {
  if (amount > m_budget) place.Fail("shows far more data than the file holds");
  m_budget -= amount;
}

bool GltfDocument::Includes(const GltfDocument* other) const {
  const GltfDocument* document = this;
  while (document != nullptr && document != other) document = document->m_base.get();
  return document != nullptr;
}

std::shared_ptr<const util::CMesh> GltfDocument::Triangles(int mesh) const {
  std::shared_ptr<const util::CMesh>& result = m_meshes[mesh];
  if (!result) result = MakeSharedMesh(mesh < 0 ? util::CMesh() : BuildTriangles(*this, mesh));
  return result;
}

std::shared_ptr<const util::CMesh> GltfDocument::BuiltTriangles(int mesh) const {
  const auto at = m_meshes.find(mesh);
  return at == m_meshes.end() ? nullptr : at->second;
}

}  // namespace orv::rws::adaptor::headless
