// UserInput: the user's input to a form. Every toolkit passes all input through it, so that the rules for
// what a user may do are in one place.
//
// Used on the thread that called ShowModal, while the form is shown; the form and the toolkit must outlive
// it. Input that the form's state doesn't allow (a hidden, disabled or read-only control, no such position)
// does nothing and gives false. A failure raised by a handler is shown in a message box, and the dialog stays
// usable; no operation raises it.
//
// The default button, which accepts the entries, isn't pressed while a box that the user can change holds a
// control character: a line end in an address or a name would forge headers of the mails sent with it. Then a
// message box says so, the focus moves to that box, and the result is true. A password may hold any
// character.
#pragma once

#include <functional>

#include "platform/Forms/FormsToolkit.h"

namespace Platform {

class UserInput {
 public:
  UserInput(Form& form, FormsToolkit& toolkit) : form_(form), toolkit_(toolkit) {}

  // The form's control of that name, or null.
  Control* Find(StringView name);

  void Activate();               // the window became active
  bool Focus(Control& control);  // by key or pointer
  bool MouseDown(Control& control);
  bool MouseMove(Control& control);
  bool Type(Control& control, StringView text);       // replaces the text; what is over MaxLength is cut
  bool Check(Control& control, bool on);              // fires Click if that changes it
  bool Choose(Control& list, std::int32_t position);  // fires Click, also on the same entry
  bool KeyUp(Control& control, std::int32_t keyCode);
  bool Scroll(Control& list);          // the open list was scrolled
  bool Press(Control& button);         // focus and Click
  bool Enter();                        // the default button
  bool Escape();                       // the cancel button
  void KeyDown(std::int32_t keyCode);  // seen by the form if it previews keys
  void Close();                        // the close box

 private:
  bool Usable(const Control& control, ControlKind kind) const;
  bool EntriesAreFit();
  bool PressWhere(bool (Control::*wanted)() const);
  void Act(const std::function<void()>& act);

  Form& form_;
  FormsToolkit& toolkit_;
};

}  // namespace Platform
