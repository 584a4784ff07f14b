# The Debian package, made by `cpack` in the build folder.

# The revision has one home: the newest entry of the package's change log.
file(STRINGS "${changes}" newest LIMIT_COUNT 1)
if(NOT newest MATCHES "^quintara \\(([0-9.]+)-([0-9]+)\\)")
  message(FATAL_ERROR "${changes} does not begin with \"quintara (VERSION-REVISION)\"")
endif()
set(CPACK_PACKAGE_VERSION ${CMAKE_MATCH_1})
if(NOT CMAKE_MATCH_1 STREQUAL PROJECT_VERSION)
  message(FATAL_ERROR "${changes} is about ${CMAKE_MATCH_1}, the project is ${PROJECT_VERSION}")
endif()
set(CPACK_DEBIAN_PACKAGE_RELEASE ${CMAKE_MATCH_2})
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${changes}")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quintara)
set(CPACK_PACKAGE_VENDOR "The Quintara contributors")
set(CPACK_PACKAGE_CONTACT "The Quintara contributors <maintainers@quintara.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "price chart and calculator of Fibonacci levels")
file(READ "${CMAKE_CURRENT_SOURCE_DIR}/debian/description" CPACK_DEBIAN_PACKAGE_DESCRIPTION)
string(STRIP "${CPACK_DEBIAN_PACKAGE_DESCRIPTION}" CPACK_DEBIAN_PACKAGE_DESCRIPTION)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_CHECKSUM SHA256)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# Libraries that the programs and modules are linked with are computed. What they load or start by
# name has to be listed. flock, lslocks, setsid and setpriv of the launcher are in every Debian system.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Window and service load this library with their first transfer; its package has another name in
# another release.
execute_process(COMMAND dpkg-query --search "*/libcurl.so.4" OUTPUT_VARIABLE libcurl ERROR_QUIET)
string(REGEX REPLACE ":.*" "" libcurl "${libcurl}")
set(needed
  ca-certificates    # whom the service trusts when it asks a provider
  curl               # the launcher asks whether the service answers
  fonts-dejavu-core  # what "sans" means to the help; with Liberation alone it is fixed-width
  fonts-liberation   # the sans font the layout is drawn for
  "${libcurl} (>= 7.85)"
  libqt6sql6-sqlite  # the help viewer's index is a database
  qt6-wayland)       # windows under Wayland; those under X11 come with the toolkit
list(JOIN needed ", " CPACK_DEBIAN_PACKAGE_DEPENDS)
# Shows the launcher's messages when it was started from a menu.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "zenity | kdialog | x11-utils")

# The same files make the same package, byte for byte: it is dated like the newest entry.
file(STRINGS "${changes}" signature REGEX "^ -- .*>  " LIMIT_COUNT 1)
string(REGEX REPLACE ".*>  " "" signature "${signature}")
execute_process(COMMAND date -d "${signature}" +%s OUTPUT_VARIABLE epoch
  OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
set(CPACK_PROJECT_CONFIG_FILE "${CMAKE_CURRENT_BINARY_DIR}/package_date.cmake")
file(WRITE "${CPACK_PROJECT_CONFIG_FILE}" "if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
  set(ENV{SOURCE_DATE_EPOCH} ${epoch})
endif()
")

include(CPack)
