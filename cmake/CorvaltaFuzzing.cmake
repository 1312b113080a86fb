# libFuzzer targets build only with clang and CORVALTA_FUZZ. The test script builds them in a
# tree of their own, where every library is instrumented for coverage, and CTest runs each
# fuzzer for a short smoke.
if(CORVALTA_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
  add_custom_target(fuzzers)
  set(CORVALTA_FUZZ_SECONDS 15 CACHE STRING "How long the CTest smoke runs each fuzzer")
endif()

# corvalta_add_fuzzer(<name> SOURCES <files...> LIBS <targets...> [CORPUS <dir>])
function(corvalta_add_fuzzer name)
  if(NOT CORVALTA_FUZZ)
    return()
  endif()
  cmake_parse_arguments(ARG "" "CORPUS" "SOURCES;LIBS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  target_link_libraries(${name} PRIVATE ${ARG_LIBS} corvalta::warnings)
  add_dependencies(fuzzers ${name})
  set(corpus)
  if(ARG_CORPUS)
    set(corpus ${ARG_CORPUS})
  endif()
  add_test(NAME ${name}_smoke
    COMMAND ${name} -max_total_time=${CORVALTA_FUZZ_SECONDS} -rss_limit_mb=2048 ${corpus})
endfunction()
