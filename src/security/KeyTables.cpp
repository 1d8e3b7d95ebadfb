// The fixed tables of the two encoders. Encoded strings can only be read with the table that wrote them, so
// no character of either may ever change. Neither table stands in the library as one piece.
#include "src/security/ComponentSecurity.h"

namespace TvEmailServices {

// 111 characters. The first 81 are start characters: each occurs nowhere before itself, and none has code 126
// or 127, which stand for others in an encoded string. None is a blank either, since a record's values lose
// the blanks at their ends when they are read for a dialog.
String ComponentSecurity::GetKeyTable() {
  String table = u"3%SHi,vEWn$X!]PRj;(&us-p1Dg=orGVe+*_>FAM#QZ4:";
  table += char16_t{29};
  table += u"/x9)'L[IBObY.?@C|z2\"dhwa0^6Kc\\k{NmlUfqy`8}5TtJ7<8oYlCq1F6OLU^!T#5";
  return table;
}

// 127 characters. The first 97 are start characters, of which code 255 is none.
String ComponentSecurity::GetOldKeyTable() {
  String table = u"&ZW\u00FE4JwuVcb6>/F8kh9HXpt\u00BFK\u00A4Dsm@\u00E5`1]PT;}Q";
  table += char16_t{172};
  table +=
      u"7rO\u00A1\u00B6\"d\u00A7R-=E|\u00C6C^gelBU'NLY2fI\\o+j*M{.\u00DF%vq(0nGA\u00D85:iS?[zy<_~,)\u00F6$"
      u"\u00B0a!#3x7lPRSp1E2BwT_8%U5NoL";
  return table;
}

// 26 bytes, the table's positions 2 to 27. The table is fetched anew for each.
Bytes ComponentSecurity::GetFixedKey() {
  constexpr std::size_t kSize = 26;
  Bytes key;
  for (std::size_t i = 0; i < kSize; ++i) key.push_back(static_cast<std::uint8_t>(GetKeyTable()[i + 1]));
  return key;
}

}  // namespace TvEmailServices
