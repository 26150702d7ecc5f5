#pragma once
// A seam that calls of one kind pass through, so that a test can make them fail: from the nth
// call from now, so many calls in a row (a fault, or a run of them), or every call from then on
// (a crash: nothing after it is done). The allocation seam has one; the native backends' file
// calls and link steps have theirs. One thread runs the whole system, so plain counters suffice.
class CFaultSeam {
public:
    static const long Onwards = -1;   // as a count: every call from the nth on fails

    // Counts the call; false when it is to fail.
    bool Passes()
    {
        ++made;
        if (failAt == 0 || made < failAt)
            return true;
        if (left > 0 && --left == 0)
            failAt = 0;
        return false;
    }
    // The nth call from now (1 = the next one) fails, and the count - 1 after it too. 0 switches
    // failures off. Either way the count of calls made starts again.
    void FailAt(long nth, long count = 1)
    {
        made = 0;
        failAt = nth;
        left = count;
    }
    long Made() const { return made; }   // calls since the last FailAt
private:
    long failAt = 0;
    long made = 0;
    long left = 1;   // failures still to come
};
