#include "plugins/common/Parameters.h"

#include <algorithm>
#include <utility>

#include "plugins/common/SaveChunk.h"

namespace orv::rws::addon {

namespace {

void DefineParameter(CInterface& core, const Parameter& p, CInterface::Callback& callback,
                     const DefineOwn& own) {
  const ParameterRange& range = p.range;
  std::string label = p.label ? std::string(p.prefix) + p.label : std::string();
  switch (p.kind) {
    case ParameterKind::kGroup:
      core.BeginGroup(std::move(label), p.tooltip);
      break;
    case ParameterKind::kEndGroup:
      core.EndGroup();
      break;
    case ParameterKind::kNumber:
      core.AddSpinner(std::move(label), p.tooltip, p.number, range.min, range.max, range.step,
                      range.decimals, p.asInput, &callback);
      break;
    case ParameterKind::kCount:
      core.AddSpinnerInt(std::move(label), p.tooltip, p.count, static_cast<int>(range.min),
                         static_cast<int>(range.max), static_cast<int>(range.step), 0, p.asInput,
                         &callback);
      break;
    case ParameterKind::kFlag:
      core.AddCheckBox(std::move(label), p.tooltip, p.flag, &callback);
      break;
    case ParameterKind::kChoice:
      core.AddComboBox(std::move(label), p.tooltip, p.items(), p.count, &callback);
      break;
    case ParameterKind::kButton:
      core.AddButton(std::move(label), p.tooltip, &callback);
      break;
    case ParameterKind::kOwn:
      own(p.own);
      break;
  }
}

}  // namespace

void DefineParameters(CInterface& core, const std::vector<Parameter>& parameters,
                      CInterface::Callback& callback, const DefineOwn& own) {
  for (const Parameter& p : parameters) {
    const bool isShown =
        p.label || p.kind == ParameterKind::kEndGroup || p.kind == ParameterKind::kOwn;
    if (isShown) DefineParameter(core, p, callback, own);
  }
}

std::vector<const Parameter*> SavedParameters(const std::vector<Parameter>& parameters, int part) {
  std::vector<const Parameter*> saved;
  for (const Parameter& p : parameters)
    if (p.place != kNotSaved && p.place / kSavedPart == part) saved.push_back(&p);
  std::stable_sort(saved.begin(), saved.end(),
                   [](const Parameter* a, const Parameter* b) { return a->place < b->place; });
  return saved;
}

void SaveParameters(util::DataChunk& chunk, const std::vector<Parameter>& parameters, int part) {
  for (const Parameter* p : SavedParameters(parameters, part)) {
    if (p->number) chunk.addValue(p->key, *p->number);
    if (p->count) chunk.addValue(p->key, *p->count);
    if (p->flag) chunk.addValue(p->key, *p->flag);
  }
}

bool LoadParameters(SaveReader& reader, const std::vector<Parameter>& parameters, int part) {
  bool isWithin = true;
  for (const Parameter* p : SavedParameters(parameters, part)) {
    if (p->number) reader.Read(p->key, *p->number, p->range.min, p->range.max);
    if (p->flag) reader.Read(p->key, *p->flag);
    if (!p->count) continue;
    const bool isChoice = p->kind == ParameterKind::kChoice;
    const int min = isChoice ? 0 : static_cast<int>(p->range.min);
    const int max =
        isChoice ? static_cast<int>(p->items().size()) - 1 : static_cast<int>(p->range.max);
    reader.ReadStruct(p->key, *p->count);
    isWithin = isWithin && *p->count >= min && *p->count <= max;
    *p->count = std::clamp(*p->count, min, max);
  }
  return isWithin;
}

}  // namespace orv::rws::addon
