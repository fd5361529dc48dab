// One edit of an input's response, from the first touch to the last.
#pragma once

#include "core/config/InputResponse.h"
#include "core/config/OpenEdit.h"
#include "core/instances/InstanceHandle.h"

namespace orv::rws::core {

class InstanceHost;

/// Makes however many changes of one input's response one undo step. The undo block opens with the
/// first change, unless it is part of another, and closes with the end.
class ResponseEdit : public OpenEdit {
 public:
  ResponseEdit(Instance& instance, int input);
  /// Ends it.
  ~ResponseEdit() override;

  bool Is(const Instance& instance, int input) const;
  /// Nothing happens when the response is so already.
  void Set(const InputResponse& response);
  void End(bool keep = false) override;
  void Cancel() override;

 private:
  /// Null when the rig has gone.
  unidevice::Property* FindInput() const;
  void Open(Instance& instance);
  void Tell(const Instance& instance) const;

  InstanceHost& m_host;
  InstanceHandle m_instance;
  int m_input;
  InputResponse m_before;
  bool m_changed = false;
  bool m_ownsBlock = false;
};

}  // namespace orv::rws::core
