// Services: what the process provides to the components in it.
//
// The run time has the real object; a test installs its own. The component creates objects and reads the
// clock, random numbers and its own folder only through these services.
#pragma once

#include <cstdint>

#include "platform/Guid.h"
#include "platform/Value.h"

namespace Platform {

class FormsToolkit;

// A moment of local time.
struct Moment {
  std::int32_t Year = 0;
  std::int32_t Month = 1;  // 1 to 12
  std::int32_t Day = 1;    // 1 to 31
  std::int32_t Hour = 0;   // 0 to 23
  std::int32_t Minute = 0;
  std::int32_t Second = 0;
  std::int32_t Millisecond = 0;
};

// A source of random values, not for secrets. Each thread has its own. Raises no failure.
class RandomSource {
 public:
  virtual ~RandomSource();
  // Starts the sequence that belongs to the number.
  virtual void Seed(double number) = 0;
  // A uniform value, at least 0 and below 1.
  virtual double Next() = 0;
};

// All operations may be called on any thread.
class PlatformServices {
 public:
  virtual ~PlatformServices();

  // A new object of the class registered under a programmatic name, for use on this thread. Raises 429 if the
  // name isn't registered or its library can't be loaded, 57 if the registry can't be read, and what the
  // object's constructor raises.
  virtual ObjectRef CreateByName(StringView programmaticName) = 0;

  // The same by class identifier.
  virtual ObjectRef CreateByClass(const Guid& classId) = 0;

  // The folder of the library or program that contains the address, without a separator at its end. Raises 76
  // if there is none.
  virtual String FolderOf(const void* codeAddress) = 0;

  // The present local time.
  virtual Moment Now() = 0;

  // The source of the calling thread, valid until the thread ends.
  virtual RandomSource& Random() = 0;

  // The process's toolkit, valid as long as it is installed. Raises 429 if there is none.
  virtual FormsToolkit& Toolkit() = 0;
};

// The installed services; if there are none, those of the run time. Any thread.
PlatformServices& Services();

// Installs services and returns the former ones; null means those of the run time. The caller keeps ownership
// and must keep them alive while they are installed. Not to be called while a component is in use.
PlatformServices* InstallServices(PlatformServices* services);

}  // namespace Platform
