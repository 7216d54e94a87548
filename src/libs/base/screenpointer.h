#pragma once

namespace ivr {

// The screen-wide mouse pointer: one setting, never a stack of overrides.
// 0 clears every override; 1 arrow, 2 cross, 11 hourglass.
class ScreenPointer
{
public:
    enum : int { Default = 0, Arrow = 1, Cross = 2, Hourglass = 11 };

    static void set(int pointer);
    static int current();
};

} // namespace ivr
