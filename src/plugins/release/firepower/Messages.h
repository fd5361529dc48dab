// What a gun tells its user when something can't be done.
#pragma once

namespace orv::rws::addon {

inline constexpr char kErrorOnCreate[] = "Error in onCreate";
inline constexpr char kErrorOnNodeCreate[] = "Error in onNodeCreate";  ///< of a projectile
inline constexpr char kErrorOnNodeDelete[] = "Error in onNodeDelete";  ///< of a projectile
/// A frame without trigger or barrel, or with a barrel of no size: nothing is fired.
inline constexpr char kErrorOnFrame[] = "Error in onFrame";
/// A projectile whose pose can't be computed or written: it stays where it was.
inline constexpr char kErrorOnBulletFrame[] = "Error in onBulletFrame";
inline constexpr char kErrorOnSave[] = "Error in onSave";
inline constexpr char kErrorOnLoad[] = "Error in onLoad";
/// A take begins without trigger or barrel.
inline constexpr char kErrorWhenStarting[] = "Error when starting to record.";
/// Trigger or barrel have gone by a take's end.
inline constexpr char kErrorWhenStopping[] = "Error when stopping record";
/// A gun is deleted in the middle of a take.
inline constexpr char kErrorWhenDeleting[] = "Error when deleting Firepower.";
inline constexpr char kCouldNotLoadBullet[] = "Could not load bullet";
/// A node has gone from the scene. Without trigger or barrel there is no gun; a projectile is left
/// out.
inline constexpr char kNoNode[] = "no node";

}  // namespace orv::rws::addon
