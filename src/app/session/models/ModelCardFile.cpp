#include "app/session/models/ModelCardFile.h"

#include "app/session/models/GlbParts.h"
#include "app/session/models/GltfBuilder.h"

namespace orv::app {

using Json = nlohmann::ordered_json;

namespace {

constexpr const char* kCard = "prm";

/// The member, or null for what is none.
const Json& at(const Json& json, const char* key) {
  static const Json kNothing;
  const auto found = json.is_object() ? json.find(key) : json.end();
  return json.is_object() && found != json.end() ? *found : kNothing;
}

const Json& at(const Json& json, const char* list, const Json& index) {
  static const Json kNothing;
  const Json& elements = at(json, list);
  const bool there = elements.is_array() && index.is_number_unsigned() &&
                     index.get<std::size_t>() < elements.size();
  return there ? elements[index.get<std::size_t>()] : kNothing;
}

std::string TextOf(const Json& json) {
  return json.is_string() ? json.get<std::string>() : std::string();
}

std::size_t NumberOf(const Json& json) {
  return json.is_number_unsigned() ? json.get<std::size_t>() : 0;
}

}  // namespace

bool PutCard(const ModelCard& card, std::string& bytes) {
  GlbParts parts;
  if (!SplitGlb(bytes, parts)) return false;
  Json& json = parts.json;
  Json entry{{"title", card.title}, {"text", card.text}};
  if (!card.picture.empty()) {
    const std::size_t place = AppendBinary(parts, card.picture.data(), card.picture.size());
    Json& buffers = json["buffers"];
    if (buffers.empty()) buffers = Json::array({Json{{"byteLength", 0}}});
    buffers[0]["byteLength"] = place + card.picture.size();
    entry["picture"] = json["images"].size();
    // Marked, as all bytes of ours are that come last.
    json["images"].push_back(Json{{"name", "Picture"},
                                  {"mimeType", MimeOfImage(card.picture)},
                                  {"bufferView", json["bufferViews"].size()}});
    json["bufferViews"].push_back(Json{{"buffer", 0},
                                       {"byteOffset", place},
                                       {"byteLength", card.picture.size()},
                                       {"extras", {{"rigwright", {{"own", true}}}}}});
  }
  json["scenes"][json.value("scene", std::size_t{0})]["extras"][kCard] = std::move(entry);
  bytes = JoinGlb(parts);
  return true;
}

bool ReadCard(const std::string& bytes, ModelCard& card) {
  GlbParts parts;
  if (!SplitGlb(bytes, parts)) return false;
  const Json& json = parts.json;
  const Json& shown = at(json, "scene");
  const Json& scene = at(json, "scenes", shown.is_null() ? Json(0u) : shown);
  const Json& entry = at(at(scene, "extras"), kCard);
  card = {TextOf(at(entry, "title")), TextOf(at(entry, "text")), ""};
  if (card.title.empty()) return false;
  const Json& image = at(json, "images", at(entry, "picture"));
  const Json& view = at(json, "bufferViews", at(image, "bufferView"));
  const std::size_t place = NumberOf(at(view, "byteOffset"));
  const std::size_t size = NumberOf(at(view, "byteLength"));
  if (place <= parts.binary.size() && size <= parts.binary.size() - place)
    card.picture = parts.binary.substr(place, size);
  return true;
}

}  // namespace orv::app
