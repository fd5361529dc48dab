#include "app/session/document/TakeJournal.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <utility>

#include "app/session/anyhost/RunRigs.h"
#include "app/session/anyhost/UndoBlock.h"
#include "core/CoreImplementation.h"
#include "core/instances/Instance.h"
#include "core/take/TakeUndo.h"
#include "unidevice/Property.h"
#include "util/AtomicFile.h"

namespace orv::app {

using rws::core::CoreImplementation;
using rws::core::Instance;

// The file: the magic, then records. A record is the length and the check of what follows (32 bits
// each) and items, each a letter and its content in the byte order of the machine, which reads it
// again itself:
//   H  text: autosave, double: start (s), double: frames per second. First, and once.
//   I  u32: number of an input, counted up from 0, text: rig, text: input
//   S  u32: number, u32: count, that many doubles: times (s), as many doubles: raw values
//   s  the same with the times of the S before it in the record
//   T  double: time of the last frame (s)
//   E  the take has ended
// A text is a u32, its length, and its bytes.

namespace {

constexpr char kMagic[] = "ORVTAKE1";
constexpr std::size_t kMagicSize = sizeof kMagic - 1;
constexpr std::size_t kFrameSize = 2 * sizeof(std::uint32_t);

template <class T>
void Put(std::string& out, const T& value) {
  out.append(reinterpret_cast<const char*>(&value), sizeof value);
}

void PutText(std::string& out, const std::string& text) {
  Put(out, static_cast<std::uint32_t>(text.size()));
  out += text;
}

/// FNV-1a.
std::uint32_t CheckOf(const char* bytes, std::size_t size) {
  std::uint32_t check = 2166136261u;
  for (std::size_t i = 0; i < size; ++i)
    check = (check ^ static_cast<unsigned char>(bytes[i])) * 16777619u;
  return check;
}

/// A record as it stands in the file.
std::string Framed(const std::string& content) {
  std::string record;
  Put(record, static_cast<std::uint32_t>(content.size()));
  Put(record, CheckOf(content.data(), content.size()));
  return record + content;
}

/// Takes items from a record; after the first that is not there all are none.
class ItemReader {
 public:
  ItemReader(const char* bytes, std::size_t size) : m_at(bytes), m_left(size) {}

  bool IsGood() const { return m_good; }
  bool IsAtEnd() const { return m_left == 0; }
  template <class T>
  T Get() {
    T value{};
    if (Has(sizeof value)) std::memcpy(&value, Step(sizeof value), sizeof value);
    return value;
  }
  std::string Text() {
    const auto size = Get<std::uint32_t>();
    return Has(size) ? std::string(Step(size), size) : std::string();
  }
  std::vector<double> Numbers(std::size_t count) {
    if (count > m_left / sizeof(double)) m_good = false;
    std::vector<double> result(m_good ? count : 0);
    if (!result.empty())
      std::memcpy(result.data(), Step(count * sizeof(double)), count * sizeof(double));
    return result;
  }

 private:
  bool Has(std::size_t size) {
    m_good = m_good && size <= m_left;
    return m_good;
  }
  const char* Step(std::size_t size) {
    m_left -= size;
    return std::exchange(m_at, m_at + size);
  }

  const char* m_at;
  std::size_t m_left;
  bool m_good = true;
};

Problem JournalProblem(const std::string& path, const std::string& action) {
  return {"the journal of the take",
          path + ": " + action,
          "the take goes on; see that the data root can be written and has room",
          {}};
}

}  // namespace

TakeJournal::~TakeJournal() {
  Close();
}

Problem TakeJournal::Begin(const std::string& path, const JournalHead& head) {
  Close();
  m_path = path;
  m_start = head.start;
  m_inputs = 0;
  m_written = head.start;
  m_rigs.clear();
  m_descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  if (!IsOpen())
    return JournalProblem(path, std::string("cannot be made (") + std::strerror(errno) + ")");
  std::string content = "H";
  PutText(content, head.autosave);
  Put(content, head.start);
  Put(content, head.frameRate);
  return Append(kMagic + Framed(content));
}

void TakeJournal::Close() {
  if (IsOpen()) ::close(std::exchange(m_descriptor, -1));
}

Problem TakeJournal::Append(const std::string& record) {
  const char* at = record.data();
  std::size_t left = record.size();
  while (left > 0) {
    const ssize_t written = ::write(m_descriptor, at, left);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) {
      const std::string why = std::strerror(written < 0 ? errno : ENOSPC);
      Close();
      return JournalProblem(m_path, "cannot be written (" + why + ")");
    }
    at += written;
    left -= static_cast<std::size_t>(written);
  }
  return {};
}

