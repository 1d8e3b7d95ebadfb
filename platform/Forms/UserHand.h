// UserHand: what a person can do to a form. Every toolkit acts on a model through it, so that the rules of
// what a user may and may not do stand in one place.
//
// Used on the thread that called ShowModal, while the form is shown. An act that the form's state doesn't
// allow (a hidden, disabled or read-only control, no such position) does nothing and gives false. A failure
// that leaves a handler is shown in a message box, and the dialog stays usable.
//
// The default button, which accepts the entries, isn't pressed while a box that the user can change holds a
// control character: an address or a name with a line end would forge headers of the mails that are sent with
// it. A message box says so, and the focus moves to that box. A password may hold any character.
#pragma once

#include <functional>

#include "platform/Forms/FormsToolkit.h"

namespace Platform {

class UserHand {
 public:
  UserHand(Form& form, FormsToolkit& toolkit) : form_(form), toolkit_(toolkit) {}

  // The form's control of that name, or null.
  Control* Find(StringView name);

  void Activate();               // the window came to the front
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
