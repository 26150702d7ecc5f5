// bench_shortcuts: the shortcuts of the restore-all benchmark. Writes COUNT enhanced
// shortcuts FOLDER\Game0001.lnk ... to PARENT, whose line names TARGET, WORKDIR, ARGS and
// the profile PROFILE, and the list LIST that names them all in the program's own form
// (each path in UTF-16LE, followed by one zero byte), as a run of Save would leave it.
//
// usage: bench_shortcuts FOLDER COUNT PARENT TARGET WORKDIR ARGS PROFILE LIST
#include <windows.h>
#include <objbase.h>
#include <shlobj.h>
#include <shobjidl.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

std::wstring Widened(const std::string& text)
{
    std::wstring wide(text.size() + 1, L'\0');
    const int n = MultiByteToWideChar(CP_ACP, 0, text.c_str(), -1, &wide[0], static_cast<int>(wide.size()));
    wide.resize(n > 0 ? static_cast<std::size_t>(n - 1) : 0);
    return wide;
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 9) {
        std::fprintf(stderr, "usage: bench_shortcuts FOLDER COUNT PARENT TARGET WORKDIR ARGS PROFILE LIST\n");
        return 2;
    }
    const std::string folder = argv[1];
    const int count = std::atoi(argv[2]);
    const std::string line = std::string("profile=\"") + argv[7] + "\" target=\"" + argv[4] + "\" targetDir=\"" +
                             argv[5] + "\" args=\"" + argv[6] + "\"";
    std::string parentFolder = argv[3];
    parentFolder.resize(parentFolder.find_last_of('\\'));

    if (FAILED(CoInitialize(nullptr)))
        return 1;
    IShellLinkA* link = nullptr;
    IPersistFile* file = nullptr;
    if (FAILED(CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkA,
                                reinterpret_cast<void**>(&link))) ||
        FAILED(link->QueryInterface(IID_IPersistFile, reinterpret_cast<void**>(&file))))
        return 1;
    std::string list;
    int status = 0;
    for (int i = 1; i <= count && status == 0; ++i) {
        char name[32];
        std::snprintf(name, sizeof name, "\\Game%04d.lnk", i);
        const std::wstring path = Widened(folder + name);
        if (FAILED(link->SetPath(argv[3])) || FAILED(link->SetWorkingDirectory(parentFolder.c_str())) ||
            FAILED(link->SetArguments(line.c_str())) || FAILED(link->SetIconLocation(argv[4], 0)) ||
            FAILED(file->Save(path.c_str(), TRUE)))
            status = 1;
        list.append(reinterpret_cast<const char*>(path.c_str()), path.size() * sizeof(wchar_t));
        list.push_back('\0');
    }
    file->Release();
    link->Release();
    CoUninitialize();
    if (status != 0) {
        std::fprintf(stderr, "bench_shortcuts: a shortcut could not be written\n");
        return status;
    }
    std::FILE* out = std::fopen(argv[8], "wb");
    if (!out || std::fwrite(list.data(), 1, list.size(), out) != list.size() || std::fclose(out) != 0) {
        std::fprintf(stderr, "bench_shortcuts: could not write %s\n", argv[8]);
        return 1;
    }
    return 0;
}
