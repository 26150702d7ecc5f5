#include "tests/e2e/Installation.h"

#include <windows.h>

#include <cstdio>

#include "tests/e2e/Driver.h"

// The build hands in where it put the programs, as paths of the host.
#ifndef LW_LINKWRIGHT_EXE
#error "LW_LINKWRIGHT_EXE, LW_ZELMAR_EXE, LW_MAKE_PROFILE_EXE and LW_ARTIFACT_DIR come from the build"
#endif

namespace e2e {
namespace {

void RemoveTree(const std::string& folder)
{
    WIN32_FIND_DATAA found;
    const HANDLE search = FindFirstFileA((folder + "\\*").c_str(), &found);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            const std::string name = found.cFileName;
            if (name == "." || name == "..")
                continue;
            const std::string path = folder + "\\" + name;
            SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
            if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
                RemoveTree(path);
            else
                DeleteFileA(path.c_str());
        } while (FindNextFileA(search, &found));
        FindClose(search);
    }
    RemoveDirectoryA(folder.c_str());
}

// Runs a console tool to its end; true if it ended with 0 within a minute.
// A tool that fails says so on the check's error output, with its exit code.
bool RunTool(const std::string& exePath, const std::string& arguments)
{
    CProgramRun run;
    if (!run.Start(exePath, arguments, std::string())) {
        std::fprintf(stderr, "could not start %s (error %lu)\n", exePath.c_str(), GetLastError());
        return false;
    }
    if (!run.WaitForEnd(60000)) {
        std::fprintf(stderr, "%s %s did not end\n", exePath.c_str(), arguments.c_str());
        return false;
    }
    if (run.ExitCode() != 0)
        std::fprintf(stderr, "%s %s ended with %lu\n", exePath.c_str(), arguments.c_str(), run.ExitCode());
    return run.ExitCode() == 0;
}

std::string Quoted(const std::string& text)
{
    return "\"" + text + "\"";
}

}  // namespace

CInstallation::CInstallation()
{
    char temp[MAX_PATH + 1] = {};
    const DWORD length = GetTempPathA(MAX_PATH, temp);
    if (length == 0 || length > MAX_PATH)
        return;
    static int s_count = 0;
    const std::string folder = std::string(temp) + "lw-e2e-" + std::to_string(GetCurrentProcessId()) + "-"
                               + std::to_string(++s_count);
    RemoveTree(folder);
    if (CreateDirectoryA(folder.c_str(), nullptr))
        m_folder = folder;
}

CInstallation::~CInstallation()
{
    if (!m_folder.empty())
        RemoveTree(m_folder);
}

std::string CInstallation::Path(const std::string& relative) const
{
    return m_folder + "\\" + relative;
}

bool CInstallation::AddProgram()
{
    return CopyFileA(HostPath(LW_LINKWRIGHT_EXE).c_str(), Path("Linkwright.exe").c_str(), FALSE) != 0;
}

bool CInstallation::AddParent()
{
    return CopyFileA(HostPath(LW_ZELMAR_EXE).c_str(), Path("Zelmar.exe").c_str(), FALSE) != 0;
}

bool CInstallation::AddFolder(const std::string& relative)
{
    return CreateDirectoryA(Path(relative).c_str(), nullptr) || GetLastError() == ERROR_ALREADY_EXISTS;
}

bool CInstallation::AddGame(const std::string& relative)
{
    return CopyFileA(HostPath(LW_ZELMAR_EXE).c_str(), Path(relative).c_str(), FALSE) != 0;
}

bool CInstallation::AddProfile(const std::string& fileName, const std::string& name)
{
    return AddFolder("Profiles")
           && RunTool(HostPath(LW_MAKE_PROFILE_EXE), Quoted(Path("Profiles\\" + fileName)) + " " + Quoted(name));
}

bool CInstallation::WriteFile(const std::string& relative, const std::string& bytes)
{
    const HANDLE file = CreateFileA(Path(relative).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    DWORD written = 0;
    const BOOL ok = ::WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    CloseHandle(file);
    return ok && written == bytes.size();
}

bool CInstallation::Exists(const std::string& relative) const
{
    return GetFileAttributesA(Path(relative).c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::string ShortcutListBytes(const std::initializer_list<std::string>& paths)
{
    std::string bytes;
    for (const std::string& path : paths) {
        for (char c : path) {
            bytes += c;
            bytes += '\0';
        }
        bytes += '\0';
    }
    return bytes;
}

std::string ArtifactFolder()
{
    const std::string folder = HostPath(LW_ARTIFACT_DIR);
    CreateDirectoryA(folder.c_str(), nullptr);
    return folder;
}

}  // namespace e2e
