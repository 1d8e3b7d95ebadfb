#include "gateway/notices/NoticeSettings.h"

#include "gateway/notices/SmtpHost.h"

namespace Gateway {

SmtpServer NoticeSettings::ServerOf(StringView host) const {
  const std::optional<SmtpHost> wanted = ParseSmtpHost(host);
  SmtpServer defaults;
  if (!wanted) return defaults;
  const SmtpServer* best = nullptr;
  for (const SmtpServer& server : Servers) {
    const std::optional<SmtpHost> named = ParseSmtpHost(Platform::FromUtf8(server.Host));
    if (!named || named->Name != wanted->Name) continue;
    if (server.Port == wanted->Port) return server;
    if (!best && (server.Port == 0 || wanted->Port == 0)) best = &server;
  }
  if (best) return *best;
  defaults.Host = wanted->Name;
  return defaults;
}

}  // namespace Gateway
