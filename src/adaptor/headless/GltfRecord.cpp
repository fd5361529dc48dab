#include "adaptor/headless/GltfRecord.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "adaptor/headless/FrameRate.h"
#include "adaptor/headless/FrameRateGuess.h"
#include "adaptor/headless/GltfKeys.h"

namespace orv::rws::adaptor::headless {

namespace {

using util::Quat;

void toNumbers(const Trs& pose, double* v) {
  const double numbers[10] = {
      pose.translation.x, pose.translation.y, pose.translation.z, pose.rotation.x, pose.rotation.y,
      pose.rotation.z,    pose.rotation.w,    pose.scale.x,       pose.scale.y,    pose.scale.z};
  std::copy(numbers, numbers + 10, v);
}

bool sameAsFloats(const Trs& a, const Trs& b) {
  double x[10];
  double y[10];
  toNumbers(a, x);
  toNumbers(b, y);
  return std::equal(x, x + 10, y, [](double p, double q) {
    return static_cast<float>(p) == static_cast<float>(q);
  });
}

}  // namespace

/// Doubles in a buffer view, which need not lie where doubles may.
class GltfReader::Record::Numbers {
 public:
  explicit Numbers(std::string_view bytes) : m_bytes(bytes) {}
  std::size_t size() const { return m_bytes.size() / sizeof(double); }
  void check(std::size_t at, std::size_t count, const Place& place) const {
    if (at > size() || count > size() - at) place.fail("reaches behind the end of the numbers");
  }
  void read(std::size_t at, std::size_t count, double* out, const Place& place) const {
    check(at, count, place);
    if (count > 0) std::memcpy(out, m_bytes.data() + at * sizeof(double), count * sizeof(double));
  }

