#include <thread>

#include "src/dialogs/frmCfgInb.h"
#include "src/dialogs/modCfgIn.h"
#include "src/mail/EMailManager.h"
#include "tests/dialogs/FailingObserver.h"
#include "tests/mailbox/ScriptedProject.h"

namespace Tests {
namespace {

using Act = ScriptToolkit::Script;

// The dialog, with a project that its entries can open.
class Inbound : public MailboxWorld {
 public:
  Inbound() { MakeProject(); }

  bool Configure(bool add, const String& mailBox, Act act) {
    Toolkit.Scripts = {std::move(act)};
    Name = mailBox;
    return static_cast<bool>(Handler.MailHandler_Configure(add ? 1 : 0, Name, Product, Sess));
  }

  // Replaces the entries; a locked box keeps its own.
  Act Typing(const String& password, std::function<void(UserInput&)> end) {
    return [this, password, end](Form& form, UserInput& input) {
      input.Type(form[u"txtTVSFileName"], PathOf("Apollo.TVS"));
      input.Type(form[u"txtUID"], u"ann");
      input.Type(form[u"txtPwd"], password);
      end(input);
    };
  }

  // What an act by this name in a table does.
  Act Named(const std::string& act) {
    if (act == "ok") return Typing(u"word", [](UserInput& input) { input.Enter(); });
    if (act == "cancel") return [](Form&, UserInput& input) { input.Escape(); };
    if (act == "wrong") return Typing(u"bad", [](UserInput& input) { input.Enter(); });
    return [](Form&, UserInput& input) { input.Close(); };
  }

  // "path|user id|password" as a dialog opens with them, and "locked" where the path can't be changed.
  std::string Opened(bool add, const String& mailBox) {
    std::string entries;
    Configure(add, mailBox, [&](Form& form, UserInput&) {
      entries = WithoutFolder(Utf8(form[u"txtTVSFileName"].Text())) + "|" + Utf8(form[u"txtUID"].Text()) +
                "|" + Utf8(form[u"txtPwd"].Text()) + (form[u"txtTVSFileName"].Locked() ? " locked" : "") +
                (form[u"cmdBrowse"].Enabled() ? "" : " no browse");
    });
    return entries;
  }