void TakeJournal::Collect(Instance& rig, std::string& record) {
  const auto& entries = rig.GetProperties().entries;
  const auto& tracks = rig.GetTracks();
  Rig& known = m_rigs[rig.GetIdentity()];
  std::vector<double> times, lastTimes;
  for (std::size_t i = 0; i < std::min(entries.size(), tracks.size()); ++i) {
    if (i == known.size()) {
      // The samples of the take, the one at its start too.
      known.push_back({m_inputs++, std::nextafter(m_start, -HUGE_VAL)});
      record += 'I';
      Put(record, known[i].number);
      PutText(record, rig.GetInstanceName());
      PutText(record, entries[i].first);
    }
    const auto& samples = tracks[i].samples;
    auto from =
        std::upper_bound(samples.begin(), samples.end(), known[i].written,
                         [](double time, const auto& sample) { return time < sample.time; });
    if (from == samples.end()) continue;
    times.clear();
    for (auto at = from; at != samples.end(); ++at) times.push_back(at->time);
    record += times == lastTimes ? 's' : 'S';
    Put(record, known[i].number);
    Put(record, static_cast<std::uint32_t>(times.size()));
    if (times != lastTimes)
      for (const double time : times) Put(record, time);
    for (; from != samples.end(); ++from) Put(record, from->value);
    known[i].written = times.back();
    lastTimes.swap(times);
  }
}

void TakeJournal::Follow(const CoreImplementation& core) {
  for (const Instance* rig : core.GetTakeInstances()) m_rigs[rig->GetIdentity()];
}

Problem TakeJournal::Write(CoreImplementation& core) {
  if (!IsOpen()) return {};
  std::string record;
  for (Instance* rig : core.List(false))
    if (m_rigs.count(rig->GetIdentity()) > 0) Collect(*rig, record);
  const double time = core.GetFrameTime();
  if (record.empty() && time <= m_written) return {};
  m_written = std::max(m_written, time);
  record += 'T';
  Put(record, m_written);
  return Append(Framed(record));
}

Problem TakeJournal::End(CoreImplementation& core) {
  if (!IsOpen()) return {};
  Problem problem = Write(core);
  if (!problem) problem = Append(Framed("E"));
  Close();
  return problem;
}

// --- reading ---

namespace {

class JournalReader {
 public:
  explicit JournalReader(JournalledTake& take) : m_take(take) {}

  /// False for a record that makes no sense; what it told before stands.
  bool Read(ItemReader record) {
    m_times.clear();
    while (record.IsGood() && !record.IsAtEnd())
      if (!ReadItem(record)) return false;
    return record.IsGood();
  }

 private:
  bool ReadItem(ItemReader& record) {
    switch (record.Get<char>()) {
      case 'H':
        m_take.head.autosave = record.Text();
        m_take.head.start = m_take.end = record.Get<double>();
        m_take.head.frameRate = record.Get<double>();
        return std::isfinite(m_take.end) && m_take.head.frameRate > 0.0;
      case 'I':
        return ReadInput(record);
      case 'S':
        return ReadSamples(record, true);
      case 's':
        return ReadSamples(record, false);
      case 'T':
        m_take.end = std::max(m_take.end, record.Get<double>());
        return std::isfinite(m_take.end);
      case 'E':
        m_take.ended = true;
        return true;
      default:
        return false;
    }
  }

  bool ReadInput(ItemReader& record) {
    if (record.Get<std::uint32_t>() != m_take.inputs.size()) return false;
    JournalledTake::Input input;
    input.rig = record.Text();
    input.input = record.Text();
    if (record.IsGood()) m_take.inputs.push_back(std::move(input));
    return record.IsGood();
  }

