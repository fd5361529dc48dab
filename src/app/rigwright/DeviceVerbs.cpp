// devices, map.
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "app/rigwright/DeviceNotes.h"
#include "app/rigwright/Failure.h"
#include "app/rigwright/Program.h"
#include "app/rigwright/SceneJob.h"
#include "app/rigwright/Texts.h"
#include "app/rigwright/Verbs.h"
#include "app/session/anyhost/InputFile.h"
#include "app/session/anyhost/Names.h"
#include "core/instances/Instance.h"
#include "core/services/CalibrationFile.h"
#include "unidevice/Control.h"
#include "unidevice/ControlChoice.h"
#include "unidevice/Device.h"
#include "unidevice/Driver.h"
#include "unidevice/DriverManager.h"
#include "unidevice/DummyDriver.h"
#include "unidevice/EmulatedTControl.h"
#include "unidevice/EmulatedTrinaryDevice.h"
#include "unidevice/KeyNames.h"
#include "unidevice/Property.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

using Json = nlohmann::ordered_json;
using util::xml::Tag;

// --- devices ---

void RunDevices(Program& program) {
  const DeviceNotes devices(program.GetOutput());
  rws::core::CalibrationFile::Load();
  auto& drivers = unidevice::DriverManager::instance();
  drivers.activateAll();
  drivers.updateAll();
  Json list = Json::array();
  Table table;
  for (int d = 0; d < drivers.count(); ++d) {
    unidevice::Driver& driver = *drivers.driver(d);
    if (&driver == &drivers.dummyDriver()) continue;
    for (const unidevice::Device* device : driver.devices) {
      Json controls = Json::array();
      for (int i = 0; i < device->controlCount(); ++i) {
        const unidevice::Control& control = *device->control(i);
        controls.push_back({{"type", control.type},
                            {"index", control.index},
                            {"description", control.description},
                            {"value", control.current}});
        if (control.calibration.kind != unidevice::Calibration::Kind::kNone)
          controls.back()["hardware"] = control.hardware;
        table.Add({device->name, control.type, std::to_string(control.index), control.description,
                   util::shortText(control.current)});
      }
      list.push_back({{"driver", driver.name}, {"name", device->name}, {"controls", controls}});
    }
  }
  drivers.deactivateAll();
  program.GetOutput().GetObject()["devices"] = list;
  for (const std::string& line : table.Lines()) program.GetOutput().Line(line);
  if (list.empty())
    program.GetOutput().Note("there are no devices (plug one in, or use take --play)");
}

// --- map ---

struct MapOptions {
  std::string scene, input, device, type, index, output;
  std::vector<std::string> positive, negative;  ///< device, type and number
  std::optional<double> multiplier, exponent, deadzone, offset;
  bool clear = false;

  bool Maps() const { return !device.empty() || !positive.empty(); }
};

/// What a map is to be: the element that a profile would hold, and what its control can do.
struct Mapping {
  Tag control;
  std::uint32_t kind = 0;
  std::vector<unidevice::ControlChoice> parts;
};

/// A control of the command line; refused where it can't be meant.
unidevice::ControlChoice ReadChoice(const std::string& device, const std::string& type,
                                    const std::string& index) {
  if (device == "Any" || device == "ANY")
    throw Failure("device " + device, "there is no such device", "did you mean any?");
  unidevice::ControlChoice choice{device == "any" ? "" : device, type, 0};
  util::parseNumber(index, choice.index);
  const unidevice::ChoiceProblem problem = choice.check();
  if (!problem) return choice;
  std::string hint;
  if (!problem.wanted.empty()) hint = HintFor(problem.wanted, problem.known, problem.kind);
  if (device == unidevice::EmulatedTrinaryDevice::kName) hint = "give --positive and --negative";
  throw Failure(Joined({device, type, index}, " "), problem.why, hint);
}

Mapping ReadMapping(const MapOptions& o) {
  if (o.positive.empty()) {
    const auto choice = ReadChoice(o.device, o.type, o.index);
    return {choice.tag(), choice.kind(), {choice}};
  }
  const auto positive = ReadChoice(o.positive[0], o.positive[1], o.positive[2]);
  const auto negative = ReadChoice(o.negative[0], o.negative[1], o.negative[2]);
  if (positive == negative) {
    throw Failure("--negative", "is the same control as --positive: together they give 0",
                  "name two controls");
  }
  return {unidevice::pairTag(positive, negative),
          unidevice::EmulatedTControl::pairKind(positive.kind(), negative.kind()),
          {positive, negative}};
}

void RequireKind(const unidevice::Property& input, const std::string& name,
                 const Mapping& mapping) {
  if (mapping.kind & input.flags) return;
  const bool button = mapping.kind == unidevice::kBinaryControl;
  throw Failure(name,
                "takes " + unidevice::kindText(input.flags) + ", and not " +
                    (mapping.parts.size() > 1 ? "two buttons" : unidevice::kindText(mapping.kind)),
                button ? "map two buttons by --positive and --negative" : "see rigwright devices");
}

