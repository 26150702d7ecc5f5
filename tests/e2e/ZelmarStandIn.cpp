// Stand-in for Zelmar.exe in the sample installation and the checks under Wine: it appends its
// whole command line, as the process was given it, and CR LF to "Zelmar.log" beside itself, so
// that a check can read what an enhanced shortcut started, byte for byte.
#include <windows.h>

#include <fstream>
#include <string>

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int)
{
    char path[MAX_PATH] = {};
    const std::string self(path, GetModuleFileNameA(nullptr, path, MAX_PATH));
    std::ofstream log(self.substr(0, self.rfind('\\') + 1) + "Zelmar.log", std::ios::binary | std::ios::app);
    return (log << GetCommandLineA() << "\r\n").flush() ? 0 : 1;
}
