#pragma once
// Path and file helpers over CTextString. A path is a byte string whose separator is the
// backslash and nothing else; nothing here normalises a path or folds its case. Fixed path
// buffers hold PathBufferSize (262) bytes.

#include <cstdint>

#include "platform/Files.h"
#include "text/TextString.h"

// What GetFileFacts fills and CFileWalker hands on. Times are 64-bit file times.
struct FileFacts {
    std::uint32_t valid;   // FactsComplete after GetFileFacts, which fills every field
    std::uint64_t created;
    std::uint64_t accessed;
    std::uint64_t written;
    std::uint32_t sizeLow;
    std::uint32_t sizeHigh;
    std::uint32_t attributes;
};
const std::uint32_t FactsComplete = 7;

// Appends a backslash unless the last byte is one; an empty path gets one too.
void EnsureBackslash(CTextString& path);

// name in folder, a backslash between them unless folder ends in one. Empty when folder is
// empty or the path could not be had whole: a path cut short would name a file elsewhere,
// at worst at the root of the drive.
CTextString PathInFolder(const CTextString& folder, const char* name);

// True for a file or folder that can be reached. A drive root ("C:" or "C:\") is asked of
// the drive table, not of the file system; a path of fewer than 2 bytes is never found.
bool PathExists(const char* path);

// True only when the system says that path names nothing: the file, or a folder on the way,
// is not there. A file that exists but cannot be reached (locked, denied) is not missing.
bool FileIsMissing(const char* path);

// The first directory entry that matches path (wildcards allowed). A path that ends in a
// backslash, or a drive root, is not found. False as well for a null argument.
bool GetFileFacts(const char* path, FileFacts* facts);
bool GetFileSize64(const char* path, std::uint64_t* size);

// Points into path behind its last backslash; at path itself when it holds none.
const char* FileNamePart(const char* path);

// The part of path before its last backslash, with that backslash unless noBackslash.
// Empty for a null path or one without a backslash.
CTextString FolderOf(const char* path, bool noBackslash);

// The process's current folder; empty when it cannot be read or does not fit a path buffer.
CTextString CurrentFolder();

// The full path of a module's file, and its folder without a trailing backslash; the null
// handle stands for the running program. Empty when the path cannot be had.
CTextString ModulePath(ModuleHandle module);
CTextString ModuleFolder(ModuleHandle module);
