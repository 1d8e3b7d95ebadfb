// The form model and the rules of the user's input.
#include "platform/Failure.h"
#include "tests/support/ScriptToolkit.h"
#include "tests/support/TestServices.h"
#include "tests/support/Texts.h"

namespace Tests {
namespace {

using Lines = std::vector<std::string>;

// A form with one control of each kind that a user works on, all of whose events are recorded.
class Forms : public testing::Test {
 protected:
  Forms() {
    services_.ToolkitInUse = &toolkit_;
    former_ = InstallServices(&services_);
    for (const char16_t* control : {u"", u"txt", u"chk", u"cmb", u"cmdOK", u"cmdCancel"}) {
      for (const Event event : {Event::Click, Event::KeyUp, Event::Scroll, Event::GotFocus, Event::MouseDown,
                                Event::Load, Event::Activate, Event::KeyDown, Event::Unload}) {
        form_.Handle(control, event, [this, control, event](const EventArgs& arguments) {
          events_.push_back(Utf8(control) + ":" + NameOf(event) +
                            (arguments.KeyCode ? std::to_string(arguments.KeyCode) : ""));
        });
      }
    }
  }
  ~Forms() override { InstallServices(former_); }

  static std::string NameOf(Event event) {
    const char* const names[] = {"Click",     "KeyUp", "Scroll",   "GotFocus", "MouseDown",
                                 "MouseMove", "Load",  "Activate", "KeyDown",  "Unload"};
    return names[static_cast<int>(event)];
  }

  Lines TakeEvents() { return std::exchange(events_, {}); }

  void Show(ScriptToolkit::Script script) {
    toolkit_.Scripts.push_back(std::move(script));
    form_.ShowModal();
  }

  ScriptToolkit toolkit_;
  TestServices services_{Platform::Services()};
  PlatformServices* former_ = nullptr;
  Lines events_;
  Form form_{{u"frm", u"Caption", u"", {0, 0, 3000, 2000}},
             {{u"lbl", ControlKind::Label},
              {u"txt", ControlKind::TextBox},
              {u"chk", ControlKind::CheckBox},
              {u"cmb", ControlKind::ComboBox},
              {.Name = u"cmdOK", .Kind = ControlKind::CommandButton, .Default = true},
              {.Name = u"cmdCancel", .Kind = ControlKind::CommandButton, .Cancel = true}}};
};

TEST_F(Forms, TheFirstAccessLoadsOnceAndAnAccessAfterUnloadLoadsAgain) {
  EXPECT_FALSE(form_.IsLoaded());
  form_.ClientWidth();
  EXPECT_EQ(TakeEvents(), Lines{});
  form_.Caption();
  form_[u"txt"];
  EXPECT_EQ(TakeEvents(), Lines{":Load"});
  form_.Unload();
  form_.Unload();
  EXPECT_EQ(TakeEvents(), Lines{":Unload"});
  form_.Controls();
  EXPECT_EQ(TakeEvents(), Lines{":Load"});
  EXPECT_EQ(toolkit_.Log, (Lines{"load frm", "unload frm", "load frm"}));
}

TEST_F(Forms, CodeThatSetsAValueFiresClickAsAUserWould) {
  Control& check = form_[u"chk"];
  Control& list = form_[u"cmb"];
  list.AddItem(u"one");
  list.AddItem(u"two");
  TakeEvents();
  check.SetValue(1);
  check.SetValue(1);
  list.SetListIndex(1);
  list.SetListIndex(1);
  EXPECT_EQ(TakeEvents(), (Lines{"chk:Click", "cmb:Click", "cmb:Click"}));
  EXPECT_TEXT(u"two", list.Text());
  EXPECT_THROW(list.SetListIndex(2), Failure);
  EXPECT_EQ(list.ListIndex(), 1);
  EXPECT_THROW(form_[u"absent"], Failure);
}

TEST_F(Forms, AUserCanDoOnlyWhatTheStateAllows) {
  Control& text = form_[u"txt"];
  text.SetMaxLength(3);
  form_[u"cmb"].AddItem(u"one");
  form_[u"cmdOK"].SetEnabled(false);
  TakeEvents();
  Show([&](Form&, UserInput& input) {
    EXPECT_TRUE(input.Type(text, u"abcdef"));
    EXPECT_TEXT(u"abc", text.Text());
    text.SetLocked(true);
    EXPECT_FALSE(input.Type(text, u"x"));
    EXPECT_TRUE(input.Focus(text));
    EXPECT_FALSE(input.Enter());
    EXPECT_FALSE(input.Focus(form_[u"lbl"]));
    EXPECT_FALSE(input.Choose(form_[u"cmb"], 1));
    EXPECT_TRUE(input.Choose(form_[u"cmb"], 0));
    form_[u"chk"].SetVisible(false);
    EXPECT_FALSE(input.Check(form_[u"chk"], true));
    input.KeyDown(KeyF1);
    form_.SetKeyPreview(true);
    input.KeyDown(KeyF1);
    EXPECT_TRUE(input.Escape());
    form_.Hide();
    EXPECT_FALSE(input.Focus(text));
  });
  const Lines events = TakeEvents();
  EXPECT_EQ(std::vector(events.end() - 4, events.end()),
            (Lines{"txt:GotFocus", "cmb:Click", ":KeyDown112", "cmdCancel:Click"}));
}

TEST_F(Forms, AFailureInAHandlerIsShownAndTheDialogStaysUsable) {
  form_.Handle(u"cmdOK", Event::Click, [](const EventArgs&) { Raise(FailureNumber::Overflow, u"here"); });
  Show([&](Form& form, UserInput& input) {
    EXPECT_TRUE(input.Enter());
    EXPECT_TRUE(form.IsShown());
    EXPECT_TRUE(input.Escape());
  });
  ASSERT_EQ(toolkit_.Boxes.size(), 1U);
  EXPECT_NE(Utf8(toolkit_.Boxes[0].Text).find("here"), std::string::npos);
}

TEST_F(Forms, ACancelledFileDialogRaisesOnlyWhereItIsAskedTo) {
  CommonDialog dialog;
  dialog.Request.FileName = u"old";
  dialog.CancelError = false;
  dialog.ShowOpen();
  EXPECT_TEXT(u"old", dialog.Request.FileName);
  dialog.CancelError = true;
  EXPECT_THROW(dialog.ShowOpen(), Failure);
  toolkit_.Files.push_back(u"new");
  dialog.ShowOpen();
  EXPECT_TEXT(u"new", dialog.Request.FileName);
}

}  // namespace
}  // namespace Tests
