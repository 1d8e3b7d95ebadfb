#include "gateway/notices/CurlLibrary.h"

#include "platform/Failure.h"
#include "platform/ProgramTexts.h"
#include "runtime/SystemLibrary.h"
#include "runtime/Texts.h"

namespace Gateway {
namespace {

CurlLibrary Load() {
  const Runtime::SystemLibrary library("libcurl.so.4", "libcurl4");
  const auto find = [&library](auto*& function, const char* name) { function = library.Find(name); };
  CurlLibrary curl{};
  find(curl.GlobalInit, "curl_global_init");
  find(curl.EasyInit, "curl_easy_init");
  find(curl.EasySetopt, "curl_easy_setopt");
  find(curl.EasyStrerror, "curl_easy_strerror");
  find(curl.EasyCleanup, "curl_easy_cleanup");
  find(curl.SlistAppend, "curl_slist_append");
  find(curl.SlistFreeAll, "curl_slist_free_all");
  find(curl.MultiInit, "curl_multi_init");
  find(curl.MultiAddHandle, "curl_multi_add_handle");
  find(curl.MultiRemoveHandle, "curl_multi_remove_handle");
  find(curl.MultiPerform, "curl_multi_perform");
  find(curl.MultiPoll, "curl_multi_poll");
  find(curl.MultiWakeup, "curl_multi_wakeup");
  find(curl.MultiInfoRead, "curl_multi_info_read");
  find(curl.MultiCleanup, "curl_multi_cleanup");
  if (const CURLcode code = curl.GlobalInit(CURL_GLOBAL_DEFAULT); code != CURLE_OK)
    RaiseCurl(curl.EasyStrerror(code));
  return curl;
}

}  // namespace

void RaiseCurl(const char* reason) {
  throw Platform::Failure(
      Platform::FailureNumber::DeviceFailed, u"Gateway.MailTransport",
      Runtime::TextOf(Platform::TextNumber::kLibraryMissing,
                      Platform::FromUtf8(std::string("libcurl: ") + reason), u"libcurl4"));
}

const CurlLibrary& CurlLibrary::Get() {
  static const CurlLibrary library = Load();
  return library;
}

}  // namespace Gateway
