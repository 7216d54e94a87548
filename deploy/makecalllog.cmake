# Makes the call-log database beside the program from its schema, but only
# when none is there: the file holds the user's answer to the enquiry form,
# and a rebuild must never take that away.
#   cmake -DSQLITE3=<sqlite3> -DSCHEMA=<calllog.sql> -DTARGET=<CallLog.db> -P makecalllog.cmake
if(EXISTS "${TARGET}")
    return()
endif()
set(partial "${TARGET}.partial")
file(REMOVE "${partial}")
execute_process(COMMAND "${SQLITE3}" -bail "${partial}"
                INPUT_FILE "${SCHEMA}"
                RESULT_VARIABLE result
                ERROR_VARIABLE errors)
if(NOT result EQUAL 0)
    file(REMOVE "${partial}")
    message(FATAL_ERROR "Could not make ${TARGET} from ${SCHEMA}: ${errors}")
endif()
# Renamed into place only when whole, so an interrupted build leaves no
# half-made database that the next build would then keep.
file(RENAME "${partial}" "${TARGET}")
