// modCgfOut: fills the outbound dialog. Called on the dialog's thread.
#pragma once

#include "platform/Value.h"

namespace TvEmailServices {

using namespace Platform;

class frmCfgOut;

// Loads and localizes the form, fills its lists and calls LoadOutboundSettings. False after a raised failure,
// which is shown: the form must not be shown then.
bool PrepareOutboundForm(frmCfgOut& form);

// Sets the stored settings in a form whose lists are filled; profiles is the array of cmbProfile's entries.
// Ends at the first missing setting, without a message; a raised failure is shown. The settings before it are
// then set.
void LoadOutboundSettings(frmCfgOut& form, const Value& profiles);

}  // namespace TvEmailServices
