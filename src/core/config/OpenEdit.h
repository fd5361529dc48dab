// An edit of many changes that is one step of undo.
#pragma once

namespace orv::rws::core {

/// The core holds at most one; ending or destroying it closes its step.
class OpenEdit {
 public:
  OpenEdit() = default;
  OpenEdit(const OpenEdit&) = delete;
  OpenEdit& operator=(const OpenEdit&) = delete;
  virtual ~OpenEdit() = default;
  /// Closes the undo step. None is left when all stands where it began, unless it is that of a
  /// request that is one by itself (`keep`).
  virtual void End(bool keep = false) = 0;
  /// Puts all back to the beginning and ends.
  virtual void Cancel() = 0;
};

}  // namespace orv::rws::core
