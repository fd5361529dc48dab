// What a foreign model is in glTF.
#include <assimp/material.h>
#include <assimp/scene.h>

#include <assimp/GltfMaterial.h>
#include <QBuffer>
#include <QImage>
#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <utility>

#include "adaptor/headless/Channel.h"
#include "app/session/models/AssimpMaths.h"
#include "app/session/models/ForeignModel.h"
#include "app/session/models/GltfBuilder.h"
#include "util/Angles.h"
#include "util/AtomicFile.h"

namespace orv::app {

using rws::adaptor::Trs;
using rws::adaptor::headless::ChannelPath;
using Matrix = util::Matrix<double>;
using Quat = util::Quat<double>;
using Vector = util::Vector3<double>;

namespace {

/// Key times nearer than this are one (s).
constexpr double kSameTime = 1e-6;
/// A picture whose file leaves its ratio open.
constexpr double kUsualAspect = 16.0 / 9.0;

/// From the file's space to ours: a length in the file times a factor, and Z turned to Y. Nodes'
/// own axes turn along with it, so that no pose carries the change.
class SpaceChange {
 public:
  SpaceChange(double unitMeters, UpAxis up) : m_unit(unitMeters), m_turns(up == UpAxis::kZ) {}

  Vector direction(const Vector& v) const { return m_turns ? Vector(v.x, v.z, -v.y) : v; }
  Vector point(const Vector& v) const { return direction(v) * m_unit; }
  Vector scale(const Vector& v) const { return m_turns ? Vector(v.x, v.z, v.y) : v; }
  Quat rotation(const Quat& q) const { return m_turns ? Quat(q.x, q.z, -q.y, q.w) : q; }
  double length(double length) const { return length * m_unit; }

 private:
  double m_unit;
  bool m_turns;
};

void Append(std::vector<float>& values, const Vector& v) {
  for (const double number : {v.x, v.y, v.z}) values.push_back(static_cast<float>(number));
}

/// As a PNG when it is neither that nor a JPEG; empty when it can't be read.
std::string UsableImage(std::string bytes) {
  if (!MimeOfImage(bytes).empty()) return bytes;
  const QImage image = QImage::fromData(reinterpret_cast<const uchar*>(bytes.data()),
                                        static_cast<int>(bytes.size()));
  QByteArray png;
  QBuffer buffer(&png);
  if (image.isNull() || !image.save(&buffer, "PNG")) return {};
  return png.toStdString();
}

class Conversion {
 public:
  Conversion(const aiScene& scene, const SpaceChange& change, const std::string& folder,
             const std::string& stem, std::vector<std::string>& warnings)
      : m_scene(scene), m_change(change), m_folder(folder), m_stem(stem), m_warnings(warnings) {}

  std::string run() {
    AddMaterials();
    for (unsigned i = 0; i < m_scene.mNumCameras; ++i)
      m_cameras.emplace(m_scene.mCameras[i]->mName.C_Str(), m_scene.mCameras[i]);
    AddNodes();
    if (m_scene.mNumAnimations > 0) AddKeys(*m_scene.mAnimations[0]);
    return m_builder.Finish();
  }

 private:
  void AddMaterials();
  int TextureOf(const aiMaterial& material);
  std::string ImageBytes(const std::string& name) const;
  GltfBuilder::Primitive PrimitiveOf(const aiMesh& mesh) const;
  int MeshOf(const aiNode& node);
  void AddNodes();
  void AddCamera(const aiCamera& camera, int node);
  void AddKeys(const aiAnimation& animation);
  template <class Key, class Put>
  void AddKeys(int node, ChannelPath path, const Key* keys, unsigned count, double tick, Put put);

