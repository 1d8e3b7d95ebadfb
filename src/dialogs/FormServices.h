// FormServices: what both dialogs share: a form's language, font and place, and the rule of selecting on
// focus.
//
// All of it works on any form, on the thread that shows it. The font's name is asked for once in each thread.
#pragma once

#include "platform/Boolean.h"
#include "platform/Forms/Form.h"

namespace TvEmailServices {

using namespace Platform;

// Puts the form into the middle of the screen, its size unchanged; null does nothing. A failure passes.
void CenterForm(Form* form);

// The tag of a form or control whose caption is the text of that number.
String CaptionTag(std::int32_t textNumber);

// Captions of the form and of its labels, buttons and check boxes become the texts of their caption tags.
// One of these controls without a number ends without a caption. A failure is shown; captions not reached
// stay.
void LocalizeForm(Form& form);

// Gives the form and its controls the font of the resource service. A step that fails is skipped.
void ApplyFormFont(Form& form);

// The name of that font, which may be empty. A failure passes.
String GetFormFontName();

// Every control that has a font to this size in points; one without is skipped.
void SetFontSizes(Form& form, double points);

// The handlers of a text box: on gaining the focus all of its text is selected, unless the pointer brought
// it. The flag is the dialog's one FocusByMouse, and either way it is false afterwards.
void SelectOnFocus(Control& textBox, Boolean& focusByMouse);

}  // namespace TvEmailServices
