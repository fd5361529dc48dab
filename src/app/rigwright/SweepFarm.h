// Sweeps on a farm.
#pragma once

#include <vector>

namespace orv::app {

class Program;
class SweepFolder;

/// Sends `rows` to Slurm as one array of jobs, `chunk` rows each, and returns. The farm's nodes
/// must see the sweep's folder, the scene and this program at the same paths; what they write lies
/// in the folder's `rows`, and what they say in its `slurm`.
void SubmitToFarm(Program& program, const SweepFolder& folder, const std::vector<long>& rows,
                  int chunk);

}  // namespace orv::app
