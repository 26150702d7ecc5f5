// await_window: waits for a visible top-level window with an exact title, on the desktop it
// runs in, and tells a script about it through a file, since a program started into a Wine
// virtual desktop hands no exit code back. With -close it then closes that window as its
// close box would, and waits until the window is gone.
//
// usage: await_window TITLE DONE_FILE [-timeout SECONDS] [-close]
// DONE_FILE receives "found", "closed" or "timeout".
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

int main(int argc, char** argv)
{
    if (argc < 3) {
        std::fprintf(stderr, "usage: await_window TITLE DONE_FILE [-timeout SECONDS] [-close]\n");
        return 2;
    }
    DWORD timeoutMs = 60000;
    bool close = false;
    for (int i = 3; i < argc; ++i) {
        if (std::strcmp(argv[i], "-close") == 0)
            close = true;
        else if (std::strcmp(argv[i], "-timeout") == 0 && i + 1 < argc)
            timeoutMs = static_cast<DWORD>(std::atoi(argv[++i])) * 1000;
    }

    const DWORD start = GetTickCount();
    const char* outcome = "timeout";
    bool closing = false;
    while (GetTickCount() - start < timeoutMs) {
        const HWND window = FindWindowA(nullptr, argv[1]);
        const bool shown = window && IsWindowVisible(window);
        if (closing && !window) {
            outcome = "closed";
            break;
        }
        if (shown && !close) {
            outcome = "found";
            break;
        }
        if (shown && close && !closing) {
            PostMessageA(window, WM_CLOSE, 0, 0);
            closing = true;
        }
        Sleep(100);
    }

    // Written whole in one go, without a line end, so that a script can compare it as it is.
    FILE* done = std::fopen(argv[2], "wb");
    if (done) {
        std::fputs(outcome, done);
        std::fclose(done);
    }
    return std::strcmp(outcome, "timeout") == 0 ? 1 : 0;
}