  const aiScene& m_scene;
  const SpaceChange m_change;
  const std::string m_folder;
  const std::string m_stem;
  std::vector<std::string>& m_warnings;
  GltfBuilder m_builder;
  std::map<std::string, int> m_textures;
  std::vector<int> m_materials;
  std::map<std::vector<unsigned>, int> m_meshes;  ///< by the library's meshes
  std::map<std::string, const aiCamera*> m_cameras;
  std::map<std::string, int> m_nodes;
};

void Conversion::AddMaterials() {
  for (unsigned i = 0; i < m_scene.mNumMaterials; ++i) {
    const aiMaterial& from = *m_scene.mMaterials[i];
    GltfBuilder::Material material;
    aiString name;
    if (from.Get(AI_MATKEY_NAME, name) == AI_SUCCESS) material.name = name.C_Str();
    aiColor4D colour(0.8f, 0.8f, 0.8f, 1.0f);
    if (from.Get(AI_MATKEY_BASE_COLOR, colour) != AI_SUCCESS)
      from.Get(AI_MATKEY_COLOR_DIFFUSE, colour);
    float opacity = 1.0f;
    from.Get(AI_MATKEY_OPACITY, opacity);
    const auto part = [](float value) {
      return std::isfinite(value) ? std::clamp(double{value}, 0.0, 1.0) : 0.8;
    };
    material.colour = {part(colour.r), part(colour.g), part(colour.b),
                       part(opacity > 0.0f ? opacity : 1.0f)};
    aiColor3D glow;
    if (from.Get(AI_MATKEY_COLOR_EMISSIVE, glow) == AI_SUCCESS)
      material.glow = {part(glow.r), part(glow.g), part(glow.b)};
    float number = 0.0f;
    if (from.Get(AI_MATKEY_METALLIC_FACTOR, number) == AI_SUCCESS) material.metallic = part(number);
    if (from.Get(AI_MATKEY_ROUGHNESS_FACTOR, number) == AI_SUCCESS)
      material.roughness = part(number);
    int twoSided = 0;
    if (from.Get(AI_MATKEY_TWOSIDED, twoSided) == AI_SUCCESS) material.doubleSided = twoSided != 0;
    material.texture = TextureOf(from);
    // Programs that show a texture alone leave the colour black beside it.
    if (material.texture >= 0 &&
        material.colour[0] + material.colour[1] + material.colour[2] == 0.0)
      material.colour = {1.0, 1.0, 1.0, material.colour[3]};
    m_materials.push_back(m_builder.AddMaterial(material));
  }
}

int Conversion::TextureOf(const aiMaterial& material) {
  aiString name;
  if (material.GetTexture(aiTextureType_BASE_COLOR, 0, &name) != AI_SUCCESS &&
      material.GetTexture(aiTextureType_DIFFUSE, 0, &name) != AI_SUCCESS)
    return -1;
  const auto [known, isNew] = m_textures.emplace(name.C_Str(), -1);
  if (!isNew) return known->second;
  const std::string bytes = UsableImage(ImageBytes(name.C_Str()));
  if (bytes.empty())
    m_warnings.push_back("the image " + known->first +
                         " is not there, or of a kind that is not read; its material is plain");
  else
    known->second = m_builder.AddTexture(bytes);
  return known->second;
}

/// Of an image within the file, else of one beside it: as the path says, or by its name alone,
/// since paths are those of the machine where the model was made.
std::string Conversion::ImageBytes(const std::string& name) const {
  if (const aiTexture* embedded = m_scene.GetEmbeddedTexture(name.c_str())) {
    if (embedded->mHeight == 0)
      return {reinterpret_cast<const char*>(embedded->pcData), embedded->mWidth};
    return {};
  }
  std::string path = name;
  std::replace(path.begin(), path.end(), '\\', '/');
  std::string bytes;
  const bool relative = !path.empty() && path[0] != '/' && path.find(':') == std::string::npos;
  if (relative && util::readFile(m_folder + path, bytes)) return bytes;
  if (util::readFile(m_folder + path.substr(path.rfind('/') + 1), bytes)) return bytes;
  return {};
}

GltfBuilder::Primitive Conversion::PrimitiveOf(const aiMesh& mesh) const {
  GltfBuilder::Primitive primitive;
  primitive.lines = !IsOfTriangles(mesh);
  if (mesh.mMaterialIndex < m_materials.size())
    primitive.material = m_materials[mesh.mMaterialIndex];
  const bool shaded = mesh.HasNormals() && !primitive.lines;
  for (unsigned i = 0; i < mesh.mNumVertices; ++i) {
    Append(primitive.points, m_change.point(VectorOf(mesh.mVertices[i])));
    if (shaded) {
      Vector normal = m_change.direction(VectorOf(mesh.mNormals[i]));
      const double length = normal.length();
      Append(primitive.normals, std::isfinite(length) && length > 0.0 ? normal * (1.0 / length)
                                                                      : Vector(0.0, 1.0, 0.0));
    }
    if (!mesh.HasTextureCoords(0)) continue;
    for (const float uv : {mesh.mTextureCoords[0][i].x, mesh.mTextureCoords[0][i].y})
      primitive.texCoords.push_back(std::isfinite(uv) ? uv : 0.0f);
  }
  const unsigned corners = primitive.lines ? 2 : 3;
  for (unsigned i = 0; i < mesh.mNumFaces; ++i) {
    const aiFace& face = mesh.mFaces[i];
    if (face.mNumIndices == corners)
      primitive.corners.insert(primitive.corners.end(), face.mIndices, face.mIndices + corners);
  }
  return primitive;
}

/// Lines are a curve where no triangles stand beside them.
int Conversion::MeshOf(const aiNode& node) {
  std::vector<unsigned> used(node.mMeshes, node.mMeshes + node.mNumMeshes);
  const auto isSolid = [this](unsigned i) { return IsOfTriangles(*m_scene.mMeshes[i]); };
  if (std::any_of(used.begin(), used.end(), isSolid))
    used.erase(std::remove_if(used.begin(), used.end(), [&](unsigned i) { return !isSolid(i); }),
               used.end());
  if (used.empty()) return -1;
  const auto known = m_meshes.find(used);
  if (known != m_meshes.end()) return known->second;
  std::vector<GltfBuilder::Primitive> primitives;
  for (const unsigned i : used) {
    GltfBuilder::Primitive primitive = PrimitiveOf(*m_scene.mMeshes[i]);
    if (!primitive.corners.empty()) primitives.push_back(std::move(primitive));
  }
  const int mesh =
      primitives.empty()
          ? -1
          : m_builder.AddMesh(m_scene.mMeshes[used.front()]->mName.C_Str(), primitives);
  return m_meshes[used] = mesh;
}

void Conversion::AddNodes() {
  const aiNode& root = *m_scene.mRootNode;
  // The library's root says nothing where it neither shows nor moves anything.
  const bool bare = root.mNumMeshes == 0 && root.mNumChildren > 0 &&
                    root.mTransformation.IsIdentity() && m_cameras.count(root.mName.C_Str()) == 0;
  std::vector<std::pair<const aiNode*, int>> open{{&root, -1}};
  while (!open.empty()) {
    const auto [from, parent] = open.back();
    open.pop_back();
    int index = -1;
    if (from != &root || !bare) {
      const Trs pose = rws::adaptor::Decompose(MatrixOf(from->mTransformation));
      GltfBuilder::Node node;
      node.name = from->mName.length > 0 && from != &root ? from->mName.C_Str() : m_stem;
      node.pose = {m_change.point(pose.translation), m_change.rotation(pose.rotation),
                   m_change.scale(pose.scale)};
      node.parent = parent;
      node.mesh = MeshOf(*from);
      index = m_builder.AddNode(node);
      m_nodes.emplace(from->mName.C_Str(), index);
      const auto camera = m_cameras.find(from->mName.C_Str());
      if (camera != m_cameras.end()) AddCamera(*camera->second, index);
    }
    for (unsigned i = from->mNumChildren; i-- > 0;) open.emplace_back(from->mChildren[i], index);
  }
}

/// A camera of the library looks along any direction of its node, ours along -Z.
void Conversion::AddCamera(const aiCamera& camera, int node) {
  const auto unit = [](Vector v, const Vector& otherwise) {
    const double length = v.length();
    return length > 0.0 && std::isfinite(length) ? v * (1.0 / length) : otherwise;
  };
  const Vector back = unit(-m_change.direction(VectorOf(camera.mLookAt)), {0.0, 0.0, 1.0});
  const Vector wish = unit(m_change.direction(VectorOf(camera.mUp)), {0.0, 1.0, 0.0});
  const Vector right = unit(wish.cross(back), {1.0, 0.0, 0.0});
  const Vector up = back.cross(right);
  const Vector place = m_change.point(VectorOf(camera.mPosition));
  Matrix look;
  const Vector columns[] = {right, up, back, place};
  for (int i = 0; i < 4; ++i) {
    look[4 * i] = columns[i].x;
    look[4 * i + 1] = columns[i].y;
    look[4 * i + 2] = columns[i].z;
  }
  GltfBuilder::Camera lens;
  lens.aspectRatio = camera.mAspect > 0.0f ? double{camera.mAspect} : kUsualAspect;
  const double across = std::clamp(double{camera.mHorizontalFOV}, 0.02, 3.0);
  lens.fieldOfView = 2.0 * std::atan(std::tan(across / 2.0) / lens.aspectRatio);
  lens.nearClip = std::max(1e-3, m_change.length(double{camera.mClipPlaneNear}));
  lens.farClip = m_change.length(double{camera.mClipPlaneFar});
  GltfBuilder::Node view;
  view.name = std::string(camera.mName.C_Str()) + "_view";
  view.pose = rws::adaptor::Decompose(look);
  view.parent = node;
  view.camera = m_builder.AddCamera(lens);
  m_builder.AddNode(view);
}

template <class Key, class Put>
void Conversion::AddKeys(int node, ChannelPath path, const Key* keys, unsigned count, double tick,
                         Put put) {
  std::vector<double> times;
  std::vector<float> values;
  for (unsigned i = 0; i < count; ++i) {
    const double time = keys[i].mTime * tick;
    if (!std::isfinite(time) || (!times.empty() && time < times.back() + kSameTime)) continue;
    times.push_back(time);
    put(values, keys[i].mValue);
  }
  for (const float value : values)
    if (!std::isfinite(value)) return;
  const std::size_t width = path == ChannelPath::kRotation ? 4 : 3;
  bool moves = false;
  for (std::size_t i = width; i < values.size(); ++i)
    moves = moves || values[i] != values[i - width];
  if (moves) m_builder.AddKeys(node, path, times, values);
}

void Conversion::AddKeys(const aiAnimation& animation) {
  constexpr double kUsualTicks = 25.0;  ///< a second, where the file does not tell
  const double ticks = animation.mTicksPerSecond;
  const double tick = 1.0 / (ticks > 0.0 && std::isfinite(ticks) ? ticks : kUsualTicks);
  std::set<int> done;
  for (unsigned i = 0; i < animation.mNumChannels; ++i) {
    const aiNodeAnim& channel = *animation.mChannels[i];
    const auto found = m_nodes.find(channel.mNodeName.C_Str());
    if (found == m_nodes.end() || !done.insert(found->second).second) continue;
    const int node = found->second;
    AddKeys(node, ChannelPath::kTranslation, channel.mPositionKeys, channel.mNumPositionKeys, tick,
            [this](std::vector<float>& values, const aiVector3D& v) {
              Append(values, m_change.point(VectorOf(v)));
            });
    AddKeys(node, ChannelPath::kScale, channel.mScalingKeys, channel.mNumScalingKeys, tick,
            [this](std::vector<float>& values, const aiVector3D& v) {
              Append(values, m_change.scale(VectorOf(v)));
            });
    Quat last;
    AddKeys(node, ChannelPath::kRotation, channel.mRotationKeys, channel.mNumRotationKeys, tick,
            [this, &last](std::vector<float>& values, const aiQuaternion& v) {
              Quat q = m_change.rotation(QuatOf(v));
              q.normalize();
              if (q.x * last.x + q.y * last.y + q.z * last.z + q.w * last.w < 0.0) q = -q;
              last = q;
              for (const double part : {q.x, q.y, q.z, q.w})
                values.push_back(static_cast<float>(part));
            });
  }
}

}  // namespace

std::string ForeignModel::ToGltf(double unitMeters, UpAxis up,
                                 std::vector<std::string>& warnings) const {
  const SpaceChange change(unitMeters, up);
  return Conversion(*m_scene, change, m_folder, m_stem, warnings).run();
}

}  // namespace orv::app
