// start_timer: times two programs from their start until a visible top-level window with
// the given title exists, in pairs whose order alternates, ROUNDS pairs in all. Each program
// is started in the current folder, closed through WM_CLOSE once seen, and awaited before
// the next starts. Prints one line per start: "product MS" or "bare MS".
//
// usage: start_timer ROUNDS TITLE PRODUCT_EXE BARE_EXE
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

// Milliseconds from CreateProcess until the window shows; negative when it never did.
double TimeToWindow(const char* exe, const char* title)
{
    std::string commandLine = std::string("\"") + exe + "\"";
    STARTUPINFOA startup = {};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process = {};
    LARGE_INTEGER frequency, begin, now;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&begin);
    if (!CreateProcessA(nullptr, &commandLine[0], nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process))
        return -1;
    double shownAfter = -1;
    for (;;) {
        const HWND window = FindWindowA(nullptr, title);
        QueryPerformanceCounter(&now);
        const double ms = 1000.0 * static_cast<double>(now.QuadPart - begin.QuadPart) /
                          static_cast<double>(frequency.QuadPart);
        if (window && IsWindowVisible(window)) {
            shownAfter = ms;
            PostMessageA(window, WM_CLOSE, 0, 0);
            break;
        }
        if (ms > 30000 || WaitForSingleObject(process.hProcess, 0) == WAIT_OBJECT_0)
            break;
        Sleep(1);
    }
    if (WaitForSingleObject(process.hProcess, 15000) != WAIT_OBJECT_0)
        TerminateProcess(process.hProcess, 1);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return shownAfter;
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 5) {
        std::fprintf(stderr, "usage: start_timer ROUNDS TITLE PRODUCT_EXE BARE_EXE\n");
        return 2;
    }
    const int rounds = std::atoi(argv[1]);
    for (int round = 0; round < rounds; ++round) {
        for (int side = 0; side < 2; ++side) {
            const bool product = (side == 0) == (round % 2 == 0);
            const double ms = TimeToWindow(product ? argv[3] : argv[4], argv[2]);
            std::printf("%s %.1f\n", product ? "product" : "bare", ms);
            std::fflush(stdout);
        }
    }
    return 0;
}
