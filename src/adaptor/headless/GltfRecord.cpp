#include "adaptor/headless/GltfRecord.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "adaptor/headless/FrameRate.h"
#include "adaptor/headless/FrameRateGuess.h"
#include "adaptor/headless/GltfKeys.h"
#include "adaptor/headless/GltfMedia.h"

namespace orv::rws::adaptor::headless {

namespace {

using util::Quat;

void ToNumbers(const Trs& pose, double* v) {
  const double numbers[10] = {
      pose.translation.x, pose.translation.y, pose.translation.z, pose.rotation.x, pose.rotation.y,
      pose.rotation.z,    pose.rotation.w,    pose.scale.x,       pose.scale.y,    pose.scale.z};
  std::copy(numbers, numbers + 10, v);
}

bool SameAsFloats(const Trs& a, const Trs& b) {
  double x[10];
  double y[10];
  ToNumbers(a, x);
  ToNumbers(b, y);
  return std::equal(x, x + 10, y, [](double p, double q) {
    return static_cast<float>(p) == static_cast<float>(q);
  });
}

}  // namespace

/// Doubles in a buffer view, which need not lie where doubles may.
class GltfReader::Record::Numbers {
 public:
  explicit Numbers(std::string_view bytes) : m_bytes(bytes) {}
  std::size_t GetSize() const { return m_bytes.size() / sizeof(double); }
  void Check(std::size_t at, std::size_t count, const Place& place) const {
    if (at > GetSize() || count > GetSize() - at)
      place.Fail("reaches behind the end of the numbers");
  }
  void Read(std::size_t at, std::size_t count, double* out, const Place& place) const {
    Check(at, count, place);
    if (count > 0) std::memcpy(out, m_bytes.data() + at * sizeof(double), count * sizeof(double));
  }

