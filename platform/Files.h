#pragma once
// The file side of the operating system, in the system's own terms.
//
// Every path here is a Windows path in single-byte text: backslash separators and an
// optional drive "X:". The Windows backend passes it to the Win32 "A" functions. The
// native backend maps it as Wine does: "Z:\" is the POSIX root, a backslash becomes a
// slash, and the module path comes back as "Z:\...". Wildcard masks match without
// regard to case on both. Nothing here allocates, throws or shows anything: failure is
// told by the result, and LastFileError gives the reason.

#include <cstdint>
#include <cstdio>

// A Win32 HANDLE on Windows, a descriptor natively. InvalidFileHandle on failure.
typedef std::intptr_t FileHandle;
const FileHandle InvalidFileHandle = -1;

// Opens an existing file for reading, shared with readers and writers.
FileHandle OpenFileForReading(const char* path);
// Creates a file, or cuts an existing one to zero bytes, for writing.
FileHandle CreateFileForWriting(const char* path);
bool CloseFile(FileHandle file);

// Reads up to n bytes at the file's position; *delivered is 0 at the end of the file.
bool ReadFromFile(FileHandle file, void* buffer, std::uint32_t n, std::uint32_t* delivered);
// Writes n bytes at the file's position; *written tells how many went out.
bool WriteToFile(FileHandle file, const void* bytes, std::uint32_t n, std::uint32_t* written);

enum SeekOrigin { SeekFromStart = 0, SeekFromCurrent = 1, SeekFromEnd = 2 };
// Moves the file's position by a 64-bit distance from the origin; *position, when given,
// receives the new position. A distance of 0 from SeekFromCurrent asks for the position.
bool SeekFile(FileHandle file, std::int64_t distance, SeekOrigin origin, std::uint64_t* position);

// The error of the last failed call of this layer, as GetLastError gives it
// (natively: errno); 0 when the last call succeeded.
std::uint32_t LastFileError();

// Attribute bits as Windows has them. Natively: read-only means no write permission bit.
const std::uint32_t AttributeReadOnly = 0x01;
const std::uint32_t AttributeDirectory = 0x10;
const std::uint32_t AttributeNormal = 0x80;
const std::uint32_t InvalidAttributes = 0xFFFFFFFFu;

std::uint32_t GetAttributes(const char* path);   // InvalidAttributes when not found
bool SetAttributes(const char* path, std::uint32_t attributes);
bool CopyFileOver(const char* from, const char* to);   // overwrites an existing target
bool DeleteFileAt(const char* path);

// Directory search over a path with optional wildcards * and ?. "." and ".." come as
// Windows delivers them. Times are 64-bit file times (100 ns since 1601).
const int PathBufferSize = 262;
struct FindData {
    std::uint32_t attributes;
    std::uint64_t created;
    std::uint64_t accessed;
    std::uint64_t written;
    std::uint32_t sizeLow;
    std::uint32_t sizeHigh;
    char name[PathBufferSize];
};
typedef std::intptr_t FindHandle;
const FindHandle InvalidFindHandle = -1;

FindHandle FindFirst(const char* pattern, FindData* data);
bool FindNext(FindHandle search, FindData* data);
void FindEnd(FindHandle search);

// As GetCurrentDirectoryA: bytes stored without the terminator, or the size needed
// (terminator included) when the buffer is too small, or 0 on failure.
std::uint32_t GetCurrentFolder(std::uint32_t size, char* buffer);
bool SetCurrentFolder(const char* path);

// As GetModuleFileNameA for the running program: bytes stored, 0 on failure.
std::uint32_t GetProgramPath(char* buffer, std::uint32_t size);
// Tests point the module path at a program folder of their own; null restores the real one.
void OverrideProgramPath(const char* path);

// Bit mask of the present drives, bit 0 for A:. Natively only Z: is present.
std::uint32_t GetLogicalDriveMask();

// fopen with a Windows path.
std::FILE* OpenStream(const char* path, const char* mode);
