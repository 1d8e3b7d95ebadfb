#include "siblings/TvGeneralGuiServices/Help.h"

#include "platform/Forms/FormsToolkit.h"
#include "platform/Services.h"

namespace TvGeneralGuiServices {

const Help::Table& Help::Members() {
  static const Table table = {Method(u"DisplayHelpTopic", 1, &Help::DisplayHelpTopic)};
  return table;
}

Value Help::DisplayHelpTopic(std::span<Value> arguments) {
  const String topic = arguments[0].ToString();
  if (!Services().Toolkit().ShowTopic(topic)) {
    throw Failure(FailureNumber::DeviceFailed, u"TvGeneralGuiServices.Help.DisplayHelpTopic",
                  u"The help topic " + topic +
                      u" can't be shown. Check that a help viewer and Talvane's help pages are installed.");
  }
  return {};
}

}  // namespace TvGeneralGuiServices
