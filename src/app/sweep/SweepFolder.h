// The folder of a sweep.
#pragma once

#include <string>
#include <vector>

#include "app/sweep/SweepPlan.h"
#include "app/sweep/SweepRow.h"

namespace orv::app {

/// `sweep.json`, the plan; `rows/`, a file a row, written whole or not at all; `scenes/`; and, when
/// all rows are there, `sweep.csv`, `paths.png` and `contact.png`. Texts that calls return say what
/// went wrong, and are empty when all is well.
class SweepFolder {
 public:
  /// Held while a program works on the folder.
  static constexpr const char* kLockName = ".lock";

  explicit SweepFolder(std::string path);

  const std::string& GetPath() const { return m_path; }
  const SweepPlan& GetPlan() const { return m_plan; }

  /// Begins a sweep, or goes on with one of the same plan. A folder with other things in it, or
  /// with another sweep, is refused.
  std::string Begin(const SweepPlan& plan);
  /// Reads the plan of a sweep that was begun.
  std::string Open();
  /// Whether the files of the plan are still those with which the sweep was begun.
  std::string CheckContent() const;

  /// Rows that are not there yet, or damaged. A row's scene is written ahead of it.
  std::vector<long> Missing() const;
  /// Null for a row that is not there, or damaged.
  std::optional<SweepRow> Read(long number) const;
  std::string Write(const SweepRow& row) const;
  std::string ScenePath(long number) const;

  /// Writes table and pictures of all rows. Needs a QGuiApplication.
  std::string Finish(const std::vector<SweepRow>& rows) const;

 private:
  std::string RowPath(long number) const;
  std::string Name(long number) const;
  std::string RemoveLeftovers() const;

  std::string m_path;
  SweepPlan m_plan;
};

/// The table: a row a variant, its values and its measures.
std::string SweepTable(const SweepPlan& plan, const std::vector<SweepRow>& rows);

}  // namespace orv::app
