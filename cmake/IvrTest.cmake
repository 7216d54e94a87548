# ivr_add_test(<name> <libraries...>)
# Builds tests/<folder>/<name>.cpp (the folder of the calling CMakeLists) into
# one QTest executable and registers it with CTest, offscreen.
function(ivr_add_test name)
    qt_add_executable(${name} ${name}.cpp)
    target_link_libraries(${name} PRIVATE Qt6::Test ${ARGN})
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;QT_LOGGING_RULES=qt.multimedia*=false"
        TIMEOUT 300)
endfunction()

# ivr_add_bench(<name> <libraries...>): bench/<folder>/<name>.cpp into build/bench/.
function(ivr_add_bench name)
    qt_add_executable(${name} ${name}.cpp)
    target_link_libraries(${name} PRIVATE ${ARGN})
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bench")
endfunction()

# The private PulseAudio daemon the audio tests play into: started once per
# CTest run by a setup test and stopped by a cleanup test. Its socket path
# must fit a Unix socket address, so a deep build folder uses /tmp.
function(_ivr_pulse_folder out)
    set(dir "${CMAKE_BINARY_DIR}/pulse-test")
    string(LENGTH "${dir}/native" len)
    if(len GREATER 100)
        string(MD5 hash "${CMAKE_BINARY_DIR}")
        string(SUBSTRING "${hash}" 0 12 hash)
        set(dir "/tmp/ivr-pulse-${hash}")
    endif()
    set(${out} "${dir}" PARENT_SCOPE)
endfunction()


# ivr_add_audio_test(<name> <libraries...>)
# Like ivr_add_test, with the test's sound going to the private daemon's null
# sink (PULSE_SERVER), the daemon started first, and one audio test at a
# time so that none records another's sound.
function(ivr_add_audio_test name)
    ivr_add_test(${name} ${ARGN})
    _ivr_pulse_folder(dir)
    get_property(have_fixture GLOBAL PROPERTY IVR_PULSE_FIXTURE_DEFINED)
    if(NOT have_fixture)
        set_property(GLOBAL PROPERTY IVR_PULSE_FIXTURE_DEFINED TRUE)
        add_test(NAME ivr_pulse_start COMMAND sh "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/../tests/audio/pulsefixture.sh" start "${dir}")
        add_test(NAME ivr_pulse_stop COMMAND sh "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/../tests/audio/pulsefixture.sh" stop "${dir}")
        set_tests_properties(ivr_pulse_start PROPERTIES FIXTURES_SETUP ivr_pulse TIMEOUT 30)
        set_tests_properties(ivr_pulse_stop PROPERTIES FIXTURES_CLEANUP ivr_pulse TIMEOUT 30)
    endif()
    set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT
        "PULSE_SERVER=unix:${dir}/native" "HOME=${dir}/home" "XDG_RUNTIME_DIR=${dir}/run")
    set_tests_properties(${name} PROPERTIES FIXTURES_REQUIRED ivr_pulse RESOURCE_LOCK ivr_sound)
endfunction()
