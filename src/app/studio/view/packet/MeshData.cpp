#include "app/studio/view/packet/MeshData.h"

#include <atomic>
#include <cmath>
#include <cstring>

#include "util/CMesh.h"

namespace orv::app::view {

namespace {

template <class Item>
void HashInto(std::uint64_t& hash, const std::vector<Item>& items) {
  // FNV-1a over words, with a last turn that spreads the high bits.
  const auto* bytes = reinterpret_cast<const unsigned char*>(items.data());
  const std::size_t size = items.size() * sizeof(Item);
  hash = (hash ^ size) * 1099511628211u;
  for (std::size_t i = 0; i + 4 <= size; i += 4) {
    std::uint32_t word;
    std::memcpy(&word, bytes + i, 4);
    hash = (hash ^ word) * 1099511628211u;
  }
  hash ^= hash >> 29;
}

MeshData::Float3 ToFloats(const util::Vector3<double>& v) {
  return {static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z)};
}

}  // namespace

std::uint64_t MeshData::NextId() {
  static std::atomic<std::uint64_t> last{0};
  return ++last;
}

void MeshData::Measure() {
  box = {};
  for (const Float3& p : positions)
    if (std::isfinite(p[0]) && std::isfinite(p[1]) && std::isfinite(p[2]))
      box.add({p[0], p[1], p[2]});
  // One edge of each triangle stands for all three.
  double sum = 0.0;
  std::size_t count = 0;
  for (std::size_t i = 0; i + 2 < indices.size() && !lines; i += 3) {
    const Float3 &a = positions[indices[i]], &b = positions[indices[i + 1 + i % 2]];
    const float x = a[0] - b[0], y = a[1] - b[1], z = a[2] - b[2];
    const float length = std::sqrt(x * x + y * y + z * z);
    if (!std::isfinite(length)) continue;
    sum += static_cast<double>(length);
    ++count;
  }
  edge = count > 0 ? static_cast<float>(sum / static_cast<double>(count)) : 0.0f;
}

bool MeshData::IsEqual(const MeshData& other) const {
  return lines == other.lines && positions == other.positions && indices == other.indices &&
         normals == other.normals && colours == other.colours && texCoords == other.texCoords;
}

std::uint64_t MeshData::Hash() const {
  std::uint64_t hash = 14695981039346656037u + (lines ? 1 : 0);
  HashInto(hash, positions);
  HashInto(hash, normals);
  HashInto(hash, colours);
  HashInto(hash, texCoords);
  HashInto(hash, indices);
  return hash;
}

std::vector<MeshData::Float3> SmoothNormals(const MeshData& mesh) {
  std::vector<MeshData::Float3> normals(mesh.positions.size());
  for (std::size_t i = 0; i + 2 < mesh.indices.size(); i += 3) {
    const MeshData::Float3& a = mesh.positions[mesh.indices[i]];
    float u[3], v[3];
    for (std::size_t k = 0; k < 3; ++k) {
      u[k] = mesh.positions[mesh.indices[i + 1]][k] - a[k];
      v[k] = mesh.positions[mesh.indices[i + 2]][k] - a[k];
    }
    const float across[3] = {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2],
                             u[0] * v[1] - u[1] * v[0]};
    for (std::size_t corner = 0; corner < 3; ++corner)
      for (std::size_t k = 0; k < 3; ++k) normals[mesh.indices[i + corner]][k] += across[k];
  }
  for (MeshData::Float3& normal : normals) {
    const float length =
        std::sqrt(normal[0] * normal[0] + normal[1] * normal[1] + normal[2] * normal[2]);
    if (length > 0.0f)
      for (float& part : normal) part /= length;
    else
      normal = {0.0f, 1.0f, 0.0f};
  }
  return normals;
}

MeshData MakeMeshData(const util::CMesh& mesh) {
  MeshData data;
  data.positions.reserve(mesh.vertices.size());
  for (const auto& vertex : mesh.vertices) data.positions.push_back(ToFloats(vertex));
  data.indices.reserve(mesh.faces.size());
  const auto count = static_cast<std::int64_t>(mesh.vertices.size());
  for (std::size_t i = 0; i + 2 < mesh.faces.size(); i += 3) {
    const std::int32_t* face = &mesh.faces[i];
    bool isInside = true;
    for (int k = 0; k < 3; ++k) isInside = isInside && face[k] >= 0 && face[k] < count;
    if (!isInside) continue;
    for (int k = 0; k < 3; ++k) data.indices.push_back(static_cast<std::uint32_t>(face[k]));
  }
  data.Measure();
  return data;
}

MeshData MakeLineData(const std::vector<util::Vector3<double>>& points, bool closed) {
  MeshData data;
  data.lines = true;
  for (const auto& point : points) data.positions.push_back(ToFloats(point));
  const auto count = static_cast<std::uint32_t>(points.size());
  for (std::uint32_t i = 0; i + 1 < count; ++i) {
    data.indices.push_back(i);
    data.indices.push_back(i + 1);
  }
  if (closed && count > 2) {
    data.indices.push_back(count - 1);
    data.indices.push_back(0);
  }
  data.Measure();
  return data;
}

MeshData MakeCameraSign() {
  MeshData data;
  data.lines = true;
  constexpr float w = 0.32f, h = 0.18f, d = -0.5f;
  data.positions = {{0, 0, 0},
                    {-w, -h, d},
                    {w, -h, d},
                    {w, h, d},
                    {-w, h, d},
                    {-0.5f * w, 1.2f * h, d},
                    {0.5f * w, 1.2f * h, d},
                    {0, 1.9f * h, d}};
  data.indices = {0, 1, 0, 2, 0, 3, 0, 4, 1, 2, 2, 3, 3, 4, 4, 1, 5, 6, 6, 7, 7, 5};
  data.Measure();
  return data;
}

}  // namespace orv::app::view
