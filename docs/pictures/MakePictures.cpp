// Makes the pictures of both dialogs that the README shows: desktop-pictures FOLDER
#include <QPixmap>

#include <iostream>

#include "src/outbound/OutboundStore.h"
#include "tests/desktop/DesktopWorld.h"

int main(int count, char** arguments) {
  using namespace Tests;
  if (count != 2) {
    std::cerr << "usage: desktop-pictures FOLDER\n";
    return 64;
  }
  bool made = true;
  const auto take = [&](const DesktopUser& user, const char* name) {
    const QString file = QString::fromLocal8Bit(arguments[1]) + "/" + name + ".png";
    made = OnWindows([&] { return user.Window()->grab().save(file); }) && made;
  };
  DesktopWorld world;
  Dialog inbound("frmCfgInb", world.Configure(true, u""));
  inbound.Enter("txtTVSFileName", "/srv/apollo/Apollo.TVS");
  inbound.Enter("txtUID", "admin");
  inbound.Enter("txtPwd", "secret word");
  take(inbound, "inbound");

  SaveSmtpOutbound(u"mail.example.org", u"me@example.org", u"My Name");
  Dialog outbound("frmCfgOut", world.ConfigureOutbound());
  take(outbound, "outbound");
  if (!made) std::cerr << "A picture can't be written into " << arguments[1] << "\n";
  return made ? 0 : 73;
}
