// What a step of undo changed on plugs.
#pragma once

#include <maya/MAnimCurveChange.h>
#include <maya/MDGModifier.h>
#include <maya/MPlug.h>

#include <memory>
#include <vector>

namespace orv::rws::adaptor::maya {

/// Values, keys and new curves of some plugs, in one block of undo. Curves are made, and connected,
/// ahead of all changes of keys, so that these have what they change when they are redone.
class PlugChange {
 public:
  /// `plugs` as they stand; `block` is the id of the block that is open.
  PlugChange(const MPlug* plugs, std::size_t count, int block);
  PlugChange(const PlugChange&) = delete;
  PlugChange& operator=(const PlugChange&) = delete;

  int GetBlock() const { return m_block; }
  /// Where changes of keys are noted.
  MAnimCurveChange* GetKeys() { return &m_keys; }
  /// For curves that are made; run by the caller.
  MDGModifier& AddCurves();
  /// Takes all back, or does it again, in turn.
  void Exchange();

 private:
  struct Value {
    MPlug plug;
    double value;
  };
  void PutValues();

  int m_block;
  bool m_undone = false;
  std::vector<Value> m_values;  ///< to be exchanged with those that stand
  std::vector<std::unique_ptr<MDGModifier>> m_curves;
  MAnimCurveChange m_keys;
};

}  // namespace orv::rws::adaptor::maya
