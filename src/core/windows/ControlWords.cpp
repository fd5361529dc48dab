#include "core/windows/ControlWords.h"

#include <vector>

#include "core/config/InputConflicts.h"
#include "gui/Texts.h"
#include "unidevice/Control.h"
#include "unidevice/Device.h"
#include "unidevice/DriverManager.h"
#include "unidevice/Property.h"

namespace orv::rws::core::windows {

using gui::Translate;

std::string ControlWords(const unidevice::ControlChoice& control) {
  const unidevice::Control* there = unidevice::DriverManager::instance().findControl(control.tag());
  std::string device = control.device;
  if (device.empty()) device = there ? there->device->name : Translate("Any device");
  if (there && !there->description.empty()) return device + ": " + there->description;
  const std::string number = control.index > 0 ? " " + std::to_string(control.index) : "";
  return device + ": " + control.type + number;
}

std::string MappingWords(const unidevice::Property& input) {
  std::vector<std::string> words;
  for (const unidevice::ControlChoice& control : ControlsOf(input))
    words.push_back(control.present() ? ControlWords(control)
                                      : Translate("%1 (not there)", {ControlWords(control)}));
  if (words.empty()) return Translate("Not mapped");
  return words.size() == 1 ? words[0] : words[0] + " (+), " + words[1] + " (-)";
}

std::string Shown(const util::Sentence& sentence) {
  return util::Sentence::fill(Translate(sentence.text), sentence.values);
}

}  // namespace orv::rws::core::windows
