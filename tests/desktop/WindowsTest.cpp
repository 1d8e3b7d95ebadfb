// The window of any form: places, threads, refused changes, and the end of the process.
#include <stdlib.h>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QWindow>

#include <atomic>

#include "src/dialogs/frmCfgInb.h"
#include "src/outbound/frmCfgOut.h"
#include "tests/desktop/DesktopWorld.h"

namespace Tests {
namespace {

// A form with one box. It counts its handlers' runs and notes whether one ran on another thread than its own.
class Probe : public Form {
 public:
  explicit Probe(const String& name)
      : Form({.Name = name, .Caption = name, .Tag = {}, .Place = {0, 0, 3000, 1500}},
             {{.Name = u"box", .Kind = ControlKind::TextBox, .Place = {100, 100, 2000, 300}},
              {.Name = u"go",
               .Kind = ControlKind::CommandButton,
               .Caption = u"Go",
               .Place = {100, 800, 1000, 375},
               .Default = true}}) {
    Handle(u"box", Event::GotFocus, [this](const EventArgs&) { Note(); });
    Handle({}, Event::Activate, [this](const EventArgs&) { Note(); });
    Handle(u"go", Event::Click, [this](const EventArgs&) {
      Note();
      const auto act = OnGo;  // which may replace itself
      act();
    });
  }

  std::function<void()> OnGo = [this] { Hide(); };  // what a press of the button does
  std::atomic<int> Notes = 0;
  std::atomic<bool> Elsewhere = false;

