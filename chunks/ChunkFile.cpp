// The reading side of CChunkFile, and what both sides share: construction, the stack of
// open groups, and the entry points that choose a side by isWriting.

#include "chunks/ChunkFile.h"

#include "files/Paths.h"
#include "text/Allocation.h"

CChunkGroup::CChunkGroup(const CChunkGroup& other)
    : CChunkHeader(other), id(other.id), childCount(other.childCount), children(nullptr), keptChildren(0),
      childRoom(0)
{
}

CChunkGroup::~CChunkGroup()
{
    ForgetChildren();
}

void CChunkGroup::ForgetChildren()
{
    FreeBlock(children);
    children = nullptr;
    keptChildren = 0;
    childRoom = 0;
}

// The block doubles when full, so that a group of n children costs about log n blocks.
bool CChunkGroup::KeepChild(const CChunkHeader& child)
{
    if (keptChildren == childRoom) {
        const std::int32_t room = childRoom == 0 ? 4 : childRoom * 2;
        if (room <= childRoom)
            return false;
        void* block = AllocateBlock(static_cast<std::size_t>(room) * sizeof(CChunkHeader));
        if (!block)
            return false;
        CChunkHeader* grown = static_cast<CChunkHeader*>(block);
        for (std::int32_t i = 0; i < room; ++i)
            new (&grown[i]) CChunkHeader(i < keptChildren ? children[i] : CChunkHeader());
        FreeBlock(children);
        children = grown;
        childRoom = room;
    }
    children[keptChildren++] = child;
    return true;
}

CChunkFile::CChunkFile()
    : replaceOnClose(true),
      isOpen(false),
      isWriting(false),
      inMemory(false),
      writeFailed(false),
      outOfMemory(false),
      version(0),
      firstChunkOffset(0),
      fileName(0),
      reader(nullptr),
      writeHandle(InvalidFileHandle),
      currentGroup(nullptr),
      memoryTarget(nullptr),
      signature("XFF")
{
}

CChunkFile::~CChunkFile()
{
    Close();
}

bool CChunkFile::OpenGroup(std::uint32_t id)
{
    if (!isOpen || !currentGroup)
        return false;
    return isWriting ? OpenWriteGroup(id) : OpenReadGroup(id);
}

bool CChunkFile::CloseGroup()
{
    if (!isOpen)
        return true;
    if (openGroups.IsEmpty() || !currentGroup)
        return false;
    return isWriting ? CloseWriteGroup() : CloseReadGroup();
}

// Close and CloseGroup call each other: the last CloseGroup finds the stack empty and
// closes the file from inside; the outer run then finds everything done.
bool CChunkFile::Close()
{
    if (!isOpen)
        return true;
    return isWriting ? CloseWriting() : CloseReading();
}

bool CChunkFile::PushGroup(const CChunkGroup& group)
{
    CChunkGroup* copy = HeapNew<CChunkGroup>(group);
    if (!copy || !openGroups.Append(copy)) {
        HeapDelete(copy);
        outOfMemory = true;
        return false;
    }
    return true;
}

void CChunkFile::DropTopGroup()
{
    openGroups.Remove(openGroups.Tail());
    currentGroup = openGroups.IsEmpty() ? nullptr : openGroups.Tail()->payload;
}

// A main file that is missing or damaged gives way to its .tmp twin; the twin is deleted
// once copied, so one Open copies at most once. Memory that could not be had says nothing
// about the file: a healthy file is never replaced for it.
bool CChunkFile::Open(const char* path)
{
    if (isOpen)
        return true;
    outOfMemory = false;
    // A name cut short would open, or replace, another file.
    if (!AssignWhole(fileName, path) || !AssignWhole(reader.name, fileName))
        return false;
    if (!reader.Open(false) && (PathExists(fileName.Text()) || !Recover()))
        return false;
    if (ReadHeader())
        return true;
    if (outOfMemory || !Recover())
        return false;
    return ReadHeader();
}

bool CChunkFile::Recover()
{
    if (!PathExists(fileName.Concat(".tmp").Text()) || !TakeOverTmpTwin())
        return false;
    reader.name.Assign(fileName);
    return reader.Open(false);
}

// The .tmp twin is copied over the main file, read-only or not, and deleted once copied.
// A failed copy leaves both where they are.
bool CChunkFile::TakeOverTmpTwin()
{
    const CTextString tmpPath = fileName.Concat(".tmp");
    const std::uint32_t attributes = GetAttributes(fileName.Text());
    if (attributes != InvalidAttributes)
        SetAttributes(fileName.Text(), attributes & ~AttributeReadOnly);
    if (!CopyFileOver(tmpPath.Text(), fileName.Text()))
        return false;
    DeleteFileAt(tmpPath.Text());
    return true;
}

