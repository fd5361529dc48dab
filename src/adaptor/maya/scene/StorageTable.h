// The attributes of the nodes that a scene file keeps rigs in: one table a type.
#pragma once

#include <array>

namespace orv::rws::adaptor::maya {

enum class StorageKind { kText, kTexts, kNumber };

struct StorageAttribute {
  const char* longName;
  const char* shortName;
  StorageKind kind;
};

inline constexpr char kPluginName[] = "PluginName";        ///< the rig's kind
inline constexpr char kInputValues[] = "InputValues";      ///< XML of what has no attribute
inline constexpr char kCameraName[] = "CameraName";        ///< the rig's name
inline constexpr char kUserDataSize[] = "UserDataSize";    ///< bytes
inline constexpr char kUserData[] = "UserData";            ///< base64 of the rig's own data
inline constexpr char kProfileName[] = "ProfileName";      ///< input profile in use
inline constexpr char kProfileSize[] = "ProfileSize";      ///< bytes
inline constexpr char kProfileCustom[] = "ProfileCustom";  ///< base64 of the input profile
inline constexpr char kNodeHandles[] = "NodeHandles";      ///< tags
inline constexpr char kNodeNames[] = "NodeNames";          ///< as the rig knows them, same order
inline constexpr char kParentHandles[] = "ParentHandles";  ///< same order
inline constexpr char kAdaptorName[] = "AdaptorName";
inline constexpr char kAdaptorState[] = "AdaptorState";  ///< see StateBuilder

/// Of CStorageNode, one a rig.
inline constexpr std::array<StorageAttribute, 11> kRigAttributes{{
    {kPluginName, "pluginname", StorageKind::kText},
    {kInputValues, "InputValues", StorageKind::kText},
    {kCameraName, "cameraname", StorageKind::kText},
    {kUserDataSize, "userdatasize", StorageKind::kNumber},
    {kUserData, "userdata", StorageKind::kText},
    {kProfileName, "profilename", StorageKind::kText},
    {kProfileSize, "profilesize", StorageKind::kNumber},
    {kProfileCustom, "profilecustom", StorageKind::kText},
    {kNodeHandles, "nodehandles", StorageKind::kTexts},
    {kNodeNames, "nodenames", StorageKind::kTexts},
    {kParentHandles, "parenthandles", StorageKind::kTexts},
}};

/// Of StorageNode, one a scene.
inline constexpr std::array<StorageAttribute, 3> kSceneAttributes{{
    {kAdaptorName, "adaptorname", StorageKind::kText},
    {kAdaptorState, "adaptorstate", StorageKind::kText},
    {kNodeHandles, "nodehandles", StorageKind::kTexts},
}};

}  // namespace orv::rws::adaptor::maya