 private:
  std::string_view m_bytes;
};

void GltfReader::Record::Read() {
  ReadRecord();
  if (!m_rateTold) GuessRate();
}

void GltfReader::Record::ReadRecord() {
  ReadRange();
  if (m_file.document->sceneIndex < 0) return;
  const auto index = static_cast<std::size_t>(m_file.document->sceneIndex);
  const Place scene("scenes", index);
  const Place extras = scene.In("extras");
  const Place place = extras.In(kOwnKey);
  const Json* record = OwnExtras(m_file.List("scenes")[index]);
  if (record == nullptr) return;
  m_file.scene->m_hadRecord = true;
  if (!record->is_object()) {
    m_file.Warn(place, "is no object; it is kept, but the scene opens without rigs");
    return;
  }
  if (NumberOr(*record, "version", 1.0) > 1.0)
    m_file.Warn(place, "was written by a newer version; what is new in it is kept but not used");
  m_rateTold = Member(*record, "frameRate") != nullptr;
  if (m_rateTold && !m_file.scene->SetFrameRate(NumberOr(*record, "frameRate", 0.0)))
    m_file.Warn(place.In("frameRate"), "is no rate above 0; 25 frames per second are used");
  if (const Json* range = Member(*record, "range")) {
    const bool pair = range->is_array() && range->size() == 2 && (*range)[0].is_number() &&
                      (*range)[1].is_number();
    if (!pair || !m_file.scene->SetRange((*range)[0].get<double>(), (*range)[1].get<double>()))
      m_file.Warn(place.In("range"), "is no pair of times; the keys' range is used");
  }
  ReadRigs(*record, place);
  if (const Json* rows = Member(*record, "rows")) {
    if (rows->is_string())
      m_file.scene->m_rows = rows->get<std::string>();
    else
      m_file.Warn(place.In("rows"), "is no text; the rigs stand without their groups");
  }
  if (const Json* takes = Member(*record, "takes")) {
    if (takes->is_string())
      m_file.scene->m_takes = takes->get<std::string>();
    else
      m_file.Warn(place.In("takes"), "is no text; the kept takes are lost when the scene is saved");
  }
  if (const Json* sound = Member(*record, "sound")) {
    m_file.scene->m_sound = SoundOf(*sound, m_file.document->GetFolder());
    m_file.scene->m_hadSound = m_file.scene->m_sound.has_value();
    if (!m_file.scene->m_hadSound) m_file.Warn(place.In("sound"), "names no file; it is kept");
  }
  if (const Json* exact = Member(*record, "exact")) ReadExact(*exact, place.In("exact"));
  m_file.scene->m_sourceRange[0] = m_file.scene->m_rangeStart;
  m_file.scene->m_sourceRange[1] = m_file.scene->m_rangeEnd;
}

/// Other programs tell the rate by nothing but where their keys stand.
void GltfReader::Record::GuessRate() {
  constexpr const char* kHowToChange = "; rigwright range --fps changes it";
  const FrameRateGuess guess = GuessFrameRate(*m_file.scene);
  if (!guess.tells) return;
  if (guess.rates.empty()) {
    m_file.warnings.push_back(
        "the file tells no frame rate, and its keys stand on frames of no common "
        "one: 25 per second is taken" +
        std::string(kHowToChange));
    return;
  }
  m_file.scene->m_frameRate = guess.rates.front();
  const std::vector<double> rivals = guess.Rivals();
  if (m_file.scene->m_frameRate == Scene::kUsualRate && rivals.empty()) return;
  std::string others;
  for (const double rate : rivals) others += (others.empty() ? "" : ", ") + FrameRateText(rate);
  m_file.warnings.push_back(
      "the file tells no frame rate; its keys stand on frames of " +
      FrameRateText(m_file.scene->m_frameRate) + " per second, which is taken" +
      (others.empty() ? "" : " as the likeliest (they stand on those of " + others + " too)") +
      kHowToChange);
}

void GltfReader::Record::ReadRange() {
  double start = 0.0;
  double end = 0.0;
  if (!m_file.scene->KeyRange(start, end) || !(end > start)) return;
  m_file.scene->SetRange(start, end);
  m_file.scene->m_sourceRange[0] = start;
  m_file.scene->m_sourceRange[1] = end;
}

void GltfReader::Record::ReadRigs(const Json& record, const Place& place) {
  const Json* rigs = Member(record, "rigs");
  if (rigs == nullptr) return;
  if (!rigs->is_array()) {
    AddDamaged(*rigs, place.In("rigs"), "is no list");
    return;
  }
  for (std::size_t i = 0; i < rigs->size(); ++i) ReadRig((*rigs)[i], place.In("rigs", i));
}

void GltfReader::Record::ReadRig(const Json& json, const Place& place) {
  if (!json.is_object()) return AddDamaged(json, place, "is no object");
  for (const char* key : {"kind", "name", "record"}) {
    const Json* value = Member(json, key);
    if (value == nullptr) return AddDamaged(json, place.In(key), "is missing");
    if (!value->is_string()) return AddDamaged(json, place.In(key), "is no text");
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

void GltfReader::Record::AddDamaged(const Json& json, const Place& place, const std::string& what) {
  RigRecord rig;
  const Json* name = Member(json, "name");
  if (name != nullptr && name->is_string()) rig.name = name->get<std::string>();
  rig.raw = json.dump();
  rig.problem = place.Text() + ": " + what;
  m_file.Warn(place, what + "; this rig is not brought back, its record is kept");
  m_file.scene->m_rigs.push_back(std::move(rig));
}

/// Puts the exact doubles in place of the floats that still are their rounding.
void GltfReader::Record::ReadExact(const Json& exact, const Place& place) {
  try {
    const int view = IndexAt(exact, "bufferView", m_file.List("bufferViews").size(), place);
    if (view < 0) place.In("bufferView").Fail("is missing");
    const Numbers numbers(m_file.document->ViewBytes(static_cast<std::size_t>(view)));
    m_file.document->Spend(numbers.GetSize(), place);
    const Json& nodes = ListAt(exact, "nodes", place);
    for (std::size_t i = 0; i < nodes.size(); ++i)
      ReadExactNode(nodes[i], numbers, place.In("nodes", i));
  } catch (const GltfError& e) {
    m_file.warnings.push_back(std::string(e.what()) + "; keys are taken in single precision");
  }
}

void GltfReader::Record::ReadExactNode(const Json& json, const Numbers& numbers,
                                       const Place& place) {
  if (!json.is_object()) place.Fail("is no object");
  SceneNode* node = ExactNode(json, place);
  if (node == nullptr) return;
  if (Member(json, "pose") != nullptr) {
    double v[10];
    numbers.Read(WholeAt(json, "pose", place), 10, v, place.In("pose"));
    const Trs pose{VectorOf(v), Quat<double>(v[3], v[4], v[5], v[6]), VectorOf(v + 7)};
    if (SameAsFloats(pose, node->m_pose) &&
        std::all_of(v, v + 10, [](double x) { return std::isfinite(x); }))
      node->m_pose = pose;
    else
      WarnEdited(*node, "pose");
  }
  for (std::size_t i = 0; i < 3; ++i) {
    const Json* keys = ObjectAt(json, kPathNames[i], place);
    if (keys != nullptr)
      ReadExactKeys(*keys, numbers, *node, static_cast<ChannelPath>(i), place.In(kPathNames[i]));
  }
}

void GltfReader::Record::ReadExactKeys(const Json& json, const Numbers& numbers, SceneNode& node,
                                       ChannelPath path, const Place& place) {
  const auto slot = static_cast<std::size_t>(path);
  const Channel* rough = node.m_channels[slot].get();
  if (rough == nullptr) return WarnEdited(node, kPathNames[slot]);
  const std::size_t count = WholeAt(json, "count", place);
  Channel exact(path, rough->GetMode());
  const auto width = static_cast<std::size_t>(exact.ValuesPerKey());
  if (count > numbers.GetSize()) place.In("count").Fail("is more than there are numbers");
  const std::size_t at = WholeAt(json, "at", place);
  numbers.Check(at, count * (1 + width), place);
  m_file.document->Spend(count * (1 + width), place);
  std::vector<double> times(count);
  std::vector<double> values(count * width);
  numbers.Read(at, count, times.data(), place);
  numbers.Read(at + count, count * width, values.data(), place);
  if (count == 0 || !exact.SetKeys(std::move(times), std::move(values)) ||
      !FitsFloats(*rough, ToFloatKeys(exact)))
    return WarnEdited(node, kPathNames[slot]);
  for (const std::shared_ptr<Channel>& other : node.m_channels)
    if (other) exact.ShareTimes(*other);
  node.m_channels[slot] = std::make_shared<Channel>(std::move(exact));
  m_file.sources[&node]->exact[slot] = true;
}

/// The node that an entry is about: by its place, or, where nodes were moved about, by its name.
SceneNode* GltfReader::Record::ExactNode(const Json& json, const Place& place) {
  const std::size_t index = WholeAt(json, "node", place);
  const std::string name = TextAt(json, "name", place);
  const Json& nodes = m_file.List("nodes");
  if (index < nodes.size() && m_file.nodes[index] != nullptr &&
      TextAt(nodes[index], "name", Place("nodes", index)) == name)
    return m_file.nodes[index];
  SceneNode* node = m_file.scene->Find(name);
  if (node == nullptr)
    m_file.warnings.push_back("node " + Quoted(name) +
                              ": was removed or renamed by another program");
  return node;
}

void GltfReader::Record::WarnEdited(const SceneNode& node, const std::string& what) {
  m_file.warnings.push_back("node " + Quoted(node.GetName()) + ": its " + what +
                            " was changed by another program; that change is taken over");
}

}  // namespace orv::rws::adaptor::headless
