#include "app/studio/view/FileMeshes.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>
#include <algorithm>
#include <cmath>
#include <optional>

#include "adaptor/headless/GltfAccessor.h"
#include "adaptor/headless/GltfDocument.h"
#include "adaptor/headless/GltfJson.h"
#include "adaptor/headless/GltfUri.h"

namespace orv::app::view {

using namespace rws::adaptor::headless;

namespace {

constexpr int kMostPixels = 4096;       ///< of a texture's side
constexpr int kMostFilePixels = 16384;  ///< of a picture's side that is read at all

/// Where a texture's corner lies, turned, scaled and moved (KHR_texture_transform).
struct TexturePlace {
  double offset[2] = {0.0, 0.0}, scale[2] = {1.0, 1.0}, rotation = 0.0;
  std::size_t set = 0;  ///< TEXCOORD_n

  MeshData::Float2 Apply(double u, double v) const {
    const double c = std::cos(rotation), s = std::sin(rotation);
    u *= scale[0];
    v *= scale[1];
    return {static_cast<float>(c * u + s * v + offset[0]),
            static_cast<float>(-s * u + c * v + offset[1])};
  }
};

Texture::Wrap ReadWrap(const Json& sampler, const char* key, const Place& place) {
  switch (WholeAt(sampler, key, 10497, place)) {
    case 33071:
      return Texture::Wrap::kClamp;
    case 33648:
      return Texture::Wrap::kMirror;
    default:
      return Texture::Wrap::kRepeat;
  }
}

/// Triangles of strips and fans, as a list of corners.
std::vector<std::uint32_t> ListOfTriangles(std::vector<std::uint32_t> corners, std::size_t mode) {
  if (mode == 4) return corners;
  std::vector<std::uint32_t> list;
  for (std::size_t i = 0; i + 2 < corners.size(); ++i) {
    const bool odd = mode == 5 && i % 2 == 1;
    const std::uint32_t face[3] = {mode == 6 ? corners[0] : corners[i], corners[i + (odd ? 2 : 1)],
                                   corners[i + (odd ? 1 : 2)]};
    list.insert(list.end(), face, face + 3);
  }
  return list;
}

}  // namespace

std::shared_ptr<const MeshData> MeshPool::Share(MeshData data) {
  const std::uint64_t hash = data.Hash();
  const auto [begin, end] = m_meshes.equal_range(hash);
  for (auto at = begin; at != end;) {
    const auto held = at->second.lock();
    if (held && held->IsEqual(data)) return held;
    at = held ? std::next(at) : m_meshes.erase(at);
  }
  auto shared = std::make_shared<const MeshData>(std::move(data));
  m_meshes.emplace(hash, shared);
  return shared;
}

/// One mesh of one file. Its steps throw GltfError.
class FileMeshes::Reader {
 public:
  Reader(FileMeshes& to, const Document& document)
      : m_to(to), m_owner(document), m_document(*document) {}

  void ReadPrimitive(const Json& primitive, const Place& place, Model& model) {
    const std::size_t mode = WholeAt(primitive, "mode", 4, place);
    const Json* attributes = Member(primitive, "attributes");
    if (mode < 4 || mode > 6 || !attributes || IsPacked(primitive)) return;
    const auto points = Find(*attributes, "POSITION", 3, 3, 0);
    if (!points) return;
    TexturePlace texture;
    Model::Part part;
    part.material = ReadMaterial(primitive, place, texture);
    MeshData data;
    data.positions.resize(points->count);
    Fill(*points, &data.positions[0][0]);
    ReadAttributes(*attributes, texture, part.material.texture != nullptr, data);
    data.indices = ListOfTriangles(ReadCorners(primitive, points->count, place), mode);
    LeaveOutOdd(data);
    if (data.indices.empty()) return;
    data.Measure();
    part.mesh = m_to.m_pool.Share(std::move(data));
    model.box.add(part.mesh->box);
    model.parts.push_back(std::move(part));
  }

