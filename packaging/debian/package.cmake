# The Debian package: cpack in the build folder makes it.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ${QUILMO_PACKAGE})
set(CPACK_PACKAGE_VENDOR Quilmo)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_CMAKE_PROJECTS
  "${CMAKE_BINARY_DIR};Quilmo;program;/;${CMAKE_BINARY_DIR};Quilmo;debian;/")
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "Quilmo <packages@quilmo.example>")
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE ${QUILMO_WEB_ADDRESS})
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)

# Quilmo loads SDL at the first sound and libmount at the first drive by itself, so its need of them stands in no file's
# header.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libsdl2-2.0-0, libmount1")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland, fonts-nanum | fonts-noto-cjk")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS xdg-utils)
if(NOT QUILMO_LANGUAGE EQUAL 1)
  # The toolkit's own words.
  string(APPEND CPACK_DEBIAN_PACKAGE_DEPENDS ", qt6-translations-l10n")
  set(CPACK_DEBIAN_PACKAGE_PROVIDES quilmo)
endif()
list(JOIN other_packages ", " CPACK_DEBIAN_PACKAGE_CONFLICTS)
set(CPACK_DEBIAN_PACKAGE_REPLACES ${CPACK_DEBIAN_PACKAGE_CONFLICTS})

set(in_language "")
if(QUILMO_LANGUAGE EQUAL 2)
  set(in_language " - Korean")
elseif(QUILMO_LANGUAGE EQUAL 3)
  set(in_language " - German")
endif()
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "names of MP3 files made of artist, title and genre${in_language}")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Quilmo is for people who put their MP3 files on a disc. Disc players show
little more than the file name, so Quilmo brings the names into one tidy
format, in which the name itself carries artist, title and, if you like,
genre, within 64 bytes. It makes the new name from the present name of a file
or from its ID3v1 tag, and brings the tag in line with the name. Files are
picked across all folders into one list, and the whole list is renamed at
once. A player lets you hear the files.
.
quilmo-fif does the same in scripts and for large collections, shows what it
would do before it does it, and can take a run back.
.
The language of the windows is that of the package: quilmo speaks English,
quilmo-ko Korean and quilmo-de German.")

include(CPack)
