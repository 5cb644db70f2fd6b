# The Debian package: cpack --config build/release/CPackConfig.cmake
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tolvex)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "validation of medical image segmentations")
set(CPACK_PACKAGE_DESCRIPTION
"Several people outline the same structure in the same grey volume, each
several times, and Tolvex says how far their label volumes agree. It compares
them on slices and in space: overlap, Hausdorff distances, signed surface
distances with medians and quartiles, probability maps within and between
users, averages and confusion matrices.
.
It shows the volumes in three views and in 3D, and writes tables that a
spreadsheet opens. The program tolvex-batch compares all pairs of a study
without a display.")
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
# The libraries come from what the programs are linked with. Besides them gzip, which every Debian
# has, opens headers of compressed volumes, uncompress those of older ones, and the labels are made
# for these fonts.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-liberation, libgl1-mesa-dri, ncompress")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
include(CPack)