/// Devices that are away are told, and what they may have been meant to be.
void TellAbsent(Output& output, const std::string& name, const Mapping& mapping) {
  std::vector<std::string> away;
  std::string hint;
  for (const unidevice::ControlChoice& part : mapping.parts) {
    if (part.present()) continue;
    away.push_back((part.device.empty() ? "any" : part.device) + " " + part.type + " " +
                   std::to_string(part.index));
    const std::vector<std::string> known = part.presentDevices();
    if (part.device.empty() || part.device == unidevice::kKeyboardName) continue;
    const std::string near = HintFor(part.device, known, "devices");
    if (near.rfind("did you mean", 0) == 0) hint = " (" + near + ")";
  }
  if (away.empty()) return;
  output.Warn(Joined(away, " and ") + (away.size() > 1 ? " are" : " is") +
              " not present now: " + name + " takes " + (away.size() > 1 ? "them" : "it") +
              " up when the device is there" + hint);
}

void RunMap(Program& program, const MapOptions& options) {
  const DeviceNotes devices(program.GetOutput());
  SceneJob job(program, options.scene);
  const FoundInput found = FindInput(job.GetCore(), options.input);
  unidevice::Property* const input = found.input;
  if (!input) throw Failure("input " + options.input, found.why);
  const std::string name = found.Name();
  Tag property("property");
  if (options.Maps()) {
    const Mapping mapping = ReadMapping(options);
    RequireKind(*input, name, mapping);
    property.addChild(mapping.control);
    TellAbsent(program.GetOutput(), name, mapping);
  }
  if (options.Maps() || options.clear) input->load(property);
  input->multiplier = options.multiplier.value_or(input->multiplier);
  input->exponent = options.exponent.value_or(input->exponent);
  input->deadzone = options.deadzone.value_or(input->deadzone);
  input->offset = options.offset.value_or(input->offset);
  job.Save(options.output);
  program.GetOutput().GetObject()["input"] = name;
  program.GetOutput().GetObject()["present"] = input->control != nullptr;
  program.GetOutput().Note("mapped " + name);
}

std::string MustBeBelowOne(double value) {
  return value >= 0.0 && value < 1.0 ? std::string() : "must be at least 0 and below 1";
}

std::string CheckIndex(const std::string& text) {
  int number = -1;
  return util::parseNumber(text, number) && number >= 0
             ? std::string()
             : "\"" + text + "\" is no whole number from 0 up";
}

CLI::Option* AddPart(CLI::App& verb, const std::string& name, std::vector<std::string>& part,
                     const std::string& description) {
  const auto read = [&part, name](const std::vector<std::string>& words) {
    const std::string wrong = CheckIndex(words.at(2));
    if (!wrong.empty()) throw CLI::ValidationError(name, wrong);
    part = words;
  };
  return verb.add_option_function<std::vector<std::string>>(name, read, description)
      ->expected(3)
      ->type_name("DEVICE TYPE INDEX");
}

void AddMap(Program& program) {
  auto o = std::make_shared<MapOptions>();
  CLI::App& verb = program.AddVerb(
      "map",
      "Map an input of a rig to a control of a device, or change how its value is shaped\n"
      "value = sign * (max(|raw| - deadzone, 0) / (1 - deadzone)) ^ exponent * multiplier + offset",
      "rigwright map hand.glb \"Hand:Yaw (Right/Left)\" any Axis 0 --multiplier -1 -o hand.glb",
      [o](Program& p) { RunMap(p, *o); });
  AddScene(verb, o->scene);
  verb.add_option("INPUT", o->input, "RIG:INPUT (see rigwright info)")->required()->type_name("");
  CLI::Option* device =
      verb.add_option("DEVICE", o->device,
                      "Name of the device (see rigwright devices); any means the first that has "
                      "the control")
          ->type_name("");
  CLI::Option* type =
      verb.add_option("TYPE", o->type, "Axis, Slider, Button, Hat, or a key such as Up_Arrow")
          ->type_name("");
  CLI::Option* index =
      verb.add_option("INDEX", o->index, "Its number among the controls of that kind, from 0")
          ->type_name("")
          ->check(CheckIndex);
  CLI::Option* positive =
      AddPart(verb, "--positive", o->positive,
              "A control that counts positive, beside one that counts negative");
  CLI::Option* negative =
      AddPart(verb, "--negative", o->negative, "The control that counts negative");
  positive->needs(negative)->excludes(device);
  negative->needs(positive)->excludes(device);
  device->needs(type)->needs(index);
  AddNumber(verb, "--multiplier", o->multiplier, "Factor of the value");
  AddNumber(verb, "--exponent", o->exponent, "Curve of the value; 1 is straight", MustBePositive);
  AddNumber(verb, "--deadzone", o->deadzone, "Raw value up to which nothing happens",
            MustBeBelowOne);
  AddNumber(verb, "--offset", o->offset, "Added last; the value without a control");
  verb.add_flag("--clear", o->clear, "The input is mapped to nothing")
      ->excludes(device)
      ->excludes(positive);
  AddSceneOutput(verb, o->output);
  verb.callback([o] {
    if (!o->Maps() && !o->clear && !o->multiplier && !o->exponent && !o->deadzone && !o->offset)
      throw CLI::RequiredError(
          "DEVICE TYPE INDEX, --positive with --negative, --clear or a number to change");
  });
}

}  // namespace

void AddDeviceVerbs(Program& program) {
  program.MarkReadOnly(program.AddVerb("devices", "List the input devices and their controls",
                                       "rigwright devices", RunDevices));
  AddMap(program);
}

}  // namespace orv::app
