// take.
#include <QCoreApplication>
#include <QTimer>
#include <algorithm>
#include <cmath>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/Scene.h"
#include "app/rigwright/Failure.h"
#include "app/rigwright/Interrupt.h"
#include "app/rigwright/Program.h"
#include "app/rigwright/ProgressBar.h"
#include "app/rigwright/SceneJob.h"
#include "app/rigwright/Texts.h"
#include "app/rigwright/Verbs.h"
#include "app/session/anyhost/Devices.h"
#include "app/session/anyhost/InputFile.h"
#include "app/session/anyhost/RunRigs.h"
#include "core/CoreImplementation.h"
#include "core/Instance.h"
#include "core/interface/CInterface.h"
#include "unidevice/Property.h"
#include "unidevice/software/SoftwareDevice.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

struct TakeOptions {
  std::string scene, play, output;
  std::optional<double> seconds, slow, countdown, from;
  std::vector<std::string> only;
};

/// Feeds inputs of rigs from a file for as long as it lives; afterwards each has its own mapping
/// again.
class PlayedInputs {
 public:
  PlayedInputs(SceneJob& job, const std::string& path) : m_file(job, path) {
    auto& core = job.core();
    m_device =
        new unidevice::SoftwareDevice(m_file.input(), [&core] { return core.GetFrameTime(); });
    for (std::size_t i = 0; i < m_file.targets().size(); ++i) {
      const std::string& key = m_file.input().columns[i].key;
      // Bound, not assigned: the mapping that is saved stays the user's.
      m_file.targets()[i].input->bind(m_device->controlFor(key));
    }
  }

  ~PlayedInputs() {
    for (const InputFile::Target& target : m_file.targets()) target.input->bind(nullptr);
    m_device->destroy();
    for (const InputFile::Target& target : m_file.targets()) target.input->rebind();
  }

  PlayedInputs(const PlayedInputs&) = delete;
  PlayedInputs& operator=(const PlayedInputs&) = delete;

 private:
  InputFile m_file;
  unidevice::SoftwareDevice* m_device = nullptr;  ///< owned by the dummy driver
};

/// What a take that begins at `start` would put an absent control's zeros in the place of.
std::vector<std::string> inputsAtStake(SceneJob& job, double start) {
  std::vector<std::string> result;
  for (rws::core::Instance* rig : job.core().List(true)) {
    const auto& entries = rig->GetProperties().entries;
    const auto& tracks = rig->GetTracks();
    for (std::size_t i = 0; i < std::min(entries.size(), tracks.size()); ++i) {
      if (entries[i].second->control) continue;
      TimeSpan span{start, start};
      bool moved = false;
      for (const auto& sample : tracks[i].samples) {
        const bool atRest = sample.time < start || sample.value == 0.0;
        if (!atRest) span.to = sample.time;
        moved = moved || !atRest;
        if (!moved) span.from = std::max(start, sample.time);  // it moves from its last rest on
      }
      if (moved)
        result.push_back(rig->GetInstanceName() + ":" + entries[i].first + " (" + rangeText(span) +
                         ")");
    }
  }
  return result;
}

/// Asks before a recorded performance is written over by controls that are not there.
void askBeforeLosing(SceneJob& job, double start) {
  const std::vector<std::string> inputs = inputsAtStake(job, job.core().SnapToFrame(start));
  if (inputs.empty()) return;
  const int answer = job.core().MessageBox(
      "take",
      "no device drives " + joined(inputs) + ", and the take would record zeros in place of what " +
          (inputs.size() == 1 ? "this input" : "these inputs") + " recorded. Go on?",
      rws::kButtonsYesNo);
  if (answer != rws::kAnswerYes) {
    throw Failure("take", "nothing was recorded or written",
                  "plug the device in, give --play FILE, step other rigs by --only, or say --yes");
  }
}