// isWriting keeps its value until the next Open or Begin.
void CChunkFile::MarkClosed()
{
    currentGroup = nullptr;
    isOpen = false;
    inMemory = false;
    memoryTarget = nullptr;
}

// Closes every open group, innermost first; the last one closes the file. A group whose
// header could not be rewritten is gone from the stack all the same, and the groups around
// it are still completed: the failure is only carried to the answer.
bool CChunkFile::CloseAllGroups()
{
    bool ok = true;
    while (!openGroups.IsEmpty()) {
        if (!CloseGroup())
            ok = false;
    }
    return ok;
}

bool CChunkFile::ReadHeader()
{
    CChunkGroup root;
    if (!ReadSignature() || !ReadChunkHeader(root, firstChunkOffset) || root.type != 1 ||
        !ReadGroupHeader(root, root.offset)) {
        reader.Close();
        return false;
    }
    // A closed object has no open groups: the root goes onto an empty stack.
    if (!PushGroup(root)) {
        reader.Close();
        return false;
    }
    if (!ScanChildren(*openGroups.Head()->payload)) {
        reader.Close();
        openGroups.Clear();
        return false;
    }
    currentGroup = openGroups.Head()->payload;
    isOpen = true;
    isWriting = false;
    return true;
}

// Byte by byte, so that no copy is needed: a failure here always means other bytes.
bool CChunkFile::ReadSignature()
{
    const std::uint32_t size = static_cast<std::uint32_t>(signature.Length());
    for (std::uint32_t i = 0; i < size; ++i) {
        if (reader.ReadByte(i) != static_cast<unsigned char>(signature.Text()[i]))
            return false;
    }
    if (!reader.ReadBigEndian16(&version, std::uint64_t{size}))
        return false;
    firstChunkOffset = size + 2;
    return true;
}

// A type that cannot be read leaves the reader open; a length that cannot be read closes it.
bool CChunkFile::ReadChunkHeader(CChunkHeader& header, std::uint64_t position)
{
    if (!reader.ReadBigEndian16(&header.type, position))
        return false;
    if (!reader.ReadBigEndian32(&header.length, position + 2)) {
        reader.Close();
        return false;
    }
    header.offset = position + 6;
    return true;
}

// position is the place of the group's id.
bool CChunkFile::ReadGroupHeader(CChunkGroup& group, std::uint64_t position)
{
    std::uint32_t count = 0;
    if (!reader.ReadBigEndian32(&group.id, position) || !reader.ReadBigEndian32(&count, position + 4)) {
        reader.Close();
        return false;
    }
    group.childCount = static_cast<std::int32_t>(count);
    group.offset = position + 8;
    return true;
}

// Only the six common bytes of each child are read. However large childCount is, the walk
// moves at least six bytes a child and so ends at the end of the file. The group comes fresh
// onto the stack, with no records yet.
bool CChunkFile::ScanChildren(CChunkGroup& group)
{
    std::uint64_t position = group.offset;
    const std::uint32_t count = static_cast<std::uint32_t>(group.childCount);
    for (std::uint32_t i = 0; i < count; ++i) {
        CChunkHeader child;
        if (!ReadChunkHeader(child, position))
            return false;
        if (!group.KeepChild(child)) {
            outOfMemory = true;
            return false;
        }
        position = child.offset + child.length + (child.type == 1 ? 8 : 0);
    }
    return true;
}

// Only direct children are searched; the first group with the id wins. Every false answer
// leaves the stack as it was.
bool CChunkFile::OpenReadGroup(std::uint32_t id)
{
    CChunkGroup found;
    bool match = false;
    const std::int32_t records = currentGroup->keptChildren;
    for (std::int32_t index = 0; index < records && !match; ++index) {
        const CChunkHeader& child = currentGroup->children[index];
        if (child.type != 1)
            continue;
        static_cast<CChunkHeader&>(found) = child;
        if (!ReadGroupHeader(found, child.offset))
            return false;
        match = found.id == id;
    }
    if (!match || !PushGroup(found))
        return false;
    if (!ScanChildren(*openGroups.Tail()->payload)) {
        openGroups.Remove(openGroups.Tail());
        return false;
    }
    currentGroup = openGroups.Tail()->payload;
    return true;
}

// A group child is delivered as well: its bytes from its id onward.
bool CChunkFile::ReadLeaf(std::int32_t index, CTextString& out)
{
    if (!isOpen || isWriting || !currentGroup || index < 0 || index >= currentGroup->keptChildren)
        return false;
    const CChunkHeader& child = currentGroup->children[index];
    return reader.Read(out, child.offset, child.length);
}

bool CChunkFile::CloseReadGroup()
{
    DropTopGroup();
    if (currentGroup)
        return true;
    return Close();
}

bool CChunkFile::CloseReading()
{
    bool ok = CloseAllGroups();
    if (!reader.Close())
        ok = false;
    MarkClosed();
    return ok;
}
