// Path and file helpers: the one way in which the system joins, splits and asks of paths.

#include "files/Paths.h"

#include <cctype>
#include <cstring>

void EnsureBackslash(CTextString& path)
{
    const int length = path.Length();
    if (length == 0 || path.Text()[length - 1] != '\\')
        path.AppendChar('\\');
}

CTextString PathInFolder(const CTextString& folder, const char* name)
{
    CTextString path(0);
    if (folder.IsEmpty())
        return path;
    const bool endsInBackslash = folder.Text()[folder.Length() - 1] == '\\';
    if (!AssignWhole(path, folder) || (!endsInBackslash && !AppendWhole(path, "\\")) || !AppendWhole(path, name))
        path.MakeEmpty();
    return path;
}

bool PathExists(const char* path)
{
    if (!path)
        return false;
    const std::size_t length = std::strlen(path);
    if (length < 2)
        return false;
    const unsigned char drive = static_cast<unsigned char>(path[0]);
    const bool rootForm = length == 2 || (length == 3 && path[2] == '\\');
    if (rootForm && path[1] == ':' && IsLetter(drive)) {
        const int bit = std::toupper(drive) - 'A';
        return ((GetLogicalDriveMask() >> bit) & 1u) != 0;
    }
    return GetAttributes(path) != InvalidAttributes;
}

bool FileIsMissing(const char* path)
{
    if (GetAttributes(path) != InvalidAttributes)
        return false;
    const std::uint32_t error = LastFileError();
    return error == ErrorFileNotFound || error == ErrorPathNotFound;
}

bool GetFileFacts(const char* path, FileFacts* facts)
{
    if (!path || !facts)
        return false;
    FindData found;
    const FindHandle search = FindFirst(path, &found);
    if (search == InvalidFindHandle)
        return false;
    FindEnd(search);
    facts->created = found.created;
    facts->accessed = found.accessed;
    facts->written = found.written;
    facts->sizeLow = found.sizeLow;
    facts->sizeHigh = found.sizeHigh;
    facts->attributes = found.attributes;
    facts->valid = FactsComplete;
    return true;
}

bool GetFileSize64(const char* path, std::uint64_t* size)
{
    FileFacts facts;
    if (!GetFileFacts(path, &facts))
        return false;
    *size = static_cast<std::uint64_t>(facts.sizeHigh) << 32 | facts.sizeLow;
    return true;
}

const char* FileNamePart(const char* path)
{
    const char* slash = std::strrchr(path, '\\');
    return slash ? slash + 1 : path;
}

CTextString FolderOf(const char* path, bool noBackslash)
{
    CTextString folder(0);
    const char* slash = path ? std::strrchr(path, '\\') : nullptr;
    if (slash)
        folder.AppendBytes(path, static_cast<int>(slash - path) + (noBackslash ? 0 : 1));
    return folder;
}

CTextString CurrentFolder()
{
    char buffer[PathBufferSize];
    const std::uint32_t length = GetCurrentFolder(PathBufferSize, buffer);
    CTextString folder(0);
    if (length != 0 && length < static_cast<std::uint32_t>(PathBufferSize))
        folder.Assign(buffer);
    return folder;
}

CTextString ModulePath(ModuleHandle module)
{
    char buffer[PathBufferSize];
    CTextString path(0);
    if (GetModulePath(module, buffer, PathBufferSize) != 0)
        path.Assign(buffer);
    return path;
}

// A path that could not be had is empty, and so is its folder.
CTextString ModuleFolder(ModuleHandle module)
{
    return FolderOf(ModulePath(module).Text(), true);
}