 private:
  static bool IsPacked(const Json& primitive) {
    const Json* extensions = Member(primitive, "extensions");
    return extensions && Member(*extensions, "KHR_draco_mesh_compression");
  }

  /// An attribute of so many components, and so many elements (0: any); nothing for one that is not
  /// there or not to be had.
  std::optional<AccessorView> Find(const Json& attributes, const std::string& name, int least,
                                   int most, std::size_t count) const {
    const std::size_t all = ListAt(m_document.GetJson(), "accessors", Place("")).size();
    const int index = IndexAt(attributes, name.c_str(), all, Place("attributes"));
    if (index < 0) return {};
    AccessorView view = m_document.Accessor(static_cast<std::size_t>(index));
    if (view.compressed || view.components < least || view.components > most ||
        (count != 0 && view.count != count))
      return {};
    return view;
  }

  static void Fill(const AccessorView& view, float* to) {
    const std::vector<double> numbers = view.ReadNumbers();
    std::transform(numbers.begin(), numbers.end(), to,
                   [](double number) { return static_cast<float>(number); });
  }

  static void ReadColours(const AccessorView& view, MeshData& data) {
    const std::vector<double> numbers = view.ReadNumbers();
    const auto parts = static_cast<std::size_t>(view.components);
    data.colours.assign(view.count, {255, 255, 255, 255});
    for (std::size_t i = 0; i < view.count; ++i)
      for (std::size_t k = 0; k < parts; ++k) {
        const double value = numbers[parts * i + k];
        data.colours[i][k] = static_cast<std::uint8_t>(
            std::lround(255.0 * (value > 0.0 ? std::min(value, 1.0) : 0.0)));
      }
  }

  void ReadAttributes(const Json& attributes, const TexturePlace& texture, bool textured,
                      MeshData& data) const {
    const std::size_t count = data.positions.size();
    if (const auto normals = Find(attributes, "NORMAL", 3, 3, count)) {
      data.normals.resize(count);
      Fill(*normals, &data.normals[0][0]);
    }
    if (const auto colours = Find(attributes, "COLOR_0", 3, 4, count)) ReadColours(*colours, data);
    const std::string set = "TEXCOORD_" + std::to_string(texture.set);
    if (const auto places = textured ? Find(attributes, set, 2, 2, count) : std::nullopt) {
      const std::vector<double> numbers = places->ReadNumbers();
      data.texCoords.reserve(count);
      for (std::size_t i = 0; i < count; ++i)
        data.texCoords.push_back(texture.Apply(numbers[2 * i], numbers[2 * i + 1]));
    }
  }

  std::vector<std::uint32_t> ReadCorners(const Json& primitive, std::size_t vertices,
                                         const Place& place) const {
    const std::size_t all = ListAt(m_document.GetJson(), "accessors", Place("")).size();
    const int index = IndexAt(primitive, "indices", all, place);
    if (index < 0) {
      std::vector<std::uint32_t> corners(vertices);
      for (std::size_t i = 0; i < vertices; ++i) corners[i] = static_cast<std::uint32_t>(i);
      return corners;
    }
    const AccessorView view = m_document.Accessor(static_cast<std::size_t>(index));
    return view.compressed ? std::vector<std::uint32_t>() : view.Indices();
  }

