// What the core tells: one table of messages.
#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "core/services/Log.h"
#include "util/Message.h"
#include "util/Sentence.h"

namespace orv::rws::core {

// A window or host follows the core by `connect(&core)`. It reads once what the core holds, and
// then gets each change in `onMessage` as one of the structs below:
//
//   if (const auto* row = NewsIn<RowRenamed>(message)) ...
//
// - All listeners get the same messages in the same order, after the change. What one request
//   changes is told when the request is done. A listener may ask the core for anything meanwhile,
//   delete rows, subscribe and unsubscribe itself and others: what that changes is told when all
//   have had the present message.
// - So the core may be ahead of a message. Messages hold ids and values and no pointers: what an id
//   stands for may be gone when it is looked up, or, of a rig that is being made, not be there yet.
// - A listener that subscribes gets what happens from then on.
// - A listener that runs an event loop of its own, as a modal box does, holds the others up.
// - Nothing is told per frame and parameter. In a take a window reads gauges, live spinners, raw
//   values of controls and the progress of a run when it paints; what they came to is told when the
//   take has ended. TimeChanged comes once a tick, whatever the number of frames.

/// Of a rig or a group in the tree of rows; `row` is InstanceReference::GetId, which a rig keeps
/// when a deletion is undone. `parent` is that of a group, 0 for none around it.
struct RowCreated {
  static constexpr std::int32_t kId = 0x2001;
  int row;
  int parent;
  int index;  ///< among the parent's rows
  bool isGroup;
  std::string label;
  bool checked;
};

/// It holds no rows any more, and is no longer selected.
struct RowDeleted {
  static constexpr std::int32_t kId = 0x2002;
  int row;
};

struct RowRenamed {
  static constexpr std::int32_t kId = 0x2003;
  int row;
  std::string label;
};

/// With all that stands in it.
struct RowMoved {
  static constexpr std::int32_t kId = 0x2004;
  int row;
  int parent;
  int index;  ///< among the parent's rows, once the row has left its old place
};

struct RowChecked {
  static constexpr std::int32_t kId = 0x2005;
  int row;
  bool checked;
};

struct RowSelected {
  static constexpr std::int32_t kId = 0x2006;
  int row;
  bool selected;
};

/// Values, or the items of a combo box. `element` is the one that was edited, kAll where there is
/// no one; as a rig's callback may set others too, who shows several reads all again.
struct ParametersChanged {
  static constexpr std::int32_t kId = 0x2007;
  static constexpr int kAll = -1;
  int row;
  int element;
};

/// Mapping and response curve of one input by its index, or kAll. While a resimulation runs the
/// inputs are bound to controls of its own; it gives the others back with this message.
struct InputsChanged {
  static constexpr std::int32_t kId = 0x2008;
  static constexpr int kAll = -1;
  int row;
  int input;
};

/// The name of the config profile that counts as the rig's own.
struct ProfileChanged {
  static constexpr std::int32_t kId = 0x2009;
  int row;
  std::string profile;
};

enum class RunState { kIdle, kCountdown, kRecording, kResimulating };

struct RunStateChanged {
  static constexpr std::int32_t kId = 0x200A;
  RunState state;
};

/// The host's time (s). Gauges of rigs may have followed it.
struct TimeChanged {
  static constexpr std::int32_t kId = 0x200B;
  double time;
};

/// CoreInterface::GetSlowFactorIndex.
struct SlowFactorChanged {
  static constexpr std::int32_t kId = 0x200C;
  int index;
};

/// The list of kinds.
struct ToolsChanged {
  static constexpr std::int32_t kId = 0x200D;
};

/// The list of config or input profiles of one kind.
struct ProfileListChanged {
  static constexpr std::int32_t kId = 0x200E;
  std::string tool;  ///< Tool::GetDisplayId
  bool inputs;
};

/// A device has come or gone; inputs may have lost or found their control.
struct DevicesChanged {
  static constexpr std::int32_t kId = 0x200F;
};

/// A line of the log, of whatever thread and level. What listeners log about it is not told.
struct LogLine {
  static constexpr std::int32_t kId = 0x2010;
  LogLevel level;
  std::string text;
};

/// Of a device, of those that are away too; its controls may read otherwise from here on.
struct CalibrationsChanged {
  static constexpr std::int32_t kId = 0x2011;
};

/// What a check for updates came to. One that the user has not asked for tells only newer versions.
struct UpdateChecked {
  static constexpr std::int32_t kId = 0x2012;
  bool isNewer;
  std::string version;  ///< the newest there is; empty when the check failed
  std::string link;     ///< page about it, https; may be empty
  std::string problem;  ///< why the check failed; else empty
};

/// A hot key has asked for a take that can't begin now.
struct TakeRefused {
  static constexpr std::int32_t kId = 0x2013;
  util::Sentence why;
};

using CoreNews =
    std::variant<RowCreated, RowDeleted, RowRenamed, RowMoved, RowChecked, RowSelected,
                 ParametersChanged, InputsChanged, ProfileChanged, RunStateChanged, TimeChanged,
                 SlowFactorChanged, ToolsChanged, ProfileListChanged, DevicesChanged, LogLine,
                 CalibrationsChanged, UpdateChecked, TakeRefused>;

/// What a message of the core tells, good while it is delivered; null for another kind.
template <class News>
const News* NewsIn(const util::Message& message) {
  return message.id == News::kId
             ? reinterpret_cast<const News*>(static_cast<std::uintptr_t>(message.data))
             : nullptr;
}

}  // namespace orv::rws::core
