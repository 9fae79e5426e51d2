# The Debian package: `cpack -B PLACE --config build/CPackConfig.cmake`.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME halcyra-control-center)
set(CPACK_PACKAGE_CONTACT "The Halcyra developers <developers@halcyra.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "dashboard for a Kinect v2")
set(CPACK_PACKAGE_DESCRIPTION
"Shows the colour, infrared and depth pictures of a Kinect v2, finds faces in
three poses, recognises one enrolled owner and says who is in the room and
where the last voice came from. Status cards, safety notes and an event log
say at any moment what works and how far it can be trusted.
.
It runs without a sensor too, and has a demonstration with a rendered room.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
# Whatever the umask of whoever makes the package.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION video)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS opencv-data)
# Without them the size of the screen is not known, and the window opens small.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "x11-xserver-utils, x11-utils")
include(CPack)
