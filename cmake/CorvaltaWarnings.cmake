# Every target of ours links corvalta::warnings, so the warning policy lives in one place
# and third-party code (Qt's headers, GoogleTest) is not held to it.
add_library(corvalta_warnings INTERFACE)
add_library(corvalta::warnings ALIAS corvalta_warnings)
target_compile_options(corvalta_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
  -Wnon-virtual-dtor -Wold-style-cast -Woverloaded-virtual -Wnull-dereference
  -Wimplicit-fallthrough -Werror)
