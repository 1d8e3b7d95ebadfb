// CurlLibrary: libcurl, loaded when mail is sent first.
#pragma once

#include <curl/curl.h>

#include "runtime/SystemLibrary.h"

namespace Gateway {

struct CurlLibrary : Runtime::LibraryFunctions<CurlLibrary> {
  static constexpr const char* kFile = "libcurl.so.4";
  static constexpr const char* kPackage = "libcurl4";

  // Prepares libcurl for use. Raises 57 if it refuses.
  CurlLibrary();

  decltype(&curl_global_init) GlobalInit = Find("curl_global_init");
  decltype(&curl_easy_init) EasyInit = Find("curl_easy_init");
  decltype(&curl_easy_setopt) EasySetopt = Find("curl_easy_setopt");
  decltype(&curl_easy_strerror) EasyStrerror = Find("curl_easy_strerror");
  decltype(&curl_easy_cleanup) EasyCleanup = Find("curl_easy_cleanup");
  decltype(&curl_slist_append) SlistAppend = Find("curl_slist_append");
  decltype(&curl_slist_free_all) SlistFreeAll = Find("curl_slist_free_all");
  decltype(&curl_multi_init) MultiInit = Find("curl_multi_init");
  decltype(&curl_multi_add_handle) MultiAddHandle = Find("curl_multi_add_handle");
  decltype(&curl_multi_remove_handle) MultiRemoveHandle = Find("curl_multi_remove_handle");
  decltype(&curl_multi_perform) MultiPerform = Find("curl_multi_perform");
  decltype(&curl_multi_poll) MultiPoll = Find("curl_multi_poll");
  decltype(&curl_multi_wakeup) MultiWakeup = Find("curl_multi_wakeup");
  decltype(&curl_multi_info_read) MultiInfoRead = Find("curl_multi_info_read");
  decltype(&curl_multi_cleanup) MultiCleanup = Find("curl_multi_cleanup");
};

// Raises 57 for a libcurl that refuses to work.
[[noreturn]] void RaiseCurl(const char* reason);

}  // namespace Gateway
