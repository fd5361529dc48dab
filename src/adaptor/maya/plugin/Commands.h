// The commands of the plug-in.
#pragma once

#include <maya/MArgList.h>
#include <maya/MPxCommand.h>
#include <maya/MStatus.h>

#include <vector>

namespace orv::rws::adaptor::maya {

/// A command without undo, which its one method runs.
class PlainCommand : public MPxCommand {
 public:
  MStatus doIt(const MArgList& args) override = 0;
  bool isUndoable() const override { return false; }
};

/// Opens the main window.
class StartOrvelRigwrightStudioCmd : public PlainCommand {
 public:
  MStatus doIt(const MArgList& args) override;
};

/// An entry of the host's undo queue that stands for a block of our own steps. Those are done when
/// it is made; its undo and redo step our history, if that still ends with this block.
class OrvelUndoWrapper : public MPxCommand {
 public:
  MStatus doIt(const MArgList& args) override;
  MStatus undoIt() override;
  MStatus redoIt() override;
  bool isUndoable() const override { return m_undoable; }

 private:
  MStatus Step(bool back) const;

  int m_id = -1;  ///< of the block
  bool m_undoable = true;
};

class OrvelStartAnimationCmd : public PlainCommand {
 public:
  MStatus doIt(const MArgList& args) override;
};

class OrvelStopAnimationCmd : public PlainCommand {
 public:
  MStatus doIt(const MArgList& args) override;
};

/// From the present time to the end of the range; where the host has no windows, from the range's
/// start, and it returns when all is done.
class OrvelReSimulateCmd : public PlainCommand {
 public:
  MStatus doIt(const MArgList& args) override;
};

/// A file of the suffix ".oip" is an input profile, any other a configuration profile. A name is
/// looked up among the rig's own; the path of a file that is not among them adds it.
class OrvelLoadProfileCmd : public PlainCommand {
 public:
  MStatus doIt(const MArgList& args) override;
};

class OrvelCreateToolCmd : public PlainCommand {
 public:
  MStatus doIt(const MArgList& args) override;
};

class OrvelSelectToolCmd : public PlainCommand {
 public:
  MStatus doIt(const MArgList& args) override;
};

class OrvelIncSlowFactorCmd : public PlainCommand {
 public:
  MStatus doIt(const MArgList& args) override;
};

class OrvelDecSlowFactorCmd : public PlainCommand {
 public:
  MStatus doIt(const MArgList& args) override;
};

class OrvelCreate4WheelerExtCmd : public PlainCommand {
 public:
  MStatus doIt(const MArgList& args) override;
};

class OrvelCloneToolCmd : public PlainCommand {
 public:
  MStatus doIt(const MArgList& args) override;
};

class OrvelRenameToolCmd : public PlainCommand {
 public:
  MStatus doIt(const MArgList& args) override;
};

class OrvelDeleteToolCmd : public PlainCommand {
 public:
  MStatus doIt(const MArgList& args) override;
};

/// Runs the probes and writes their report, see SelfTest.
class OrvelSelfTestCmd : public PlainCommand {
 public:
  MStatus doIt(const MArgList& args) override;
};

/// A row of what is registered: in this order, and taken back in the order of `leave`.
struct CommandRow {
  const char* name;
  void* (*make)();
  const char* failure;  ///< of the registration
  int leave;
};

const std::vector<CommandRow>& AllCommands();
/// Behind all others, and behind the node types.
const CommandRow& SelfTestCommand();

}  // namespace orv::rws::adaptor::maya
