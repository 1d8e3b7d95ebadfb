// SslLibrary: OpenSSL's library for TLS, loaded with the first TLS session.
#pragma once

#include <openssl/ssl.h>

#include "runtime/SystemLibrary.h"

namespace Gateway {

// The functions that are called, under their own names.
struct SslLibrary : Runtime::LibraryFunctions<SslLibrary> {
  static constexpr const char* kFile = "libssl.so.3";
  static constexpr const char* kPackage = "libssl3";

  decltype(&::SSL_CTX_ctrl) SSL_CTX_ctrl = Find("SSL_CTX_ctrl");
  decltype(&::SSL_CTX_free) SSL_CTX_free = Find("SSL_CTX_free");
  decltype(&::SSL_CTX_load_verify_file) SSL_CTX_load_verify_file = Find("SSL_CTX_load_verify_file");
  decltype(&::SSL_CTX_new) SSL_CTX_new = Find("SSL_CTX_new");
  decltype(&::SSL_CTX_set_default_verify_paths) SSL_CTX_set_default_verify_paths =
      Find("SSL_CTX_set_default_verify_paths");
  decltype(&::SSL_CTX_set_verify) SSL_CTX_set_verify = Find("SSL_CTX_set_verify");
  decltype(&::SSL_connect) SSL_connect = Find("SSL_connect");
  decltype(&::SSL_ctrl) SSL_ctrl = Find("SSL_ctrl");
  decltype(&::SSL_free) SSL_free = Find("SSL_free");
  decltype(&::SSL_get0_param) SSL_get0_param = Find("SSL_get0_param");
  decltype(&::SSL_get_error) SSL_get_error = Find("SSL_get_error");
  decltype(&::SSL_get_verify_result) SSL_get_verify_result = Find("SSL_get_verify_result");
  decltype(&::SSL_has_pending) SSL_has_pending = Find("SSL_has_pending");
  decltype(&::SSL_new) SSL_new = Find("SSL_new");
  decltype(&::SSL_read_ex) SSL_read_ex = Find("SSL_read_ex");
  decltype(&::SSL_set1_host) SSL_set1_host = Find("SSL_set1_host");
  decltype(&::SSL_set_bio) SSL_set_bio = Find("SSL_set_bio");
  decltype(&::SSL_set_hostflags) SSL_set_hostflags = Find("SSL_set_hostflags");
  decltype(&::SSL_write_ex) SSL_write_ex = Find("SSL_write_ex");
  decltype(&::TLS_client_method) TLS_client_method = Find("TLS_client_method");
};

}  // namespace Gateway
