#include "app/session/takes/TakeCode.h"

#include <QByteArray>
#include <QDataStream>
#include <QIODevice>
#include <cmath>
#include <cstring>
#include <map>

namespace orv::app {

namespace {

using Track = util::AVar_Linear<double>;

constexpr quint32 kMark = 0x4f52544bu;
/// Before 2 neither surfaces nor simulations, before 3 one start for all rigs of a take.
constexpr quint32 kCodeVersion = 3;
/// Bytes that a damaged length can't make us take.
constexpr quint32 kMostBytes = 1u << 30;
constexpr quint32 kMostItems = 1u << 24;

/// How whole numbers make the values of a track.
enum class Form : quint8 {
  kDoubles,
  kAxis,   ///< below 0 over 32768, else over 32767
  kWhole,  ///< itself
  kLong,   ///< over 65535
};

double ValueOf(Form form, int whole) {
  switch (form) {
    case Form::kAxis:
      return whole < 0 ? whole / 32768.0 : whole / 32767.0;
    case Form::kLong:
      return whole / 65535.0;
    default:
      return whole;
  }
}

bool IsSameBits(double a, double b) {
  return std::memcmp(&a, &b, sizeof a) == 0;
}

bool WholeOf(Form form, double value, int& whole) {
  const double factor = form == Form::kAxis   ? (value < 0.0 ? 32768.0 : 32767.0)
                        : form == Form::kLong ? 65535.0
                                              : 1.0;
  const double scaled = std::round(value * factor);
  if (!(std::abs(scaled) <= 65535.0)) return false;
  whole = static_cast<int>(scaled);
  return IsSameBits(ValueOf(form, whole), value);
}

Form FormOf(const Track& track) {
  for (const Form form : {Form::kWhole, Form::kAxis, Form::kLong}) {
    bool fits = true;
    int whole = 0;
    for (const auto& sample : track.samples) fits = fits && WholeOf(form, sample.value, whole);
    if (fits) return form;
  }
  return Form::kDoubles;
}

/// The frame that a time is of; false when no product of a frame and the duration is the time.
bool FrameOf(double time, double frameDuration, qint32& frame) {
  const double scaled = std::round(time / frameDuration);
  if (!(std::abs(scaled) < 2e9)) return false;
  frame = static_cast<qint32>(scaled);
  return IsSameBits(frame * frameDuration, time);
}

bool StandsOnEachFrame(const Track& track, double frameDuration, qint32& first) {
  if (track.samples.empty() || !FrameOf(track.samples.front().time, frameDuration, first))
    return false;
  for (std::size_t i = 0; i < track.samples.size(); ++i) {
    qint32 frame = 0;
    if (!FrameOf(track.samples[i].time, frameDuration, frame) ||
        frame != first + static_cast<qint32>(i))
      return false;
  }
  return true;
}

void PutText(QDataStream& out, const std::string& text) {
  out << QByteArray::fromStdString(text);
}

std::string GetText(QDataStream& in) {
  QByteArray bytes;
  in >> bytes;
  return bytes.toStdString();
}

void PutTrack(QDataStream& out, const Track& track, double frameDuration) {
  qint32 first = 0;
  const bool even = StandsOnEachFrame(track, frameDuration, first);
  const Form form = FormOf(track);
  out << static_cast<quint32>(track.samples.size()) << track.defaultValue << even
      << static_cast<quint8>(form);
  if (even)
    out << first;
  else
    for (const auto& sample : track.samples) out << sample.time;
  if (form == Form::kDoubles) {
    for (const auto& sample : track.samples) out << sample.value;
    return;
  }
  // Differences of 17 bits, zigzag, byte planes apart: what they have in common lies together.
  QByteArray planes[3];
  int last = 0;
  for (const auto& sample : track.samples) {
    int whole = 0;
    WholeOf(form, sample.value, whole);
    const int change = whole - last;
    last = whole;
    const auto zigzag = static_cast<quint32>(change < 0 ? -2 * change - 1 : 2 * change);
    for (int i = 0; i < 3; ++i) planes[i].append(static_cast<char>(zigzag >> (8 * i) & 0xff));
  }
  for (const QByteArray& plane : planes) out << plane;
}

bool GetWholes(QDataStream& in, Form form, Track& track) {
  QByteArray planes[3];
  for (QByteArray& plane : planes) {
    in >> plane;
    if (plane.size() != static_cast<int>(track.samples.size())) return false;
  }
  int last = 0;
  for (std::size_t i = 0; i < track.samples.size(); ++i) {
    quint32 zigzag = 0;
    for (int k = 0; k < 3; ++k)
      zigzag |= static_cast<quint32>(static_cast<quint8>(planes[k][static_cast<int>(i)])) << 8 * k;
    last += (zigzag & 1) ? -static_cast<int>(zigzag / 2) - 1 : static_cast<int>(zigzag / 2);
    track.samples[i].value = ValueOf(form, last);
  }
  return true;
}

bool IsSound(const Track& track) {
  for (std::size_t i = 0; i < track.samples.size(); ++i) {
    if (!std::isfinite(track.samples[i].time) || !std::isfinite(track.samples[i].value))
      return false;
    if (i > 0 && !(track.samples[i].time > track.samples[i - 1].time)) return false;
  }
  return true;
}

bool GetTrack(QDataStream& in, Track& track, double frameDuration) {
  quint32 count = 0;
  bool even = false;
  quint8 form = 0;
  in >> count >> track.defaultValue >> even >> form;
  if (in.status() != QDataStream::Ok || count > kMostItems || form > 3) return false;
  if (!even && in.device()->bytesAvailable() < static_cast<qint64>(count) * 8) return false;
  track.samples.resize(count);
  qint32 first = 0;
  if (even) in >> first;
  for (quint32 i = 0; i < count; ++i) {
    if (even)
      track.samples[i].time = (first + static_cast<double>(i)) * frameDuration;
    else
      in >> track.samples[i].time;
  }
  if (form != 0) {
    if (!GetWholes(in, static_cast<Form>(form), track)) return false;
  } else {
    for (auto& sample : track.samples) in >> sample.value;
  }
  return in.status() == QDataStream::Ok && IsSound(track);
}

/// What the latest take ahead held of each rig: what the next one differs from.
using Latest = std::map<std::string, const KeptRig*>;

void PutSettings(QDataStream& out, const KeptRig& rig, const KeptRig* before) {
  const bool follows = before && before->parameters.size() == rig.parameters.size();
  std::vector<quint32> changed;
  for (quint32 i = 0; i < rig.parameters.size(); ++i)
    if (!follows || !(before->parameters[i] == rig.parameters[i])) changed.push_back(i);
  out << follows << static_cast<quint32>(rig.parameters.size())
      << static_cast<quint32>(changed.size());
  for (const quint32 i : changed) {
    out << i << static_cast<qint32>(rig.parameters[i].element) << rig.parameters[i].number;
    PutText(out, rig.parameters[i].text);
  }
  const bool sameBindings = before && before->bindings == rig.bindings;
  out << sameBindings;
  if (!sameBindings) PutText(out, rig.bindings);
}

bool GetSettings(QDataStream& in, KeptRig& rig, const KeptRig* before) {
  bool follows = false, sameBindings = false;
  quint32 count = 0, changed = 0;
  in >> follows >> count >> changed;
  if (in.status() != QDataStream::Ok || count > kMostItems || changed > count) return false;
  if (follows && (!before || before->parameters.size() != count)) return false;
  if (!follows && changed != count) return false;
  if (follows) rig.parameters = before->parameters;
  for (quint32 i = 0; i < changed && in.status() == QDataStream::Ok; ++i) {
    KeptParameter parameter;
    quint32 place = 0;
    qint32 element = 0;
    in >> place >> element >> parameter.number;
    parameter.element = element;
    parameter.text = GetText(in);
    if (place >= count) return false;
    if (follows)
      rig.parameters[place] = std::move(parameter);
    else
      rig.parameters.push_back(std::move(parameter));
  }
  in >> sameBindings;
  if (sameBindings && !before) return false;
  rig.bindings = sameBindings ? before->bindings : GetText(in);
  return in.status() == QDataStream::Ok;
}

void PutPose(QDataStream& out, const rws::adaptor::Trs& pose) {
  out << pose.translation.x << pose.translation.y << pose.translation.z << pose.rotation.x
      << pose.rotation.y << pose.rotation.z << pose.rotation.w << pose.scale.x << pose.scale.y
      << pose.scale.z;
}

rws::adaptor::Trs GetPose(QDataStream& in) {
  rws::adaptor::Trs pose;
  in >> pose.translation.x >> pose.translation.y >> pose.translation.z >> pose.rotation.x >>
      pose.rotation.y >> pose.rotation.z >> pose.rotation.w >> pose.scale.x >> pose.scale.y >>
      pose.scale.z;
  return pose;
}

void PutSurfaces(QDataStream& out, const KeptRig& rig, const KeptRig* before) {
  const bool same = before && before->surfaces == rig.surfaces;
  out << static_cast<qint32>(rig.simulation) << same;
  if (same) return;
  out << static_cast<quint32>(rig.surfaces.size());
  for (const KeptSurface& surface : rig.surfaces) {
    PutText(out, surface.node);
    PutText(out, surface.hash);
  }
}

bool GetSurfaces(QDataStream& in, KeptRig& rig, const KeptRig* before) {
  qint32 simulation = 0;
  bool same = false;
  in >> simulation >> same;
  rig.simulation = simulation;
  if (same && !before) return false;
  if (same) rig.surfaces = before->surfaces;
  quint32 count = 0;
  if (!same) in >> count;
  for (quint32 i = 0; i < count && in.status() == QDataStream::Ok; ++i) {
    std::string node = GetText(in);
    rig.surfaces.push_back({std::move(node), GetText(in)});
  }
  return in.status() == QDataStream::Ok;
}

void PutRig(QDataStream& out, const KeptRig& rig, const KeptRig* before, double frameDuration) {
  PutText(out, rig.profile);
  out << rig.hasStart << rig.isFirst;
  PutSurfaces(out, rig, before);
  PutSettings(out, rig, before);
  out << QByteArray(reinterpret_cast<const char*>(rig.memory.data()),
                    static_cast<int>(rig.memory.size()));
  out << static_cast<quint32>(rig.nodes.size());
  for (const auto& [name, pose] : rig.nodes) {
    PutText(out, name);
    PutPose(out, pose);
  }
  out << static_cast<quint32>(rig.inputs.size());
  for (const KeptInput& input : rig.inputs) {
    PutText(out, input.name);
    PutTrack(out, input.track, frameDuration);
  }
}

bool GetRig(QDataStream& in, quint32 version, KeptRig& rig, const KeptRig* before,
            double frameDuration) {
  rig.profile = GetText(in);
  if (version > 2) in >> rig.hasStart >> rig.isFirst;
  if (version > 1 && !GetSurfaces(in, rig, before)) return false;
  if (!GetSettings(in, rig, before)) return false;
  QByteArray memory;
  quint32 nodes = 0, inputs = 0;
  in >> memory >> nodes;
  rig.memory.assign(memory.begin(), memory.end());
  for (quint32 i = 0; i < nodes && in.status() == QDataStream::Ok; ++i) {
    std::string name = GetText(in);
    rig.nodes.emplace_back(std::move(name), GetPose(in));
    if (!rws::adaptor::IsFinite(rig.nodes.back().second)) return false;
  }
  in >> inputs;
  for (quint32 i = 0; i < inputs && in.status() == QDataStream::Ok; ++i) {
    rig.inputs.push_back({GetText(in), {}});
    if (!GetTrack(in, rig.inputs.back().track, frameDuration)) return false;
  }
  return in.status() == QDataStream::Ok;
}

void PutNumbers(QDataStream& out, const std::vector<int>& numbers) {
  out << static_cast<quint32>(numbers.size());
  for (const int number : numbers) out << static_cast<qint32>(number);
}

std::vector<int> GetNumbers(QDataStream& in) {
  std::vector<int> numbers;
  quint32 count = 0;
  in >> count;
  for (; count > 0 && in.status() == QDataStream::Ok; --count) {
    qint32 number = 0;
    in >> number;
    numbers.push_back(number);
  }
  return numbers;
}

void PutTake(QDataStream& out, const KeptTake& take, Latest& latest) {
  out << static_cast<qint32>(take.number) << static_cast<qint32>(take.stars)
      << static_cast<qint32>(take.predecessor) << static_cast<qint32>(take.shown) << take.rate
      << take.range.from << take.range.to << take.retried << take.undone;
  PutNumbers(out, take.beside);
  out << static_cast<quint32>(take.marks.size());
  for (const auto& [rig, mark] : take.marks) {
    PutText(out, rig);
    out << static_cast<quint64>(mark);
  }
  for (const std::string* text : {&take.name, &take.note, &take.when, &take.version, &take.hash})
    PutText(out, *text);
  out << static_cast<quint32>(take.rigs.size());
  for (const KeptRig& rig : take.rigs) {
    PutText(out, rig.name);
    PutText(out, rig.kind);
    const KeptRig*& before = latest[rig.kind + '\n' + rig.name];
    PutRig(out, rig, before, 1.0 / take.rate);
    before = &rig;
  }
}

bool GetTake(QDataStream& in, quint32 version, KeptTake& take,
             std::map<std::string, KeptRig>& latest) {
  qint32 number = 0, stars = 0, predecessor = 0, shown = 0;
  quint64 mark = 0;
  bool isFirst = false;
  in >> number >> stars >> predecessor;
  if (version > 1) in >> shown;
  if (version == 2) in >> mark;  // of all rigs at once
  in >> take.rate >> take.range.from >> take.range.to >> take.retried >> take.undone;
  if (version == 2) in >> isFirst;
  if (version > 2) {
    take.beside = GetNumbers(in);
    quint32 marks = 0;
    in >> marks;
    for (; marks > 0 && in.status() == QDataStream::Ok; --marks) {
      const std::string rig = GetText(in);
      in >> mark;
      take.marks[rig] = mark;
    }
  }
  take.number = number;
  take.shown = shown;
  take.stars = stars;
  take.predecessor = predecessor;
  for (std::string* text : {&take.name, &take.note, &take.when, &take.version, &take.hash})
    *text = GetText(in);
  const bool sound = number != 0 && take.rate > 0.0 && std::isfinite(take.rate) &&
                     std::isfinite(take.range.from) && std::isfinite(take.range.to) &&
                     take.range.to >= take.range.from;
  quint32 rigs = 0;
  in >> rigs;
  if (!sound || in.status() != QDataStream::Ok) return false;
  for (quint32 i = 0; i < rigs; ++i) {
    KeptRig rig;
    rig.hasStart = predecessor == 0;
    rig.isFirst = isFirst;
    rig.name = GetText(in);
    rig.kind = GetText(in);
    const std::string key = rig.kind + '\n' + rig.name;
    const auto before = latest.find(key);
    if (!GetRig(in, version, rig, before == latest.end() ? nullptr : &before->second,
                1.0 / take.rate))
      return false;
    latest[key] = rig;
    take.rigs.push_back(std::move(rig));
  }
  return true;
}

/// Whether all lines end, and no number stands for two.
bool IsSound(const TakeList& list) {
  std::map<int, int> before;
  for (const auto* takes : {&list.takes, &list.hidden})
    for (const KeptTake& take : *takes)
      if (!before.emplace(take.number, take.predecessor).second) return false;
  for (const auto& each : before) {
    std::size_t length = 0;
    for (auto at = before.find(each.first); at != before.end(); at = before.find(at->second))
      if (++length > before.size()) return false;
  }
  return true;
}

}  // namespace

std::string EncodeTakes(const TakeList& list) {
  QByteArray bytes;
  QDataStream out(&bytes, QIODevice::WriteOnly);
  out.setVersion(QDataStream::Qt_5_6);
  out << kMark << kCodeVersion << static_cast<qint32>(list.lastNumber)
      << static_cast<qint32>(list.current) << static_cast<qint32>(list.lastHidden)
      << static_cast<quint32>(list.takes.size()) << static_cast<quint32>(list.hidden.size());
  PutNumbers(out, list.beside);
  Latest latest;
  for (const auto* takes : {&list.takes, &list.hidden})
    for (const KeptTake& take : *takes) PutTake(out, take, latest);
  return qCompress(bytes).toStdString();
}

std::string DecodeTakes(const std::string& bytes, TakeList& list) {
  const QByteArray packed = QByteArray::fromStdString(bytes);
  quint32 size = 0;
  QDataStream(packed) >> size;
  if (packed.size() < 4 || size > kMostBytes) return "they are damaged";
  const QByteArray plain = qUncompress(packed);
  QDataStream in(plain);
  in.setVersion(QDataStream::Qt_5_6);
  quint32 mark = 0, version = 0, shown = 0, hidden = 0;
  qint32 lastNumber = 0, current = 0, lastHidden = 0;
  in >> mark >> version;
  if (in.status() != QDataStream::Ok || mark != kMark) return "they are damaged";
  if (version > kCodeVersion) return "a newer version has written them";
  in >> lastNumber >> current;
  if (version > 1) in >> lastHidden;
  in >> shown;
  if (version > 1) in >> hidden;
  TakeList read;
  if (version > 2) read.beside = GetNumbers(in);
  read.lastNumber = lastNumber;
  read.lastHidden = lastHidden;
  read.current = current;
  std::map<std::string, KeptRig> latest;
  for (quint32 i = 0; i < shown + static_cast<quint64>(hidden); ++i) {
    KeptTake take;
    if (!GetTake(in, version, take, latest) || take.number > lastNumber ||
        take.number < lastHidden || (i < shown && take.number < 0) ||
        (i > 0 && i < shown && read.takes.back().number >= take.number))
      return "take " + std::to_string(i + 1) + " of them is damaged";
    (i < shown ? read.takes : read.hidden).push_back(std::move(take));
  }
  if (in.status() != QDataStream::Ok || !IsSound(read)) return "they are damaged";
  list = std::move(read);
  return {};
}

}  // namespace orv::app
