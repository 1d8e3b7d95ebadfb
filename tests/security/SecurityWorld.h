// SecurityWorld: an encoder whose clock and random numbers a test sets, with access to its tables.
#pragma once

#include <functional>
#include <optional>
#include <set>

#include "src/security/ComponentSecurity.h"
#include "tests/support/World.h"

namespace TvEmailServices {

class ComponentSecurityTestAccess {
 public:
  static String KeyTable() { return ComponentSecurity::GetKeyTable(); }
  static String OldKeyTable() { return ComponentSecurity::GetOldKeyTable(); }
  static Bytes KeyStoreKey(ComponentSecurity& security) { return security.PWKeyFIPS(); }
  static void CryptoComponent(ComponentSecurity& security) { security.GetOstrCipherCOM(); }
};

}  // namespace TvEmailServices

namespace Tests {

using TvEmailServices::ComponentSecurity;
using TvEmailServices::ComponentSecurityTestAccess;

// Gives the random numbers that a test sets; records the seeds and the number of draws after each.
class ForcedDraws : public RandomSource {
 public:
  double First = 0;
  std::function<double(std::size_t)> Others = [](std::size_t) { return 0.5; };
  std::vector<double> Seeds;
  std::vector<std::size_t> DrawsAfterSeed;

  void Seed(double number) override {
    Seeds.push_back(number);
    DrawsAfterSeed.push_back(0);
  }
  double Next() override {
    ++DrawsAfterSeed.back();
    return Seeds.size() == 1 && DrawsAfterSeed[0] == 1 ? First : Others(drawn_++);
  }

 private:
  std::size_t drawn_ = 0;
};

class SecurityWorld : public testing::Test {
 protected:
  SecurityWorld() { world_.Services.Present = Moment{2026, 3, 22, 14, 7, 9, 250}; }

  // The next encoding starts at this position of a table whose start positions end at last.
  ForcedDraws& StartAt(int start, int last) {
    draws_ = ForcedDraws();
    draws_.First = start == last ? 0.9999 : (start - 1) / (last - 1.0);
    world_.Services.RandomInstead = &draws_;
    return draws_;
  }

  World world_;
  ForcedDraws draws_;
  ComponentSecurity security_;
};

// FNV-1a, 64 bits, over the codes of a table, one byte each.
inline std::uint64_t Fingerprint(StringView table) {
  std::uint64_t hash = 0xcbf29ce484222325;
  for (const char16_t code : table) hash = (hash ^ code) * 0x100000001b3;
  return hash;
}

// "number|source|description" of the failure that the operation raises, or "none".
inline std::string FailureOf(const std::function<void()>& operation) {
  try {
    operation();
    return "none";
  } catch (const Failure& failure) {
    return std::to_string(failure.Number()) + "|" + Utf8(failure.Source()) + "|" +
           Utf8(failure.Description());
  }
}

}  // namespace Tests
