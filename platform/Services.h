// Services: what a process gives to the components in it, through one object that it installs.
//
// The run time brings the real object and a test installs its own. Nothing in the component reads a clock, an
// environment variable or a file by any other road.
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

// A source of random values, one for each thread.
class RandomSource {
 public:
  virtual ~RandomSource();
  virtual void Seed(double number) = 0;
  // A uniform value, at least 0 and below 1.
  virtual double Next() = 0;
};

// All operations may be called on any thread.
class PlatformServices {
 public:
  virtual ~PlatformServices();

  // A new object of the class registered under a programmatic name. Raises 429 if the name isn't registered
  // or its library can't be had; a failure of the object's own creation passes.
  virtual ObjectRef CreateByName(StringView programmaticName) = 0;

  // The same by class identity.
  virtual ObjectRef CreateByClass(const Guid& classId) = 0;

  // The folder of the library that holds the address, without a separator at its end. Raises 76 if none does.
  virtual String FolderOf(const void* codeAddress) = 0;

  virtual Moment Now() = 0;

  // The source of the calling thread.
  virtual RandomSource& Random() = 0;

  // The toolkit in force. Raises 429 where the process has none.
  virtual FormsToolkit& Toolkit() = 0;
};

// The services in force: those installed, otherwise the run time's own.
PlatformServices& Services();

// Puts others in place and gives those that were; null brings back the run time's own. They must outlive
// their use. To be called while no component is at work.
PlatformServices* InstallServices(PlatformServices* services);

}  // namespace Platform
