# One Debian package of whatever this tree installs: `cpack` in a build tree writes
# corvalta_<version>_<arch>.deb (scripts/package.sh configures the tree as Debian wants it).
# dpkg-shlibdeps computes the libraries' packages; what the game needs without linking it is
# declared by hand.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME corvalta)
set(CPACK_PACKAGE_VENDOR Dunmere)
set(CPACK_PACKAGE_CONTACT "Dunmere <nemkard@dunmere.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "90-second drill in mental arithmetic")
set(CPACK_PACKAGE_DESCRIPTION [[
Three numbers stand in a row with a plus or minus sign between each pair.
Work out the two results, then the final answer from them, as many times as
you can in 90 seconds. Four levels, sound effects, and a table of the ten
best scores.]])
# Stripped as Debian strips: see the script.
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/CorvaltaStripPackage.cmake)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION games)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://www.dunmere.example/")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The windows ask for Arial; Liberation Sans has its metrics. The menus take the desktop's sans,
# DejaVu Sans on Debian: with Liberation alone, fontconfig answers sans-serif with Liberation
# Mono. SDL2 is loaded at the first
# sound rather than linked, so dpkg-shlibdeps does not see it. Qt's X11 platform plugin comes
# with its GUI library; the Wayland one is a package of its own, and without it Qt falls back
# to X11 through the compositor's X server. "Go to Website" hands the address to xdg-open.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-dejavu-core, fonts-liberation, libsdl2-2.0-0")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
