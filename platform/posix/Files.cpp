// POSIX backend of platform/Files.h. Windows paths are mapped as Wine maps them: "Z:\" is
// the root, other drives are absent, a backslash becomes a slash. What Windows refuses and
// POSIX allows (writing or deleting a read-only file, which root may do) is refused here
// from the permission bits, so that both builds agree.

#include "platform/Files.h"
#include "platform/posix/IoFaults.h"

#include <cerrno>
#include <climits>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const int NativePathSize = PATH_MAX;
const std::uint32_t MaxReadBytes = 0x7FFFF000u;   // Linux's limit on one read

std::uint32_t g_lastError = 0;
char g_programPath[PathBufferSize];
bool g_programPathOverridden = false;

bool Succeed()
{
    g_lastError = 0;
    return true;
}

bool Fail(std::uint32_t error)
{
    g_lastError = error;
    return false;
}

const std::uint32_t ErrorLocked = 32;   // ERROR_SHARING_VIOLATION

// True when the test seams fail this call; the error is then left for LastFileError.
bool Faulted(bool writes, std::uint32_t error = ErrorAccessDenied)
{
    if (IoCalls().Passes() && (!writes || IoWrites().Passes()))
        return false;
    g_lastError = error;
    return true;
}

// Maps a Windows path to a native one. False (error 3) for another drive, a path too long,
// or an empty path. "Z:" alone, or "Z:name", is relative to the current folder, which is
// always on Z:.
bool ToNative(const char* path, char* native)
{
    if (!path || !path[0])
        return Fail(ErrorPathNotFound);
    const char* rest = path;
    if (path[1] == ':') {
        if ((path[0] | 0x20) != 'z')
            return Fail(ErrorPathNotFound);
        rest = path + 2;
        if (!rest[0])
            rest = ".";
    }
    const std::size_t n = std::strlen(rest);
    if (n >= static_cast<std::size_t>(NativePathSize))
        return Fail(206);
    for (std::size_t i = 0; i <= n; ++i)
        native[i] = rest[i] == '\\' ? '/' : rest[i];
    return true;
}

// The native form of a native path's folder: everything before the last slash.
void ParentOf(const char* native, char* parent)
{
    const char* slash = std::strrchr(native, '/');
    if (!slash) {
        std::strcpy(parent, ".");
    } else if (slash == native) {
        std::strcpy(parent, "/");
    } else {
        std::memcpy(parent, native, static_cast<std::size_t>(slash - native));
        parent[slash - native] = 0;
    }
}

bool IsFolder(const char* native)
{
    struct stat facts;
    return stat(native, &facts) == 0 && S_ISDIR(facts.st_mode);
}

// errno as a Windows error code. A missing name is "file not found" when its folder exists
// and "path not found" when the folder itself is missing, as Windows tells them apart.
std::uint32_t ErrorFromErrno(int error, const char* native)
{
    switch (error) {
    case ENOENT: {
        if (!native)
            return ErrorFileNotFound;
        char parent[NativePathSize];
        ParentOf(native, parent);
        return IsFolder(parent) ? ErrorFileNotFound : ErrorPathNotFound;
    }
    case ENOTDIR:
        return ErrorPathNotFound;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
        return ErrorAccessDenied;
    case EBADF:
        return 6;
    case EEXIST:
        return 80;
    case EINVAL:
        return 87;
    case ENOSPC:
        return 112;
    case ENOTEMPTY:
        return 145;
    case ENAMETOOLONG:
        return 206;
    default:
        return 31;
    }
}

bool FailErrno(const char* native)
{
    return Fail(ErrorFromErrno(errno, native));
}

