// A rig's parameters, one row each: its configuration is declared from them, and its save data is
// written and read by them.
#pragma once

#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include "core/interface/CInterface.h"

namespace orv::util {
class DataChunk;
}

namespace orv::rws::addon {

class SaveReader;

enum class ParameterKind {
  kGroup,     ///< opens a group
  kEndGroup,  ///< closes it
  kNumber,
  kCount,   ///< a whole number
  kFlag,    ///< a check box
  kChoice,  ///< the index of an item
  kButton,
  kOwn,  ///< what the rig declares here by itself
};

/// What a check box hides: nodes of the rig, that HideModes is told of.
enum class Hides { kNothing, kAlways, kDuringTakes };

/// Limits of a number, and how it is edited: without `decimals` as many are shown as the step has,
/// four at most.
struct ParameterRange {
  constexpr ParameterRange() = default;
  constexpr ParameterRange(double min, double max, double step = 1.0, int decimals = -1)
      : min(min), max(max), step(step), decimals(decimals < 0 ? DecimalsOf(step) : decimals) {}
  static constexpr int DecimalsOf(double step) {
    int decimals = 0;
    for (; step < 0.999 && decimals < 4; step *= 10.0) ++decimals;
    return decimals;
  }

  double min = 0.0, max = 0.0, step = 1.0;
  int decimals = 0;
};

// Places in the save data, whose order is that of the first release and not that of the dialog.
inline constexpr int kNotSaved = -1;
/// Behind all others of the first part, in the order of the rows: where a new parameter goes.
inline constexpr int kSavedLast = 99;
/// A rig that saves its parameters in several parts counts the places of each from a multiple of
/// this.
inline constexpr int kSavedPart = 100;

/// What a row says beside its member.
struct ParameterInfo {
  ParameterKind kind = ParameterKind::kOwn;
  int place = kNotSaved;
  const char* key = nullptr;    ///< in save data
  const char* label = nullptr;  ///< null: saved and not shown
  const char* tooltip = nullptr;
  ParameterRange range;
  Hides hides = Hides::kNothing;
  bool asInput = false;     ///< an input may turn it during a take
  bool isComputed = false;  ///< a gauge: the rig computes it and the user only reads
  std::vector<std::string> (*items)() = nullptr;
  int own = 0;  ///< which of what the rig declares by itself
};

/// A row of a rig's table: a parameter of its settings `S`, or something else that stands between
/// the parameters. The rows stand in the order of the dialog.
template <class S>
struct ParameterRow : ParameterInfo {
  using Text = const char*;

  double S::*number = nullptr;
  int S::*count = nullptr;  ///< also of a choice
  bool S::*flag = nullptr;

  static constexpr ParameterRow Group(Text label, Text tooltip) {
    return Of(ParameterKind::kGroup, kNotSaved, nullptr, label, tooltip);
  }
  static constexpr ParameterRow EndGroup() { return Of(ParameterKind::kEndGroup); }
  static constexpr ParameterRow Number(int place, Text key, Text label, Text tooltip,
                                       double S::*member, ParameterRange range) {
    ParameterRow row = Of(ParameterKind::kNumber, place, key, label, tooltip);
    row.number = member;
    row.range = range;
    return row;
  }
  static constexpr ParameterRow Count(int place, Text key, Text label, Text tooltip, int S::*member,
                                      ParameterRange range) {
    ParameterRow row = Of(ParameterKind::kCount, place, key, label, tooltip);
    row.count = member;
    row.range = range;
    return row;
  }
  static constexpr ParameterRow Flag(int place, Text key, Text label, Text tooltip, bool S::*member,
                                     Hides hides = Hides::kNothing) {
    ParameterRow row = Of(ParameterKind::kFlag, place, key, label, tooltip);
    row.flag = member;
    row.hides = hides;
    return row;
  }
  /// `items` are the texts to choose from.
  static constexpr ParameterRow Choice(int place, Text key, Text label, Text tooltip,
                                       int S::*member, std::vector<std::string> (*items)()) {
    ParameterRow row = Of(ParameterKind::kChoice, place, key, label, tooltip);
    row.count = member;
    row.items = items;
    return row;
  }
  static constexpr ParameterRow Button(Text label, Text tooltip) {
    return Of(ParameterKind::kButton, kNotSaved, nullptr, label, tooltip);
  }
  static constexpr ParameterRow Own(int which) {
    ParameterRow row = Of(ParameterKind::kOwn);
    row.own = which;
    return row;
  }

  // What few rows say beside.
  constexpr ParameterRow AsInput() const {
    ParameterRow row = *this;
    row.asInput = true;
    return row;
  }
  constexpr ParameterRow Computed() const {
    ParameterRow row = *this;
    row.isComputed = true;
    return row;
  }

 private:
  static constexpr ParameterRow Of(ParameterKind kind, int place = kNotSaved, Text key = nullptr,
                                   Text label = nullptr, Text tooltip = nullptr) {
    ParameterRow row;
    row.kind = kind;
    row.place = place;
    row.key = key;
    row.label = label;
    row.tooltip = tooltip;
    return row;
  }
};

/// A row with the variable that it stands for, which is the rig's; the texts must outlive this.
struct Parameter : ParameterInfo {
  const char* prefix = "";  ///< ahead of the label
  double* number = nullptr;
  int* count = nullptr;
  bool* flag = nullptr;
};

/// The rows of a table, bound to `settings`.
template <class Rows, class S>
std::vector<Parameter> ParametersOf(const Rows& rows, S& settings) {
  std::vector<Parameter> parameters;
  parameters.reserve(std::size(rows));
  for (const ParameterRow<S>& row : rows) {
    Parameter& bound = parameters.emplace_back();
    static_cast<ParameterInfo&>(bound) = row;
    if (row.number) bound.number = &(settings.*row.number);
    if (row.count) bound.count = &(settings.*row.count);
    if (row.flag) bound.flag = &(settings.*row.flag);
  }
  return parameters;
}

/// Called in Define for each row of the kind kOwn, with what it says.
using DefineOwn = std::function<void(int which)>;

/// Declares the elements of the configuration, in the order of the rows.
void DefineParameters(CInterface& core, const std::vector<Parameter>& parameters,
                      CInterface::Callback& callback, const DefineOwn& own = {});
/// The parameters of one part of the save data, in its order.
std::vector<const Parameter*> SavedParameters(const std::vector<Parameter>& parameters,
                                              int part = 0);
/// Appends a field for each of them.
void SaveParameters(util::DataChunk& chunk, const std::vector<Parameter>& parameters, int part = 0);
/// Reads them; numbers out of their range are clamped. False when a count or a choice was out of
/// it.
bool LoadParameters(SaveReader& reader, const std::vector<Parameter>& parameters, int part = 0);
/// Whether `variable` is a gauge of the rows.
template <class Rows, class S>
bool IsComputed(const Rows& rows, const S& settings, const void* variable) {
  for (const ParameterRow<S>& row : rows)
    if (row.isComputed && &(settings.*row.number) == variable) return true;
  return false;
}

}  // namespace orv::rws::addon
