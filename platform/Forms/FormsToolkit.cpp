#include "platform/Forms/FormsToolkit.h"

#include "platform/Failure.h"
#include "platform/Services.h"

namespace Platform {

FormsToolkit::~FormsToolkit() = default;

void CommonDialog::ShowOpen() {
  if (auto chosen = Services().Toolkit().OpenFile(Request)) {
    Request.FileName = std::move(*chosen);
  } else if (CancelError) {
    Raise(FailureNumber::FileDialogCancelled);
  }
}

}  // namespace Platform
