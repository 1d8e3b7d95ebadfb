// CheapKeyStore: a key store at the lowest cost of scrypt, for tests in which the cost doesn't matter.
#pragma once

#include "tests/support/World.h"

namespace Tests {

// The key "mail" of 121 letters K, encrypted with the password "pw" at the lowest cost, by another program.
inline const std::string kCheapKeyStore =
    "OstrCipherCOM key store 1\nscrypt 10 8 1 AAECAwQFBgcICQoLDA0ODw==\n"
    "AAECAwQFBgcICQoLqy99vqVbVKiFyZQO5DP8AaC3vZtHyj0VSsnGVS8JPr1Ixc0Cg/TJ8N4PSqfMVTYQ6jGnfNWSEH35"
    "YC04Txzn8F5rN2gKx118n2mL1ZJDYaL12lcJJDLkfQAExn/NmkgXDiPLCENJIco5keVRVsDP3xKBpi+pMrlocX1n4Kps"
    "E7X4BDv0pxR5nJGuYs8aoCs="
    "\n";

inline void WriteCheapKeyStore(const std::filesystem::path& path) {
  WriteFile(path, kCheapKeyStore);
  std::filesystem::permissions(path, std::filesystem::perms(0600));
}

}  // namespace Tests
