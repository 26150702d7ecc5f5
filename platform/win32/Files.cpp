// Win32 backend of platform/Files.h: the "A" functions, with the paths handed on as given.
// Each call leaves its Win32 error for LastFileError, and 0 when it succeeded.

#include "platform/Files.h"

#include <windows.h>

#include <cstring>

namespace {

char g_programPath[PathBufferSize];
bool g_programPathOverridden = false;

bool Succeed()
{
    SetLastError(0);
    return true;
}

HANDLE AsHandle(FileHandle file)
{
    return reinterpret_cast<HANDLE>(file);
}

FileHandle FromHandle(HANDLE handle)
{
    if (handle == INVALID_HANDLE_VALUE)
        return InvalidFileHandle;
    SetLastError(0);
    return reinterpret_cast<FileHandle>(handle);
}

std::uint64_t Join(DWORD low, DWORD high)
{
    return (static_cast<std::uint64_t>(high) << 32) | low;
}

std::uint64_t Join(const FILETIME& time)
{
    return Join(time.dwLowDateTime, time.dwHighDateTime);
}

void Describe(const WIN32_FIND_DATAA& found, FindData* data)
{
    data->attributes = found.dwFileAttributes;
    data->created = Join(found.ftCreationTime);
    data->accessed = Join(found.ftLastAccessTime);
    data->written = Join(found.ftLastWriteTime);
    data->sizeLow = found.nFileSizeLow;
    data->sizeHigh = found.nFileSizeHigh;
    std::memcpy(data->name, found.cFileName, sizeof found.cFileName);
    data->name[sizeof found.cFileName - 1] = 0;
}

}  // namespace

FileHandle OpenFileForReading(const char* path)
{
    return FromHandle(CreateFileA(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                  OPEN_EXISTING, 0, nullptr));
}

FileHandle CreateFileForWriting(const char* path)
{
    return FromHandle(CreateFileA(path, GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                                  FILE_ATTRIBUTE_NORMAL, nullptr));
}

bool CloseFile(FileHandle file)
{
    return CloseHandle(AsHandle(file)) ? Succeed() : false;
}

bool ReadFromFile(FileHandle file, void* buffer, std::uint32_t n, std::uint32_t* delivered)
{
    DWORD got = 0;
    const BOOL done = ReadFile(AsHandle(file), buffer, n, &got, nullptr);
    *delivered = got;
    return done ? Succeed() : false;
}

bool WriteToFile(FileHandle file, const void* bytes, std::uint32_t n, std::uint32_t* written)
{
    DWORD put = 0;
    const BOOL done = WriteFile(AsHandle(file), bytes, n, &put, nullptr);
    *written = put;
    return done ? Succeed() : false;
}

bool FlushFile(FileHandle file)
{
    return FlushFileBuffers(AsHandle(file)) ? Succeed() : false;
}

bool SeekFile(FileHandle file, std::int64_t distance, SeekOrigin origin, std::uint64_t* position)
{
    LARGE_INTEGER move;
    move.QuadPart = distance;
    LARGE_INTEGER reached;
    const DWORD method = origin == SeekFromStart ? FILE_BEGIN : origin == SeekFromCurrent ? FILE_CURRENT : FILE_END;
    if (!SetFilePointerEx(AsHandle(file), move, &reached, method))
        return false;
    if (position)
        *position = static_cast<std::uint64_t>(reached.QuadPart);
    return Succeed();
}

std::uint32_t LastFileError()
{
    return GetLastError();
}

std::uint32_t GetAttributes(const char* path)
{
    const DWORD attributes = GetFileAttributesA(path);
    if (attributes != INVALID_FILE_ATTRIBUTES)
        Succeed();
    return attributes;
}

bool SetAttributes(const char* path, std::uint32_t attributes)
{
    return SetFileAttributesA(path, attributes) ? Succeed() : false;
}

bool CopyFileOver(const char* from, const char* to)
{
    return CopyFileA(from, to, FALSE) ? Succeed() : false;
}

bool DeleteFileAt(const char* path)
{
    return DeleteFileA(path) ? Succeed() : false;
}

bool MoveFileOver(const char* from, const char* to)
{
    return MoveFileExA(from, to, MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) ? Succeed() : false;
}

FindHandle FindFirst(const char* pattern, FindData* data)
{
    WIN32_FIND_DATAA found;
    const HANDLE search = FindFirstFileA(pattern, &found);
    if (search == INVALID_HANDLE_VALUE)
        return InvalidFindHandle;
    Describe(found, data);
    Succeed();
    return reinterpret_cast<FindHandle>(search);
}

bool FindNext(FindHandle search, FindData* data)
{
    WIN32_FIND_DATAA found;
    if (!FindNextFileA(reinterpret_cast<HANDLE>(search), &found))
        return false;
    Describe(found, data);
    return Succeed();
}

void FindEnd(FindHandle search)
{
    if (search != InvalidFindHandle)
        FindClose(reinterpret_cast<HANDLE>(search));
}

std::uint32_t GetCurrentFolder(std::uint32_t size, char* buffer)
{
    return GetCurrentDirectoryA(size, buffer);
}

bool SetCurrentFolder(const char* path)
{
    return SetCurrentDirectoryA(path) ? Succeed() : false;
}

std::uint32_t GetModulePath(ModuleHandle module, char* buffer, std::uint32_t size)
{
    if (module || !g_programPathOverridden)
        return GetModuleFileNameA(static_cast<HMODULE>(module), buffer, size);
    const std::uint32_t length = static_cast<std::uint32_t>(std::strlen(g_programPath));
    if (length + 1 > size) {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return 0;
    }
    std::memcpy(buffer, g_programPath, length + 1);
    Succeed();
    return length;
}

void OverrideProgramPath(const char* path)
{
    g_programPathOverridden = path && std::strlen(path) < static_cast<std::size_t>(PathBufferSize);
    if (g_programPathOverridden)
        std::strcpy(g_programPath, path);
}

std::uint32_t GetLogicalDriveMask()
{
    return GetLogicalDrives();
}

std::FILE* OpenStream(const char* path, const char* mode)
{
    return std::fopen(path, mode);
}

void CloseStream(std::FILE* stream)
{
    std::fclose(stream);
}