  /// Triangles with a corner that is no number or not there.
  static void LeaveOutOdd(MeshData& data) {
    std::vector<bool> odd(data.positions.size());
    bool any = false;
    for (std::size_t i = 0; i < odd.size(); ++i) {
      const MeshData::Float3& p = data.positions[i];
      odd[i] = !std::isfinite(p[0]) || !std::isfinite(p[1]) || !std::isfinite(p[2]);
      any = any || odd[i];
    }
    data.indices.resize(data.indices.size() / 3 * 3);
    const auto isOdd = [&](std::uint32_t i) { return i >= odd.size() || odd[i]; };
    if (!any && std::none_of(data.indices.begin(), data.indices.end(), isOdd)) return;
    std::size_t kept = 0;
    for (std::size_t i = 0; i < data.indices.size(); i += 3) {
      const std::uint32_t face[3] = {data.indices[i], data.indices[i + 1], data.indices[i + 2]};
      if (std::any_of(face, face + 3, isOdd)) continue;
      std::copy(face, face + 3, data.indices.begin() + static_cast<std::ptrdiff_t>(kept));
      kept += 3;
    }
    data.indices.resize(kept);
  }

  Material ReadMaterial(const Json& primitive, const Place& place, TexturePlace& texture) {
    Material material;
    const Json& all = ListAt(m_document.GetJson(), "materials", Place(""));
    const int index = IndexAt(primitive, "material", all.size(), place);
    if (index < 0) return material;
    const auto number = static_cast<std::size_t>(index);
    const Place here("materials", number);
    const Json& json = all[number];
    const std::string alpha = TextAt(json, "alphaMode", here);
    material.alpha = alpha == "BLEND"  ? AlphaMode::kBlend
                     : alpha == "MASK" ? AlphaMode::kMask
                                       : AlphaMode::kOpaque;
    material.cutoff = static_cast<float>(FiniteAt(json, "alphaCutoff", 0.5, here));
    const Json* sides = Member(json, "doubleSided");
    material.doubleSided = sides && *sides == true;
    const Json* extensions = ObjectAt(json, "extensions", here);
    material.unlit = extensions && Member(*extensions, "KHR_materials_unlit");
    const Json* surface = ObjectAt(json, "pbrMetallicRoughness", here);
    if (!surface) return material;
    const Place within = here.In("pbrMetallicRoughness");
    double factor[4];
    if (NumbersAt(*surface, "baseColorFactor", 4, factor, within))
      for (std::size_t k = 0; k < 4; ++k)
        material.colour[k] = static_cast<float>(std::clamp(factor[k], 0.0, 1.0));
    if (const Json* picture = ObjectAt(*surface, "baseColorTexture", within)) {
      ReadPlace(*picture, within.In("baseColorTexture"), texture);
      material.texture = FindTexture(*picture, within.In("baseColorTexture"));
    }
    return material;
  }

  static void ReadPlace(const Json& info, const Place& place, TexturePlace& texture) {
    texture.set = WholeAt(info, "texCoord", 0, place);
    const Json* extensions = ObjectAt(info, "extensions", place);
    const Json* moved =
        extensions ? ObjectAt(*extensions, "KHR_texture_transform", place) : nullptr;
    if (!moved) return;
    NumbersAt(*moved, "offset", 2, texture.offset, place);
    NumbersAt(*moved, "scale", 2, texture.scale, place);
    texture.rotation = FiniteAt(*moved, "rotation", 0.0, place);
    texture.set = WholeAt(*moved, "texCoord", texture.set, place);
  }

  std::shared_ptr<const Texture> FindTexture(const Json& info, const Place& place) {
    const Json& textures = ListAt(m_document.GetJson(), "textures", Place(""));
    const int index = IndexAt(info, "index", textures.size(), place);
    if (index < 0) return nullptr;
    const auto number = static_cast<std::size_t>(index);
    HeldTexture& held = m_to.m_textures[{&m_document, number}];
    if (auto texture = held.texture.lock(); texture && held.document.lock() == m_owner)
      return texture;
    const auto texture = ReadTexture(textures[number], Place("textures", number));
    held = {m_owner, texture};
    return texture;
  }

