// archive_paths.h: the names of the streams in files of a single curve, surface or topology.
#pragma once

namespace nmk_curves {

inline constexpr const char* path_of_curve = "/wireframe/Curve/1";
inline constexpr const char* path_of_surface = "/surface/1";
inline constexpr const char* path_of_topology = "/topology/shell/single/face/1";

}  // namespace nmk_curves
