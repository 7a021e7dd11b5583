# The files of an installation for all users, and the Debian package with these files. The programs find all other files by
# paths relative to their own folder, so an installation can be moved as a whole.
include(GNUInstallDirs)

set(SIXTRACE_INSTALL_SHARED "${CMAKE_INSTALL_DATADIR}/sixtrace")
set(SIXTRACE_INSTALL_LIBRARY "${CMAKE_INSTALL_LIBDIR}/sixtrace")
file(RELATIVE_PATH SIXTRACE_SHARED_FROM_PROGRAMS
    "/prefix/${CMAKE_INSTALL_BINDIR}" "/prefix/${SIXTRACE_INSTALL_SHARED}")
file(RELATIVE_PATH SIXTRACE_LIBRARY_FROM_PROGRAMS
    "/prefix/${CMAKE_INSTALL_BINDIR}" "/prefix/${SIXTRACE_INSTALL_LIBRARY}")

# Debian requires compressed manual pages and change logs.
function(sixtrace_install_packed FROM NAME DESTINATION)
    set(packed "${CMAKE_BINARY_DIR}/packed/${NAME}.gz")
    configure_file("${FROM}" "${CMAKE_BINARY_DIR}/packed/${NAME}" COPYONLY)
    # Option n leaves out name and time of the file, so that the same sources give the same package.
    execute_process(COMMAND gzip -9nkf "${CMAKE_BINARY_DIR}/packed/${NAME}" COMMAND_ERROR_IS_FATAL ANY)
    install(FILES "${packed}" DESTINATION "${DESTINATION}")
endfunction()

function(sixtrace_install)
    set(packaging "${CMAKE_SOURCE_DIR}/packaging")
    set(id org.sixtrace.Sixtrace)
    install(TARGETS sixtrace kqx sixtrace-instrument RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
    # kqx starts this program for commands that need the libraries of the desktop; users do not call it.
    install(TARGETS kqx-desktop RUNTIME DESTINATION "${SIXTRACE_INSTALL_LIBRARY}")
    install(TARGETS ttdll LIBRARY DESTINATION "${SIXTRACE_INSTALL_LIBRARY}")
    install(FILES "${CMAKE_SOURCE_DIR}/src/ttdll/ttdll.ini" DESTINATION "${SIXTRACE_INSTALL_SHARED}")
    install(DIRECTORY "${CMAKE_SOURCE_DIR}/lang/" DESTINATION "${SIXTRACE_INSTALL_SHARED}" FILES_MATCHING PATTERN "*.Lan")
    install(DIRECTORY "${CMAKE_SOURCE_DIR}/help/" DESTINATION "${SIXTRACE_INSTALL_SHARED}" FILES_MATCHING PATTERN "vrt_*")
    install(DIRECTORY "${CMAKE_SOURCE_DIR}/docs/images/" DESTINATION "${SIXTRACE_INSTALL_SHARED}/vrt_pictures"
        FILES_MATCHING REGEX "/(main|table|preview|receive|ports)-(zh|en)\\.png$")

    install(FILES "${packaging}/${id}.desktop" DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
    install(FILES "${packaging}/${id}.thumbnailer" DESTINATION "${CMAKE_INSTALL_DATADIR}/thumbnailers")
    install(FILES "${packaging}/completions/kqx.bash"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" RENAME kqx)
    install(FILES "${packaging}/completions/_kqx" DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions")
    install(FILES "${packaging}/completions/kqx.fish" DESTINATION "${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d")
    install(FILES "${packaging}/${id}.metainfo.xml" DESTINATION "${CMAKE_INSTALL_DATADIR}/metainfo")
    install(FILES "${packaging}/${id}.mime.xml" DESTINATION "${CMAKE_INSTALL_DATADIR}/mime/packages" RENAME "${id}.xml")
    install(FILES "${CMAKE_SOURCE_DIR}/src/shell/pictures/icon.svg"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps" RENAME "${id}.svg")
    # The bus needs the absolute path of the program, which is known only during installation.
    install(CODE "set(PROGRAMS \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
        configure_file(\"${packaging}/${id}.service.in\" \"${CMAKE_BINARY_DIR}/${id}.service\" @ONLY)")
    install(FILES "${CMAKE_BINARY_DIR}/${id}.service" DESTINATION "${CMAKE_INSTALL_DATADIR}/dbus-1/services")
    # udev reads rules in lib/udev below the prefix, not in the library folder of the architecture.
    install(FILES "${packaging}/70-sixtrace.rules" DESTINATION lib/udev/rules.d)
    foreach(page sixtrace kqx sixtrace-instrument)
        sixtrace_install_packed("${packaging}/man/${page}.1" "${page}.1" "${CMAKE_INSTALL_MANDIR}/man1")
    endforeach()
    sixtrace_install_packed("${packaging}/debian/changelog" changelog "${CMAKE_INSTALL_DOCDIR}")
    install(FILES "${CMAKE_SOURCE_DIR}/README.md" "${CMAKE_SOURCE_DIR}/CHANGELOG.md" DESTINATION "${CMAKE_INSTALL_DOCDIR}")
    install(FILES "${CMAKE_SOURCE_DIR}/LICENSE" DESTINATION "${CMAKE_INSTALL_DOCDIR}" RENAME copyright)
endfunction()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME sixtrace)
set(CPACK_PACKAGE_CONTACT "The Sixtrace authors <authors@sixtrace.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "desktop companion of a family of digital storage oscilloscopes")
set(CPACK_PACKAGE_DESCRIPTION
"Sixtrace fetches a stored capture from the instrument over USB or a serial
line, shows up to six traces on a scope-like screen, measures with cursors,
lists and exports the samples, and prints from a preview, in Chinese and
English. kqx does the same for scripts; sixtrace-instrument simulates the
instrument.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_DIRECTORY "${CMAKE_BINARY_DIR}/package")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION electronics)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA
    "${CMAKE_SOURCE_DIR}/packaging/debian/postinst;${CMAKE_SOURCE_DIR}/packaging/debian/postrm")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
    "fonts-wqy-microhei | fonts-noto-cjk, qt6-translations-l10n, shared-mime-info, dbus-user-session | dbus-x11")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "qt6-wayland, cups")
include(CPack)
