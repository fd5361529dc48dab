#include "adaptor/maya/scene/PluginXML.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "adaptor/maya/scene/StorageTable.h"
#include "core/instances/RecordKeys.h"
#include "util/NumberText.h"
#include "util/xml/Base64.h"

namespace orv::rws::adaptor::maya {

namespace {

using util::xml::Element;
using util::xml::Tag;
namespace keys = core::record;

constexpr char kPluginRoot[] = "RWT_Plugin";
constexpr char kPluginVersion[] = "2.5";
constexpr char kInputRoot[] = "inputvalues";
constexpr char kFile[] = "file";

/// Attributes of the root that have storage attributes of their own, or are given.
bool IsHead(const std::string& name) {
  return name == keys::kVersion || name == keys::kType || name == keys::kName;
}

Tag SaveDataTag(const StorageValues& values) {
  Tag tag(keys::kSaveData);
  if (values.Number(kUserDataSize) <= 0) return tag;
  tag.setAttribute(keys::kSize, std::to_string(values.Number(kUserDataSize)));
  tag.setText(values.Text(kUserData));
  return tag;
}

/// False when the profile is no XML.
bool InputProfileTag(const StorageValues& values, Tag& tag, std::string& problem) {
  tag = Tag(keys::kInputProfile);
  if (!values.Text(kProfileName).empty()) tag.setAttribute(kFile, values.Text(kProfileName));
  std::vector<unsigned char> bytes;
  if (!util::xml::decodeBase64(values.Text(kProfileCustom), bytes)) {
    problem = "its input profile is no base64";
    return false;
  }
  const auto wanted = static_cast<std::size_t>(std::max(values.Number(kProfileSize), 0));
  bytes.resize(std::min(bytes.size(), wanted));
  if (bytes.empty()) return true;
  Tag profile("");
  std::string why;
  if (profile.loadText(std::string(bytes.begin(), bytes.end()), &why) != 0) {
    problem = "its input profile can't be read: " + why;
    return false;
  }
  tag.emplaceChild(std::move(profile));
  return true;
}

Tag NodeInfoTag(const StorageValues& values) {
  Tag info(keys::kNodeInfo);
  const auto& handles = values.Texts(kNodeHandles);
  const auto& names = values.Texts(kNodeNames);
  const auto& parents = values.Texts(kParentHandles);
  for (std::size_t i = 0; i < handles.size(); ++i) {
    Tag node(keys::kNode);
    node.setAttribute(keys::kName, i < names.size() ? names[i] : std::string());
    node.setAttribute(keys::kHandle, handles[i]);
    if (i < parents.size() && !parents[i].empty()) node.setAttribute(keys::kParent, parents[i]);
    info.emplaceChild(std::move(node));
  }
  return info;
}

void StoreNodeInfo(const Element& info, StorageValues& values) {
  std::vector<std::string> handles, names, parents;
  for (const Element* node : info.children) {
    if (!node->isTag(keys::kNode)) continue;
    handles.push_back(node->attribute(keys::kHandle));
    names.push_back(node->attribute(keys::kName));
    parents.push_back(node->attribute(keys::kParent));
  }
  values.SetTexts(kNodeHandles, std::move(handles));
  values.SetTexts(kNodeNames, std::move(names));
  values.SetTexts(kParentHandles, std::move(parents));
}

void StoreSaveData(const Element& tag, StorageValues& values) {
  int size = 0;
  util::parseNumber(tag.attribute(keys::kSize), size);
  values.SetNumber(kUserDataSize, size);
  values.SetText(kUserData, tag.text());
}

void StoreInputProfile(const Element& tag, StorageValues& values) {
  values.SetText(kProfileName, tag.attribute(kFile));
  const Element& profile = tag.child(keys::kProfile);
  const std::string text = profile.isEmpty() ? std::string() : profile.toText("", "\n");
  values.SetNumber(kProfileSize, static_cast<int>(text.size()));
  values.SetText(kProfileCustom, util::xml::encodeBase64(text.data(), text.size()));
}

bool HasAttributeOfItsOwn(const Element& child) {
  return child.isTag(keys::kSaveData) || child.isTag(keys::kInputProfile) ||
         child.isTag(keys::kNodeInfo);
}

}  // namespace

Tag BuildPluginXML(const StorageValues& values, std::string& problem) {
  Tag input("");
  const std::string& inputText = values.Text(kInputValues);
  std::string why;
  if (!inputText.empty() && input.loadText(inputText, &why) != 0) {
    problem = "its values can't be read: " + why;
    return Tag("");
  }
  Tag root(kPluginRoot);
  root.setAttribute(keys::kVersion, kPluginVersion);
  root.setAttribute(keys::kType, values.Text(kPluginName));
  root.setAttribute(keys::kName, values.Text(kCameraName));
  for (const auto& [name, value] : input.attributes)
    if (!IsHead(name)) root.setAttribute(name, value);
  // What stands in attributes of its own left an empty tag in its place.
  bool hasSaveData = false, hasProfile = false, hasNodes = false;
  Tag profile("");
  if (!InputProfileTag(values, profile, problem)) return Tag("");
  for (const Element* child : input.children) {
    if (child->isTag(keys::kSaveData) && !std::exchange(hasSaveData, true))
      root.emplaceChild(SaveDataTag(values));
    else if (child->isTag(keys::kInputProfile) && !std::exchange(hasProfile, true))
      root.addChild(profile);
    else if (child->isTag(keys::kNodeInfo) && !std::exchange(hasNodes, true))
      root.emplaceChild(NodeInfoTag(values));
    else
      root.addChild(*child);
  }
  if (!hasSaveData && (inputText.empty() || values.Number(kUserDataSize) > 0))
    root.emplaceChild(SaveDataTag(values));
  if (!hasProfile && (inputText.empty() || values.Number(kProfileSize) > 0)) root.addChild(profile);
  if (!hasNodes && (inputText.empty() || !values.Texts(kNodeHandles).empty()))
    root.emplaceChild(NodeInfoTag(values));
  return root;
}

StorageValues StoreRecord(const RigRecord& record) {
  if (record.Damaged()) return StorageValues::FromRaw(record.raw);
  StorageValues values;
  values.SetText(kPluginName, record.kind);
  values.SetText(kCameraName, record.name);
  Tag root("");
  // SceneRigs gives what it wrote itself or what ReadRecord put together.
  if (root.loadText(record.record) != 0) return values;
  Tag input(kInputRoot);
  for (const auto& [name, value] : root.attributes)
    if (!IsHead(name)) input.setAttribute(name, value);
  for (const Element* child : root.children) {
    if (HasAttributeOfItsOwn(*child))
      input.emplaceChild(Tag(child->name));
    else
      input.addChild(*child);
  }
  StoreSaveData(root.child(keys::kSaveData), values);
  StoreInputProfile(root.child(keys::kInputProfile), values);
  StoreNodeInfo(root.child(keys::kNodeInfo), values);
  values.SetText(kInputValues, input.toText("", "\n"));
  return values;
}

RigRecord ReadRecord(const StorageValues& values) {
  RigRecord record;
  record.kind = values.Text(kPluginName);
  record.name = values.Text(kCameraName);
  const Tag tag = BuildPluginXML(values, record.problem);
  if (record.Damaged())
    record.raw = values.ToRaw();
  else
    record.record = tag.toText("", "\n");
  return record;
}

std::string RenameTag(const std::string& tag, const std::string& from, const std::string& to) {
  const bool isOfRig =
      tag.size() > from.size() && tag[from.size()] == '/' && tag.compare(0, from.size(), from) == 0;
  return isOfRig ? to + tag.substr(from.size()) : tag;
}

void RenameRecord(RigRecord& record, const std::string& name) {
  Tag root("");
  if (record.Damaged() || root.loadText(record.record) != 0) return;
  root.setAttribute(keys::kName, name);
  if (Element* info = root.findChild(keys::kNodeInfo)) {
    for (Element* node : info->children)
      node->setAttribute(keys::kHandle,
                         RenameTag(node->attribute(keys::kHandle), record.name, name));
  }
  record.record = root.toText("", "\n");
  record.name = name;
}

}  // namespace orv::rws::adaptor::maya
