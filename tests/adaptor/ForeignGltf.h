/// A glTF scene as another program would have written it, for the tests of reading and writing.
#pragma once

#include <cstdint>
#include <cstring>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "util/xml/Base64.h"

namespace orv::tests {

using Json = nlohmann::ordered_json;

/// JSON and one buffer that grow together.
class GltfBuilder {
 public:
  Json json;
  std::string bin;

  template <class T>
  int view(const std::vector<T>& values, int target = 0, int stride = 0) {
    bin.resize((bin.size() + 3) / 4 * 4, '\0');
    Json view{{"buffer", 0}, {"byteOffset", bin.size()}, {"byteLength", values.size() * sizeof(T)}};
    if (target != 0) view["target"] = target;
    if (stride != 0) view["byteStride"] = stride;
    bin.append(reinterpret_cast<const char*>(values.data()), values.size() * sizeof(T));
    json["bufferViews"].push_back(view);
    return static_cast<int>(json["bufferViews"].size()) - 1;
  }

  /// Accessor over a view of its own.
  template <class T>
  int accessor(const std::vector<T>& values, const char* type, int components, int target = 0) {
    const int kind =
        sizeof(T) == 4 ? (std::is_same_v<T, float> ? 5126 : 5125) : (sizeof(T) == 2 ? 5123 : 5121);
    Json accessor{{"bufferView", view(values, target)},
                  {"componentType", kind},
                  {"count", values.size() / static_cast<std::size_t>(components)},
                  {"type", type}};
    if (components == 1 || target == 34962) {
      std::vector<T> least(values.begin(), values.begin() + components);
      std::vector<T> most = least;
      for (std::size_t i = 0; i < values.size(); ++i) {
        const auto k = i % static_cast<std::size_t>(components);
        least[k] = std::min(least[k], values[i]);
        most[k] = std::max(most[k], values[i]);
      }
      accessor["min"] = least;
      accessor["max"] = most;
    }
    json["accessors"].push_back(accessor);
    return static_cast<int>(json["accessors"].size()) - 1;
  }

  int positions(const std::vector<float>& values) { return accessor(values, "VEC3", 3, 34962); }

  std::string glb() const {
    Json j = json;
    j["buffers"] = Json::array({Json{{"byteLength", bin.size()}}});
    std::string data = bin;
    data.resize((data.size() + 3) / 4 * 4, '\0');
    return joined(j.dump(), data);
  }

  /// A `.glb` of JSON text and a padded binary chunk.
  static std::string joined(std::string text, const std::string& data) {
    text.resize((text.size() + 3) / 4 * 4, ' ');
    return "glTF" + word(2) + word(28 + text.size() + data.size()) + word(text.size()) + "JSON" +
           text + word(data.size()) + std::string("BIN\0", 4) + data;
  }

  std::string text(const std::string& uri = "") const {
    Json j = json;
    const std::string data =
        "data:application/octet-stream;base64," + util::xml::encodeBase64(bin.data(), bin.size());
    j["buffers"] =
        Json::array({Json{{"byteLength", bin.size()}, {"uri", uri.empty() ? data : uri}}});
    return j.dump(1);
  }

