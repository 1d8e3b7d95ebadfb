#include "src/dialogs/FormServices.h"

#include <utility>

#include "platform/Failure.h"
#include "platform/Forms/FormsToolkit.h"
#include "platform/NumberReader.h"
#include "platform/Services.h"
#include "src/services/IgnoreFailure.h"
#include "src/services/modComponents.h"
#include "src/services/modMain.h"
#include "src/services/modResource.h"

namespace TvEmailServices {
namespace {

constexpr std::int32_t kWesternCharset = 0;
constexpr std::int32_t kShiftJisCharset = 128;

thread_local String CachedFormFontName;
thread_local Boolean FormFontNameLoaded;

// A control whose font can't be changed keeps its own, without a message.
template <class Change>
void ChangeFont(Control& control, const Change& change) {
  IgnoreFailure([&] {
    Font font = control.Font();
    change(font);
    control.SetFont(std::move(font));
  });
}

// One of the six strings of SystemInfo, also if it failed after writing it.
String AskSystem(const General& general, std::size_t position) {
  Value strings[] = {String(), String(), String(), String(), String(), String()};
  IgnoreFailure([&] { general.SystemInfo(strings); });
  String answer;
  IgnoreFailure([&] { answer = strings[position].ToString(); });
  return answer;
}

// True on the one platform whose Western fonts show no other character sets.
bool NeedsShiftJis() {
  const General general = GetGeneral(false);
  if (!general) return false;
  const String platform = AskSystem(general, General::PlatformString);
  const String version = AskSystem(general, General::VersionString);
  return EqualsIgnoreCase(platform, u"NT") && EqualsIgnoreCase(version, u"5");
}

// The difference in whole twips, halved toward zero.
std::int32_t HalfOfRest(float screen, float form) {
  const float rest = screen - form;
  return RoundToInt32(rest) / 2;
}

bool IsLocalized(const Control& control) {
  const StringView type = control.TypeName();
  return type == u"Label" || type == u"CommandButton" || type == u"CheckBox";
}

}  // namespace

void CenterForm(Form* form) {
  if (!form) return;
  const ScreenSize screen = Services().Toolkit().Screen();
  const Place window = form->Place();
  const std::int32_t top = HalfOfRest(screen.Height, window.Height);
  const std::int32_t left = HalfOfRest(screen.Width, window.Width);
  form->Move(static_cast<float>(left), static_cast<float>(top));
}

String CaptionTag(std::int32_t textNumber) {
  return Value(textNumber).ToString();
}

void LocalizeForm(Form& form) try {
  const auto controls = form.Controls();  // loads the form on first access
  if (IsNumeric(form.Tag())) form.SetCaption(LoadTvResourceString(ReadInt32(form.Tag())));
  for (const auto& control : controls) {
    if (!IsLocalized(*control)) continue;
    control->SetCaption({});
    if (IsNumeric(control->Tag())) control->SetCaption(LoadTvResourceString(ReadInt32(control->Tag())));
  }
} catch (...) {
  ShowErrorMessage(CurrentFailure(), 0, {});
}

String GetFormFontName() {
  if (!FormFontNameLoaded) {
    CachedFormFontName = GetCachedResourceObject().GetFontName();
    FormFontNameLoaded = True;
  }
  return CachedFormFontName;
}

void ApplyFormFont(Form& form) {
  String name;
  IgnoreFailure([&] { name = GetFormFontName(); });
  if (name.empty()) return;

  IgnoreFailure([&] {
    Font font = form.Font();
    font.Name = name;
    form.SetFont(std::move(font));
  });
  const bool needsShiftJis = NeedsShiftJis();
  for (const auto& control : form.Controls()) {
    if (needsShiftJis) {
      ChangeFont(*control, [](Font& font) {
        if (font.Charset == kWesternCharset) font.Charset = kShiftJisCharset;
      });
    }
    ChangeFont(*control, [&](Font& font) { font.Name = name; });
  }
}

void SetFontSizes(Form& form, double points) {
  for (const auto& control : form.Controls()) {
    ChangeFont(*control, [&](Font& font) { font.Size = points; });
  }
}

void SelectOnFocus(Control& textBox, Boolean& focusByMouse) {
  if (!focusByMouse) {
    textBox.SetSelStart(0);
    textBox.SetSelLength(static_cast<std::int32_t>(textBox.Text().size()));
  }
  focusByMouse = False;
}

}  // namespace TvEmailServices
