# Every target of ours links corvalta::warnings, so the warning policy lives in one place
# and third-party code (Qt's headers, GoogleTest) is not held to it. Warnings are errors in the
# test and fuzz builds only: GCC 12 at -O3 reports overflows inside the standard library that
# cannot happen (-Wrestrict, -Wstringop-overflow), and a player's build must not fail on them.
option(CORVALTA_WERROR "Treat warnings as errors (the test build does; a player's build does not)" OFF)

add_library(corvalta_warnings INTERFACE)
add_library(corvalta::warnings ALIAS corvalta_warnings)
target_compile_options(corvalta_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
  -Wnon-virtual-dtor -Wold-style-cast -Woverloaded-virtual -Wnull-dereference
  -Wimplicit-fallthrough
  $<$<BOOL:${CORVALTA_WERROR}>:-Werror>)
