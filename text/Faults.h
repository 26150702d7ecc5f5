#pragma once
// A seam that calls of one kind pass through, so that a test can make them fail: the nth call
// from now once (a fault), or every call from the nth on (a crash: nothing after it is done).
// The allocation seam has one; the native backends' file calls and link steps have theirs.
// One thread runs the whole system, so plain counters suffice.

class CFaultSeam {
public:
    // Counts the call; false when it is to fail.
    bool Passes()
    {
        ++made;
        if (failAt == 0 || made < failAt)
            return true;
        if (!onwards)
            failAt = 0;
        return false;
    }

    // The nth call from now (1 = the next one) fails, and with onwards every one after it too.
    // 0 switches failures off. Either way the count starts again.
    void FailAt(long nth, bool fromThenOn = false)
    {
        made = 0;
        failAt = nth;
        onwards = fromThenOn;
    }

    long Made() const { return made; }   // calls since the last FailAt

private:
    long failAt = 0;
    long made = 0;
    bool onwards = false;
};
