#include "unidevice/software/RecordedInput.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "unidevice/software/CsvReader.h"
#include "util/AtomicFile.h"
#include "util/NumberText.h"

namespace orv::unidevice {

namespace {

constexpr const char* kTimeColumn = "time";

/// `text` for a message: no control characters, and not endless.
std::string shown(const std::string& text) {
  constexpr std::size_t kMost = 60;
  std::string result = text.substr(0, kMost);
  for (char& c : result)
    if (static_cast<unsigned char>(c) < 32) c = '?';
  return "\"" + result + (text.size() > kMost ? "..." : "") + "\"";
}

/// One pass over a file. Each step gives false after it has set the message.
class Parser {
 public:
  Parser(std::string_view text, const std::string& source, const RecordedInput::Resolver& resolve)
      : m_reader(text), m_source(source), m_resolve(resolve) {}

  bool run() { return readHeader() && readRows(); }

  std::vector<RecordedInput::Column> columns;
  std::string error;

 private:
  bool fail(int line, std::size_t field, const std::string& what) {
    error = m_source + ": line " + std::to_string(line) + ", column " + std::to_string(field + 1) +
            ": " + what;
    return false;
  }

  bool failAt(std::size_t field, const std::string& what) {
    return fail(m_row[field].line, field, what);
  }

  /// False at the end too; `error` is set only by damage.
  bool nextRow() {
    if (m_reader.readRow(m_row)) return true;
    if (!m_reader.error().empty()) failAt(m_row.size() - 1, m_reader.error());
    return false;
  }

  bool isBlankRow() const { return m_row.size() == 1 && m_row[0].text.empty() && !m_row[0].quoted; }

  bool readHeader() {
    if (!nextRow()) {
      return !error.empty() ? false : fail(1, 0, "the file is empty (expected a header: time,...)");
    }
    if (m_row[0].text != kTimeColumn) {
      return failAt(0, "the header begins with " + shown(m_row[0].text) +
                           " (the first column must be time, columns are separated by commas)");
    }
    if (m_row.size() == 1)
      return fail(m_row[0].line, 1, "the header names no input (add a column per input)");
    for (std::size_t i = 1; i < m_row.size(); ++i)
      if (!addColumn(i)) return false;
    return true;
  }

  bool addColumn(std::size_t field) {
    const std::string& name = m_row[field].text;
    RecordedInput::Resolution found = m_resolve(name);
    if (!found.known) {
      return failAt(field, "unknown column " + shown(name) +
                               (found.why.empty() ? std::string() : ": " + found.why));
    }
    for (std::size_t i = 0; i < columns.size(); ++i) {
      if (columns[i].key == found.key)
        return failAt(field, "column " + shown(name) + " names the same input as column " +
                                 std::to_string(i + 2) + " (keep one of them)");
    }
    columns.push_back({name, std::move(found.key), {}});
    return true;
  }

  bool readRows() {
    int blankLine = 0;
    bool any = false;
    int lastLine = m_row[0].line;
    while (nextRow()) {
      lastLine = m_row[0].line;
      if (isBlankRow()) {  // allowed behind the last row alone
        if (!blankLine) blankLine = lastLine;
        continue;
      }
      if (blankLine) return fail(blankLine, 0, "the line is empty (remove it)");
      if (!readRow()) return false;
      any = true;
    }
    if (!error.empty()) return false;
    return any || fail(lastLine + 1, 0, "there are no rows (add one row per frame)");
  }

  bool readRow() {
    const std::size_t wanted = columns.size() + 1;
    if (m_row.size() != wanted) {
      const std::size_t field = std::min(m_row.size(), wanted);
      return fail(m_row[0].line, field,
                  "the row has " + std::to_string(m_row.size()) + " fields, the header " +
                      std::to_string(wanted) + " (give each row a value per column)");
    }
    double time = 0.0;
    if (!number(0, time)) return false;
    auto& first = columns[0].track.samples;
    if (!first.empty() && time <= first.back().time) {
      return failAt(0, "the time " + shown(m_row[0].text) +
                           " does not rise above the row before, " +
                           util::shortText(first.back().time) + " (sort the rows by time)");
    }
    for (std::size_t i = 0; i < columns.size(); ++i) {
      double value = 0.0;
      if (!number(i + 1, value)) return false;
      columns[i].track.samples.push_back({time, value});
    }
    return true;
  }

  bool number(std::size_t field, double& value) {
    const std::string& text = m_row[field].text;
    if (util::parseNumber(text, value)) return true;
    if (text.empty()) return failAt(field, "the field is empty (write a number)");
    double any = 0.0;
    if (util::parseNumber(text, any, util::NonFinite::kAccept))
      return failAt(field, shown(text) + " is not finite (write a finite number)");
    return failAt(field, shown(text) + " is not a number (write it like -0.5 or 1e-3)");
  }

  CsvReader m_reader;
  const std::string& m_source;
  const RecordedInput::Resolver& m_resolve;
  std::vector<CsvField> m_row;
};

}  // namespace

bool RecordedInput::load(const std::string& path, const Resolver& resolve, std::string& error) {
  std::string bytes;
  return util::readFile(path, bytes, &error) && parse(bytes, path, resolve, error);
}

bool RecordedInput::parse(std::string_view text, const std::string& source, const Resolver& resolve,
                          std::string& error) {
  Parser parser(text, source, resolve);
  if (!parser.run()) {
    error = parser.error;
    return false;
  }
  columns = std::move(parser.columns);
  return true;
}

std::string RecordedInput::text() const {
  std::vector<double> times;
  for (const Column& column : columns)
    for (const auto& sample : column.track.samples) times.push_back(sample.time);
  std::sort(times.begin(), times.end());
  times.erase(std::unique(times.begin(), times.end()), times.end());

  std::string result = kTimeColumn;
  for (const Column& column : columns) result += "," + csvField(column.name);
  result += '\n';
  for (const double time : times) {
    result += util::exactText(time);
    for (const Column& column : columns) result += "," + util::exactText(column.track.value(time));
    result += '\n';
  }
  return result;
}

bool RecordedInput::save(const std::string& path, std::string& error) const {
  return util::writeFile(path, text(), &error);
}

int RecordedInput::find(const std::string& key) const {
  for (std::size_t i = 0; i < columns.size(); ++i)
    if (columns[i].key == key) return static_cast<int>(i);
  return -1;
}

double RecordedInput::value(int column, double time) const {
  return columns[static_cast<std::size_t>(column)].track.value(time);
}

double RecordedInput::endTime() const {
  bool any = false;
  double end = 0.0;
  for (const Column& column : columns) {
    if (column.track.samples.empty()) continue;
    const double last = column.track.samples.back().time;
    end = any ? std::max(end, last) : last;
    any = true;
  }
  return end;
}

}  // namespace orv::unidevice