  std::shared_ptr<const Texture> ReadTexture(const Json& json, const Place& place) {
    const Json& images = ListAt(m_document.GetJson(), "images", Place(""));
    const int source = IndexAt(json, "source", images.size(), place);
    if (source < 0) place.In("source").Fail("is missing: its picture needs an extension");
    const auto number = static_cast<std::size_t>(source);
    QImage image =
        Decode(ReadBytes(images[number], Place("images", number)), Place("images", number));
    if (std::max(image.width(), image.height()) > kMostPixels)
      image = image.scaled(kMostPixels, kMostPixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    image = image.convertToFormat(QImage::Format_RGBA8888);
    auto texture = std::make_shared<Texture>();
    texture->width = image.width();
    texture->height = image.height();
    const auto row = static_cast<std::size_t>(image.width()) * 4;
    for (int y = 0; y < image.height(); ++y) {
      const uchar* line = image.constScanLine(y);
      texture->pixels.insert(texture->pixels.end(), line, line + row);
    }
    const Json& samplers = ListAt(m_document.GetJson(), "samplers", Place(""));
    const int sampler = IndexAt(json, "sampler", samplers.size(), place);
    if (sampler >= 0) {
      const Json& chosen = samplers[static_cast<std::size_t>(sampler)];
      texture->wrapU = ReadWrap(chosen, "wrapS", place);
      texture->wrapV = ReadWrap(chosen, "wrapT", place);
      texture->smooth = WholeAt(chosen, "magFilter", 9729, place) != 9728;
    }
    return texture;
  }

  std::string ReadBytes(const Json& image, const Place& place) const {
    const std::size_t views = ListAt(m_document.GetJson(), "bufferViews", Place("")).size();
    const int view = IndexAt(image, "bufferView", views, place);
    if (view >= 0) return std::string(m_document.ViewBytes(static_cast<std::size_t>(view)));
    const std::string uri = TextAt(image, "uri", place);
    std::string bytes, path, error;
    if (IsDataUri(uri)) {
      if (!DecodeDataUri(uri, bytes)) place.In("uri").Fail("is damaged");
      return bytes;
    }
    if (m_document.FromMemory() || !DecodeRelativeUri(uri, path))
      place.In("uri").Fail(Quoted(uri) + " is no file beside the scene");
    if (!ReadSideFile(m_document.GetFolder() + "/" + path, bytes, error))
      place.In("uri").Fail(error);
    return bytes;
  }

  static QImage Decode(const std::string& bytes, const Place& place) {
    QByteArray raw = QByteArray::fromRawData(bytes.data(), static_cast<int>(bytes.size()));
    QBuffer buffer(&raw);
    QImageReader reader(&buffer);
    const QSize size = reader.size();
    if (!size.isValid()) place.Fail("is no picture that can be read here");
    if (std::max(size.width(), size.height()) > kMostFilePixels)
      place.Fail("is too large a picture");
    const QImage image = reader.read();
    if (image.isNull()) place.Fail("is damaged: " + reader.errorString().toStdString());
    return image;
  }

  FileMeshes& m_to;
  const Document& m_owner;
  const GltfDocument& m_document;
};

Model FileMeshes::Read(const Document& document, int mesh) {
  Model model;
  const auto number = static_cast<std::size_t>(mesh);
  const Place place("meshes", number);
  Reader reader(*this, document);
  const Json& json = document->GetJson()["meshes"][number];
  const Json& primitives = ListAt(json, "primitives", place);
  for (std::size_t i = 0; i < primitives.size(); ++i) {
    // The scene's reader has checked what a triangle needs; the rest may be anything.
    try {
      reader.ReadPrimitive(primitives[i], place.In("primitives", i), model);
    } catch (const std::exception& problem) {
      m_odd.push_back("meshes[" + std::to_string(number) + "].primitives[" + std::to_string(i) +
                      "] is not shown: " + problem.what());
    }
  }
  return model;
}

void FileMeshes::DropUnused() {
  for (auto at = m_textures.begin(); at != m_textures.end();)
    at = at->second.texture.expired() ? m_textures.erase(at) : std::next(at);
}

}  // namespace orv::app::view
