# Compiler flags that every target of the project shares.

add_library(halcyra_flags INTERFACE)
target_compile_options(halcyra_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
  -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-qual -Wformat=2 -Wundef
  # A fused multiply-add rounds once instead of twice, so the converted pixels would depend on the
  # machine.
  -ffp-contract=off
  # Nothing uses floating-point exceptions, and loops with comparisons are vectorised only without.
  -fno-trapping-math)

if(HALCYRA_WARNINGS_AS_ERRORS)
  target_compile_options(halcyra_flags INTERFACE -Werror)
endif()

if(HALCYRA_SANITIZERS)
  set(_sanitize -fsanitize=${HALCYRA_SANITIZERS} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_compile_options(halcyra_flags INTERFACE ${_sanitize})
  target_link_options(halcyra_flags INTERFACE ${_sanitize})
endif()

if(HALCYRA_COVERAGE)
  target_compile_options(halcyra_flags INTERFACE --coverage -O0)
  target_link_options(halcyra_flags INTERFACE --coverage)
endif()
