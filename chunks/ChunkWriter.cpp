// The writing side of CChunkFile. A group's header goes out with zero length and count when
// the group is opened and is written again in place when it is closed, so nothing is ever
// buffered to learn a length. Any failed write is remembered until Close, so that a .tmp
// twin that is not whole never replaces the main file.

#include "chunks/ChunkFile.h"

bool CChunkFile::BeginFile(const char* path)
{
    if (isOpen)
        return false;
    // A name cut short would write, and then replace, another file.
    if (!AssignWhole(fileName, path))
        return false;
    CTextString target = replaceOnClose ? fileName.Concat(".tmp") : CTextString(fileName);
    writeHandle = CreateFileForWriting(target.Text());
    if (writeHandle == InvalidFileHandle)
        return false;
    inMemory = false;
    memoryTarget = nullptr;
    return BeginWriting();
}

bool CChunkFile::BeginMemory(CTextString& target)
{
    if (isOpen)
        return false;
    inMemory = true;
    memoryTarget = &target;
    return BeginWriting();
}

bool CChunkFile::BeginWriting()
{
    isOpen = true;
    isWriting = true;
    writeFailed = false;
    version = NewFileVersion;
    CTextString field(0);
    CChunkGroup root;
    root.id = RootGroupId;
    if (!WriteBytes(signature) || !WriteBytes(field.AssignBigEndian16(version)) || !WriteChunkHeader(root) ||
        !PushGroup(root)) {
        writeFailed = true;
        Close();
        return false;
    }
    currentGroup = openGroups.Head()->payload;
    return true;
}

// Appends at the end of the output: in memory, or at the file's position, which is its end
// except during a header rewrite.
bool CChunkFile::WriteBytes(const CTextString& bytes)
{
    if (inMemory) {
        const int before = memoryTarget->Length();
        memoryTarget->Append(bytes);
        return memoryTarget->Length() == before + bytes.Length();
    }
    return bytes.WriteToHandle(writeHandle) == bytes.Length();
}

std::uint64_t CChunkFile::OutputPosition()
{
    if (inMemory)
        return static_cast<std::uint64_t>(memoryTarget->Length());
    std::uint64_t position = 0;
    SeekFile(writeHandle, 0, SeekFromCurrent, &position);
    return position;
}

// The four fields of a group header, one write each. In memory a group whose offset is
// already fixed is rewritten in place, a field that would reach past the end skipped.
bool CChunkFile::WriteChunkHeader(CChunkGroup& group)
{
    CTextString fields[4] = {CTextString(0), CTextString(0), CTextString(0), CTextString(0)};
    fields[0].AssignBigEndian16(group.type);
    fields[1].AssignBigEndian32(group.length);
    fields[2].AssignBigEndian32(group.id);
    fields[3].AssignBigEndian32(static_cast<std::uint32_t>(group.childCount));
    const bool rewrite = inMemory && group.offset != 0;
    std::uint64_t position = group.offset - 14;
    for (const CTextString& field : fields) {
        if (field.Length() == 0)
            return false;   // no memory for the field's bytes
        if (rewrite) {
            memoryTarget->OverwriteBytes(static_cast<int>(position), field.Text(), field.Length());
            position += static_cast<std::uint64_t>(field.Length());
        } else if (!WriteBytes(field)) {
            return false;
        }
    }
    if (group.offset == 0)
        group.offset = OutputPosition();
    return true;
}

bool CChunkFile::WriteLeaf(const void* bytes, std::uint32_t n)
{
    if (!isOpen || !isWriting || !currentGroup)
        return false;
    CTextString field(0);
    CTextString data(0);
    data.AppendBytes(bytes, static_cast<int>(n));
    const bool ok = static_cast<std::uint32_t>(data.Length()) == n &&
                    WriteBytes(field.AssignBigEndian16(2)) && WriteBytes(field.AssignBigEndian32(n)) &&
                    WriteBytes(data);
    if (!ok) {
        writeFailed = true;
        return false;
    }
    currentGroup->childCount += 1;
    currentGroup->length += 6 + n;
    return true;
}

bool CChunkFile::WriteLeaf(const CTextString& data)
{
    return WriteLeaf(data.Text(), static_cast<std::uint32_t>(data.Length()));
}

bool CChunkFile::OpenWriteGroup(std::uint32_t id)
{
    CChunkGroup group;
    group.id = id;
    if (!WriteChunkHeader(group) || !PushGroup(group)) {
        writeFailed = true;
        Close();
        return false;
    }
    currentGroup->childCount += 1;
    currentGroup = openGroups.Tail()->payload;
    return true;
}

// The group's header is rewritten with its final length and count, and its whole size is
// added to the parent, which is complete in its turn when its own rewrite comes.
bool CChunkFile::CloseWriteGroup()
{
    CChunkGroup& group = *openGroups.Tail()->payload;
    const std::uint32_t size = group.length + 14;
    if (!inMemory)
        SeekFile(writeHandle, static_cast<std::int64_t>(group.offset - 14), SeekFromStart, nullptr);
    bool ok = WriteChunkHeader(group);
    if (!ok)
        writeFailed = true;
    if (!inMemory)
        SeekFile(writeHandle, 0, SeekFromEnd, nullptr);
    DropTopGroup();
    if (!currentGroup && !Close())
        ok = false;
    if (currentGroup)
        currentGroup->length += size;
    return ok;
}

bool CChunkFile::CloseWriting()
{
    bool ok = CloseAllGroups();
    if (writeHandle != InvalidFileHandle) {
        if (!CloseFile(writeHandle))
            writeFailed = true;
        writeHandle = InvalidFileHandle;
        if (!writeFailed && replaceOnClose && !TakeOverTmpTwin())
            writeFailed = true;
    }
    if (writeFailed)
        ok = false;
    MarkClosed();
    return ok;
}
