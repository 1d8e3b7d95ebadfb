// Control: one control of a form's model.
//
// A control belongs to its form and is used on the thread that uses the form. Setters tell the form's
// observer; setting a check box's value or a list's position fires Click, as a user's hand would.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/Forms/Font.h"
#include "platform/Text.h"

namespace Platform {

class Form;

enum class ControlKind { Label, TextBox, CommandButton, CheckBox, ComboBox, CommonDialog };

enum class ControlProperty {
  Caption,
  Text,
  Value,
  List,
  ListIndex,
  Enabled,
  Visible,
  Locked,
  BackColor,
  MaxLength,
  Font,
  Selection
};

// System colours, as the platform numbers them.
inline constexpr std::uint32_t WindowBackground = 0x80000005;
inline constexpr std::uint32_t ButtonFace = 0x8000000F;

// A place in twips, 1440 to the inch, inside the form's client area.
struct Place {
  float Left = 0, Top = 0, Width = 0, Height = 0;
};

// What a dialog's design stores of a control.
struct ControlDesign {
  String Name;
  ControlKind Kind = ControlKind::Label;
  String Caption = {};
  String Tag = {};
  Platform::Place Place = {};
  bool Visible = true;
  char16_t PasswordChar = 0;  // the echo of every character; 0: the text itself
  std::int32_t ImeMode = 0;   // 3: input methods switched off
  bool Default = false;       // the button that answers Enter
  bool Cancel = false;        // the button that answers Escape
};

class Control {
 public:
  Control(Form& form, ControlDesign design);
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  const String& Name() const { return design_.Name; }
  ControlKind Kind() const { return design_.Kind; }
  StringView TypeName() const;  // "Label", "TextBox", "CommandButton", "CheckBox", "ComboBox", "CommonDialog"
  const String& Tag() const { return design_.Tag; }
  const Platform::Place& Place() const { return design_.Place; }
  char16_t PasswordChar() const { return design_.PasswordChar; }
  std::int32_t ImeMode() const { return design_.ImeMode; }
  bool IsDefault() const { return design_.Default; }
  bool IsCancel() const { return design_.Cancel; }

  const String& Caption() const { return design_.Caption; }
  void SetCaption(String caption);

  // A text box's text, cut at MaxLength; of a drop-down list the entry at its position, or the empty string.
  // Locked binds the user alone.
  String Text() const;
  void SetText(String text);

  // A check box: 0 or 1. A change fires Click.
  std::int16_t Value() const { return value_; }
  void SetValue(std::int16_t value);

  // A drop-down list. Its position counts from 0; -1 is none. Every setting fires Click, also of the position
  // that it has; one outside the list raises 5.
  const std::vector<String>& List() const { return list_; }
  void AddItem(String text);
  std::int32_t ListIndex() const { return listIndex_; }
  void SetListIndex(std::int32_t position);

  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled);
  bool Visible() const { return design_.Visible; }
  void SetVisible(bool visible);
  bool Locked() const { return locked_; }  // read-only, and still focusable
  void SetLocked(bool locked);
  std::uint32_t BackColor() const { return backColor_; }
  void SetBackColor(std::uint32_t color);
  std::int32_t MaxLength() const { return maxLength_; }  // 0: no limit
  void SetMaxLength(std::int32_t length);

  // What is selected, in characters from 0.
  std::int32_t SelStart() const { return selStart_; }
  std::int32_t SelLength() const { return selLength_; }
  void SetSelStart(std::int32_t start);
  void SetSelLength(std::int32_t length);

  // Raises 438 for a control without a font, such as a common dialog.
  const Platform::Font& Font() const;
  void SetFont(Platform::Font font);

  // Moves the focus here; fires GotFocus unless the focus is here already.
  void SetFocus();

  // A visible, enabled control that can hold the focus.
  bool CanFocus() const;

 private:
  template <class T>
  void Put(T& field, T value, ControlProperty property);

  Form& form_;
  ControlDesign design_;
  String text_;
  std::int16_t value_ = 0;
  std::vector<String> list_;
  std::int32_t listIndex_ = -1;
  bool enabled_ = true;
  bool locked_ = false;
  std::uint32_t backColor_;
  std::int32_t maxLength_ = 0;
  std::int32_t selStart_ = 0;
  std::int32_t selLength_ = 0;
  std::optional<Platform::Font> font_;
};

}  // namespace Platform
