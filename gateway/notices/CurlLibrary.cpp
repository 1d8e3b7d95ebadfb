#include "gateway/notices/CurlLibrary.h"

#include <dlfcn.h>

#include "platform/Failure.h"
#include "platform/NoticeTexts.h"
#include "runtime/Texts.h"

namespace Gateway {
namespace {

constexpr const char* kFile = "libcurl.so.4";

[[noreturn]] void Raise(const char* reason) {
  throw Platform::Failure(Platform::FailureNumber::DeviceFailed, u"Gateway.MailTransport",
                          Runtime::TextOf(Platform::TextNumber::kCurlMissing, Platform::FromUtf8(kFile),
                                          Platform::FromUtf8(reason ? reason : "")));
}

CurlLibrary Load() {
  void* const library = dlopen(kFile, RTLD_NOW | RTLD_LOCAL);
  if (!library) Raise(dlerror());
  const auto find = [library](auto*& function, const char* name) {
    function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(dlsym(library, name));
    if (!function) Raise(dlerror());
  };
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
    Raise(curl.EasyStrerror(code));
  return curl;
}

}  // namespace

const CurlLibrary& CurlLibrary::Get() {
  static const CurlLibrary library = Load();
  return library;
}

}  // namespace Gateway