 private:
  std::string_view m_bytes;
};

void GltfReader::Record::read() {
  readRecord();
  if (!m_rateTold) guessRate();
}

void GltfReader::Record::readRecord() {
  readRange();
  if (m_file.document->sceneIndex < 0) return;
  const auto index = static_cast<std::size_t>(m_file.document->sceneIndex);
  const Place scene("scenes", index);
  const Place extras = scene.in("extras");
  const Place place = extras.in(kOwnKey);
  const Json* record = ownExtras(m_file.list("scenes")[index]);
  if (record == nullptr) return;
  m_file.scene->m_hadRecord = true;
  if (!record->is_object()) {
    m_file.warn(place, "is no object; it is kept, but the scene opens without rigs");
    return;
  }
  if (numberOr(*record, "version", 1.0) > 1.0)
    m_file.warn(place, "was written by a newer version; what is new in it is kept but not used");
  m_rateTold = member(*record, "frameRate") != nullptr;
  if (m_rateTold && !m_file.scene->setFrameRate(numberOr(*record, "frameRate", 0.0)))
    m_file.warn(place.in("frameRate"), "is no rate above 0; 25 frames per second are used");
  if (const Json* range = member(*record, "range")) {
    const bool pair = range->is_array() && range->size() == 2 && (*range)[0].is_number() &&
                      (*range)[1].is_number();
    if (!pair || !m_file.scene->setRange((*range)[0].get<double>(), (*range)[1].get<double>()))
      m_file.warn(place.in("range"), "is no pair of times; the keys' range is used");
  }
  readRigs(*record, place);
  if (const Json* rows = member(*record, "rows")) {
    if (rows->is_string())
      m_file.scene->m_rows = rows->get<std::string>();
    else
      m_file.warn(place.in("rows"), "is no text; the rigs stand without their groups");
  }
  if (const Json* exact = member(*record, "exact")) readExact(*exact, place.in("exact"));
  m_file.scene->m_sourceRange[0] = m_file.scene->m_rangeStart;
  m_file.scene->m_sourceRange[1] = m_file.scene->m_rangeEnd;
}

/// Other programs tell the rate by nothing but where their keys stand.
void GltfReader::Record::guessRate() {
  constexpr const char* kHowToChange = "; rigwright range --fps changes it";
  const FrameRateGuess guess = guessFrameRate(*m_file.scene);
  if (!guess.tells) return;
  if (guess.rates.empty()) {
    m_file.warnings.push_back(
        "the file tells no frame rate, and its keys stand on frames of no common "
        "one: 25 per second is taken" +
        std::string(kHowToChange));
    return;
  }
  m_file.scene->m_frameRate = guess.rates.front();
  const std::vector<double> rivals = guess.rivals();
  if (m_file.scene->m_frameRate == Scene::kUsualRate && rivals.empty()) return;
  std::string others;
  for (const double rate : rivals) others += (others.empty() ? "" : ", ") + frameRateText(rate);
  m_file.warnings.push_back(
      "the file tells no frame rate; its keys stand on frames of " +
      frameRateText(m_file.scene->m_frameRate) + " per second, which is taken" +
      (others.empty() ? "" : " as the likeliest (they stand on those of " + others + " too)") +
      kHowToChange);
}

void GltfReader::Record::readRange() {
  double start = 0.0;
  double end = 0.0;
  if (!m_file.scene->keyRange(start, end) || !(end > start)) return;
  m_file.scene->setRange(start, end);
  m_file.scene->m_sourceRange[0] = start;
  m_file.scene->m_sourceRange[1] = end;
}

void GltfReader::Record::readRigs(const Json& record, const Place& place) {
  const Json* rigs = member(record, "rigs");
  if (rigs == nullptr) return;
  if (!rigs->is_array()) {
    addDamaged(*rigs, place.in("rigs"), "is no list");
    return;
  }
  for (std::size_t i = 0; i < rigs->size(); ++i) readRig((*rigs)[i], place.in("rigs", i));
}

void GltfReader::Record::readRig(const Json& json, const Place& place) {
  if (!json.is_object()) return addDamaged(json, place, "is no object");
  for (const char* key : {"kind", "name", "record"}) {
    const Json* value = member(json, key);
    if (value == nullptr) return addDamaged(json, place.in(key), "is missing");
    if (!value->is_string()) return addDamaged(json, place.in(key), "is no text");
  }
  RigRecord rig;
  Json others = Json::object();
  for (const auto& [key, value] : json.items()) {
    if (key == "kind")
      rig.kind = value.get<std::string>();
    else if (key == "name")
      rig.name = value.get<std::string>();
    else if (key == "record")
      rig.record = value.get<std::string>();
    else
      others[key] = value;
  }
  if (!others.empty()) rig.others = others.dump();
  m_file.scene->m_rigs.push_back(std::move(rig));
}

void GltfReader::Record::addDamaged(const Json& json, const Place& place, const std::string& what) {
  RigRecord rig;
  const Json* name = member(json, "name");
  if (name != nullptr && name->is_string()) rig.name = name->get<std::string>();
  rig.raw = json.dump();
  rig.problem = place.text() + ": " + what;
  m_file.warn(place, what + "; this rig is not brought back, its record is kept");
  m_file.scene->m_rigs.push_back(std::move(rig));
}

/// Puts the exact doubles in place of the floats that still are their rounding.
void GltfReader::Record::readExact(const Json& exact, const Place& place) {
  try {
    const int view = indexAt(exact, "bufferView", m_file.list("bufferViews").size(), place);
    if (view < 0) place.in("bufferView").fail("is missing");
    const Numbers numbers(m_file.document->viewBytes(static_cast<std::size_t>(view)));
    m_file.document->spend(numbers.size(), place);
    const Json& nodes = listAt(exact, "nodes", place);
    for (std::size_t i = 0; i < nodes.size(); ++i)
      readExactNode(nodes[i], numbers, place.in("nodes", i));
  } catch (const GltfError& e) {
    m_file.warnings.push_back(std::string(e.what()) + "; keys are taken in single precision");
  }
}

void GltfReader::Record::readExactNode(const Json& json, const Numbers& numbers,
                                       const Place& place) {
  if (!json.is_object()) place.fail("is no object");
  SceneNode* node = exactNode(json, place);
  if (node == nullptr) return;
  if (member(json, "pose") != nullptr) {
    double v[10];
    numbers.read(wholeAt(json, "pose", place), 10, v, place.in("pose"));
    const Trs pose{vectorOf(v), Quat<double>(v[3], v[4], v[5], v[6]), vectorOf(v + 7)};
    if (sameAsFloats(pose, node->m_pose) &&
        std::all_of(v, v + 10, [](double x) { return std::isfinite(x); }))
      node->m_pose = pose;
    else
      warnEdited(*node, "pose");
  }
  for (std::size_t i = 0; i < 3; ++i) {
    const Json* keys = objectAt(json, kPathNames[i], place);
    if (keys != nullptr)
      readExactKeys(*keys, numbers, *node, static_cast<ChannelPath>(i), place.in(kPathNames[i]));
  }
}

void GltfReader::Record::readExactKeys(const Json& json, const Numbers& numbers, SceneNode& node,
                                       ChannelPath path, const Place& place) {
  const auto slot = static_cast<std::size_t>(path);
  const Channel* rough = node.m_channels[slot].get();
  if (rough == nullptr) return warnEdited(node, kPathNames[slot]);
  const std::size_t count = wholeAt(json, "count", place);
  Channel exact(path, rough->mode());
  const auto width = static_cast<std::size_t>(exact.valuesPerKey());
  if (count > numbers.size()) place.in("count").fail("is more than there are numbers");
  const std::size_t at = wholeAt(json, "at", place);
  numbers.check(at, count * (1 + width), place);
  m_file.document->spend(count * (1 + width), place);
  std::vector<double> times(count);
  std::vector<double> values(count * width);
  numbers.read(at, count, times.data(), place);
  numbers.read(at + count, count * width, values.data(), place);
  if (count == 0 || !exact.setKeys(std::move(times), std::move(values)) ||
      !fitsFloats(*rough, toFloatKeys(exact)))
    return warnEdited(node, kPathNames[slot]);
  for (const std::shared_ptr<Channel>& other : node.m_channels)
    if (other) exact.shareTimes(*other);
  node.m_channels[slot] = std::make_shared<Channel>(std::move(exact));
  m_file.sources[&node]->exact[slot] = true;
}

/// The node that an entry is about: by its place, or, where nodes were moved about, by its name.
SceneNode* GltfReader::Record::exactNode(const Json& json, const Place& place) {
  const std::size_t index = wholeAt(json, "node", place);
  const std::string name = textAt(json, "name", place);
  const Json& nodes = m_file.list("nodes");
  if (index < nodes.size() && m_file.nodes[index] != nullptr &&
      textAt(nodes[index], "name", Place("nodes", index)) == name)
    return m_file.nodes[index];
  SceneNode* node = m_file.scene->find(name);
  if (node == nullptr)
    m_file.warnings.push_back("node " + quoted(name) +
                              ": was removed or renamed by another program");
  return node;
}

void GltfReader::Record::warnEdited(const SceneNode& node, const std::string& what) {
  m_file.warnings.push_back("node " + quoted(node.name()) + ": its " + what +
                            " was changed by another program; that change is taken over");
}

}  // namespace orv::rws::adaptor::headless