  bool ReadSamples(ItemReader& record, bool withTimes) {
    const auto number = record.Get<std::uint32_t>();
    const auto count = record.Get<std::uint32_t>();
    if (withTimes) m_times = record.Numbers(count);
    const std::vector<double> values = record.Numbers(count);
    if (!record.IsGood() || number >= m_take.inputs.size() || m_times.size() != count) return false;
    auto& track = m_take.inputs[number].track;
    for (std::size_t i = 0; i < count; ++i) {
      if (!std::isfinite(m_times[i]) || !std::isfinite(values[i])) return false;
      track.set(m_times[i], values[i]);
    }
    return true;
  }

  JournalledTake& m_take;
  std::vector<double> m_times;
};

/// The record at `at`, which goes behind it. False at the end of what is whole.
bool NextRecord(const std::string& bytes, std::size_t& at, ItemReader& record) {
  if (bytes.size() - at < kFrameSize) return false;
  ItemReader frame(bytes.data() + at, kFrameSize);
  const auto size = frame.Get<std::uint32_t>();
  const auto check = frame.Get<std::uint32_t>();
  const char* const content = bytes.data() + at + kFrameSize;
  if (size > bytes.size() - at - kFrameSize || CheckOf(content, size) != check) return false;
  record = ItemReader(content, size);
  at += kFrameSize + size;
  return true;
}

}  // namespace

bool ReadJournal(const std::string& path, JournalledTake& take, Problem& problem) {
  take = {};
  std::string bytes, error;
  if (!util::readFile(path, bytes, &error)) {
    problem = {"the journal of the take", error, {}, {}};
    return false;
  }
  std::size_t at = kMagicSize;
  ItemReader record(nullptr, 0);
  JournalReader reader(take);
  bool good = bytes.compare(0, kMagicSize, kMagic) == 0 && NextRecord(bytes, at, record) &&
              reader.Read(record) && !take.head.autosave.empty();
  if (!good) {
    problem = {"the journal of the take", path + ": it is damaged from its beginning on", {}, {}};
    return false;
  }
  while (good && NextRecord(bytes, at, record)) good = reader.Read(record);
  take.dropped = !good || at < bytes.size();
  return true;
}

// --- the take again ---

RestoredTake RestoreTake(CoreImplementation& core, const JournalledTake& take,
                         const Monitor& monitor) {
  RestoredTake result;
  for (const auto& input : take.inputs) {
    const Instance* const rig = core.FindInstance(input.rig);
    if (!rig || !rig->GetProperties().find(input.input))
      result.warnings.push_back("the scene does not have the input " + input.rig + ":" +
                                input.input + " of the interrupted take");
  }
  rws::AdaptorInterface& adaptor = *core.GetAdaptor();
  UndoBlock block(adaptor, "Restore take");
  for (Instance* rig : core.List(true)) {
    adaptor.PushUndo(new rws::core::TakeUndo(*rig, rws::core::TakeUndo::Of::kTracks));
    const auto& entries = rig->GetProperties().entries;
    auto tracks = rig->GetTracks();
    tracks.resize(entries.size());
    for (std::size_t i = 0; i < entries.size(); ++i) {
      tracks[i].cutFrom(take.head.start);
      for (const auto& input : take.inputs) {
        if (input.rig != rig->GetInstanceName() || input.input != entries[i].first) continue;
        for (const auto& sample : input.track.samples) tracks[i].set(sample.time, sample.value);
      }
      rig->SetTrack(static_cast<int>(i), std::move(tracks[i]));
    }
  }
  double start = 0.0, end = 0.0;
  adaptor.GetTimeRange(start, end);
  if (take.end > end) adaptor.SetTimeRange(start, take.end);
  const RunResult run = Resimulate(core, {take.head.start, take.end}, monitor);
  if (!run.began)
    result.problem = {"the interrupted take", "a take or resimulation runs", "end it first", {}};
  else if (run.cancelled)
    result.problem = {"the interrupted take", "it was not restored", "open the autosave again", {}};
  else
    block.Keep();
  return result;
}

}  // namespace orv::app
