// Control: one control of a form's model.
//
// A control belongs to its form, is valid as long as it, and is used on the form's thread. Each setter calls
// the form's observer. Setting a check box's value or a list's position fires Click, as a user's input does.
// Setters raise what the observer or a handler raises; the new value is then set.
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

// System colours by their numbers.
inline constexpr std::uint32_t WindowBackground = 0x80000005;
inline constexpr std::uint32_t ButtonFace = 0x8000000F;

// A rectangle in twips (1440 to the inch). A control's is relative to the form's client area.
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
  char16_t PasswordChar = 0;  // shown for every character; 0: the text is shown
  std::int32_t ImeMode = 0;   // 3: input methods switched off
  bool Default = false;       // the button pressed by Enter
  bool Cancel = false;        // the button pressed by Escape
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

  // A text box's text, cut at MaxLength. A drop-down list gives the entry at its position, or the empty
  // string. Code can set the text of a locked box, too.
  String Text() const;
  void SetText(String text);

  // A check box: 0 or 1. A change fires Click.
  std::int16_t Value() const { return value_; }
  void SetValue(std::int16_t value);

  // A drop-down list. Positions count from 0; -1 is none. Each setting fires Click, also for the present
  // position. Raises 5 for a position outside the list; the old one is kept.
  const std::vector<String>& List() const { return list_; }
  void AddItem(String text);
  std::int32_t ListIndex() const { return listIndex_; }
  void SetListIndex(std::int32_t position);

  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled);
  bool Visible() const { return design_.Visible; }
  void SetVisible(bool visible);
  bool Locked() const { return locked_; }  // the user can't change the text, but can focus the box
  void SetLocked(bool locked);
  std::uint32_t BackColor() const { return backColor_; }
  void SetBackColor(std::uint32_t color);
  std::int32_t MaxLength() const { return maxLength_; }  // UTF-16 code units; 0: no limit
  void SetMaxLength(std::int32_t length);

  // The selection, in UTF-16 code units from 0.
  std::int32_t SelStart() const { return selStart_; }
  std::int32_t SelLength() const { return selLength_; }
  void SetSelStart(std::int32_t start);
  void SetSelLength(std::int32_t length);

  // Both raise 438 for a common dialog, which has no font.
  const Platform::Font& Font() const;
  void SetFont(Platform::Font font);

  // Moves the focus to this control and fires GotFocus, unless it has the focus already.
  void SetFocus();

  // True for a visible, enabled control other than a label or a common dialog.
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
