find_package(GTest REQUIRED)
include(GoogleTest)

# corvalta_add_test(<name> SOURCES <files...> LIBS <targets...>)
# One test program per module; each GoogleTest case becomes a CTest test of its own.
function(corvalta_add_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS;LABELS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LIBS} GTest::gtest GTest::gtest_main corvalta::warnings)
  # Test sources may use the framework-style names of the code under test; keep the
  # same warnings, but GoogleTest's macros trip -Wnull-dereference under ASan.
  target_compile_options(${name} PRIVATE -Wno-null-dereference)
  gtest_discover_tests(${name}
    DISCOVERY_TIMEOUT 60
    PROPERTIES LABELS "${ARG_LABELS}")
endfunction()

# The link graph against the table of docs/architecture.md: a new link fails until the table
# says so. It configures the tree afresh in a folder of its own.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
add_test(NAME link_graph
  COMMAND Python3::Interpreter ${PROJECT_SOURCE_DIR}/cmake/link_graph_test.py ${CMAKE_COMMAND}
    ${PROJECT_SOURCE_DIR} ${PROJECT_BINARY_DIR}/link_graph)
