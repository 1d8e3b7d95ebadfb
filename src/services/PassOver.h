// PassOver: a step whose failure doesn't end the operation that it belongs to.
#pragma once

#include <utility>

namespace TvEmailServices {

// Runs the step. False if it failed; what it did before its failure stands, and the failure is gone.
template <class Step>
bool PassOver(Step&& step) {
  try {
    std::forward<Step>(step)();
    return true;
  } catch (...) {
    return false;
  }
}

}  // namespace TvEmailServices
