// Shared libraries opened the first time one of their functions is needed, so that a run
// that needs none of their functions does not pay at its start for mapping and relocating
// them and the libraries they pull in.
#pragma once

class LAZY_LIBRARY {
 public:
  // library: its soname, as dlopen takes it; debian_package: the package that provides it,
  // named in the message when it cannot be loaded (none when empty).
  constexpr LAZY_LIBRARY(const char* library, const char* debian_package)
      : soname(library), package(debian_package) {}

  // The function called name, the library opened on the first call. Throws Error with the
  // library, the system's reason and the package when the library or the function cannot be
  // found.
  template <typename FUNCTION>
  FUNCTION function(const char* name) {
    return reinterpret_cast<FUNCTION>(address(name));
  }

 private:
  void* address(const char* name);
  [[noreturn]] void fail_to_load(const char* what) const;

  const char* soname;
  const char* package;
  void* handle = nullptr;  // never closed: the functions stay in use until the process ends
};

// A member of a library's table of functions, named and typed as the library's header
// declares the function, and resolved when the table is made.
#define LAZY_FUNCTION(library, name) \
  decltype(&::name) name = (library).function<decltype(&::name)>(#name)
