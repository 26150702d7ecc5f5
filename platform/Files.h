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
// Sends what was written to the disk (FlushFileBuffers).
bool FlushFile(FileHandle file);

enum SeekOrigin { SeekFromStart = 0, SeekFromCurrent = 1, SeekFromEnd = 2 };
// Moves the file's position by a 64-bit distance from the origin; *position, when given,
// receives the new position. A distance of 0 from SeekFromCurrent asks for the position.
bool SeekFile(FileHandle file, std::int64_t distance, SeekOrigin origin, std::uint64_t* position);

// The error of the last call of this layer as a Windows error code; 0 when it succeeded.
// The native backend maps errno to the codes the callers tell apart:
//   2  file not found (the folder exists, the name in it does not; also a search with no match)
//   3  path not found (a folder on the way is missing, or a drive other than Z:)
//   5  access denied (no permission, a read-only file opened for writing, copied over or
//      deleted, a folder opened as a file)
//   6  invalid handle, 18 no more entries in a search, 80 file exists, 87 bad argument,
//   112 disk full, 145 folder not empty, 206 name too long, 31 anything else.
const std::uint32_t ErrorFileNotFound = 2;
const std::uint32_t ErrorPathNotFound = 3;
const std::uint32_t ErrorAccessDenied = 5;
const std::uint32_t ErrorNoMoreFiles = 18;
const std::uint32_t ErrorDiskFull = 112;
std::uint32_t LastFileError();

// Attribute bits as Windows has them. Natively: read-only means no write permission bit,
// a folder is 0x10, any other file is 0x20; SetAttributes acts on the read-only bit alone.
const std::uint32_t AttributeReadOnly = 0x01;
const std::uint32_t AttributeDirectory = 0x10;
const std::uint32_t AttributeArchive = 0x20;
const std::uint32_t AttributeNormal = 0x80;
const std::uint32_t InvalidAttributes = 0xFFFFFFFFu;

std::uint32_t GetAttributes(const char* path);   // InvalidAttributes when not found
bool SetAttributes(const char* path, std::uint32_t attributes);
bool CopyFileOver(const char* from, const char* to);   // overwrites an existing target
bool DeleteFileAt(const char* path);
// Moves a file over another in one step, replacing it, and returns once the move is on the
// disk (MoveFileExA with MOVEFILE_REPLACE_EXISTING and MOVEFILE_WRITE_THROUGH). Both lie on
// the same volume. Windows refuses to replace a read-only file.
bool MoveFileOver(const char* from, const char* to);

// Directory search over a path with optional wildcards * and ? in its last part. "." and
// ".." come as Windows delivers them: first, in every folder but a drive's root. A pattern
// that ends in a backslash matches nothing. Times are 64-bit file times (100 ns since
// 1601). Natively the entries come in the file system's order, at most 64 searches are
// open at once, and a folder's creation time is its last change.
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

// An HMODULE on Windows; the null handle stands for the running program.
typedef void* ModuleHandle;
// As GetModuleFileNameA: bytes stored without the terminator, 0 on failure. Natively only
// the null handle is known, and the path of /proc/self/exe comes back as "Z:\...".
std::uint32_t GetModulePath(ModuleHandle module, char* buffer, std::uint32_t size);
// Tests point the running program's path at a folder of their own (a Windows path, kept
// as given); null restores the real one.
void OverrideProgramPath(const char* path);

// Bit mask of the present drives, bit 0 for A:. Natively only Z: is present.
std::uint32_t GetLogicalDriveMask();

// fopen with a Windows path; CloseStream gives the stream back.
std::FILE* OpenStream(const char* path, const char* mode);
void CloseStream(std::FILE* stream);
