#include "desktop/ControlState.h"

namespace Desktop {

using namespace Platform;

ControlState::ControlState(const Control& control)
    : Name(control.Name()),
      Kind(control.Kind()),
      Place(control.Place()),
      Caption(control.Caption()),
      Text(control.Text()),
      Value(control.Value()),
      List(control.List()),
      ListIndex(control.ListIndex()),
      Enabled(control.Enabled()),
      Visible(control.Visible()),
      Locked(control.Locked()),
      Default(control.IsDefault()),
      Cancel(control.IsCancel()),
      BackColor(control.BackColor()),
      MaxLength(control.MaxLength()),
      SelStart(control.SelStart()),
      SelLength(control.SelLength()),
      PasswordChar(control.PasswordChar()),
      ImeMode(control.ImeMode()) {
  if (Kind != ControlKind::CommonDialog) Font = control.Font();
}

FormState::FormState(Form& form)
    : Name(form.Name()),
      Caption(form.Caption()),
      ClientWidth(form.ClientWidth()),
      ClientHeight(form.ClientHeight()) {
  for (const auto& control : form.Controls()) Controls.emplace_back(*control);
}

}  // namespace Desktop
