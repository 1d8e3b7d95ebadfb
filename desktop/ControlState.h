// ControlState: copies of a control and of a form for the windows' thread, which may not read the form
// itself. To be created on the form's thread.
#pragma once

#include <optional>
#include <vector>

#include "platform/Forms/Form.h"

namespace Desktop {

struct ControlState {
  explicit ControlState(const Platform::Control& control);

  Platform::String Name;
  Platform::ControlKind Kind;
  Platform::Place Place;
  Platform::String Caption;
  Platform::String Text;
  std::int16_t Value;
  std::vector<Platform::String> List;
  std::int32_t ListIndex;
  bool Enabled, Visible, Locked, Default, Cancel;
  std::uint32_t BackColor;
  std::int32_t MaxLength;
  std::int32_t SelStart, SelLength;
  char16_t PasswordChar;
  std::int32_t ImeMode;
  std::optional<Platform::Font> Font;
};

struct FormState {
  explicit FormState(Platform::Form& form);

  Platform::String Name;
  Platform::String Caption;
  float ClientWidth, ClientHeight;
  std::vector<ControlState> Controls;  // in tab order
};

}  // namespace Desktop
