#include "src/dialogs/modCfgIn.h"

namespace TvEmailServices {
namespace {

thread_local std::int32_t configureState = ConfigureStateNone;

}  // namespace

std::int32_t GetConfigureState() {
  return configureState;
}

void SetConfigureState(std::int32_t state) {
  configureState = state;
}

}  // namespace TvEmailServices
