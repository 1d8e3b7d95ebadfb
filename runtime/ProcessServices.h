// ProcessServices: the platform services of a real process. Platform::Services() gives them unless a test
// has installed others.
#pragma once

#include <memory>

#include "platform/Forms/FormsToolkit.h"

namespace Runtime {

// Sets the forms toolkit of the process; null for none. Not to be called while a form is shown.
void InstallToolkit(std::shared_ptr<Platform::FormsToolkit> toolkit);

}  // namespace Runtime
