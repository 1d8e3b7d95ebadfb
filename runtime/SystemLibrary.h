// SystemLibrary: a library of the system that is loaded when it is used first.
//
// "tvmail deliver", which a mail server starts for each mail, would lose milliseconds by loading libraries
// that it doesn't use, and those that they need.
#pragma once

namespace Runtime {

// Stays loaded until the process ends.
class SystemLibrary {
 public:
  // The address of a function, for a pointer of its type.
  struct Address {
    void* Place;
    template <class Function>
    operator Function*() const {
      return reinterpret_cast<Function*>(Place);
    }
  };

  // Loads the file. Raises 57, which names it and the package that has it, if it can't be loaded. Any thread.
  SystemLibrary(const char* file, const char* package);

  // Raises 57 if the library has no such function. Any thread.
  Address Find(const char* function) const;

 private:
  [[noreturn]] void Raise() const;

  const char* package_;
  void* library_;
};

// The functions of a library, as members of Library, which is derived from this: each is initialised with
// Find. Library names the file and the package that has it, as kFile and kPackage.
template <class Library>
class LibraryFunctions {
 public:
  // Loads the library at the first call, and raises as SystemLibrary does. Any thread.
  static const Library& Get() {
    static const Library library;
    return library;
  }

  LibraryFunctions(const LibraryFunctions&) = delete;
  LibraryFunctions& operator=(const LibraryFunctions&) = delete;

 protected:
  LibraryFunctions() = default;
  ~LibraryFunctions() = default;

  static SystemLibrary::Address Find(const char* function) {
    static const SystemLibrary file(Library::kFile, Library::kPackage);
    return file.Find(function);
  }
};

}  // namespace Runtime