  EMailManager Handler;
  ObjectRef Sess = SessionWith({});
  String Name, Product;
};

TEST(InboundDialog, CarriesItsOutcomeFromOneCallToTheNextAndDropsTheSession) {
  const std::string acts[] = {"", "", "ok", "cancel", "close", "wrong"};
  // state before; mode; state after and result of each act
  for (const Strings& row : Table(R"(
    0 ; add    ; 1 true ; 3 false ; 0 false ; 0 false
    0 ; change ; 1 true ; 2 true  ; 2 true  ; 2 true
    1 ; add    ; 1 true ; 2 true  ; 1 true  ; 1 true
    1 ; change ; 1 true ; 2 true  ; 1 true  ; 1 true
    2 ; add    ; 1 true ; 2 true  ; 2 true  ; 2 true
    2 ; change ; 1 true ; 2 true  ; 2 true  ; 2 true
    3 ; add    ; 1 true ; 3 false ; 3 false ; 3 false
    3 ; change ; 1 true ; 3 false ; 3 false ; 3 false
)")) {
    for (std::size_t act = 2; act < row.size(); ++act) {
      SCOPED_TRACE(row[0] + " " + row[1] + " " + acts[act]);
      Inbound world;
      ObjectRef kept = world.Sess;
      world.Toolkit.OnUnload = [&](Form& form) {
        kept = static_cast<frmCfgInb&>(form).InboundServerConfig();
      };
      WriteMailBoxRecord(world.PathOf("Apollo.TVS"), u"bob", u"word", u"Apollo");
      SetConfigureState(std::stoi(row[0]));
      const std::string result =
          world.Configure(row[1] == "add", u"Apollo", world.Named(acts[act])) ? " true" : " false";
      EXPECT_EQ(row[act], std::to_string(GetConfigureState()) + result);
      EXPECT_EQ(acts[act] == "wrong" ? BoxTexts("[10001]_") : Strings(), world.Boxes());
      EXPECT_TEXT(u"Ostrand Talvane", world.Product);
      EXPECT_FALSE(kept);
      EXPECT_EQ(acts[act] == "ok" ? "Apollo.TVS|ann|" : "||", world.Opened(true, u"Nobody"))
          << "fields of the handler object";
    }
  }
}

TEST(InboundDialog, OpensWithWhatIsKnownOfTheMailBox) {
  Inbound world;
  WriteMailBoxRecord(u" a.TVS ", u"bob", u"word", u"Mars");
  world.Store(u"Half", u"TVSFilePath", u"half.TVS");
  EXPECT_EQ("a.TVS|bob|", world.Opened(true, u"Mars"));
  EXPECT_EQ("a.TVS|bob| locked no browse", world.Opened(false, u"Mars"));
  EXPECT_EQ("half.TVS|| locked no browse", world.Opened(false, u"Half"));
  EXPECT_EQ("|| locked no browse", world.Opened(false, u"Nobody"));
  EXPECT_TEXT(u"Nobody", world.Name);
  EXPECT_EQ("||", world.Opened(false, u""));
  world.Configure(true, u"", world.Named("ok"));
  EXPECT_TEXT(u"Apollo", world.Name) << "a mailbox takes the project's name";
  EXPECT_EQ("Apollo.TVS|ann| locked no browse", world.Opened(false, u"Mars")) << "accepted entries first";
}

TEST(InboundDialog, KeepsARefusedEntryAndTakesTheNameOfTheCheck) {
  Inbound world;
  world.Configure(true, u"", [&](Form& form, UserInput& input) {
    world.Typing(u"bad ", [](UserInput& typing) { typing.Enter(); })(form, input);
    EXPECT_TRUE(form.IsShown());
    EXPECT_TEXT(u"bad ", form[u"txtPwd"].Text());
    static_cast<frmCfgInb&>(form).SetInboundServerConfig(nullptr);
    input.Enter();
    EXPECT_TRUE(form.IsShown());
  });
  EXPECT_EQ(BoxTexts("[10001]_ / [10046] [10045]"), world.Boxes());
  EXPECT_TEXT(u"", world.Name);
}

TEST(InboundDialog, GivesTheNameOfTheLastCheckBackAfterACancel) {
  // mode; name given; why the check refuses; name given back
  for (const Strings& row : Table(R"(
    add    ; New  ; not allowed ; Apollo
    change ; New  ; not allowed ; Apollo
    add    ;      ; name taken  ;
    add    ; New  ; name taken  ; New
)")) {
    SCOPED_TRACE(row[0] + " " + row[2]);
    Inbound world;
    const auto project = ScriptedProject::In(world);
    if (row[2] == "name taken") world.Store(u"Apollo", {}, {});
    if (row[0] == "change") WriteMailBoxRecord(world.PathOf("Apollo.TVS"), u"ann", u"word", u"New");
    EXPECT_EQ(row[0] == "change",
              world.Configure(row[0] == "add", FromUtf8(row[1]), [&](Form& form, UserInput& input) {
                world.Named("ok")(form, input);
                EXPECT_EQ(1u, world.Boxes().size());
                input.Escape();
              }));
    EXPECT_EQ(row[3], Utf8(world.Name));
  }
}

TEST(InboundDialog, KeepsAcceptedEntriesThroughACancelAndNotThroughTheCloseBox) {
  Inbound world;
  ASSERT_TRUE(world.Configure(true, u"", world.Named("ok")));
  EXPECT_TRUE(world.Configure(true, u"New", world.Named("cancel")));
  EXPECT_EQ("Apollo.TVS|ann|", world.Opened(true, u"Nobody"));
  ASSERT_TRUE(world.Configure(false, u"", world.Named("ok")));
  EXPECT_TRUE(world.Configure(true, u"New", world.Named("close")));
  EXPECT_EQ(ConfigureStateAccepted, GetConfigureState());
  EXPECT_TEXT(u"New", world.Name);
  EXPECT_EQ("||", world.Opened(true, u"Nobody")) << "the entries of the dialog that was closed";
}

TEST(InboundDialog, AcceptsASecondOKWithoutTheListIfTheFirstHadNamedTheMailBox) {
  Inbound world;
  const auto project = ScriptedProject::In(world);
  world.Watch();
  EXPECT_TRUE(world.Configure(true, u"New", [&](Form& form, UserInput& input) {
    world.Typing(u"word", [](UserInput& typing) { typing.Enter(); })(form, input);
    EXPECT_EQ(BoxTexts("[10000]_"), world.Boxes());
    EXPECT_TEXT(u"Apollo", static_cast<frmCfgInb&>(form).MailBoxName());
    EXPECT_EQ(1u, world.Services.CallsOf("RegUtil.EnumKeys").size());
    project->Allowed = True;
    input.Enter();
    EXPECT_FALSE(form.IsShown());
  }));
  EXPECT_EQ(1u, world.Services.CallsOf("RegUtil.EnumKeys").size());
  EXPECT_TEXT(u"Apollo", world.Name);
}

TEST(InboundDialog, ChecksEntriesAsTypedAndTrimsTheAcceptedOnes) {
  Inbound world;
  const auto project = ScriptedProject::In(world);
  project->Allowed = True;
  world.Watch();
  world.Services.Faults = {{"Files.CheckTVSFilePath", 0, Value()}};
  const auto typing = [&](const String& userId) {
    return [&world, userId](Form& form, UserInput& input) {
      input.Type(form[u"txtTVSFileName"], u"  " + world.PathOf("Apollo.TVS") + u" ");
      input.Type(form[u"txtUID"], userId);
      input.Type(form[u"txtPwd"], u"  word ");
      input.Enter();
    };
  };
  ASSERT_TRUE(world.Configure(true, u"", typing(u" ann ")));
  EXPECT_EQ(Strings{" ann |  word "}, project->Opened);
  EXPECT_EQ(Strings{"Files.CheckTVSFilePath(  " + Utf8(world.PathOf("Apollo.TVS")) + " )"},
            world.Services.CallsOf("Files.CheckTVSFilePath"));
  ASSERT_TRUE(static_cast<bool>(world.Handler.MailHandler_MboxUpdate(world.Name, world.Sess)));
  EXPECT_EQ("Apollo.TVS|ann|word", world.Record(u"Apollo"));

  ASSERT_TRUE(world.Configure(true, u"Apollo", typing(u"  ")));
  EXPECT_EQ(Strings(), world.Boxes());
  WriteMailBoxRecord(u"mars.TVS", u"bob", u"word", u"Mars");
  EXPECT_EQ("mars.TVS|bob|", world.Opened(true, u"Mars")) << "a path without a user id counts as nothing";
  world.Store(u"Half", u"TVSFilePath", u"half.TVS");
  EXPECT_EQ("half.TVS||", world.Opened(true, u"Half"));
  EXPECT_EQ("||", world.Opened(true, u"Nobody")) << "the former path doesn't fill in for a missing record";
}

TEST(InboundDialog, IsReleasedIfItCannotBeFilledOrShownAndTheCallFails) {
  FailingObserver observer(u"txtUID");
  const std::string load = "load frmCfgInb", show = "show frmCfgInb", unload = "unload frmCfgInb";
  const struct {
    std::function<void(Form&)> OnLoad;
    Act Shown;
    std::string Boxes;
    Strings Log;
  } rows[] = {{[&](Form& form) { form.SetObserver(&observer); },
               {},
               "boom [10045]",
               {"pointer 11", load, unload, "pointer 0"}},
              {{},
               [](Form&, UserInput&) { throw Failure(57, u"", u"No display"); },
               "No display [10045]",
               {"pointer 11", load, "pointer 0", show, unload, "pointer 0"}}};
  for (const auto& row : rows) {
    Inbound world;
    world.Toolkit.OnLoad = row.OnLoad;
    EXPECT_FALSE(world.Configure(true, u"X", row.Shown));
    EXPECT_EQ(BoxTexts(row.Boxes), world.Boxes());
    EXPECT_EQ(row.Log, world.Toolkit.Log);
    EXPECT_TEXT(u"X", world.Name);
    EXPECT_TEXT(u"", world.Product);
  }
}

TEST(InboundDialog, IsNotShownWithoutASessionOrTexts) {
  Inbound world;
  world.Sess = nullptr;
  EXPECT_FALSE(world.Configure(true, u"X", {}));
  EXPECT_EQ(BoxTexts("[10046] [10045]"), world.Boxes());
  world.Services.Missing = {"TvResourceServices.Resource"};
  std::thread([&] {  // that has no texts yet
    EMailManager handler;
    EXPECT_FALSE(handler.MailHandler_Configure(1, world.Name, world.Product, world.Make("Sess", {})));
  })
      .join();
  EXPECT_EQ(Strings{Utf8(ResourceServiceMissing)}, world.Boxes());
  EXPECT_TEXT(u"X", world.Name);
  EXPECT_TEXT(u"", world.Product);
  EXPECT_EQ((Strings{"pointer 11", "pointer 0", "pointer 11", "pointer 0"}), world.Toolkit.Log);
}

// A toolkit whose file dialog fails.
class FailingFiles : public ScriptToolkit {
 public:
  std::optional<String> OpenFile(const OpenFileRequest&) override { throw Failure(57, u"", u"No disk"); }
};

TEST(InboundDialog, TakesAPathFromTheFileDialogUnlessThatIsCancelledOrFails) {
  Inbound world;
  FailingFiles failing;
  world.Configure(true, u"", [&](Form& form, UserInput& input) {
    Control& path = form[u"txtTVSFileName"];
    input.Type(path, u"typed");
    world.Toolkit.Files = {std::nullopt, u" chosen.TVS "};
    input.Press(form[u"cmdBrowse"]);
    EXPECT_TEXT(u"typed", path.Text());
    input.Press(form[u"cmdBrowse"]);
    EXPECT_TEXT(u"chosen.TVS", path.Text());
    world.Services.ToolkitInUse = &failing;
    input.Press(form[u"cmdBrowse"]);
    EXPECT_TEXT(u"chosen.TVS", path.Text());
    world.Services.ToolkitInUse = &world.Toolkit;
  });
  EXPECT_EQ(Strings(), world.Boxes());
  EXPECT_EQ(Strings{"No disk"}, failing.TakeBoxes());
  ASSERT_EQ(2u, world.Toolkit.FileRequests.size());
  const OpenFileRequest& request = world.Toolkit.FileRequests[0];
  EXPECT_EQ(BoxTexts("[9001]")[0], Utf8(request.Title));
  EXPECT_TEXT(u"typed", request.FileName);
  EXPECT_TEXT(u"TVS Files (*.TVS)|*.TVS|All files (*.*)|*.*", request.Filter);
}

TEST(InboundDialog, SelectsOnFocusByKeyAndOpensHelpByKeyAndButton) {
  Inbound world;
  world.Toolkit.Window = 77;
  world.Toolkit.HelpOpens = false;
  world.Services.ComponentFolder = u"/opt/Mää/bin";
  world.Configure(true, u"", [&](Form& form, UserInput& input) {
    EXPECT_EQ(BoxTexts("[9002]")[0], Utf8(form.Caption()));
    for (const auto& control : form.Controls()) {
      if (control->Kind() != ControlKind::TextBox) continue;
      input.Type(*control, u"four");
      input.MouseDown(*control);
      input.Focus(*control);
      EXPECT_EQ(0, control->SelLength()) << Utf8(control->Name());
      input.Press(form[u"cmdBrowse"]);
      input.Focus(*control);
      EXPECT_EQ(4, control->SelLength()) << Utf8(control->Name());
    }
    input.KeyDown(KeyF1 + 1);
    input.KeyDown(KeyF1);
    input.Press(form[u"cmdHelp"]);
  });
  EXPECT_EQ((std::vector<std::intptr_t>{77, 77}), world.Toolkit.HelpWindows);
  const Strings& log = world.Toolkit.Log;
  EXPECT_EQ(2, std::count(log.begin(), log.end(), "help /opt/Mää/Help\\MailPump.hlp >(w95sec) 1 160"));
}

TEST(Configuring, ReachesTheRecordAndTheProjectOnlyByTheUpdate) {
  Inbound world;
  ASSERT_TRUE(world.Configure(true, u"Typed", world.Named("ok")));
  EXPECT_EQ("none", world.Record(u"Apollo"));
  ASSERT_TRUE(static_cast<bool>(world.Handler.MailHandler_MboxUpdate(world.Name, world.Sess)));
  EXPECT_EQ("Apollo.TVS|ann|word", world.Record(u"Apollo"));
  EXPECT_EQ("2||mail.example.org|Apollo Mail|apollo@example.org", world.Section("Apollo.TVS"));

  world.Store(u"Apollo", u"DBUID", std::int32_t{7});
  ASSERT_TRUE(world.Configure(false, u"Apollo", world.Named("cancel")));
  ASSERT_TRUE(static_cast<bool>(world.Handler.MailHandler_MboxUpdate(world.Name, world.Sess)));
  EXPECT_EQ("Apollo.TVS|ann|word", world.Record(u"Apollo")) << "entries kept over an unreadable record";

  world.Sess = world.SessionWith({.Transport = u"MAPI"});
  EMailManager later;
  EXPECT_TRUE(static_cast<bool>(later.MailHandler_MboxUpdate(u"Apollo", world.Sess)));
  EXPECT_EQ("1|Outlook|mail.example.org|Apollo Mail|apollo@example.org", world.Section("Apollo.TVS"));
  later.MailHandler_MboxDelete(u"Apollo");
  EXPECT_EQ("none", world.Section("Apollo.TVS"));
  EXPECT_EQ("Apollo.TVS|ann|word", world.Record(u"Apollo"));
  EXPECT_EQ(Strings(), world.Boxes());
  later.MailHandler_MboxDelete(u"Other");
  EXPECT_EQ(BoxTexts("[10047]_[10058]__"), world.Boxes());
}

}  // namespace
}  // namespace Tests
