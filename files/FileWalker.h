#pragma once
// CFileWalker: a pull-style walk over a folder, and on request its subfolders, one entry
// per Next. It holds one open search, the names of folders still to visit and at most one
// nested walker for the subfolder in progress; nothing is collected up front.
//
// Order: a folder's files first, in the search's order; then each subfolder in turn, the
// folder itself ahead of everything beneath it. Nothing is sorted. Every failure (missing
// folder, no match, no memory for a folder) looks like the end of that part of the walk.

#include <cstdint>

#include "files/Paths.h"
#include "platform/Files.h"
#include "text/Chain.h"
#include "text/TextString.h"

const std::uint32_t WalkFiles = 1;       // files are reported
const std::uint32_t WalkFolders = 2;     // folders are reported
const std::uint32_t WalkRecurse = 4;     // subfolders are walked, each by a nested walker
const std::uint32_t WalkFacts = 8;       // each entry gets its FileFacts
const std::uint32_t WalkFullNames = 16;  // names are full paths, else relative to the start

// What Next fills. The caller owns it and hands the same one to every call.
struct CWalkEntry {
    CWalkEntry() : name(0), isFolder(0), factsValid(0), facts() {}

    CTextString name;
    unsigned char isFolder;
    unsigned char factsValid;   // 0 without WalkFacts, or when the facts could not be had
    FileFacts facts;            // left as it was unless factsValid
};

class CFileWalker {
public:
    // A null or empty mask stands for "*", a null or empty start for the current folder. A
    // start that begins with a dot is resolved through the current folder, which is left as
    // it was. With anyFolderBelow the walkers below this one visit every subfolder.
    CFileWalker(std::uint32_t flags, const char* fileMask, const char* start, const char* folderMask,
                bool anyFolderBelow);
    ~CFileWalker();

    CFileWalker(const CFileWalker&) = delete;
    CFileWalker& operator=(const CFileWalker&) = delete;

    // True with a filled entry; false at the end of the walk.
    bool Next(CWalkEntry& entry);
    // Closes the search, drops the nested walker and the pending folders; the walker is
    // inactive afterwards and is not started again.
    void Reset();

    const CTextString& Root() const { return root; }
    int PendingCount() const { return pending.Count(); }

private:
    void Start(const char* start);
    bool AdvanceSearch(const CTextString& mask);
    void CloseSearch();
    bool FileStep(CWalkEntry& entry);
    bool FolderStep(CWalkEntry& entry);
    bool Deliver(CWalkEntry& entry, const char* name, bool folder) const;

    CTextString root;         // ends in a backslash once started
    CTextString fileMask;     // never empty
    CTextString folderMask;   // never empty
    std::uint32_t flags;
    FindHandle findHandle;
    FindData findData;
    CTextString subPath;      // the folder `nested` walks, with a trailing backslash
    unsigned char inFolders;  // the file pass has ended and folders are due
    unsigned char sameMasks;  // one pass serves files and folders alike
    unsigned char active;
    unsigned char anyFolderBelow;
    CChain<CTextString> pending;   // folders met in the file pass, in the order met
    CFileWalker* nested;           // owned
};
