// bare_restore: the bare baseline of a restore-all run. For every shortcut named by LIST (the
// program's list file, read as it is) it does only what the restoring of one shortcut needs
// of the shell, with one shell link object for all of them: IPersistFile::Load, Resolve,
// GetPath, GetArguments, GetIconLocation, GetWorkingDirectory, then SetPath, SetWorkingDirectory,
// SetArguments and IPersistFile::Save with the values given, which are those the enhanced
// lines name, to a temporary beside the shortcut. Then the read-back: the temporary loaded
// into a second object, its four texts read, and the temporary moved over the shortcut.
// Nothing else: no window, no profile, no parsing of the line, no comparison.
//
// usage: bare_restore LIST TARGET WORKDIR ARGS
#include <windows.h>
#include <objbase.h>
#include <shlobj.h>
#include <shobjidl.h>

#include <cstdio>
#include <string>
#include <utility>
#include <vector>

int main(int argc, char** argv)
{
    if (argc != 5) {
        std::fprintf(stderr, "usage: bare_restore LIST TARGET WORKDIR ARGS\n");
        return 2;
    }
    std::FILE* in = std::fopen(argv[1], "rb");
    if (!in)
        return 1;
    std::string bytes;
    char chunk[65536];
    for (std::size_t n; (n = std::fread(chunk, 1, sizeof chunk, in)) > 0;)
        bytes.append(chunk, n);
    std::fclose(in);

    // Each entry: UTF-16LE units up to a zero unit's first byte; the next starts behind it.
    std::vector<std::wstring> paths;
    for (std::size_t start = 0, i = 0; i < bytes.size(); i += 2) {
        if (bytes[i] != 0)
            continue;
        std::wstring path((i - start) / 2, L'\0');
        for (std::size_t k = 0; k < path.size(); ++k)
            path[k] = static_cast<wchar_t>(static_cast<unsigned char>(bytes[start + 2 * k]) |
                                           static_cast<unsigned char>(bytes[start + 2 * k + 1]) << 8);
        paths.push_back(path);
        start = i + 1;
        i = start - 2;
    }

    if (FAILED(CoInitialize(nullptr)))
        return 1;
    IShellLinkA* link = nullptr;
    IPersistFile* file = nullptr;
    IShellLinkA* check = nullptr;
    IPersistFile* checkFile = nullptr;
    for (auto [l, f] : {std::pair{&link, &file}, std::pair{&check, &checkFile}}) {
        if (FAILED(CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkA,
                                    reinterpret_cast<void**>(l))) ||
            FAILED((*l)->QueryInterface(IID_IPersistFile, reinterpret_cast<void**>(f))))
            return 1;
    }
    int restored = 0;
    char buffer[16384];
    int icon = 0;
    for (const std::wstring& path : paths) {
        if (FAILED(file->Load(path.c_str(), STGM_READWRITE)) ||
            link->Resolve(nullptr, SLR_NO_UI | SLR_NOUPDATE | SLR_NOSEARCH) != S_OK)
            continue;
        if (FAILED(link->GetPath(buffer, sizeof buffer, nullptr, 0)) ||
            FAILED(link->GetArguments(buffer, sizeof buffer)) ||
            FAILED(link->GetIconLocation(buffer, sizeof buffer, &icon)) ||
            FAILED(link->GetWorkingDirectory(buffer, sizeof buffer)))
            continue;
        const std::wstring temporary = path + L".lw.tmp";
        if (SUCCEEDED(link->SetPath(argv[2])) && SUCCEEDED(link->SetWorkingDirectory(argv[3])) &&
            SUCCEEDED(link->SetArguments(argv[4])) && SUCCEEDED(file->Save(temporary.c_str(), FALSE)) &&
            SUCCEEDED(checkFile->Load(temporary.c_str(), STGM_READWRITE)) &&
            SUCCEEDED(check->GetPath(buffer, sizeof buffer, nullptr, 0)) &&
            SUCCEEDED(check->GetArguments(buffer, sizeof buffer)) &&
            SUCCEEDED(check->GetIconLocation(buffer, sizeof buffer, &icon)) &&
            SUCCEEDED(check->GetWorkingDirectory(buffer, sizeof buffer)) &&
            MoveFileExW(temporary.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
            ++restored;
    }
    for (IUnknown* object : {static_cast<IUnknown*>(checkFile), static_cast<IUnknown*>(check),
                             static_cast<IUnknown*>(file), static_cast<IUnknown*>(link)})
        object->Release();
    CoUninitialize();
    std::printf("%d\n", restored);
    return 0;
}
