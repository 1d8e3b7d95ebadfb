#include "gateway/notices/CurlLibrary.h"

#include <string>

#include "platform/Failure.h"
#include "platform/ProgramTexts.h"
#include "runtime/Texts.h"

namespace Gateway {

CurlLibrary::CurlLibrary() {
  if (const CURLcode code = GlobalInit(CURL_GLOBAL_DEFAULT); code != CURLE_OK) RaiseCurl(EasyStrerror(code));
}

void RaiseCurl(const char* reason) {
  throw Platform::Failure(
      Platform::FailureNumber::DeviceFailed, u"Gateway.MailTransport",
      Runtime::TextOf(Platform::TextNumber::kLibraryMissing,
                      Platform::FromUtf8(std::string("libcurl: ") + reason), u"libcurl4"));
}

}  // namespace Gateway
