#include "app/sweep/SweepRow.h"

#include <nlohmann/json.hpp>

namespace orv::app {

std::string SweepRow::ToText() const {
  nlohmann::ordered_json json;
  json["row"] = number;
  if (!error.empty()) json["error"] = error;
  json["picked"] = picked;
  for (std::size_t i = 0; i < kSweepMeasures; ++i)
    if (measures[i]) json[kSweepMeasureNames[i].name] = *measures[i];
  json["path"] = path;
  return json.dump() + "\n";
}

std::optional<SweepRow> SweepRow::FromText(const std::string& text) {
  try {
    const auto json = nlohmann::json::parse(text);
    SweepRow row;
    row.number = json.at("row").get<long>();
    row.error = json.value("error", std::string());
    row.picked = json.at("picked").get<bool>();
    for (std::size_t i = 0; i < kSweepMeasures; ++i)
      if (const auto found = json.find(kSweepMeasureNames[i].name); found != json.end())
        row.measures[i] = found->get<double>();
    row.path = json.at("path").get<std::vector<std::pair<double, double>>>();
    return row;
  } catch (const nlohmann::json::exception&) {
    return {};
  }
}

}  // namespace orv::app
