// CFileWalker: the walk as a state machine over the platform's directory search.

#include "files/FileWalker.h"

#include <cstring>

#include "text/Allocation.h"

namespace {

bool IsDots(const char* name)
{
    return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0;
}

const char* MaskOrAll(const char* mask)
{
    return mask && mask[0] ? mask : "*";
}

}  // namespace

CFileWalker::CFileWalker(std::uint32_t flags_, const char* fileMask_, const char* start,
                         const char* folderMask_, bool anyFolderBelow_)
    : root(0), fileMask(0), folderMask(0), flags(flags_), findHandle(InvalidFindHandle), findData(),
      subPath(0), inFolders(0), sameMasks(0), active(0), anyFolderBelow(0), nested(nullptr)
{
    Reset();
    if (!(flags & (WalkFiles | WalkFolders)))
        return;
    anyFolderBelow = anyFolderBelow_ ? 1 : 0;
    fileMask.Assign(MaskOrAll(fileMask_));
    folderMask.Assign(MaskOrAll(folderMask_));
    if (!(flags & WalkFiles)) {
        fileMask.Assign(folderMask);
        sameMasks = 1;
    } else {
        sameMasks = fileMask.CompareNoCase(folderMask.Text(), folderMask.Length()) == 0 ? 1 : 0;
    }
    Start(start);
}

CFileWalker::~CFileWalker()
{
    Reset();
}

void CFileWalker::Start(const char* start)
{
    if (!start || !start[0]) {
        root.Assign(CurrentFolder());
    } else if (start[0] == '.') {
        // Relative to the current folder: let the platform resolve it, then put the
        // current folder back, whatever became of the attempt. A current folder that
        // cannot be noted is not changed at all.
        CTextString copy(start);
        if (copy.Length() > 0 && copy.Text()[copy.Length() - 1] == ':')
            copy.AppendChar('\\');
        const CTextString saved = CurrentFolder();
        if (!saved.IsEmpty() && SetCurrentFolder(copy.Text()))
            root.Assign(CurrentFolder());
        else
            root.Assign(copy);
        if (!saved.IsEmpty())
            SetCurrentFolder(saved.Text());
    } else {
        root.Assign(start);
    }
    // Without a root for want of memory the walker stays inactive, rather than walk "\".
    if (root.IsEmpty())
        return;
    EnsureBackslash(root);
    active = 1;
}

void CFileWalker::Reset()
{
    CloseSearch();
    HeapDelete(nested);
    nested = nullptr;
    inFolders = 0;
    active = 0;
    pending.Clear();
}

void CFileWalker::CloseSearch()
{
    if (findHandle != InvalidFindHandle)
        FindEnd(findHandle);
    findHandle = InvalidFindHandle;
}

// The next entry of the search for root + mask, starting it when none is open. False when
// it cannot start or has just ended; the search is closed then.
bool CFileWalker::AdvanceSearch(const CTextString& mask)
{
    if (findHandle == InvalidFindHandle) {
        // A pattern that could not be had would search another folder, or for everything.
        const CTextString pattern = root.Concat(mask);
        if (pattern.IsEmpty() || mask.IsEmpty())
            return false;
        findHandle = FindFirst(pattern.Text(), &findData);
        return findHandle != InvalidFindHandle;
    }
    if (FindNext(findHandle, &findData))
        return true;
    CloseSearch();
    return false;
}

// Fills the entry; false when its name could not be built for want of memory, and the
// entry is then passed over.
bool CFileWalker::Deliver(CWalkEntry& entry, const char* name, bool folder) const
{
    entry.isFolder = folder ? 1 : 0;
    int expected = static_cast<int>(std::strlen(name));
    if (flags & WalkFullNames) {
        entry.name.Assign(root);
        entry.name.Append(name);
        expected += root.Length();
    } else {
        entry.name.Assign(name);
    }
    if (entry.name.Length() != expected)
        return false;
    entry.factsValid = 0;
    if (flags & WalkFacts) {
        const CTextString path = root.Concat(name);
        entry.factsValid = GetFileFacts(path.Text(), &entry.facts) ? 1 : 0;
    }
    return true;
}

bool CFileWalker::Next(CWalkEntry& entry)
{
    if (!active)
        return false;
    // The file step may hand over to the folder pass on its last call.
    const bool delivered = inFolders ? FolderStep(entry) : FileStep(entry) || (inFolders && FolderStep(entry));
    if (delivered)
        return true;
    // The walk is over for good: a search that has ended is not started again.
    active = 0;
    return false;
}

bool CFileWalker::FileStep(CWalkEntry& entry)
{
    const bool foldersWanted = (flags & (WalkFolders | WalkRecurse)) != 0;
    for (;;) {
        if (!AdvanceSearch(fileMask)) {
            if (foldersWanted)
                inFolders = 1;
            return false;
        }
        const char* name = findData.name;
        if (!(findData.attributes & AttributeDirectory)) {
            if (!(flags & WalkFiles))
                continue;
            if (Deliver(entry, name, false))
                return true;
            continue;
        }
        if (!sameMasks || !foldersWanted || IsDots(name))
            continue;
        // A folder met on the way waits for the folder pass; one that cannot be noted
        // for want of memory is dropped.
        CTextString* copy = HeapNew<CTextString>(name);
        if (copy && !copy->HasAllocation()) {
            HeapDelete(copy);
            copy = nullptr;
        }
        if (copy && !pending.Append(copy))
            HeapDelete(copy);
    }
}

bool CFileWalker::FolderStep(CWalkEntry& entry)
{
    for (;;) {
        if (nested) {
            if (nested->Next(entry)) {
                // The nested walker's names are relative to its own start; one more folder
                // goes in front at each level. Full names stand as they are.
                if (flags & WalkFullNames)
                    return true;
                const int expected = subPath.Length() + entry.name.Length();
                const CTextString relative = subPath.Concat(entry.name);
                entry.name.Assign(relative);
                if (entry.name.Length() == expected)
                    return true;
                continue;   // the name was cut short for want of memory
            }
            HeapDelete(nested);
            nested = nullptr;
        }

        CTextString folder(0);
        if (sameMasks) {
            if (pending.IsEmpty())
                return false;
            folder.Assign(pending.PopFront());
        } else {
            // The second search stays open while the folder's nested walker runs.
            for (;;) {
                if (!AdvanceSearch(folderMask))
                    return false;
                if ((findData.attributes & AttributeDirectory) && !IsDots(findData.name))
                    break;
            }
            folder.Assign(findData.name);
        }
        if (folder.IsEmpty())
            continue;   // the name was lost for want of memory: that folder is dropped

        if (flags & WalkRecurse) {
            subPath.Assign(folder);
            subPath.AppendChar('\\');
            const char* below = anyFolderBelow ? "*" : folderMask.Text();
            const char* files = (flags & WalkFiles) ? fileMask.Text() : below;
            const CTextString start = root.Concat(subPath);
            // A path cut short for want of memory would name another folder: not visited.
            if (subPath.Length() == folder.Length() + 1 && start.Length() == root.Length() + subPath.Length())
                nested = HeapNew<CFileWalker>(flags, files, start.Text(), below, false);
        }
        if (!(flags & WalkFolders))
            continue;
        if (Deliver(entry, folder.Text(), true))
            return true;
    }
}
