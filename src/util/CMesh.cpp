#include "util/CMesh.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <type_traits>

#include "util/DataChunk.h"
#include "util/NumberText.h"
#include "util/xml/Base64.h"
#include "util/xml/Tag.h"

namespace orv::util {

namespace {

static_assert(sizeof(Vector3<double>) == 24 && std::is_trivially_copyable_v<Vector3<double>>,
              "a stored vertex is 24 bytes");

constexpr char kTagName[] = "CMesh";

/// Where one array lies in a stored mesh.
struct ArrayKeys {
  const char* count;     ///< chunk with the number of items
  const char* data;      ///< chunk with the items
  const char* oldGroup;  ///< tag of the older form that holds a tag `data` per item
};
constexpr ArrayKeys kVertexKeys = {"numVertexes", "vertex", "vertexdata"};
constexpr ArrayKeys kTexCoordKeys = {"numTexCoords", "texcoord", "texcoorddata"};
constexpr ArrayKeys kFaceKeys = {"numFaces", "face", "facedata"};
constexpr ArrayKeys kTexFaceKeys = {"numTFaces", "tface", "tfacedata"};
constexpr std::array<ArrayKeys, 4> kAllKeys = {kVertexKeys, kTexCoordKeys, kFaceKeys, kTexFaceKeys};

template <typename T>
void storeCount(DataChunk& chunk, const ArrayKeys& keys, const std::vector<T>& array) {
  chunk.addValue(keys.count, static_cast<std::int32_t>(array.size()));
}

template <typename T>
void storeArray(DataChunk& chunk, const ArrayKeys& keys, const std::vector<T>& array) {
  chunk.addBytes(keys.data, array.data(), array.size() * sizeof(T));
}

/// False when a key is missing or the bytes are not what the count claims. A count of whole
/// triangles is as good as one of their indices.
template <typename T>
bool loadArray(const DataChunk& chunk, const ArrayKeys& keys, std::vector<T>& array) {
  std::int32_t count = 0;
  if (!chunk.getValue(keys.count, count) || count < 0 || !chunk.hasChunk(keys.data)) return false;
  const std::vector<unsigned char>& bytes = chunk.getBytes(keys.data);
  const std::size_t claimed = static_cast<std::size_t>(count) * sizeof(T);
  const bool isTriangles = std::is_integral_v<T> && bytes.size() == 3 * claimed;
  if (bytes.size() != claimed && !isTriangles) return false;
  array.resize(bytes.size() / sizeof(T));
  if (!bytes.empty()) std::memcpy(array.data(), bytes.data(), bytes.size());
  return true;
}

/// Splits off the next number of a text with blanks or commas between them.
template <typename T>
bool takeNumber(std::string_view& text, T& value) {
  constexpr std::string_view kBetween = " \t\r\n,";
  text.remove_prefix(std::min(text.find_first_not_of(kBetween), text.size()));
  const std::string_view word = text.substr(0, text.find_first_of(kBetween));
  text.remove_prefix(word.size());
  return parseNumber(word, value);
}

/// The three numbers that one item of the older form holds, and nothing else.
template <typename T>
bool readItem(std::string_view text, std::array<T, 3>& item) {
  if (!std::all_of(item.begin(), item.end(), [&](T& n) { return takeNumber(text, n); })) {
    return false;
  }
  return text.find_first_not_of(" \t\r\n,") == std::string_view::npos;
}

template <typename T, typename Add>
bool readOldArray(const xml::Element& tag, const ArrayKeys& keys, Add add) {
  // One pass in place of a lookup by index per item, which finds the same in quadratic time.
  for (const xml::Element* child : tag.child(keys.oldGroup).children) {
    std::array<T, 3> item{};
    if (child->kind != xml::kTag || child->name != keys.data) continue;
    if (!readItem(child->text(), item)) return false;
    add(item);
  }
  return true;
}

bool lacks(const DataChunk& chunk, const ArrayKeys& keys) {
  return !chunk.hasChunk(keys.count) && !chunk.hasChunk(keys.data);
}

bool indicesFit(const std::vector<std::int32_t>& indices, std::size_t size) {
  return indices.size() % 3 == 0 && std::all_of(indices.begin(), indices.end(), [&](int index) {
           return index >= 0 && static_cast<std::size_t>(index) < size;
         });
}

bool hasOldForm(const xml::Element& tag) {
  return std::any_of(kAllKeys.begin(), kAllKeys.end(),
                     [&](const ArrayKeys& keys) { return !tag.child(keys.oldGroup).isEmpty(); });
}

}  // namespace

bool CMesh::isConsistent() const {
  return indicesFit(faces, vertices.size()) && indicesFit(texFaces, texCoords.size());
}

DataChunk CMesh::toChunk() const {
  DataChunk chunk(kTagName);
  storeCount(chunk, kVertexKeys, vertices);
  storeCount(chunk, kTexCoordKeys, texCoords);
  storeCount(chunk, kFaceKeys, faces);
  storeCount(chunk, kTexFaceKeys, texFaces);
  storeArray(chunk, kVertexKeys, vertices);
  storeArray(chunk, kTexCoordKeys, texCoords);
  storeArray(chunk, kFaceKeys, faces);
  storeArray(chunk, kTexFaceKeys, texFaces);
  return chunk;
}

bool CMesh::fromChunk(const DataChunk& chunk) {
  CMesh read;
  // From before meshes had a texture.
  const bool isPlain = lacks(chunk, kTexCoordKeys) && lacks(chunk, kTexFaceKeys);
  const bool whole = loadArray(chunk, kVertexKeys, read.vertices) &&
                     loadArray(chunk, kFaceKeys, read.faces) &&
                     (isPlain || (loadArray(chunk, kTexCoordKeys, read.texCoords) &&
                                  loadArray(chunk, kTexFaceKeys, read.texFaces))) &&
                     read.isConsistent();
  if (whole) *this = std::move(read);
  return whole;
}

xml::Tag CMesh::toTag() const {
  const std::vector<unsigned char> bytes = toChunk().flatten();
  xml::Tag tag(kTagName);
  tag.setText(xml::encodeBase64(bytes.data(), bytes.size()));
  return tag;
}

bool CMesh::fromTag(const xml::Element& tag) {
  if (tag.kind != xml::kTag || tag.name != kTagName) return false;
  const std::string text = tag.text();
  const std::vector<unsigned char> stored = xml::decodeBase64(text);
  const DataChunk chunk(stored.data(), stored.size());
  const bool isWhole = std::none_of(kAllKeys.begin(), kAllKeys.end(),
                                    [&](const ArrayKeys& keys) { return lacks(chunk, keys); });
  if ((isWhole || !hasOldForm(tag)) && fromChunk(chunk)) return true;
  // A tag with damaged text and no item of the older form must not pass for an empty mesh.
  return (text.empty() || hasOldForm(tag)) && readOldForm(tag);
}

bool CMesh::readOldForm(const xml::Element& tag) {
  CMesh read;
  const auto addTo = [](std::vector<Vector3<double>>& array) {
    return [&array](const std::array<double, 3>& v) { array.emplace_back(v[0], v[1], v[2]); };
  };
  const auto addIndicesTo = [](std::vector<std::int32_t>& array) {
    return [&array](const std::array<int, 3>& v) { array.insert(array.end(), v.begin(), v.end()); };
  };
  const bool whole = readOldArray<double>(tag, kVertexKeys, addTo(read.vertices)) &&
                     readOldArray<double>(tag, kTexCoordKeys, addTo(read.texCoords)) &&
                     readOldArray<int>(tag, kFaceKeys, addIndicesTo(read.faces)) &&
                     readOldArray<int>(tag, kTexFaceKeys, addIndicesTo(read.texFaces)) &&
                     read.isConsistent();
  if (whole) *this = std::move(read);
  return whole;
}

bool operator==(const CMesh& a, const CMesh& b) {
  return a.vertices == b.vertices && a.texCoords == b.texCoords && a.faces == b.faces &&
         a.texFaces == b.texFaces;
}

}  // namespace orv::util
