# The Debian package: `scripts/package.sh` builds it with CPack from a Release build.
set(VELDTONE_DATA_DIR ${PROJECT_SOURCE_DIR}/data)

# Manual pages, changelog and copyright as Debian lays them out.
set(VELDTONE_DOC_DIR ${CMAKE_INSTALL_DATADIR}/doc/veldtone)
foreach(page veldtone.1 veldtone-rip.1)
    add_custom_command(OUTPUT ${CMAKE_BINARY_DIR}/${page}.gz
        COMMAND gzip -9n -c ${VELDTONE_DATA_DIR}/man/${page} > ${CMAKE_BINARY_DIR}/${page}.gz
        DEPENDS ${VELDTONE_DATA_DIR}/man/${page})
    list(APPEND VELDTONE_PACKAGED_DOCS ${CMAKE_BINARY_DIR}/${page}.gz)
    install(FILES ${CMAKE_BINARY_DIR}/${page}.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endforeach()
add_custom_command(OUTPUT ${CMAKE_BINARY_DIR}/changelog.gz
    COMMAND gzip -9n -c ${VELDTONE_DATA_DIR}/debian/changelog > ${CMAKE_BINARY_DIR}/changelog.gz
    DEPENDS ${VELDTONE_DATA_DIR}/debian/changelog)
add_custom_target(veldtone_docs ALL DEPENDS ${VELDTONE_PACKAGED_DOCS} ${CMAKE_BINARY_DIR}/changelog.gz)
install(FILES ${CMAKE_BINARY_DIR}/changelog.gz DESTINATION ${VELDTONE_DOC_DIR}
    RENAME changelog.gz)
install(FILES ${VELDTONE_DATA_DIR}/debian/copyright DESTINATION ${VELDTONE_DOC_DIR})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME veldtone)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "Veldtone developers <veldtone@users.noreply.github.com>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "turn video links into local audio files")
set(CPACK_PACKAGE_DESCRIPTION
    "Veldtone rips the audio of video links into MP3, M4A/AAC, FLAC, WAV or Opus\n\
files with artwork and tags, by driving yt-dlp and ffmpeg. It shows each rip's\n\
progress live and keeps every finished track in a searchable library with a\n\
mini player. It can install its own yt-dlp, ffmpeg and JavaScript runtime.")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://github.com/veldtone/veldtone")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Loaded at run time, so dpkg-shlibdeps cannot see them: Qt's display and image plug-ins,
# GStreamer for playback, what the tool installer unpacks with (tar is
# essential), the SVG icon plug-ins and gpgv, which checks a yt-dlp release before it is kept.
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "qt6-qpa-plugins, qt6-image-formats-plugins, \
gstreamer1.0-plugins-base, gstreamer1.0-plugins-good, gstreamer1.0-libav, \
unzip, xz-utils, libqt6svg6, gpgv")
# The app can fetch its own copies of the tools; Qt's translations put its dialogs' buttons
# in the user's language.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "yt-dlp, ffmpeg, qt6-translations-l10n")
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
