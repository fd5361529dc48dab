#include "core/services/CalibrationFile.h"

#include <filesystem>

#include "core/services/DataRoot.h"
#include "core/services/Log.h"
#include "unidevice/DriverManager.h"
#include "util/NumberText.h"
#include "util/xml/Tag.h"

namespace orv::rws::core {

namespace {

using unidevice::CalibratedControl;
using unidevice::Calibration;
using util::xml::Element;
using util::xml::Tag;

constexpr char kCalibrations[] = "calibrations";
constexpr char kControl[] = "control";
constexpr char kPedal[] = "pedal";
constexpr char kAxis[] = "axis";

bool ReadNumber(const Element& element, const char* name, double& value) {
  return util::parseNumber(element.attribute(name), value);
}

/// False when the element is no calibration.
bool ReadControl(const Element& element, CalibratedControl& read) {
  const std::string kind = element.attribute("kind");
  if (element.name != kControl || (kind != kPedal && kind != kAxis)) return false;
  read.control = {element.attribute("device"), element.attribute("type"), 0};
  Calibration& calibration = read.calibration;
  calibration.kind = kind == kAxis ? Calibration::Kind::kAxis : Calibration::Kind::kPedal;
  return !read.control.device.empty() && !read.control.type.empty() &&
         util::parseNumber(element.attribute("index"), read.control.index) &&
         ReadNumber(element, "rest", calibration.rest) &&
         ReadNumber(element, "full", calibration.full) &&
         (kind == kPedal || ReadNumber(element, "low", calibration.low)) && !calibration.problem();
}

/// What is wrong with the file, with its path; empty when it was read, or when there is none.
std::string ReadFile(std::vector<CalibratedControl>& all) {
  const std::string path = CalibrationFile::Path();
  std::error_code ignored;
  if (!std::filesystem::exists(path, ignored)) return {};
  Element root;
  std::string problem;
  if (root.load(path, &problem) != 0) return problem;
  if (root.name != kCalibrations) return path + ": it has another root tag";
  for (const Element* child : root.children) {
    if (child->kind != util::xml::kTag) continue;
    CalibratedControl& read = all.emplace_back();
    if (!ReadControl(*child, read))
      return path + ": the calibration number " + std::to_string(all.size()) + " is damaged";
  }
  return {};
}

Tag Write(const CalibratedControl& entry) {
  const bool axis = entry.calibration.kind == Calibration::Kind::kAxis;
  Tag tag(kControl);
  tag.setAttribute("device", entry.control.device);
  tag.setAttribute("type", entry.control.type);
  tag.setAttribute("index", std::to_string(entry.control.index));
  tag.setAttribute("kind", axis ? kAxis : kPedal);
  tag.setAttribute("rest", util::shortText(entry.calibration.rest));
  tag.setAttribute("full", util::shortText(entry.calibration.full));
  if (axis) tag.setAttribute("low", util::shortText(entry.calibration.low));
  return tag;
}

}  // namespace

std::string CalibrationFile::Path() {
  return DataRoot::GetDataFolder() + "/core/calibrations.xml";
}

std::string CalibrationFile::Load() {
  std::vector<CalibratedControl> all;
  const std::string problem = ReadFile(all);
  static std::string told;  // the same file is read again before each change
  if (!problem.empty()) all.clear();
  if (!problem.empty() && problem != told)
    LogEntry(LogLevel::kWarning, "No device is calibrated, for the file can't be read: " + problem);
  told = problem;
  unidevice::DriverManager::instance().calibrations().replace(std::move(all));
  return problem;
}

std::string CalibrationFile::Save() {
  std::vector<CalibratedControl> ignored;
  std::string problem = ReadFile(ignored);
  if (!problem.empty()) {
    return "the calibrations are damaged and were left as they are: " + problem +
           " (mend the file, or remove it to begin anew)";
  }
  Tag root(kCalibrations);
  for (const CalibratedControl& entry : unidevice::DriverManager::instance().calibrations().all())
    root.emplaceChild(Write(entry));
  std::error_code ignoredError;
  std::filesystem::create_directories(std::filesystem::path(Path()).parent_path(), ignoredError);
  if (root.save(Path(), &problem)) return {};
  return problem + " (see that the data root is a folder that can be written, or name another)";
}

}  // namespace orv::rws::core
