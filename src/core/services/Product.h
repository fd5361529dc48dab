// What this program is called.
#pragma once

namespace orv::rws::core {

inline constexpr char kProductName[] = "Orvel Rigwright";
inline constexpr char kProductVersion[] = "7.0";

}  // namespace orv::rws::core
