#include "support/lazy_library.h"

#include <dlfcn.h>

#include <string>

#include "support/error.h"

void* LAZY_LIBRARY::address(const char* name) {
  if (!handle) {
    handle = dlopen(soname, RTLD_NOW | RTLD_LOCAL);
    if (!handle) fail_to_load(soname);
  }
  void* found = dlsym(handle, name);
  if (!found) fail_to_load((std::string(name) + " of " + soname).c_str());
  return found;
}

void LAZY_LIBRARY::fail_to_load(const char* what) const {
  const char* reason = dlerror();
  std::string message = std::string("cannot load ") + what + ": " + (reason ? reason : "not found");
  if (*package) message += "; install the Debian package " + std::string(package);
  throw Error(message + "\n");
}
