# Read by CPack for each kind of package. An archive unpacks into a folder of its own.

if(CPACK_GENERATOR STREQUAL "DEB")
    set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
else()
    set(CPACK_PACKAGING_INSTALL_PREFIX "/${CPACK_PACKAGE_FILE_NAME}")
    set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY OFF)
    set(CPACK_COMPONENT_INCLUDE_TOPLEVEL_DIRECTORY OFF)
endif()
