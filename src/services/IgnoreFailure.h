// IgnoreFailure: runs a step whose failure doesn't end the operation.
#pragma once

#include <utility>

namespace TvEmailServices {

// Runs the step. False if it raised a failure, which is dropped; what the step did before isn't undone.
template <class Step>
bool IgnoreFailure(Step&& step) {
  try {
    std::forward<Step>(step)();
    return true;
  } catch (...) {
    return false;
  }
}

}  // namespace TvEmailServices
