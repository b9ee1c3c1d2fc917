// Realistic file names for benchmarks: what a season of shooting leaves on a disk.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace tessane::bench {

// `count` names, repeatable: about 90% plain camera names (RAW, JPEG, video, sidecars), 7% with
// accented letters (a tenth of those stored decomposed) and 3% with emoji.
std::vector<std::string> realisticNames(std::size_t count);

}  // namespace tessane::bench