 private:
  void Note() {
    ++Notes;
    if (std::this_thread::get_id() != made_) Elsewhere = true;
  }
  const std::thread::id made_ = std::this_thread::get_id();
};

// Shows a form whose button does this at its first press and ends the form at its second; gives the box's
// text.
std::future<std::string> Show(const String& name, std::function<void(Form&)> atFirst) {
  return std::async(std::launch::async, [name, atFirst] {
    Probe form(name);
    form.OnGo = [&] {
      form.OnGo = [&] { form.Hide(); };
      atFirst(form);
    };
    form.ShowModal();
    return Utf8(form[u"box"].Text());
  });
}

// Runs with scale factors of 1, 1.5 and 2, which don't change the places of widgets.
TEST(Places, AreTheDesignsTwipsAtTheScreensResolution) {
  DesktopWorld world;
  const double scale = getenv("QT_SCALE_FACTOR") ? atof(getenv("QT_SCALE_FACTOR")) : 1;
  const auto check = [&](Form& form) {
    form.SetCaption(u"checked");
    auto* window = OnWindows([&]() -> QWidget* {
      for (QWidget* one : QApplication::topLevelWidgets()) {
        if (one->objectName().toStdString() == Utf8(form.Name())) return one;
      }
      return nullptr;
    });
    OnWindows([&] {
      EXPECT_EQ(scale, window->devicePixelRatioF());
      EXPECT_EQ(96, window->logicalDpiX());
      EXPECT_NEAR(form.ClientWidth() / 15, window->width(), 0.5);
      EXPECT_NEAR(form.ClientHeight() / 15, window->height(), 0.5);
      EXPECT_EQ(window->minimumSize(), window->maximumSize());
      for (const auto& control : form.Controls()) {
        if (control->Kind() == ControlKind::CommonDialog) continue;
        const QRect place =
            window->findChild<QWidget*>(QString::fromStdString(Utf8(control->Name())))->geometry();
        SCOPED_TRACE(Utf8(control->Name()));
        EXPECT_NEAR(control->Place().Left / 15, place.left(), 0.5);
        EXPECT_NEAR(control->Place().Top / 15, place.top(), 0.5);
        EXPECT_NEAR(control->Place().Width / 15, place.width(), 1);
        EXPECT_NEAR(control->Place().Height / 15, place.height(), 1);
      }
      const QPoint middle = QApplication::primaryScreen()->geometry().center();
      EXPECT_NEAR(middle.x(), form.Place().Left / 15 + window->width() / 2.0, 2);
    });
  };
  frmCfgInb inbound;
  check(inbound);
  frmCfgOut outbound;
  check(outbound);
}

TEST(Threads, RunHandlersWhereTheFormIsShownSeveralAtOnce) {
  DesktopWorld world;
  for (const int round : {1, 2}) {
    SCOPED_TRACE(round);
    const auto show = [](const String& name) {
      return std::async(std::launch::async, [name] {
        Probe form(name);
        form.ShowModal();
        return Utf8(form[u"box"].Text()) + (form.Elsewhere || form.Notes < 3 ? " elsewhere" : "");
      });
    };
    auto first = show(u"first");
    DesktopUser one("first");
    one.Write("1");
    auto second = show(u"second");
    DesktopUser two("second");
    two.Write("22");
    one.Activate();
    one.Write("3");
    one.Key(Qt::Key_Return);
    EXPECT_EQ("13", first.get());
    two.Activate();
    two.Click("go");
    EXPECT_EQ("22", second.get());
  }
}

TEST(Windows, ShowAFormAgainWithoutWhatWasLeftOfItsFirstUse) {
  DesktopWorld world;
  std::promise<void> typed, hidden;
  auto shown = std::async(std::launch::async, [&] {
    Probe form(u"again");
    form.OnGo = [&] {
      form.OnGo = [&] { form.Hide(); };
      typed.get_future().wait();
      form.Hide();
    };
    form.ShowModal();
    const std::string first = Utf8(form[u"box"].Text());
    hidden.get_future().wait();
    form.ShowModal();
    return first + "|" + Utf8(form[u"box"].Text());
  });
  {
    DesktopUser user("again");
    user.Write("a");
    user.Key(Qt::Key_Return);
    user.Write("b");  // while the handler runs; the form ends without this letter
    typed.set_value();
    EXPECT_TRUE(Eventually([&] { return !user.Window(); }));
  }
  hidden.set_value();
  DesktopUser user("again");
  EXPECT_EQ("a", user.Text("box"));
  user.Key(Qt::Key_End);
  user.Write("c");
  user.Key(Qt::Key_Return);
  EXPECT_EQ("a|ac", shown.get());
}

TEST(Windows, TakeBackWhatTheFormRefusedAndShowAHandlersFailure) {
  DesktopWorld world;
  std::promise<void> typed;
  auto shown = Show(u"slow", [&](Form& form) {
    typed.get_future().wait();
    form[u"box"].SetLocked(true);
    Raise(FailureNumber::InvalidArgument, u"a");
  });
  DesktopUser user("slow");
  user.Key(Qt::Key_Return);
  user.Write("x");  // before the window knows that the box is locked
  EXPECT_EQ("x", user.Text("box"));
  typed.set_value();
  EXPECT_NE("(no box)", user.AnswerBox());
  user.Activate();
  EXPECT_TRUE(Eventually([&] { return user.Find<QLineEdit>("box")->text().isEmpty(); }));
  user.Key(Qt::Key_Return);
  EXPECT_EQ("", shown.get());
}

// Each of these runs in a process of its own.
using Ends = testing::Test;

TEST(Ends, CleanlyWhileADialogAndABoxAreOpenOnOtherThreads) {
  testing::GTEST_FLAG(death_test_style) = "threadsafe";
  EXPECT_EXIT(
      {
        auto* world = new DesktopWorld;
        std::thread([] {
          Probe form(u"left");
          form.ShowModal();
        }).detach();
        DesktopUser user("left");
        std::thread([world] { world->Desktop().MessageBox(u"left", {}); }).detach();
        Eventually([&] { return QApplication::topLevelWidgets().size() > 1; });
        exit(0);
      },
      testing::ExitedWithCode(0), "");
}

TEST(Ends, WithAReasonAndTheProcessAliveWithoutADisplay) {
  testing::GTEST_FLAG(death_test_style) = "threadsafe";
  const auto refuse = [](const char* display, const char* reason) {
    if (display) {
      setenv("DISPLAY", display, 1);
    } else {
      unsetenv("DISPLAY");
    }
    unsetenv("WAYLAND_DISPLAY");
    unsetenv("QT_QPA_PLATFORM");
    String why;
    const bool refused = !Runtime::LoadToolkit(u"TalvaneDesktop.so", why);
    exit(refused && Utf8(why).find(reason) != std::string::npos ? 7 : 1);
  };
  EXPECT_EXIT(refuse(nullptr, "DISPLAY is not set"), testing::ExitedWithCode(7), "");
  EXPECT_EXIT(refuse(":4711", "could not connect to display"), testing::ExitedWithCode(7), "");
}

}  // namespace
}  // namespace Tests
