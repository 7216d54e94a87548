#pragma once

#include <QtGlobal>

// A programmer's error is logged and recovered from, never a crash in a
// user's session: IVR_CHECK(index >= 0, return false);
#define IVR_CHECK(cond, action) \
    do { \
        if (!(cond)) { \
            qWarning("IVR_CHECK failed: %s (%s:%d)", #cond, __FILE__, __LINE__); \
            action; \
        } \
    } while (false)
