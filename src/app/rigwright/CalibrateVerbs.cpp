// calibrate list, set, clear.
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "app/rigwright/DeviceNotes.h"
#include "app/rigwright/Failure.h"
#include "app/rigwright/Program.h"
#include "app/rigwright/SceneJob.h"
#include "app/rigwright/Texts.h"
#include "app/rigwright/Verbs.h"
#include "app/session/anyhost/Names.h"
#include "core/CoreImplementation.h"
#include "core/services/CalibrationFile.h"
#include "unidevice/ControlChoice.h"
#include "unidevice/DriverManager.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

using rws::core::CalibrationFile;
using unidevice::Calibration;

struct CalibrateOptions {
  unidevice::ControlChoice control;
  std::optional<double> rest, full, low;

  std::string Name() const {
    return Joined({control.device, control.type, std::to_string(control.index)}, " ");
  }
};

void RunCalibrationList(Program& program) {
  const std::string damaged = CalibrationFile::Load();
  if (!damaged.empty())
    throw Failure("calibrations", damaged, "mend the file, or remove it to begin anew");
  auto list = nlohmann::ordered_json::array();
  Table table;
  for (const auto& [control, calibration] :
       unidevice::DriverManager::instance().calibrations().all()) {
    const bool axis = calibration.kind == Calibration::Kind::kAxis;
    list.push_back({{"device", control.device},
                    {"type", control.type},
                    {"index", control.index},
                    {"kind", axis ? "axis" : "pedal"},
                    {"rest", calibration.rest},
                    {"full", calibration.full}});
    if (axis) list.back()["low"] = calibration.low;
    table.Add({control.device, control.type, std::to_string(control.index), axis ? "axis" : "pedal",
               "rest " + util::shortText(calibration.rest),
               "full " + util::shortText(calibration.full),
               axis ? "low " + util::shortText(calibration.low) : ""});
  }
  program.GetOutput().GetObject()["calibrations"] = list;
  for (const std::string& line : table.Lines()) program.GetOutput().Line(line);
}

void Finish(Program& program, const CalibrateOptions& o, const std::string& problem,
            const std::string& done) {
  if (!problem.empty()) throw Failure(o.Name(), problem);
  program.GetOutput().GetObject()["control"] = o.Name();
  program.GetOutput().Note(done + " " + o.Name() + ", written to " + CalibrationFile::Path());
}

void RunSet(Program& program, const CalibrateOptions& o) {
  const DeviceNotes devices(program.GetOutput());
  SceneJob job(program);
  Calibration calibration{Calibration::Kind::kPedal, *o.rest, *o.full};
  if (o.low) {
    calibration.kind = Calibration::Kind::kAxis;
    calibration.low = *o.low;
  }
  Finish(program, o, job.GetCore().SetCalibration(o.control, calibration), "calibrated");
}

void RunClear(Program& program, const CalibrateOptions& o) {
  SceneJob job(program);
  Finish(program, o, job.GetCore().ClearCalibration(o.control), "no longer calibrated:");
}

void AddControl(CLI::App& verb, CalibrateOptions& o) {
  verb.add_option("DEVICE", o.control.device, "Name of the device (see rigwright devices)")
      ->required()
      ->type_name("");
  verb.add_option("TYPE", o.control.type, "Axis or Slider")->required()->type_name("");
  verb.add_option("INDEX", o.control.index, "Its number among the controls of that kind, from 0")
      ->required()
      ->type_name("");
}

}  // namespace

void AddCalibrateVerbs(Program& program) {
  CLI::App& group = program.AddGroup(
      "calibrate", "What pedals, triggers and axes give at rest and at full, kept for each device",
      "rigwright calibrate list");
  program.MarkReadOnly(program.AddVerb(group, "list", "List the calibrated controls",
                                       "rigwright calibrate list", RunCalibrationList));
  auto o = std::make_shared<CalibrateOptions>();
  CLI::App& set = program.AddVerb(
      group, "set",
      "Calibrate a control by the values that its hardware gives\n"
      "A pedal reads 0 at rest and 1 at full; with --low it is an axis, which reads -1 there.",
      "rigwright calibrate set Pedals Axis 1 --rest -1 --full 0.8",
      [o](Program& p) { RunSet(p, *o); });
  AddControl(set, *o);
  AddNumber(set, "--rest", o->rest, "The hardware's value at rest")->required();
  AddNumber(set, "--full", o->full, "The hardware's value that is to read 1")->required();
  AddNumber(set, "--low", o->low, "The hardware's value that is to read -1");
  o = std::make_shared<CalibrateOptions>();
  AddControl(program.AddVerb(group, "clear", "Take a calibration away",
                             "rigwright calibrate clear Pedals Axis 1",
                             [o](Program& p) { RunClear(p, *o); }),
             *o);
}

}  // namespace orv::app
