// EtpanLibrary: libetpan, loaded with the first IMAP session.
#pragma once

#include <libetpan/libetpan.h>

#include "runtime/SystemLibrary.h"

namespace Gateway {

// The functions that are called, under their own names.
struct EtpanLibrary : Runtime::LibraryFunctions<EtpanLibrary> {
  static constexpr const char* kFile = "libetpan.so.20";
  static constexpr const char* kPackage = "libetpan20";

  decltype(&::mailimap_capability) mailimap_capability = Find("mailimap_capability");
  decltype(&::mailimap_capability_data_free) mailimap_capability_data_free =
      Find("mailimap_capability_data_free");
  decltype(&::mailimap_connect) mailimap_connect = Find("mailimap_connect");
  decltype(&::mailimap_examine) mailimap_examine = Find("mailimap_examine");
  decltype(&::mailimap_fetch_att_new_body_peek_section) mailimap_fetch_att_new_body_peek_section =
      Find("mailimap_fetch_att_new_body_peek_section");
  decltype(&::mailimap_fetch_att_new_rfc822_size) mailimap_fetch_att_new_rfc822_size =
      Find("mailimap_fetch_att_new_rfc822_size");
  decltype(&::mailimap_fetch_att_new_uid) mailimap_fetch_att_new_uid = Find("mailimap_fetch_att_new_uid");
  decltype(&::mailimap_fetch_list_free) mailimap_fetch_list_free = Find("mailimap_fetch_list_free");
  decltype(&::mailimap_fetch_type_free) mailimap_fetch_type_free = Find("mailimap_fetch_type_free");
  decltype(&::mailimap_fetch_type_new_fetch_att_list_add) mailimap_fetch_type_new_fetch_att_list_add =
      Find("mailimap_fetch_type_new_fetch_att_list_add");
  decltype(&::mailimap_fetch_type_new_fetch_att_list_empty) mailimap_fetch_type_new_fetch_att_list_empty =
      Find("mailimap_fetch_type_new_fetch_att_list_empty");
  decltype(&::mailimap_flag_list_add) mailimap_flag_list_add = Find("mailimap_flag_list_add");
  decltype(&::mailimap_flag_list_new_empty) mailimap_flag_list_new_empty =
      Find("mailimap_flag_list_new_empty");
  decltype(&::mailimap_flag_new_deleted) mailimap_flag_new_deleted = Find("mailimap_flag_new_deleted");
  decltype(&::mailimap_flag_new_flag_keyword) mailimap_flag_new_flag_keyword =
      Find("mailimap_flag_new_flag_keyword");
  decltype(&::mailimap_flag_new_seen) mailimap_flag_new_seen = Find("mailimap_flag_new_seen");
  decltype(&::mailimap_free) mailimap_free = Find("mailimap_free");
  decltype(&::mailimap_has_extension) mailimap_has_extension = Find("mailimap_has_extension");
  decltype(&::mailimap_idle) mailimap_idle = Find("mailimap_idle");
  decltype(&::mailimap_idle_done) mailimap_idle_done = Find("mailimap_idle_done");
  decltype(&::mailimap_login) mailimap_login = Find("mailimap_login");
  decltype(&::mailimap_mailbox_data_status_free) mailimap_mailbox_data_status_free =
      Find("mailimap_mailbox_data_status_free");
  decltype(&::mailimap_new) mailimap_new = Find("mailimap_new");
  decltype(&::mailimap_search_key_free) mailimap_search_key_free = Find("mailimap_search_key_free");
  decltype(&::mailimap_search_key_multiple_add) mailimap_search_key_multiple_add =
      Find("mailimap_search_key_multiple_add");
  decltype(&::mailimap_search_key_new) mailimap_search_key_new = Find("mailimap_search_key_new");
  decltype(&::mailimap_search_key_new_keyword) mailimap_search_key_new_keyword =
      Find("mailimap_search_key_new_keyword");
  decltype(&::mailimap_search_key_new_multiple_empty) mailimap_search_key_new_multiple_empty =
      Find("mailimap_search_key_new_multiple_empty");
  decltype(&::mailimap_search_result_free) mailimap_search_result_free = Find("mailimap_search_result_free");
  decltype(&::mailimap_section_new) mailimap_section_new = Find("mailimap_section_new");
  decltype(&::mailimap_section_new_header) mailimap_section_new_header = Find("mailimap_section_new_header");
  decltype(&::mailimap_select) mailimap_select = Find("mailimap_select");
  decltype(&::mailimap_set_add_interval) mailimap_set_add_interval = Find("mailimap_set_add_interval");
  decltype(&::mailimap_set_free) mailimap_set_free = Find("mailimap_set_free");
  decltype(&::mailimap_set_new_empty) mailimap_set_new_empty = Find("mailimap_set_new_empty");
  decltype(&::mailimap_starttls) mailimap_starttls = Find("mailimap_starttls");
  decltype(&::mailimap_status) mailimap_status = Find("mailimap_status");
  decltype(&::mailimap_status_att_list_add) mailimap_status_att_list_add =
      Find("mailimap_status_att_list_add");
  decltype(&::mailimap_status_att_list_free) mailimap_status_att_list_free =
      Find("mailimap_status_att_list_free");
  decltype(&::mailimap_status_att_list_new_empty) mailimap_status_att_list_new_empty =
      Find("mailimap_status_att_list_new_empty");
  decltype(&::mailimap_store_att_flags_free) mailimap_store_att_flags_free =
      Find("mailimap_store_att_flags_free");
  decltype(&::mailimap_store_att_flags_new_add_flags_silent) mailimap_store_att_flags_new_add_flags_silent =
      Find("mailimap_store_att_flags_new_add_flags_silent");
  decltype(&::mailimap_uid_copy) mailimap_uid_copy = Find("mailimap_uid_copy");
  decltype(&::mailimap_uid_expunge) mailimap_uid_expunge = Find("mailimap_uid_expunge");
  decltype(&::mailimap_uid_fetch) mailimap_uid_fetch = Find("mailimap_uid_fetch");
  decltype(&::mailimap_uid_move) mailimap_uid_move = Find("mailimap_uid_move");
  decltype(&::mailimap_uid_search) mailimap_uid_search = Find("mailimap_uid_search");
  decltype(&::mailimap_uid_store) mailimap_uid_store = Find("mailimap_uid_store");
  decltype(&::mailstream_close) mailstream_close = Find("mailstream_close");
  decltype(&::mailstream_low_new) mailstream_low_new = Find("mailstream_low_new");
  decltype(&::mailstream_new) mailstream_new = Find("mailstream_new");
};

}  // namespace Gateway
