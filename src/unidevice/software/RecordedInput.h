// Inputs over time, as an input file holds them.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "util/AVar_Linear.h"

namespace orv::unidevice {

/// Columns of raw control values (before dead zone and curve) over time in seconds.
///
/// The file is comma-separated text with a header: `time`, then the names of inputs. Times rise
/// from row to row, and every row has a finite number in every column. A name that holds commas or
/// quotes stands in double quotes, quotes inside it doubled. Numbers are written with a decimal
/// point in every locale.
class RecordedInput {
 public:
  struct Column {
    std::string name;                 ///< as the header has it
    std::string key;                  ///< what the name stands for; unique in the file
    util::AVar_Linear<double> track;  ///< one sample per row; linear between, held outside
  };

  /// What a column's name stands for.
  struct Resolution {
    bool known = false;
    std::string key;  ///< the same for two names of one input, so that they count as duplicates
    std::string why;  ///< for an unknown name: what is wrong and what to do
  };

  using Resolver = std::function<Resolution(const std::string& name)>;

  /// Reads a file. On failure the columns stay as they were and `error` names the file, the line
  /// and the column (both from 1; the column counts fields) and says what to do.
  bool load(const std::string& path, const Resolver& resolve, std::string& error);

  /// The same from memory; `source` is what messages call the file.
  bool parse(std::string_view text, const std::string& source, const Resolver& resolve,
             std::string& error);

  /// The whole file: a row for each time at which any column has a sample, 17 significant digits. A
  /// column without a sample at a row's time has the value that it reads there.
  std::string text() const;

  /// Writes `text()`; the file is replaced whole or stays as it was. On failure `error` names the
  /// path and the reason.
  bool save(const std::string& path, std::string& error) const;

  /// Index of the column with this key, or -1.
  int find(const std::string& key) const;

  /// Value of a column at a time (s). The same samples in a rig's track give bit for bit the same.
  double value(int column, double time) const;

  /// Time of the last sample of all columns (s), 0 if there is none.
  double endTime() const;

  std::vector<Column> columns;
};

}  // namespace orv::unidevice
