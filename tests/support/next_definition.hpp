// The way on from a stand-in to the function it stands in for. A program or a preloaded library
// that defines a function of a shared library itself is called in that library's place, and uses
// this to call the library's own.
#pragma once

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace halcyra {

// The same function in the next library that defines it. The dynamic linker is asked for the
// stand-in's name, so that no mangled name has to be spelled out; the stand-in must therefore be
// exported (in CMake, ENABLE_EXPORTS for a program). Ends the process if there is no next one.
// Hidden, as "next" counts from the program or library that this was compiled into.
__attribute__((visibility("hidden"))) inline void* next_definition_of(void* stand_in) {
  Dl_info known{};
  const bool exported = dladdr(stand_in, &known) != 0 && known.dli_saddr == stand_in;
  void* const next = exported ? dlsym(RTLD_NEXT, known.dli_sname) : nullptr;
  if (next == nullptr) {
    std::fprintf(stderr, "no next definition of %s\n", exported ? known.dli_sname : "a function");
    std::abort();
  }
  return next;
}

// The type of an overloaded function says which one is meant: next_definition<int(int)>(twice).
template <class Function>
Function* next_definition(Function* stand_in) {
  return reinterpret_cast<Function*>(next_definition_of(reinterpret_cast<void*>(stand_in)));
}

// A member function, which must not be virtual, becomes a function that takes the object first:
// that is how g++ and clang call it, and its address is what such a pointer begins with.
template <class Class, class Result, class... Arguments>
auto next_definition(Result (Class::*stand_in)(Arguments...) const) {
  void* address = nullptr;
  std::memcpy(&address, &stand_in, sizeof address);
  return reinterpret_cast<Result (*)(const Class*, Arguments...)>(next_definition_of(address));
}

}  // namespace halcyra
