# What a shop's computer gets, and the Debian package made of it (./package). Pictures, the manual
# and the compressed texts are made when their tools are there.
include(GNUInstallDirs)
set(files ${PROJECT_SOURCE_DIR}/packaging/files)
set(made ${PROJECT_BINARY_DIR}/install-files)
set(documents ${CMAKE_INSTALL_DATAROOTDIR}/doc/vorbelo)

install(TARGETS vorbelo vorbelo-setup RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${files}/vorbelo.desktop DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/applications)
install(FILES ${files}/example.vorbelo.Vorbelo.metainfo.xml
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/metainfo)
install(FILES ${files}/copyright DESTINATION ${documents})

set(icon ${PROJECT_SOURCE_DIR}/src/core/icons/vorbelo.svg)
set(icons ${CMAKE_INSTALL_DATAROOTDIR}/icons/hicolor)
install(FILES ${icon} DESTINATION ${icons}/scalable/apps)
find_program(RSVG_CONVERT rsvg-convert)
find_program(MARKDOWN markdown_py)
find_program(GZIP gzip)
set(outputs)
if(RSVG_CONVERT)
    foreach(size 16 22 24 32 48 64 128 256)
        set(picture ${made}/${size}/vorbelo.png)
        add_custom_command(OUTPUT ${picture}
            COMMAND ${CMAKE_COMMAND} -E make_directory ${made}/${size}
            COMMAND ${RSVG_CONVERT} -w ${size} -h ${size} -o ${picture} ${icon}
            DEPENDS ${icon} VERBATIM)
        list(APPEND outputs ${picture})
        install(FILES ${picture} DESTINATION ${icons}/${size}x${size}/apps OPTIONAL)
    endforeach()
endif()
foreach(pair "vorbelo.1:vorbelo.1" "vorbelo-setup.1:vorbelo-setup.1" "debian-changelog:changelog")
    string(REPLACE ":" ";" pair ${pair})
    list(GET pair 0 source)
    list(GET pair 1 target)
    add_custom_command(OUTPUT ${made}/${target}.gz
        COMMAND ${CMAKE_COMMAND} -E make_directory ${made}
        COMMAND sh -c "${GZIP} -9n <'${files}/${source}' >'${made}/${target}.gz'"
        DEPENDS ${files}/${source} VERBATIM)
    list(APPEND outputs ${made}/${target}.gz)
    if(target MATCHES "[.]1$")
        install(FILES ${made}/${target}.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 OPTIONAL)
    else()
        install(FILES ${made}/${target}.gz DESTINATION ${documents} OPTIONAL)
    endif()
endforeach()

# The manual lies beside the program of a clone, too.
if(MARKDOWN AND EXISTS ${PROJECT_SOURCE_DIR}/docs/manual)
    file(GLOB pages CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/manual/*.md
        ${PROJECT_SOURCE_DIR}/docs/manual/*.css)
    file(GLOB pictures CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/windows/*.png)
    set(manual ${PROJECT_BINARY_DIR}/vorbelo/manual)
    add_custom_command(OUTPUT ${manual}/index.html
        COMMAND ${PROJECT_SOURCE_DIR}/docs/manual/build ${manual}
        DEPENDS ${pages} ${pictures} ${PROJECT_SOURCE_DIR}/docs/manual/build VERBATIM)
    list(APPEND outputs ${manual}/index.html)
    install(DIRECTORY ${manual} DESTINATION ${documents} OPTIONAL)
endif()
add_custom_target(install-files ALL DEPENDS ${outputs})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vorbelo)
set(CPACK_PACKAGE_VENDOR Vorbelo)
set(CPACK_PACKAGE_CONTACT "Vorbelo <suporte@vorbelo.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "repair shop desk, bench, stock and cash")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Service orders with entry sheet and warranty certificate, client search,
 applied parts, catalogue of parts with stock, counter sale with receipt and
 write-off, purchase orders, suppliers, on-site orders, solved defects and the
 cash movement of an electronics repair shop. All texts are Brazilian
 Portuguese. One computer, or a few that share a drive.")
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# What no binary tells: the font of windows and paper, and who opens the manual.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-liberation")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-translations-l10n, xdg-utils")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/package)
include(CPack)
