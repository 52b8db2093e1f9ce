# Run by CPack on what it is about to pack. Folders that nothing installs by name have got the rights that the packer's
# umask leaves.
file(CHMOD_RECURSE "${CPACK_TEMPORARY_DIRECTORY}"
    DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
