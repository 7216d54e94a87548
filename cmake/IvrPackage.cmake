# Installs the designer as a desktop program and packs it for Debian:
#   cmake --build --preset default && (cd build && cpack -G DEB)
#
# The program finds everything it ships with beside itself, so the program
# folder goes whole to <prefix>/lib/<package>/: the designer (installed by
# src/shell, so that it is stripped) and whatever else the build puts into
# ${IVR_PROGRAM_DIR}. The command in <prefix>/bin is a link to it. The desktop
# entry, the script type, the icons, the metainfo, the manual page and the
# documents come from packaging/.
include(GNUInstallDirs)

set(IVR_PACKAGE_NAME brindlewave-ivr-designer)
set(IVR_INSTALL_PROGRAMDIR "lib/${IVR_PACKAGE_NAME}")
set(IVR_INSTALL_DOCDIR "${CMAKE_INSTALL_DATAROOTDIR}/doc/${IVR_PACKAGE_NAME}")
set(IVR_PACKAGING_DIR "${PROJECT_SOURCE_DIR}/packaging")
set(IVR_PACKAGING_BINARY_DIR "${PROJECT_BINARY_DIR}/packaging")
# Folders made by the installation are 0755 whatever the umask of the build.
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

# The changelog's newest entry names the release: its version must be the
# project's, and its date is the release date the metainfo shows.
function(ivr_read_changelog)
    file(STRINGS "${IVR_PACKAGING_DIR}/changelog" lines)
    list(GET lines 0 head)
    string(REGEX MATCH "^${IVR_PACKAGE_NAME} \\(([^)]+)\\)" _ "${head}")
    set(version "${CMAKE_MATCH_1}")
    if(NOT version STREQUAL PROJECT_VERSION)
        message(WARNING "packaging/changelog's newest entry is ${version}, the project is ${PROJECT_VERSION}")
    endif()
    foreach(line IN LISTS lines)
        if(line MATCHES "^ -- .*  [A-Z][a-z][a-z], ([0-9]+) ([A-Z][a-z][a-z]) ([0-9]+) ")
            set(months Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec)
            list(FIND months "${CMAKE_MATCH_2}" month)
            math(EXPR month "${month} + 1" OUTPUT_FORMAT DECIMAL)
            string(LENGTH "${month}" length)
            string(LENGTH "${CMAKE_MATCH_1}" day_length)
            set(day "${CMAKE_MATCH_1}")
            if(length EQUAL 1)
                set(month "0${month}")
            endif()
            if(day_length EQUAL 1)
                set(day "0${day}")
            endif()
            set(IVR_RELEASE_DATE "${CMAKE_MATCH_3}-${month}-${day}" PARENT_SCOPE)
            return()
        endif()
    endforeach()
    message(FATAL_ERROR "packaging/changelog has no dated entry")
endfunction()
ivr_read_changelog()

configure_file("${IVR_PACKAGING_DIR}/com.brindlewave.ivrdesigner.metainfo.xml.in"
    "${IVR_PACKAGING_BINARY_DIR}/com.brindlewave.ivrdesigner.metainfo.xml" @ONLY)

# Debian wants the manual page and the changelog compressed to the maximum,
# without a time stamp, so that every build makes the same bytes.
set(ivr_compressed)
foreach(source IN ITEMS ivr-designer.1 changelog)
    set(target "${IVR_PACKAGING_BINARY_DIR}/${source}.gz")
    add_custom_command(OUTPUT "${target}"
        COMMAND sh -c "gzip -9nc \"$1\" >\"$2\"" sh "${IVR_PACKAGING_DIR}/${source}" "${target}"
        DEPENDS "${IVR_PACKAGING_DIR}/${source}"
        VERBATIM)
    list(APPEND ivr_compressed "${target}")
endforeach()

