// modCgfOut: what stands in the outbound dialog when it opens.
#pragma once

#include "platform/Value.h"

namespace TvEmailServices {

using namespace Platform;

class frmCfgOut;

// Localizes the form, fills its lists and puts the stored settings into it. False, after a report, on a
// raised failure: the form isn't fit to be shown. Loads the form.
bool PrepareOutboundForm(frmCfgOut& form);

// Puts the stored settings into a form whose lists are filled; profiles is the array that cmbProfile was
// filled from. Missing settings end it early without a word, and what was read until then stands. A raised
// failure is shown.
void LoadOutboundSettings(frmCfgOut& form, const Value& profiles);

}  // namespace TvEmailServices
