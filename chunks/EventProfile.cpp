// The profile document: recognising a profile, reading its name, and the scan of the
// Profiles folder that gives the dialog its catalogue.

#include "chunks/EventProfile.h"

#include "files/FileWalker.h"
#include "files/Paths.h"

CProfileEntry::~CProfileEntry()
{
    if (!cellsAreBorrowed) {
        for (CChainNode<CProfileCell>* node = cells.Head(); node; node = node->next) {
            if (node->payload)
                HeapDelete(node->payload->object);
        }
    }
    // The cells, the text and the blocks go with the members.
}

CEventProfile::CEventProfile()
    : typeTag("EventProfile"), firstText(0), secondText(0)
{
}

// Group 3 may stand anywhere among the root's children; only child 0 of each group counts.
CTextString CEventProfile::ReadProfileName(const CTextString& path)
{
    CTextString name(0);
    if (!Open(path.Text()))
        return name;
    CTextString type(0);
    if (!OpenGroup(TypeGroupId) || !ReadLeaf(0, type) || !type.Equals(typeTag)) {
        Close();
        return name;
    }
    CloseGroup();
    if (!OpenGroup(NameGroupId)) {
        Close();
        return name;
    }
    if (!ReadLeaf(0, name))
        name.MakeEmpty();
    Close();
    return name;
}

CTextString CEventProfile::GetExtension() const
{
    return CTextString(".idprof");
}

// One document serves every file: ReadProfileName leaves it closed for the next. A file
// that cannot be opened or is damaged may be replaced by its .tmp twin on the way.
bool CEventProfile::ListProfiles(CChain<CTextString>& list)
{
    list.Clear();
    // A folder or pattern cut short would search elsewhere: then nothing is searched.
    const CTextString programFolder = ModuleFolder(nullptr);
    const CTextString extension = GetExtension();
    const CTextString folder = PathInFolder(programFolder, "Profiles");
    CTextString pattern(0);
    if (folder.IsEmpty() || extension.IsEmpty() || !AssignWhole(pattern, "*") || !AppendWhole(pattern, extension))
        return true;

    CFileWalker walker(WalkFiles | WalkFullNames, pattern.Text(), folder.Text(), nullptr, false);
    CWalkEntry entry;
    while (walker.Next(entry)) {
        CTextString name = ReadProfileName(entry.name);
        if (!name.IsEmpty())
            InsertEntry(list, name);   // a name that cannot be kept is dropped
    }
    return true;
}
