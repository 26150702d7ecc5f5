// Stand-in for Zelmar.exe in the sample installation and the checks under Wine.
//
// It does nothing of its own: it appends its whole command line, as the process was given it,
// plus CR LF to "Zelmar.log" beside itself and exits with 0. A check can then read what an
// enhanced shortcut started, byte for byte.
#include <windows.h>

#include <cstring>

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int)
{
    char logPath[MAX_PATH + 16];
    const DWORD length = GetModuleFileNameA(nullptr, logPath, MAX_PATH);
    if (length == 0 || length >= MAX_PATH)
        return 1;
    char* slash = std::strrchr(logPath, '\\');
    char* name = slash ? slash + 1 : logPath;
    std::strcpy(name, "Zelmar.log");

    const HANDLE log = CreateFileA(logPath, FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                   nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (log == INVALID_HANDLE_VALUE)
        return 1;
    const char* line = GetCommandLineA();
    DWORD written = 0;
    const BOOL ok = WriteFile(log, line, static_cast<DWORD>(std::strlen(line)), &written, nullptr)
                    && WriteFile(log, "\r\n", 2, &written, nullptr);
    CloseHandle(log);
    return ok ? 0 : 1;
}