bool HasNoWriteBits(const struct stat& facts)
{
    return (facts.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0;
}

// Windows refuses to write into, or delete, a read-only file, whoever asks.
bool RefusedAsReadOnly(const char* native)
{
    struct stat facts;
    return stat(native, &facts) == 0 && S_ISREG(facts.st_mode) && HasNoWriteBits(facts);
}

std::uint64_t FileTime(const struct timespec& time)
{
    const std::uint64_t secondsFrom1601To1970 = 11644473600ull;
    return (static_cast<std::uint64_t>(time.tv_sec) + secondsFrom1601To1970) * 10000000ull +
           static_cast<std::uint64_t>(time.tv_nsec) / 100u;
}

std::uint32_t AttributesOf(const struct stat& facts)
{
    std::uint32_t attributes = S_ISDIR(facts.st_mode) ? AttributeDirectory : AttributeArchive;
    if (HasNoWriteBits(facts))
        attributes |= AttributeReadOnly;
    return attributes;
}

unsigned char Fold(unsigned char ch)
{
    return ch >= 'a' && ch <= 'z' ? static_cast<unsigned char>(ch - 0x20) : ch;
}

// Wildcard match without regard to ASCII case: * is any run of bytes, ? exactly one.
// "*.*" matches every name, dotted or not, as on Windows.
bool MatchesMask(const char* mask, const char* name)
{
    if (std::strcmp(mask, "*.*") == 0)
        mask = "*";
    const char* starMask = nullptr;
    const char* starName = nullptr;
    while (*name) {
        if (*mask == '*') {
            starMask = ++mask;
            starName = name;
        } else if (*mask == '?' || (*mask && Fold(static_cast<unsigned char>(*mask)) ==
                                                 Fold(static_cast<unsigned char>(*name)))) {
            ++mask;
            ++name;
        } else if (starMask) {
            mask = starMask;
            name = ++starName;
        } else {
            return false;
        }
    }
    while (*mask == '*')
        ++mask;
    return *mask == 0;
}

// One open directory search. The table stands in for the handle table that Windows keeps.
struct Search {
    DIR* folder;
    int dotsLeft;   // "." and ".." still to deliver ahead of the folder's entries
    char path[NativePathSize];
    char mask[PathBufferSize];
};
const int SearchSlots = 64;
Search g_searches[SearchSlots];

// Fills data from the entry name of the search's folder; false when it cannot be read.
bool Describe(const Search& search, const char* name, FindData* data)
{
    char full[NativePathSize];
    const std::size_t folderLength = std::strlen(search.path);
    const std::size_t nameLength = std::strlen(name);
    if (nameLength >= static_cast<std::size_t>(PathBufferSize) ||
        folderLength + 1 + nameLength >= static_cast<std::size_t>(NativePathSize))
        return false;
    std::memcpy(full, search.path, folderLength);
    full[folderLength] = '/';
    std::memcpy(full + folderLength + 1, name, nameLength + 1);
    struct stat facts;
    if (stat(full, &facts) != 0)
        return false;
    data->attributes = AttributesOf(facts);
    data->created = FileTime(facts.st_ctim);
    data->accessed = FileTime(facts.st_atim);
    data->written = FileTime(facts.st_mtim);
    const std::uint64_t size = S_ISDIR(facts.st_mode) ? 0 : static_cast<std::uint64_t>(facts.st_size);
    data->sizeLow = static_cast<std::uint32_t>(size);
    data->sizeHigh = static_cast<std::uint32_t>(size >> 32);
    std::memcpy(data->name, name, nameLength + 1);
    return true;
}

// The next matching entry of the search; false at the end.
bool Advance(Search& search, FindData* data)
{
    while (search.dotsLeft > 0) {
        const char* dots = search.dotsLeft == 2 ? "." : "..";
        --search.dotsLeft;
        if (MatchesMask(search.mask, dots) && Describe(search, dots, data))
            return true;
    }
    while (const dirent* entry = readdir(search.folder)) {
        if (std::strcmp(entry->d_name, ".") == 0 || std::strcmp(entry->d_name, "..") == 0)
            continue;
        if (MatchesMask(search.mask, entry->d_name) && Describe(search, entry->d_name, data))
            return true;
    }
    return false;
}

// Both paths of a copy or a move mapped, as a write the seams may fail, and refused where
// Windows refuses: a folder on either side, or a read-only target.
bool MapCopyOrMove(const char* from, const char* to, char* source, char* target)
{
    if (Faulted(true) || !ToNative(from, source) || !ToNative(to, target))
        return false;
    if (IsFolder(source) || IsFolder(target) || RefusedAsReadOnly(target))
        return Fail(ErrorAccessDenied);
    return true;
}

}  // namespace

namespace {
long g_openFiles = 0;   // handles and streams given out and not yet closed
}

long OpenFiles() { return g_openFiles; }

