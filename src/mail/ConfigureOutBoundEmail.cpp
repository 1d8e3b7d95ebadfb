// ConfigureOutBoundEmail: the project tool's call for the dialog of a user's outbound settings.
#include "src/mail/EMailManager.h"
#include "src/outbound/frmCfgOut.h"
#include "src/outbound/modCgfOut.h"
#include "src/services/modMain.h"
#include "src/services/modResource.h"

namespace TvEmailServices {

Boolean EMailManager::ConfigureOutBoundEmail() {
  if (!IsResourceLoaded(true)) return False;
  std::unique_ptr<frmCfgOut> form;
  Boolean configured;
  try {
    form = std::make_unique<frmCfgOut>();
    if (PrepareOutboundForm(*form)) {
      form->ShowModal();
      configured = form->WasOutBoundConfigured();
    }
    form->Unload();
  } catch (...) {
    ShowErrorMessage(CurrentFailure(), 0, {});
    configured = False;
  }
  return configured;
}

}  // namespace TvEmailServices
