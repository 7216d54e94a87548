#include "frameservices.h"

namespace ivr {

namespace {
FrameServices *g_frame = nullptr;
}

FrameServices *appMain()
{
    return g_frame;
}

void setAppMain(FrameServices *frame)
{
    g_frame = frame;
}

} // namespace ivr
