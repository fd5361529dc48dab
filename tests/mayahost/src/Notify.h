// Who wants to hear of what happens.
#pragma once
#include <string>

#include "Scene.h"

namespace mayahost {
void NotifyScene(int message);
/// False when a check callback refuses what is about to be done.
bool AskScene(int message);
void NotifyNode(bool added, const NodePtr& node);
void NotifyRemoval(const NodePtr& node);
void NotifyName(const NodePtr& node, const std::string& before);
void NotifyAttr(int message, const PlugRef& plug, const PlugRef& other = {});
void NotifyDirty(const PlugRef& plug);
void NotifyTime();
void NotifyConnection(const PlugRef& source, const PlugRef& destination, bool made);
void NotifyEvent(const std::string& event);
void NotifyCondition(const std::string& condition, bool state);
void NotifySelection();
/// Scene messages of plug-ins, with their texts.
void NotifyPlugin(int message, const std::vector<std::string>& texts);
/// A child got or lost a parent (null: the world).
void NotifyParent(const NodePtr& child, Node* parent, bool added);
void NotifyCurve(const NodePtr& curve);
void NotifyDuplicate(bool before);
void NotifyCommand(const std::string& line);
void NotifySaid(int type, const std::string& text);
void NotifyTimers();
bool AnybodyHearsDirt();

// As MNodeMessage numbers them.
constexpr int MNodeMessage_kMade = 0x1, MNodeMessage_kBroken = 0x2, MNodeMessage_kAttributeSet = 0x8, MNodeMessage_kLocked = 0x10, MNodeMessage_kAdded = 0x40,
              MNodeMessage_kRemoved = 0x80, MNodeMessage_kKeyable = 0x200, MNodeMessage_kIncoming = 0x800, MNodeMessage_kOther = 0x4000;
}  // namespace mayahost