# The installed call-log database is a fresh one: the one in the program
# folder holds the answer of whoever ran the build.
find_program(IVR_PACKAGE_SQLITE3 sqlite3 REQUIRED)
set(ivr_fresh_calllog "${IVR_PACKAGING_BINARY_DIR}/CallLog.db")
add_custom_command(OUTPUT "${ivr_fresh_calllog}"
    COMMAND ${CMAKE_COMMAND} -E rm -f "${ivr_fresh_calllog}"
    COMMAND ${CMAKE_COMMAND} -DSQLITE3=${IVR_PACKAGE_SQLITE3}
            -DSCHEMA=${PROJECT_SOURCE_DIR}/deploy/calllog.sql -DTARGET=${ivr_fresh_calllog}
            -P "${PROJECT_SOURCE_DIR}/deploy/makecalllog.cmake"
    DEPENDS "${PROJECT_SOURCE_DIR}/deploy/calllog.sql"
    VERBATIM)
add_custom_target(ivr_package_files ALL DEPENDS ${ivr_compressed} "${ivr_fresh_calllog}")

# The command: a relative link, so that the staged tree works wherever it lies.
file(RELATIVE_PATH ivr_command_target "/${CMAKE_INSTALL_BINDIR}"
    "/${IVR_INSTALL_PROGRAMDIR}/ivr-designer")
file(CREATE_LINK "${ivr_command_target}" "${IVR_PACKAGING_BINARY_DIR}/ivr-designer" SYMBOLIC)

function(ivr_install_package_files)
    # Everything beside the program but the designer, which src/shell installs
    # stripped; the runner belongs to another package; the rest is what a
    # run leaves behind.
    install(DIRECTORY "${IVR_PROGRAM_DIR}/" DESTINATION "${IVR_INSTALL_PROGRAMDIR}"
        FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ
        PATTERN "ivr-designer" EXCLUDE
        PATTERN "CallLog.db" EXCLUDE
        PATTERN "VorelRun" EXCLUDE
        PATTERN "*.partial" EXCLUDE
        PATTERN "*.log" EXCLUDE
        PATTERN "*.sh"
            PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
                        WORLD_READ WORLD_EXECUTE)
    install(FILES "${ivr_fresh_calllog}" DESTINATION "${IVR_INSTALL_PROGRAMDIR}")
    install(FILES "${IVR_PACKAGING_BINARY_DIR}/ivr-designer" DESTINATION "${CMAKE_INSTALL_BINDIR}")

    set(share "${CMAKE_INSTALL_DATADIR}")
    install(FILES "${IVR_PACKAGING_DIR}/brindlewave-ivr-designer.desktop"
        DESTINATION "${share}/applications")
    install(FILES "${IVR_PACKAGING_DIR}/brindlewave-ivr.xml" DESTINATION "${share}/mime/packages")
    install(FILES "${IVR_PACKAGING_DIR}/icons/brindlewave-ivr-designer.svg"
        DESTINATION "${share}/icons/hicolor/scalable/apps")
    install(FILES "${IVR_PACKAGING_DIR}/icons/application-x-brindlewave-ivr.svg"
        DESTINATION "${share}/icons/hicolor/scalable/mimetypes")
    install(FILES "${IVR_PACKAGING_BINARY_DIR}/com.brindlewave.ivrdesigner.metainfo.xml"
        DESTINATION "${share}/metainfo")
    install(FILES "${IVR_PACKAGING_BINARY_DIR}/ivr-designer.1.gz"
        DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
    install(FILES "${IVR_PACKAGING_DIR}/copyright" "${IVR_PACKAGING_BINARY_DIR}/changelog.gz"
        DESTINATION "${IVR_INSTALL_DOCDIR}")
endfunction()
ivr_install_package_files()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME "${IVR_PACKAGE_NAME}")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_VENDOR Brindlewave)
set(CPACK_PACKAGE_CONTACT "Brindlewave <support@brindlewave.com>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/package")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://www.brindlewave.com/")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# What the program loads or uses without linking it: the SQLite driver of
# Qt SQL, the window-system plugins, the sound server's client (Qt Multimedia
# plays through it) and the font that stands in for the old dialog fonts.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6sql6-sqlite, qt6-qpa-plugins, libpulse0, fonts-dejavu-core")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "pulseaudio | pipewire-pulse")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "design telephone voice response call flows
An author draws a telephone call flow as modules on a large scrolling
canvas (play a prompt, take a digit or a number, record, transfer, query a
database, send an e-mail, run a program, check a condition, start another
script), links them through each module's named exits, auditions prompts by
speech or as wave files and saves the script to one file, which a separate
runner takes to the telephone line.")
include(CPack)
