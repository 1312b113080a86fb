# The test build runs under ASan and UBSan; any report aborts the test that caused it.
if(CORVALTA_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
