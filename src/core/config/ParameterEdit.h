// One edit of a parameter, from the first touch to the last.
#pragma once

#include <memory>
#include <string>

#include "core/config/OpenEdit.h"
#include "core/instances/InstanceHandle.h"

namespace orv::rws {
class AdaptorInterface;
}

namespace orv::rws::core {

class ConfigElement;
class InstanceHost;
struct ParameterState;

/// Makes however many changes of one parameter one undo step, which holds the parameters that have
/// changed. The undo block opens with the first change, unless it is part of another, and closes
/// with the end.
class ParameterEdit : public OpenEdit {
 public:
  ParameterEdit(Instance& instance, ConfigElement& element);
  /// Ends it.
  ~ParameterEdit() override;

  bool Is(const Instance& instance, int element) const;
  /// Sets the value and tells the rig. False with `problem` filled, and nothing changed, when the
  /// text is no value; a value out of range is clamped and `problem` says so.
  bool Set(const std::string& text, std::string& problem);
  /// As Set, but nothing happens when the value stands there.
  bool Drag(const std::string& text, std::string& problem);
  /// When the value is back where it began so is all else that the rig has set with it.
  void End(bool keep = false) override;
  void Cancel() override;

 private:
  void Open();
  static void PutBack(const ParameterState& before, Instance& instance);

  InstanceHost& m_host;
  InstanceHandle m_instance;
  ConfigElement* m_element;                  ///< of the instance
  std::shared_ptr<ParameterState> m_before;  ///< the undo step's too; null before the first change
  bool m_ownsBlock = false;
};

}  // namespace orv::rws::core
