// Splitting a loop over the machine's cores. The engine's batch work (the rule stack over
// thousands of files) is per-file and independent once counters are numbered, so it is cut into
// one contiguous range per core. Small loops stay on the calling thread.
#pragma once

#include <cstddef>
#include <functional>

namespace tessane {

// Calls work(begin, end) over disjoint ranges covering [0, count), on up to as many threads as
// the machine has cores, each range at least `minimumPerThread` long. Returns when all are
// done; an exception thrown by any range is rethrown here.
void parallelFor(std::size_t count, std::size_t minimumPerThread,
                 const std::function<void(std::size_t, std::size_t)>& work);

}  // namespace tessane
