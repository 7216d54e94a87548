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