/// Lets Qt's event loop run until the take has ended; the number of frames.
long runTake(SceneJob& job, double start, double length) {
  constexpr int kLookMs = 10;  // how often the end of the take and Ctrl-C are looked for
  auto& core = job.core();
  const double rate = job.scene().frameRate();
  const long first = core.FrameIndex(core.SnapToFrame(start));
  ProgressBar bar(job.program().output(), "take", static_cast<long>(std::floor(length * rate)));
  job.ui().setProgress(&bar);
  job.adaptor().SetCurrentTime(start);
  if (core.StartRecording() != 0) throw Failure("take", "the take could not begin");
  long done = 0;
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, [&] {
    if (isInterrupted()) core.StopRecording();
    done = std::lround(core.GetFrameTime() * rate) - first;
    if (!core.IsRecording()) {
      QCoreApplication::quit();
    } else if (core.GetClock() >= core.GetStartTime()) {
      bar.set(done);
    }
  });
  look.start(kLookMs);
  QCoreApplication::exec();
  job.ui().setProgress(nullptr);
  checkInterrupt();
  return done;
}

void runTakeVerb(Program& program, const TakeOptions& options) {
  const DeviceSession devices(program.output());
  SceneJob job(program, options.scene);
  requireRigs(job);
  auto& core = job.core();
  const double start = options.from.value_or(job.scene().rangeStart());
  const double rate = job.scene().frameRate();
  const TimeSpan range{job.scene().rangeStart(), job.scene().rangeEnd()};
  requireFrameNumbers({start, start}, rate, options.from ? "--from" : "the playback range",
                      options.from ? "give a time nearer to 0" : "give a --from");
  requireFrameNumbers({start, start + *options.seconds}, rate, "--seconds", "give a shorter take");
  core.SetTakeLength(*options.seconds);
  if (options.slow) core.SetSlowFactorIndex(static_cast<int>(*options.slow));
  if (options.countdown)
    core.GetPreferences().countdownSeconds = static_cast<int>(*options.countdown);

  long frames = 0;
  {
    std::unique_ptr<PlayedInputs> played;
    if (!options.play.empty()) played = std::make_unique<PlayedInputs>(job, options.play);
    const OnlyRigs only(job, options.only);
    askBeforeLosing(job, start);
    frames = runTake(job, start, *options.seconds);
  }
  const TimeSpan performed{core.GetStartTime(), std::max(core.GetStartTime(), core.GetFrameTime())};
  settleRange(job, range, performed);
  const std::string why = "a take drops what lies behind its end";
  job.save(options.output, {why, why});
  auto& object = program.output().object();
  object["frames"] = frames;
  object["range"] = {performed.from, performed.to};
  program.output().note("take: " + std::to_string(frames) + " frames from " + rangeText(performed) +
                        ", written to " + options.output);
}

std::string mustBeWholeUpTo(double value, double least, double most) {
  if (value == std::floor(value) && value >= least && value <= most) return {};
  return "must be a whole number from " + util::shortText(least) + " to " + util::shortText(most);
}

}  // namespace

void addTakeVerb(Program& program) {
  auto o = std::make_shared<TakeOptions>();
  CLI::App& verb = program.addVerb(
      "take",
      "Perform a take against the real clock, with the devices that are present\n"
      "Records the inputs, and writes the keys when it ends. Ctrl-C throws it away.",
      "rigwright take hand.glb --seconds 5 --play hand.csv -o take.glb",
      [o](Program& p) { runTakeVerb(p, *o); });
  addScene(verb, o->scene);
  addNumber(verb, "--seconds", o->seconds, "Length of the take (s)", [](double value) {
    const std::string wrong = mustBePositive(value);
    return wrong.empty() ? mustBeTime(value) : wrong;
  })->required();
  verb.add_option("--play", o->play, "Input file (CSV) in place of devices, for its columns")
      ->type_name("FILE")
      ->check(checkNotEmpty);
  addNumber(verb, "--from", o->from, "Start of the take (s; default: the playback range's)",
            mustBeTime);
  addNumber(verb, "--slow", o->slow,
            "Slow motion: 1 is real time, each step up halves the speed (1 to 10)",
            [](double value) { return mustBeWholeUpTo(value, 1.0, 10.0); });
  addNumber(verb, "--countdown", o->countdown,
            "Seconds before the take begins (default: the preference)",
            [](double value) { return mustBeWholeUpTo(value, 0.0, 3600.0); });
  addList(verb, "--only", o->only, "Step only this rig; may be repeated")->type_name("RIG");
  addSceneOutput(verb, o->output);
}

}  // namespace orv::app