FileHandle OpenFileForReading(const char* path)
{
    char native[NativePathSize];
    if (Faulted(false, ErrorLocked) || !ToNative(path, native))
        return InvalidFileHandle;
    const int file = open(native, O_RDONLY | O_CLOEXEC);
    if (file < 0) {
        FailErrno(native);
        return InvalidFileHandle;
    }
    // POSIX opens a folder for reading; Windows refuses. The open descriptor is asked, not
    // the path again.
    struct stat facts;
    if (fstat(file, &facts) == 0 && S_ISDIR(facts.st_mode)) {
        close(file);
        Fail(ErrorAccessDenied);
        return InvalidFileHandle;
    }
    ++g_openFiles;
    Succeed();
    return file;
}

FileHandle CreateFileForWriting(const char* path)
{
    char native[NativePathSize];
    if (Faulted(true) || !ToNative(path, native))
        return InvalidFileHandle;
    if (RefusedAsReadOnly(native)) {
        Fail(ErrorAccessDenied);
        return InvalidFileHandle;
    }
    const int file = open(native, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (file < 0) {
        FailErrno(native);
        return InvalidFileHandle;
    }
    ++g_openFiles;
    Succeed();
    return file;
}

bool CloseFile(FileHandle file)
{
    if (file < 0 || file > INT_MAX)
        return Fail(6);
    // A close the seam fails still gives the descriptor back, as CloseHandle does.
    const bool faulted = Faulted(false);
    const bool closed = close(static_cast<int>(file)) == 0;
    --g_openFiles;
    if (faulted)
        return false;
    return closed ? Succeed() : FailErrno(nullptr);
}

bool ReadFromFile(FileHandle file, void* buffer, std::uint32_t n, std::uint32_t* delivered)
{
    *delivered = 0;
    if (file < 0 || file > INT_MAX)
        return Fail(6);
    if (Faulted(false))
        return false;
    char* into = static_cast<char*>(buffer);
    // A read is retried until it has n bytes or meets the end, as ReadFile on a disk file.
    // A disk file gives less than was asked only at its end, so a short read ends the
    // loop without a second read to find the end. One read gives at most MaxReadBytes.
    while (*delivered < n) {
        const std::uint32_t asked = n - *delivered < MaxReadBytes ? n - *delivered : MaxReadBytes;
        const ssize_t got = read(static_cast<int>(file), into + *delivered, asked);
        if (got < 0) {
            if (errno == EINTR)
                continue;
            return FailErrno(nullptr);
        }
        *delivered += static_cast<std::uint32_t>(got);
        if (static_cast<std::uint32_t>(got) < asked)
            break;
    }
    return Succeed();
}

bool WriteToFile(FileHandle file, const void* bytes, std::uint32_t n, std::uint32_t* written)
{
    *written = 0;
    if (file < 0 || file > INT_MAX)
        return Fail(6);
    const char* from = static_cast<const char*>(bytes);
    // A fault fills the disk halfway through the bytes; a crash writes none of them.
    if (!IoCalls().Passes()) {
        const ssize_t put = write(static_cast<int>(file), from, n / 2);
        *written = put > 0 ? static_cast<std::uint32_t>(put) : 0;
        return Fail(ErrorDiskFull);
    }
    if (!IoWrites().Passes())
        return Fail(ErrorDiskFull);
    while (*written < n) {
        const ssize_t put = write(static_cast<int>(file), from + *written, n - *written);
        if (put < 0) {
            if (errno == EINTR)
                continue;
            return FailErrno(nullptr);
        }
        *written += static_cast<std::uint32_t>(put);
    }
    return Succeed();
}

bool FlushFile(FileHandle file)
{
    if (file < 0 || file > INT_MAX)
        return Fail(6);
    if (Faulted(true, ErrorDiskFull))
        return false;
    return fsync(static_cast<int>(file)) == 0 ? Succeed() : FailErrno(nullptr);
}

bool SeekFile(FileHandle file, std::int64_t distance, SeekOrigin origin, std::uint64_t* position)
{
    if (file < 0 || file > INT_MAX)
        return Fail(6);
    const int whence = origin == SeekFromStart ? SEEK_SET : origin == SeekFromCurrent ? SEEK_CUR : SEEK_END;
    const off_t reached = lseek(static_cast<int>(file), static_cast<off_t>(distance), whence);
    if (reached < 0)
        return Fail(errno == EINVAL ? 131u : ErrorFromErrno(errno, nullptr));   // 131: negative seek
    if (position)
        *position = static_cast<std::uint64_t>(reached);
    return Succeed();
}

std::uint32_t LastFileError()
{
    return g_lastError;
}

CFaultSeam& IoCalls()
{
    static CFaultSeam seam;
    return seam;
}

CFaultSeam& IoWrites()
{
    static CFaultSeam seam;
    return seam;
}

std::uint32_t GetAttributes(const char* path)
{
    char native[NativePathSize];
    if (Faulted(false) || !ToNative(path, native))
        return InvalidAttributes;
    struct stat facts;
    if (stat(native, &facts) != 0) {
        FailErrno(native);
        return InvalidAttributes;
    }
    Succeed();
    return AttributesOf(facts);
}

bool SetAttributes(const char* path, std::uint32_t attributes)
{
    char native[NativePathSize];
    if (Faulted(true) || !ToNative(path, native))
        return false;
    struct stat facts;
    if (stat(native, &facts) != 0)
        return FailErrno(native);
    mode_t mode = facts.st_mode & 07777;
    if (attributes & AttributeReadOnly)
        mode &= ~static_cast<mode_t>(S_IWUSR | S_IWGRP | S_IWOTH);
    else if (HasNoWriteBits(facts))
        mode |= S_IWUSR;
    return chmod(native, mode) == 0 ? Succeed() : FailErrno(native);
}

bool CopyFileOver(const char* from, const char* to)
{
    char source[NativePathSize];
    char target[NativePathSize];
    if (!MapCopyOrMove(from, to, source, target))
        return false;
    const int in = open(source, O_RDONLY | O_CLOEXEC);
    if (in < 0)
        return FailErrno(source);
    struct stat facts;
    if (fstat(in, &facts) != 0) {
        FailErrno(source);
        close(in);
        return false;
    }
    const int out = open(target, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, facts.st_mode & 0777);
    if (out < 0) {
        FailErrno(target);
        close(in);
        return false;
    }
    char block[16384];
    bool copied = true;
    for (;;) {
        std::uint32_t got = 0;
        if (!ReadFromFile(in, block, sizeof block, &got)) {
            copied = false;
            break;
        }
        if (got == 0)
            break;
        std::uint32_t put = 0;
        if (!WriteToFile(out, block, got, &put)) {
            copied = false;
            break;
        }
    }
    const std::uint32_t error = g_lastError;
    close(in);
    // The copy takes the source's attributes, the read-only bit among them, as on Windows.
    fchmod(out, facts.st_mode & 07777);
    if (close(out) != 0 && copied)
        return FailErrno(target);
    return copied ? Succeed() : Fail(error);
}

bool DeleteFileAt(const char* path)
{
    char native[NativePathSize];
    if (Faulted(true, ErrorLocked) || !ToNative(path, native))
        return false;
    if (IsFolder(native) || RefusedAsReadOnly(native))
        return Fail(ErrorAccessDenied);
    return unlink(native) == 0 ? Succeed() : FailErrno(native);
}

bool MoveFileOver(const char* from, const char* to)
{
    char source[NativePathSize];
    char target[NativePathSize];
    if (!MapCopyOrMove(from, to, source, target))
        return false;
    if (rename(source, target) != 0)
        return FailErrno(source);
    // Through to the disk, as MOVEFILE_WRITE_THROUGH asks: the folder that holds the name.
    char folder[NativePathSize];
    ParentOf(target, folder);
    const int handle = open(folder, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle >= 0) {
        fsync(handle);
        close(handle);
    }
    return Succeed();
}

FindHandle FindFirst(const char* pattern, FindData* data)
{
    char native[NativePathSize];
    if (Faulted(false) || !ToNative(pattern, native))
        return InvalidFindHandle;
    int slot = 0;
    while (slot < SearchSlots && g_searches[slot].folder)
        ++slot;
    if (slot == SearchSlots) {
        Fail(4);   // too many open files
        return InvalidFindHandle;
    }
    Search& search = g_searches[slot];
    const char* slash = std::strrchr(native, '/');
    const char* mask = slash ? slash + 1 : native;
    if (std::strlen(mask) >= static_cast<std::size_t>(PathBufferSize)) {
        Fail(206);
        return InvalidFindHandle;
    }
    std::strcpy(search.mask, mask);
    ParentOf(native, search.path);
    search.folder = opendir(search.path);
    if (!search.folder) {
        Fail(errno == ENOENT || errno == ENOTDIR ? ErrorPathNotFound : ErrorFromErrno(errno, search.path));
        return InvalidFindHandle;
    }
    search.dotsLeft = std::strcmp(search.path, "/") == 0 ? 0 : 2;
    if (!Advance(search, data)) {
        closedir(search.folder);
        search.folder = nullptr;
        Fail(ErrorFileNotFound);
        return InvalidFindHandle;
    }
    Succeed();
    return slot;
}

bool FindNext(FindHandle search, FindData* data)
{
    if (search < 0 || search >= SearchSlots || !g_searches[search].folder)
        return Fail(6);
    if (Faulted(false))
        return false;
    return Advance(g_searches[search], data) ? Succeed() : Fail(ErrorNoMoreFiles);
}

void FindEnd(FindHandle search)
{
    if (search < 0 || search >= SearchSlots || !g_searches[search].folder)
        return;
    closedir(g_searches[search].folder);
    g_searches[search].folder = nullptr;
}

std::uint32_t GetCurrentFolder(std::uint32_t size, char* buffer)
{
    char native[NativePathSize];
    if (!getcwd(native, sizeof native)) {
        FailErrno(nullptr);
        return 0;
    }
    // "/" is "Z:\"; any other folder is "Z:" followed by its path, without a trailing slash.
    const std::uint32_t length = static_cast<std::uint32_t>(std::strlen(native)) + 2;
    if (length + 1 > size) {
        Succeed();
        return length + 1;
    }
    buffer[0] = 'Z';
    buffer[1] = ':';
    for (std::uint32_t i = 2; i <= length; ++i)
        buffer[i] = native[i - 2] == '/' ? '\\' : native[i - 2];
    Succeed();
    return length;
}

bool SetCurrentFolder(const char* path)
{
    char native[NativePathSize];
    if (!ToNative(path, native))
        return false;
    return chdir(native) == 0 ? Succeed() : FailErrno(native);
}

std::uint32_t GetModulePath(ModuleHandle module, char* buffer, std::uint32_t size)
{
    if (module) {
        Fail(126);   // module not found
        return 0;
    }
    char path[PathBufferSize];
    std::uint32_t length = 0;
    if (g_programPathOverridden) {
        length = static_cast<std::uint32_t>(std::strlen(g_programPath));
        std::memcpy(path, g_programPath, length + 1);
    } else {
        char native[NativePathSize];
        const ssize_t n = readlink("/proc/self/exe", native, sizeof native - 1);
        if (n <= 0 || n + 3 > PathBufferSize) {
            Fail(n <= 0 ? 31u : 122u);
            return 0;
        }
        path[0] = 'Z';
        path[1] = ':';
        for (ssize_t i = 0; i < n; ++i)
            path[i + 2] = native[i] == '/' ? '\\' : native[i];
        length = static_cast<std::uint32_t>(n) + 2;
        path[length] = 0;
    }
    if (length + 1 > size) {
        Fail(122);   // insufficient buffer
        return 0;
    }
    std::memcpy(buffer, path, length + 1);
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
    return 1u << ('Z' - 'A');
}

std::FILE* OpenStream(const char* path, const char* mode)
{
    char native[NativePathSize];
    if (!mode)
        return nullptr;
    const bool writes = std::strpbrk(mode, "wa+") != nullptr;
    if (Faulted(writes, ErrorLocked) || !ToNative(path, native))
        return nullptr;
    if (IsFolder(native) || (writes && RefusedAsReadOnly(native))) {
        Fail(ErrorAccessDenied);
        return nullptr;
    }
    std::FILE* stream = std::fopen(native, mode);
    if (!stream) {
        FailErrno(native);
        return nullptr;
    }
    ++g_openFiles;
    Succeed();
    return stream;
}

void CloseStream(std::FILE* stream)
{
    std::fclose(stream);
    --g_openFiles;
}
