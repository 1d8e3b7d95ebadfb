// HostileMails: mails that attack weaknesses of the parsers.
#pragma once

#include <span>
#include <string>

// A mail of any size: its head, its piece as often as the size allows, its tail. A '#' of the piece is the
// number of its repetition.
struct HostileMail {
  const char* Name;
  std::size_t Kilobytes;  // its size in the first column, so large that the time can be measured
  std::string Head, Piece, Tail = {};

  std::string OfSize(std::size_t bytes) const;
};

std::span<const HostileMail> HostileMails();
