# One Debian package of whatever this tree installs: `cpack` in a build tree writes
# corvalta_<version>_<arch>.deb. dpkg-shlibdeps computes the libraries' packages; what the game
# needs without linking it is declared by hand.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME corvalta)
set(CPACK_PACKAGE_VENDOR Dunmere)
set(CPACK_PACKAGE_CONTACT "Dunmere <nemkard@dunmere.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_DESCRIPTION [[
Three numbers stand in a row with a plus or minus sign between each pair.
Work out the two results, then the final answer from them, as many times as
you can in 90 seconds. Four levels, sound effects, and a table of the ten
best scores.]])
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION games)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://www.dunmere.example/")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The windows ask for Arial; Liberation Sans has its metrics. SDL2 is loaded at the first
# sound rather than linked, so dpkg-shlibdeps does not see it.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-liberation, libsdl2-2.0-0")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