  static std::string word(std::size_t value) {
    const auto v = static_cast<std::uint32_t>(value);
    std::string bytes(4, '\0');
    std::memcpy(bytes.data(), &v, 4);
    return bytes;
  }
};

inline constexpr float kHalfTurn[4] = {0.0f, 0.70710677f, 0.0f, 0.70710677f};

/// Materials, textures, a skin, morphs, lights, unknown extensions and extras, two clips with all
/// interpolations, double and missing names, a matrix, a camera, a curve and meshes of all forms.
inline GltfBuilder foreignScene() {
  GltfBuilder b;
  Json& j = b.json;
  j = Json::parse(R"({
    "asset": {"version": "2.0", "generator": "Somebody", "copyright": "(c) \u00e4", "extras": [1, 2.5]},
    "extensionsUsed": ["KHR_lights_punctual", "VENDOR_unknown", "KHR_mesh_quantization"],
    "extensionsRequired": ["KHR_mesh_quantization"],
    "extensions": {"KHR_lights_punctual": {"lights": [{"type": "point", "intensity": 3.5}]},
                   "VENDOR_unknown": {"a": {"b": [null, true, -1]}}},
    "scene": 0,
    "scenes": [{"name": "Main", "nodes": [0, 5, 6, 7, 8, 9, 11], "extras": {"mood": "grey"}},
               {"name": "Other", "nodes": [5, 10]}],
    "materials": [{"name": "Red", "pbrMetallicRoughness": {"baseColorFactor": [0.5, 0.25, 0.125, 1],
                   "baseColorTexture": {"index": 0}}}],
    "textures": [{"source": 0}],
    "images": [{"uri": "data:image/png;base64,iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M9QDwADhgGAWjR9awAAAABJRU5ErkJggg=="}],
    "cameras": [{"name": "Lens", "type": "perspective",
                 "perspective": {"yfov": 0.8, "znear": 0.25, "zfar": 400, "aspectRatio": 1.5}}],
    "nodes": [
      {"name": "Root", "children": [1, 2], "translation": [1, 2, 3],
       "rotation": [0, 0.70710678118654757, 0, 0.70710678118654757], "extras": {"keep": {"me": 1}}},
      {"name": "Twin", "children": [3], "mesh": 0, "scale": [2, 2, 2]},
      {"name": "Twin", "camera": 0, "translation": [0, 1.5, 0]},
      {"mesh": 1, "skin": 0},
      {"name": "Joint"},
      {"name": "Lamp", "children": [4], "extensions": {"KHR_lights_punctual": {"light": 0}}},
      {"name": "Sheared", "matrix": [1, 0, 0, 0, 0.5, 1, 0, 0, 0, 0, -2, 0, 7, 8, 9, 1]},
      {"name": "Path", "mesh": 2},
      {"name": "Strip", "mesh": 3},
      {"name": "Quantized", "mesh": 4},
      {"name": "Elsewhere"},
      {"name": "Stepper"}]
  })");
  const int square = b.positions({0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0});
  const int corners = b.accessor<std::uint16_t>({0, 1, 2, 0, 2, 3}, "SCALAR", 1, 34963);
  const int moved = b.positions({0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0, 1});
  const int joints = b.accessor<std::uint8_t>(std::vector<std::uint8_t>(16, 0), "VEC4", 4, 34962);
  std::vector<float> weight;
  for (int i = 0; i < 4; ++i) weight.insert(weight.end(), {1, 0, 0, 0});
  const int weights = b.accessor<float>(weight, "VEC4", 4, 34962);
  const int inverse =
      b.accessor<float>({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}, "MAT4", 16);
  const int uv = b.accessor<float>({0, 0, 1, 0, 1, 1, 0, 1}, "VEC2", 2, 34962);
  const int line = b.positions({0, 0, 0, 1, 0, 0, 1, 2, 0});
  const int fan = b.positions({0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0, -1, 1, 0});
  // Corner 2 of a square is pulled up by a sparse accessor.
  const int base = b.positions({0, 0, 0, 1, 0, 0, 0, 1, 0, 1, 1, 0});
  j["accessors"][base]["sparse"] = {
      {"count", 1},
      {"indices", {{"bufferView", b.view<std::uint16_t>({2})}, {"componentType", 5123}}},
      {"values", {{"bufferView", b.view<float>({0, 1, 5})}}}};
  j["accessors"][base]["max"] = {1, 1, 5};
  const int packed = b.view<std::int16_t>({0, 0, 0, 0, 100, 0, 0, 0, 0, 200, 0, 0}, 34962, 8);
  j["accessors"].push_back({{"bufferView", packed},
                            {"componentType", 5122},
                            {"count", 3},
                            {"type", "VEC3"},
                            {"min", {0, 0, 0}},
                            {"max", {100, 200, 0}}});
  const int quantized = static_cast<int>(j["accessors"].size()) - 1;

  const auto shape = [](int position, int mode) {
    return Json{{"attributes", {{"POSITION", position}}}, {"mode", mode}};
  };
  const auto mesh = [&j](const std::vector<Json>& primitives) -> Json& {
    return j["meshes"].emplace_back(Json{{"primitives", primitives}});
  };
  Json plain = shape(square, 4), bound = plain;
  plain.update({{"indices", corners}, {"material", 0}});
  plain["attributes"]["TEXCOORD_0"] = uv;
  bound["attributes"].update({{"JOINTS_0", joints}, {"WEIGHTS_0", weights}});
  bound["targets"] = {{{"POSITION", moved}}};
  mesh({plain});
  mesh({bound})["weights"] = {0.5};
  mesh({shape(line, 2)});
  mesh({shape(base, 5), shape(fan, 6)});
  mesh({shape(quantized, 4)});
  j["skins"] = {{{"joints", {4}}, {"inverseBindMatrices", inverse}}};

  const int times = b.accessor<float>({0.0f, 1.0f, 2.0f}, "SCALAR", 1);
  const int moves = b.accessor<float>({0, 0, 0, 4, 0, 0, 4, 2, 0}, "VEC3", 3);
  const int turns = b.accessor<float>(
      {0, 0, 0, 1, kHalfTurn[0], kHalfTurn[1], kHalfTurn[2], kHalfTurn[3], 0, 0, 0, 1}, "VEC4", 4);
  const int spline = b.accessor<float>(
      {0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 2, 0, 3, 1, 0, -1, 0, 0, 0, 0, 0, 6, 0, 0, 0, 0, 0}, "VEC3",
      3);
  const int morph = b.accessor<float>({0, 0.5f, 1}, "SCALAR", 1);
  const auto sampler = [&](int output, const char* mode) {
    return Json{{"input", times}, {"interpolation", mode}, {"output", output}};
  };
  const auto channel = [](int s, int node, const char* path) {
    return Json{{"sampler", s}, {"target", {{"node", node}, {"path", path}}}};
  };
  j["animations"] = Json::array(
      {Json{{"name", "Walk"},
            {"samplers",
             {sampler(moves, "LINEAR"), sampler(turns, "LINEAR"), sampler(spline, "CUBICSPLINE"),
              sampler(moves, "STEP"), sampler(morph, "LINEAR")}},
            {"channels",
             {channel(0, 1, "translation"), channel(1, 1, "rotation"), channel(2, 5, "translation"),
              channel(3, 11, "translation"), channel(4, 3, "weights")}}},
       Json{{"name", "Jump"},
            {"samplers", {sampler(moves, "STEP")}},
            {"channels", {channel(0, 1, "translation"), channel(0, 10, "translation")}}}});
  return b;
}

}  // namespace orv::tests
