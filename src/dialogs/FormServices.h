// FormServices: language, font and place of a form, and the selection on focus. Both dialogs use it.
//
// Called on the form's thread. The name of the font is read once in each thread.
#pragma once

#include "platform/Boolean.h"
#include "platform/Forms/Form.h"

namespace TvEmailServices {

using namespace Platform;

// Moves the form to the middle of the screen; null: does nothing. Raises what the form or the toolkit raises,
// and 6 for a size that is too large.
void CenterForm(Form* form);

// The caption tag: the number of the text that LocalizeForm uses as the caption.
String CaptionTag(std::int32_t textNumber);

// Sets the captions of the form and of its labels, buttons and check boxes to the texts of their caption
// tags. Such a control without a tag gets an empty caption. A failure is shown; the captions after it stay as
// they are.
void LocalizeForm(Form& form);

// Sets the font of the form and its controls to that of the resource service. Controls that fail are left
// out.
void ApplyFormFont(Form& form);

// The name of that font; empty: the toolkit's default. Raises what the resource service raises, and 91
// without it.
String GetFormFontName();

// Sets the font size, in points, of every control that has a font.
void SetFontSizes(Form& form, double points);

// For a text box's GotFocus: selects all of its text unless focusByMouse is true, and then clears
// focusByMouse. A dialog has one such flag for all its boxes.
void SelectOnFocus(Control& textBox, Boolean& focusByMouse);

}  // namespace TvEmailServices
