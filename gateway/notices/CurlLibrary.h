// CurlLibrary: libcurl, loaded when mail is sent first.
#pragma once

#include <curl/curl.h>

namespace Gateway {

struct CurlLibrary {
  // Loads it at the first call. Raises 57 if it isn't installed. Any thread.
  static const CurlLibrary& Get();

  decltype(&curl_global_init) GlobalInit;
  decltype(&curl_easy_init) EasyInit;
  decltype(&curl_easy_setopt) EasySetopt;
  decltype(&curl_easy_strerror) EasyStrerror;
  decltype(&curl_easy_cleanup) EasyCleanup;
  decltype(&curl_slist_append) SlistAppend;
  decltype(&curl_slist_free_all) SlistFreeAll;
  decltype(&curl_multi_init) MultiInit;
  decltype(&curl_multi_add_handle) MultiAddHandle;
  decltype(&curl_multi_remove_handle) MultiRemoveHandle;
  decltype(&curl_multi_perform) MultiPerform;
  decltype(&curl_multi_poll) MultiPoll;
  decltype(&curl_multi_wakeup) MultiWakeup;
  decltype(&curl_multi_info_read) MultiInfoRead;
  decltype(&curl_multi_cleanup) MultiCleanup;
};

// Raises 57 for a libcurl that refuses to work.
[[noreturn]] void RaiseCurl(const char* reason);

}  // namespace Gateway
