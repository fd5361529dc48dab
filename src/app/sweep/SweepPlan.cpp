#include "app/sweep/SweepPlan.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <cmath>
#include <iterator>
#include <nlohmann/json.hpp>

#include "util/AtomicFile.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

using PlanJson = nlohmann::ordered_json;

constexpr int kPlanVersion = 1;
constexpr int kMostValues = 1000000;
constexpr const char* kAxisKinds[] = {"parameter", "profile", "inputs", "seed"};

std::vector<std::string> SplitAt(const std::string& text, char mark) {
  std::vector<std::string> parts{""};
  for (const char c : text)
    if (c == mark)
      parts.emplace_back();
    else
      parts.back() += c;
  return parts;
}

}  // namespace

std::vector<std::string> SweepValues(const std::string& text, std::string& why) {
  const auto parts = SplitAt(text, ':');
  double from = 0.0, to = 0.0;
  int count = 0;
  const bool isRange = parts.size() == 3 && util::parseNumber(parts[0], from) &&
                       util::parseNumber(parts[1], to) && util::parseNumber(parts[2], count);
  std::vector<std::string> values;
  if (!isRange) {
    values = SplitAt(text, ',');
    for (const std::string& value : values)
      if (value.empty()) why = "there is an empty value in \"" + text + "\"";
  } else if (count < 1 || count > kMostValues) {
    why = "a range has from 1 to " + std::to_string(kMostValues) + " values";
  } else {
    for (int i = 0; i < count; ++i) {
      const double part = count > 1 ? static_cast<double>(i) / (count - 1) : 0.0;
      // The ends as they were typed; steps of a tenth without the noise of their sum.
      const double value = i + 1 == count && count > 1 ? to : from + (to - from) * part;
      values.push_back(
          util::shortText(std::abs(value) < 1e9 ? std::round(value * 1e9) / 1e9 + 0.0 : value));
    }
  }
  if (!why.empty()) values.clear();
  return values;
}

long SweepPlan::RowCount() const {
  long rows = 1;
  for (const SweepAxis& axis : axes) {
    rows *= static_cast<long>(axis.values.size());
    if (rows > kMostValues) return kMostValues + 1L;
  }
  return rows;
}

std::vector<std::size_t> SweepPlan::ChoiceOf(long number) const {
  std::vector<std::size_t> choice(axes.size());
  auto left = static_cast<std::size_t>(number - 1);
  for (std::size_t i = axes.size(); i-- > 0;) {
    choice[i] = left % axes[i].values.size();
    left /= axes[i].values.size();
  }
  return choice;
}

std::vector<std::string> SweepPlan::ValuesOf(long number) const {
  std::vector<std::string> values;
  const auto choice = ChoiceOf(number);
  for (std::size_t i = 0; i < axes.size(); ++i) values.push_back(axes[i].values[choice[i]]);
  return values;
}

std::string SweepPlan::ToText() const {
  PlanJson json;
  json["sweep"] = kPlanVersion;
  json["scene"] = scene;
  json["clip"] = clip;
  json["dataRoot"] = dataRoot;
  json["content"] = content;
  json["range"] = {span.from, span.to};
  json["rig"] = rig;
  json["near"] = near;
  json["pick"] = pick;
  json["scenes"] = scenes;
  json["axes"] = PlanJson::array();
  for (const SweepAxis& axis : axes)
    json["axes"].push_back({{"kind", kAxisKinds[static_cast<int>(axis.kind)]},
                            {"name", axis.name},
                            {"rig", axis.rig},
                            {"element", axis.element},
                            {"values", axis.values}});
  return json.dump(1) + "\n";
}

std::optional<SweepPlan> SweepPlan::FromText(const std::string& text, std::string& error) {
  try {
    const PlanJson json = PlanJson::parse(text);
    SweepPlan plan;
    if (json.at("sweep").get<int>() != kPlanVersion) {
      error = "it is of another version of the program";
      return {};
    }
    plan.scene = json.at("scene").get<std::string>();
    plan.clip = json.at("clip").get<std::string>();
    plan.dataRoot = json.at("dataRoot").get<std::string>();
    plan.content = json.at("content").get<std::string>();
    plan.span = {json.at("range").at(0).get<double>(), json.at("range").at(1).get<double>()};
    plan.rig = json.at("rig").get<std::string>();
    plan.near = json.at("near").get<std::string>();
    plan.pick = json.at("pick").get<std::string>();
    plan.scenes = json.at("scenes").get<bool>();
    for (const PlanJson& each : json.at("axes")) {
      SweepAxis axis;
      const auto kind = each.at("kind").get<std::string>();
      for (std::size_t i = 0; i < std::size(kAxisKinds); ++i)
        if (kind == kAxisKinds[i]) axis.kind = static_cast<SweepAxis::Kind>(i);
      axis.name = each.at("name").get<std::string>();
      axis.rig = each.at("rig").get<std::string>();
      axis.element = each.at("element").get<int>();
      axis.values = each.at("values").get<std::vector<std::string>>();
      if (axis.values.empty()) error = "an axis has no values";
      plan.axes.push_back(std::move(axis));
    }
    if (error.empty()) return plan;
  } catch (const nlohmann::json::exception& problem) {
    error = std::string("it is damaged: ") + problem.what();
  }
  return {};
}

std::string SweepPlan::ReadContent(std::string& error) const {
  std::vector<std::string> files{scene};
  for (const SweepAxis& axis : axes)
    if (axis.kind == SweepAxis::Kind::kInputs)
      files.insert(files.end(), axis.values.begin(), axis.values.end());
  QCryptographicHash hash(QCryptographicHash::Sha256);
  for (const std::string& file : files) {
    std::string bytes;
    if (!util::readFile(file, bytes, &error)) return {};
    // Each by itself, so that what moves from one file into the next is seen.
    hash.addData(QCryptographicHash::hash(
        QByteArray::fromRawData(bytes.data(), static_cast<int>(bytes.size())),
        QCryptographicHash::Sha256));
  }
  return hash.result().toHex().toStdString();
}

}  // namespace orv::app
