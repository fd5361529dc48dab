#include "app/sweep/SweepFolder.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

#include "app/session/anyhost/Names.h"
#include "app/sweep/SweepSheet.h"
#include "util/AtomicFile.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

namespace fs = std::filesystem;

constexpr const char* kPlanFile = "sweep.json";

/// A neighbour that a killed program has left, such as ".1234.0.tmp".
bool IsLeftover(const std::string& name) {
  constexpr std::size_t kEnding = 4;
  if (name.size() <= kEnding || name.front() != '.' || EndingOf(name) != ".tmp") return false;
  return std::all_of(name.begin(), name.end() - kEnding,
                     [](unsigned char c) { return c == '.' || std::isdigit(c); });
}

/// A cell of the table, in quotes where its text asks for them.
std::string Cell(const std::string& text) {
  if (text.find_first_of(",\"\n") == std::string::npos) return text;
  std::string cell = "\"";
  for (const char c : text) cell += c == '"' ? "\"\"" : std::string(1, c);
  return cell + "\"";
}

}  // namespace

SweepFolder::SweepFolder(std::string path) : m_path(std::move(path)) {}

std::string SweepFolder::Name(long number) const {
  std::string digits = std::to_string(number);
  constexpr std::size_t kDigits = 6;
  return std::string(kDigits - std::min(kDigits, digits.size()), '0') + digits;
}

std::string SweepFolder::RowPath(long number) const {
  return m_path + "/rows/" + Name(number) + ".json";
}

std::string SweepFolder::ScenePath(long number) const {
  return m_path + "/scenes/" + Name(number) + ".glb";
}

std::string SweepFolder::Begin(const SweepPlan& plan) {
  m_plan = plan;
  const std::string file = m_path + "/" + kPlanFile;
  std::error_code error;
  if (fs::exists(file, error)) {
    std::string text, why;
    if (!util::readFile(file, text, &why)) return why;
    if (text != plan.ToText())
      return m_path +
             ": holds another sweep, or one of a scene or inputs that have changed since (give "
             "another folder, or delete this one)";
    return RemoveLeftovers();
  }
  for (fs::directory_iterator each(m_path, error), end; !error && each != end;
       each.increment(error))
    if (each->path().filename() != kLockName)
      return m_path + ": is no folder of a sweep and holds other things (give another one)";
  for (const char* part : {"/rows", "/scenes"}) {
    if (part == std::string("/scenes") && !plan.scenes) continue;
    fs::create_directories(m_path + part, error);
    if (error) return m_path + part + ": cannot be created: " + error.message();
  }
  std::string why;
  return util::writeFile(file, plan.ToText(), &why) ? std::string() : why;
}

std::string SweepFolder::Open() {
  const std::string file = m_path + "/" + kPlanFile;
  std::string text, why;
  if (!util::readFile(file, text, &why)) return why + " (give the folder of a sweep)";
  auto plan = SweepPlan::FromText(text, why);
  if (!plan) return file + ": " + why + " (delete the folder, and sweep again)";
  m_plan = std::move(*plan);
  return {};
}

std::string SweepFolder::CheckContent() const {
  std::string why;
  const std::string now = m_plan.ReadContent(why);
  if (now.empty()) return why;
  if (now == m_plan.content) return {};
  return m_path + ": the scene or an input file has changed since this sweep was begun";
}

std::string SweepFolder::RemoveLeftovers() const {
  std::error_code error;
  for (const char* part : {"", "/rows", "/scenes"}) {
    std::vector<fs::path> leftovers;
    for (fs::directory_iterator each(m_path + part, error), end; !error && each != end;
         each.increment(error))
      if (IsLeftover(each->path().filename().string())) leftovers.push_back(each->path());
    for (const fs::path& each : leftovers)
      if (!fs::remove(each, error))
        return each.string() + ": cannot be removed: " + error.message();
  }
  return {};
}

std::vector<long> SweepFolder::Missing() const {
  std::vector<long> missing;
  const long rows = m_plan.RowCount();
  for (long number = 1; number <= rows; ++number)
    if (!Read(number)) missing.push_back(number);
  return missing;
}

std::optional<SweepRow> SweepFolder::Read(long number) const {
  std::string text;
  if (!util::readFile(RowPath(number), text)) return {};
  auto row = SweepRow::FromText(text);
  if (row && row->number != number) row.reset();
  return row;
}

std::string SweepFolder::Write(const SweepRow& row) const {
  std::string why;
  return util::writeFile(RowPath(row.number), row.ToText(), &why) ? std::string() : why;
}

std::string SweepTable(const SweepPlan& plan, const std::vector<SweepRow>& rows) {
  std::string table = "row";
  for (const SweepAxis& axis : plan.axes) table += "," + Cell(axis.name);
  for (const auto& measure : kSweepMeasureNames) table += std::string(",") + measure.heading;
  table += ",picked,error\n";
  for (const SweepRow& row : rows) {
    table += std::to_string(row.number);
    for (const std::string& value : plan.ValuesOf(row.number)) table += "," + Cell(value);
    for (const auto& value : row.measures) table += "," + (value ? util::shortText(*value) : "");
    table += std::string(row.picked ? ",yes," : ",no,") + Cell(row.error) + "\n";
  }
  return table;
}

std::string SweepFolder::Finish(const std::vector<SweepRow>& rows) const {
  // All rows are there: nobody writes any more.
  if (std::string problem = RemoveLeftovers(); !problem.empty()) return problem;
  struct File {
    std::string name, bytes;
  };
  std::vector<File> files{{"sweep.csv", SweepTable(m_plan, rows)},
                          {"paths.png", DrawSweepPaths(m_plan, rows)}};
  const int sheets = SweepSheetCount(rows);
  for (int i = 0; i < sheets; ++i)
    files.push_back({"contact" + (i > 0 ? "-" + std::to_string(i + 1) : "") + ".png",
                     DrawSweepSheet(m_plan, rows, i)});
  for (const File& file : files) {
    std::string why;
    if (file.bytes.empty()) return m_path + "/" + file.name + ": the picture could not be made";
    if (!util::writeFile(m_path + "/" + file.name, file.bytes, &why)) return why;
  }
  return {};
}

}  // namespace orv::app
