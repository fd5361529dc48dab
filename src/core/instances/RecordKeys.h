// The names in a scene's record of its rigs, rows and profiles, each in one place.
#pragma once

namespace orv::rws::core::record {

// Tags of a rig's record, in the order in which it has them.
inline constexpr char kSaveData[] = "savedata";
inline constexpr char kConfigProfile[] = "configprofile";
inline constexpr char kInputProfile[] = "inputprofile";
inline constexpr char kProfile[] = "profile";
inline constexpr char kProperty[] = "property";
inline constexpr char kTracks[] = "tracks";
inline constexpr char kTrack[] = "track";
inline constexpr char kOutputs[] = "outputs";
inline constexpr char kOutput[] = "output";
inline constexpr char kLiveSpinners[] = "livespinners";
inline constexpr char kLiveSpinner[] = "livespinner";
inline constexpr char kNodeInfo[] = "nodeinfo";
inline constexpr char kNode[] = "node";

// Tags of rows and of a configuration.
inline constexpr char kRows[] = "rows";
inline constexpr char kGroup[] = "group";
inline constexpr char kRig[] = "rig";
inline constexpr char kItem[] = "item";

// Attributes.
inline constexpr char kName[] = "name";
inline constexpr char kVersion[] = "version";
inline constexpr char kChecked[] = "checked";
inline constexpr char kHandle[] = "handle";
inline constexpr char kParent[] = "parent";
inline constexpr char kSize[] = "size";
inline constexpr char kValue[] = "value";
inline constexpr char kInput[] = "input";
inline constexpr char kStart[] = "start";
inline constexpr char kEnd[] = "end";
inline constexpr char kId[] = "id";
inline constexpr char kLabel[] = "label";
inline constexpr char kType[] = "type";
inline constexpr char kBlob[] = "blob";
inline constexpr char kText[] = "text";

}  // namespace orv::rws::core::record
