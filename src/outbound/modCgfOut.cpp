#include "src/outbound/modCgfOut.h"

#include "platform/Failure.h"
#include "platform/NumberReader.h"
#include "platform/StoredNames.h"
#include "src/dialogs/FormServices.h"
#include "src/mailbox/RegistryValues.h"
#include "src/outbound/MapiProfiles.h"
#include "src/outbound/OutboundStore.h"
#include "src/outbound/frmCfgOut.h"
#include "src/services/modComponents.h"
#include "src/services/modMain.h"
#include "src/services/modResource.h"

namespace TvEmailServices {
namespace {

constexpr std::int32_t kLongestEntry = 255;  // characters that a user may type

// A stored string; nullopt if it is missing or empty.
std::optional<String> ReadSetting(const RegUtil& registry, StringView name) {
  Value value;
  if (!GetRegStringValue(registry, name, value, false)) return {};
  return value.ToString();
}

void SelectTransport(Control& list, std::int32_t transport) {
  if (transport == TransportId::kMapi) list.SetListIndex(frmCfgOut::kMapiPosition);
  if (transport == TransportId::kSmtp) list.SetListIndex(frmCfgOut::kSmtpPosition);
}

void SelectProfile(Control& list, const Array& profiles, StringView stored) {
  const String wanted = Trim(stored);
  for (std::size_t position = 0; position < profiles.size(); ++position) {
    if (!EqualsIgnoreCase(profiles[position].ToString(), wanted)) continue;
    list.SetListIndex(static_cast<std::int32_t>(position));
    return;
  }
}

}  // namespace

bool PrepareOutboundForm(frmCfgOut& form) try {
  LocalizeForm(form);
  form[u"chkEnableEmail"].SetValue(1);
  for (const StringView box : {u"txtEMailAddress", u"txtHost", u"txtRealName"}) {
    form[box].SetMaxLength(kLongestEntry);
  }

  Control& transports = form[u"cmbProvider"];
  Control& profileList = form[u"cmbProfile"];
  Value profiles{Array()};
  if (GetMAPIProfiles(profiles)) {
    for (const Value& profile : profiles.ToArray()) {
      profileList.AddItem(profile.ToString());
      form.SetAreMAPIProfilesDefined(True);
    }
  }
  transports.AddItem(LoadTvResourceString(TextNumber::kMapiName));
  transports.AddItem(LoadTvResourceString(TextNumber::kOutboundSmtpName));
  if (form.AreMAPIProfilesDefined()) {
    transports.SetListIndex(frmCfgOut::kMapiPosition);
    profileList.SetListIndex(0);
  } else {
    transports.SetListIndex(frmCfgOut::kSmtpPosition);
  }

  LoadOutboundSettings(form, profiles);
  return true;
} catch (...) {
  return ReportFailure();
}

void LoadOutboundSettings(frmCfgOut& form, const Value& profiles) try {
  const RegUtil registry = GetRegUtil(Hive::CurrentUser, RegistryPath::kOutbound, false);
  if (!registry) return;

  const auto enabled = ReadSetting(registry, SendingValue::kEnabled);
  if (enabled && EqualsIgnoreCase(*enabled, u"False")) form[u"chkEnableEmail"].SetValue(0);

  const auto transport = ReadSetting(registry, SendingValue::kTransportId);
  if (!transport) return;
  SelectTransport(form[u"cmbProvider"], ReadInt32(*transport));

  if (form.AreMAPIProfilesDefined()) {
    const auto profile = ReadSetting(registry, SendingValue::kMapiProfile);
    if (profile) SelectProfile(form[u"cmbProfile"], profiles.ToArray(), *profile);
  }

  const auto hostName = ReadSetting(registry, SendingValue::kHostName);
  if (!hostName) return;
  form[u"txtHost"].SetText(Trim(*hostName));

  const auto address = ReadSetting(registry, SendingValue::kAddress);
  if (!address) return;
  form[u"txtEMailAddress"].SetText(Trim(*address));

  if (const auto realName = ReadSetting(registry, SendingValue::kRealName)) {
    form[u"txtRealName"].SetText(Trim(*realName));
  }
} catch (...) {
  ShowErrorMessage(CurrentFailure(), 0, {});
}

}  // namespace TvEmailServices
