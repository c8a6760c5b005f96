// Loads the module, and with it the library, runs it, and unloads both; twice. The address sanitizer sees what is left.
#include <dlfcn.h>

#include <cstdio>

int main() {
  for (int Round = 1; Round <= 2; ++Round) {
    void* const Module = dlopen(MODULE_FILE, RTLD_NOW | RTLD_LOCAL);
    if (!Module) return std::fprintf(stderr, "%s\n", dlerror()), 1;
    const auto RunHost = reinterpret_cast<bool (*)()>(dlsym(Module, "RunHost"));
    if (!RunHost || !RunHost()) return std::fprintf(stderr, "round %d failed\n", Round), 1;
    dlclose(Module);
    if (dlopen(LIBRARY_FILE, RTLD_NOW | RTLD_NOLOAD))
      return std::fprintf(stderr, "the library stayed loaded after round %d\n", Round), 1;
  }
  std::puts("loaded, used and unloaded twice");
}
