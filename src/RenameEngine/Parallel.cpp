#include "Parallel.h"

#include <algorithm>
#include <exception>
#include <thread>
#include <vector>

namespace tessane {

void parallelFor(std::size_t count, std::size_t minimumPerThread,
                 const std::function<void(std::size_t, std::size_t)>& work) {
  const std::size_t cores = std::max(1u, std::thread::hardware_concurrency());
  const std::size_t threads =
      std::clamp<std::size_t>(count / std::max<std::size_t>(minimumPerThread, 1), 1, cores);
  if (threads <= 1) {
    work(0, count);
    return;
  }
  std::vector<std::exception_ptr> errors(threads);
  std::vector<std::thread> helpers;
  helpers.reserve(threads - 1);
  const std::size_t chunk = (count + threads - 1) / threads;
  for (std::size_t t = 1; t < threads; ++t) {
    const std::size_t begin = std::min(count, t * chunk);
    const std::size_t end = std::min(count, begin + chunk);
    helpers.emplace_back([&work, &errors, t, begin, end] {
      try {
        work(begin, end);
      } catch (...) {
        errors[t] = std::current_exception();
      }
    });
  }
  try {
    work(0, std::min(count, chunk));
  } catch (...) {
    errors[0] = std::current_exception();
  }
  for (std::thread& h : helpers)
    h.join();
  for (const std::exception_ptr& e : errors) {
    if (e) std::rethrow_exception(e);
  }
}

}  // namespace tessane
