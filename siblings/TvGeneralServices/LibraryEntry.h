// LibraryEntry: the count of this library's objects that are alive.
#pragma once

#include <atomic>

namespace TvGeneralServices {

extern std::atomic<long> liveObjects;

// A member of every object that no class factory makes, and so none counts.
class Alive {
 public:
  Alive() { ++liveObjects; }
  Alive(const Alive&) = delete;
  Alive& operator=(const Alive&) = delete;
  ~Alive() { --liveObjects; }
};

}  // namespace TvGeneralServices
