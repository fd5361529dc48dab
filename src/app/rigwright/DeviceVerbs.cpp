// devices, map.
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "app/rigwright/Devices.h"
#include "app/rigwright/Failure.h"
#include "app/rigwright/Program.h"
#include "app/rigwright/SceneJob.h"
#include "app/rigwright/Texts.h"
#include "app/rigwright/Verbs.h"
#include "core/Instance.h"
#include "unidevice/Control.h"
#include "unidevice/Device.h"
#include "unidevice/Driver.h"
#include "unidevice/DriverManager.h"
#include "unidevice/DummyDriver.h"
#include "unidevice/Property.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

using Json = nlohmann::ordered_json;
using util::xml::Tag;

// --- devices ---

void runDevices(Program& program) {
  const DeviceSession devices(program.output());
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
        table.add({device->name, control.type, std::to_string(control.index), control.description,
                   util::shortText(control.current)});
      }
      list.push_back({{"driver", driver.name}, {"name", device->name}, {"controls", controls}});
    }
  }
  drivers.deactivateAll();
  program.output().object()["devices"] = list;
  for (const std::string& line : table.lines()) program.output().line(line);
  if (table.empty())
    program.output().note("there are no devices (plug one in, or use take --play)");
}

// --- map ---

struct MapOptions {
  std::string scene, input, device, type, index, output;
  std::optional<double> multiplier, exponent, deadzone, offset;
  bool clear = false;
};

/// The mapping as a profile holds it: what `Property::load` reads.
Tag controlTag(const MapOptions& options) {
  Tag control("control");
  control.setAttribute("device", options.device == "any" ? "" : options.device);
  control.setAttribute("index", options.index);
  control.setAttribute("type", options.type);
  return control;
}

void runMap(Program& program, const MapOptions& options) {
  const DeviceSession devices(program.output());
  SceneJob job(program, options.scene);
  rws::core::Instance* rig = nullptr;
  std::string why;
  unidevice::Property* input = job.findInput(options.input, rig, why);
  if (!input) throw Failure("input " + options.input, why);
  if (!options.device.empty() || options.clear) {
    Tag mapping("property");
    if (!options.clear) mapping.addChild(controlTag(options));
    input->load(mapping);
    if (!options.clear && !input->control) {
      program.output().warn("the control is not present now: " + options.input +
                            " takes it up when it is plugged in");
    }
  }
  input->multiplier = options.multiplier.value_or(input->multiplier);
  input->exponent = options.exponent.value_or(input->exponent);
  input->deadzone = options.deadzone.value_or(input->deadzone);
  input->offset = options.offset.value_or(input->offset);
  job.save(options.output);
  program.output().object()["input"] = rig->GetInstanceName() + ":" + input->name;
  program.output().note("mapped " + rig->GetInstanceName() + ":" + input->name);
}

std::string mustBeBelowOne(double value) {
  return value >= 0.0 && value < 1.0 ? std::string() : "must be at least 0 and below 1";
}

void addMap(Program& program) {
  auto o = std::make_shared<MapOptions>();
  CLI::App& verb = program.addVerb(
      "map",
      "Map an input of a rig to a control of a device, or change how its value is shaped\n"
      "value = sign * (max(|raw| - deadzone, 0) / (1 - deadzone)) ^ exponent * multiplier + offset",
      "rigwright map hand.glb \"Hand:Yaw (Right/Left)\" any Axis 0 --multiplier -1 -o hand.glb",
      [o](Program& p) { runMap(p, *o); });
  addScene(verb, o->scene);
  verb.add_option("INPUT", o->input, "RIG:INPUT (see rigwright info)")->required()->type_name("");
  CLI::Option* device =
      verb.add_option("DEVICE", o->device,
                      "Name of the device (see rigwright devices); any means the first that has "
                      "the control")
          ->type_name("");
  CLI::Option* type =
      verb.add_option("TYPE", o->type, "Kind of the control, such as Axis, Button, Hat")
          ->type_name("");
  CLI::Option* index =
      verb.add_option("INDEX", o->index, "Its number among the controls of that kind, from 0")
          ->type_name("")
          ->check([](const std::string& text) {
            int number = -1;
            return util::parseNumber(text, number) && number >= 0
                       ? std::string()
                       : "\"" + text + "\" is no whole number from 0 up";
          });
  device->needs(type)->needs(index);
  addNumber(verb, "--multiplier", o->multiplier, "Factor of the value");
  addNumber(verb, "--exponent", o->exponent, "Curve of the value; 1 is straight", mustBePositive);
  addNumber(verb, "--deadzone", o->deadzone, "Raw value up to which nothing happens",
            mustBeBelowOne);
  addNumber(verb, "--offset", o->offset, "Added last; the value without a control");
  verb.add_flag("--clear", o->clear, "The input is mapped to nothing")->excludes(device);
  addSceneOutput(verb, o->output);
  verb.callback([o] {
    if (o->device.empty() && !o->clear && !o->multiplier && !o->exponent && !o->deadzone &&
        !o->offset)
      throw CLI::RequiredError("DEVICE TYPE INDEX, --clear or a number to change");
  });
}

}  // namespace

void addDeviceVerbs(Program& program) {
  program.markReadOnly(program.addVerb("devices", "List the input devices and their controls",
                                       "rigwright devices", runDevices));
  addMap(program);
}

}  // namespace orv::app
