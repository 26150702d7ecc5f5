#pragma once
// CChunkFile: a file of nested groups and leaves, every number big-endian.
//
// Layout: the signature's bytes, a 16-bit version, then one root group. Every chunk starts
// with a 16-bit type (1 for a group, anything else a leaf) and a 32-bit length; a group goes
// on with a 32-bit id and a 32-bit child count, then its children. A leaf's length counts its
// data; a group's counts the whole sizes of its children, not its own 14 header bytes.
//
// One object serves one file at a time, for reading or for writing. Reading walks only the
// headers of the current group's children; data is read when a leaf is asked for. Writing
// goes to a ".tmp" twin of the file, which replaces the file only after a clean Close, or
// into a string in memory. A reader that finds the file missing or damaged takes over a
// ".tmp" twin left beside it. Nothing here reports to the user: every answer is a bool.

#include <cstdint>

#include "files/WindowedFile.h"
#include "platform/Files.h"
#include "text/Chain.h"
#include "text/TextString.h"

// The in-memory record of one chunk. offset lies just behind the part of the header read or
// written so far: chunk start + 6 for a child record, the first child's place for a group.
struct CChunkHeader {
    CChunkHeader() : type(2), length(0), offset(0) {}

    std::uint16_t type;
    std::uint32_t length;
    std::uint64_t offset;
};

// One open group. While reading, children holds the records of its direct children in file
// order, in one block of its own: a group whose records could not all be had is not opened.
// While writing, length and childCount count what has been finished and begun so far.
struct CChunkGroup : CChunkHeader {
    CChunkGroup() : id(0), childCount(0), children(nullptr), keptChildren(0), childRoom(0) { type = 1; }
    // Copies the header fields only: a group is copied onto the stack before its children
    // are scanned.
    CChunkGroup(const CChunkGroup& other);
    CChunkGroup& operator=(const CChunkGroup&) = delete;
    ~CChunkGroup();

    // Adds a record behind the others; false when there is no memory for it.
    bool KeepChild(const CChunkHeader& child);
    void ForgetChildren();

    std::uint32_t id;
    std::int32_t childCount;
    CChunkHeader* children;       // owned; keptChildren records, room for childRoom
    std::int32_t keptChildren;    // childCount once the group is open for reading
    std::int32_t childRoom;
};

class CChunkFile {
public:
    CChunkFile();
    virtual ~CChunkFile();

    CChunkFile(const CChunkFile&) = delete;
    CChunkFile& operator=(const CChunkFile&) = delete;

    // Reading. An open object answers true to Open and stays on its file.
    bool Open(const char* path);
    bool ReadLeaf(std::int32_t index, CTextString& out);

    // Writing. BeginFile writes to path + ".tmp" (to path itself without replaceOnClose);
    // BeginMemory appends to target, which must outlive the writing. Both put out the
    // signature, the version and the root's header, and make the root current.
    bool BeginFile(const char* path);
    bool BeginMemory(CTextString& target);
    // A leaf of n bytes at the end of the current group.
    bool WriteLeaf(const void* bytes, std::uint32_t n);
    bool WriteLeaf(const CTextString& data);

    // Both sides: a child group of the current group becomes current (found by id when
    // reading, begun with that id when writing); the parent becomes current again; closing
    // the root, or Close, ends the file. A failed OpenGroup while writing ends it too.
    bool OpenGroup(std::uint32_t id);
    bool CloseGroup();
    bool Close();

    bool IsOpen() const { return isOpen; }
    bool IsWriting() const { return isWriting; }
    std::uint16_t Version() const { return version; }
    const CChunkGroup* CurrentGroup() const { return currentGroup; }

    // The version word and the root's id that new files carry.
    static const std::uint16_t NewFileVersion = 1;
    static const std::uint32_t RootGroupId = 0;

    bool replaceOnClose;   // writing to a file: the .tmp twin replaces the file at Close

private:
    // Reading.
    bool ReadHeader();
    bool ReadSignature();
    bool ReadChunkHeader(CChunkHeader& header, std::uint64_t position);
    bool ReadGroupHeader(CChunkGroup& group, std::uint64_t position);
    bool ScanChildren(CChunkGroup& group);
    bool Recover();
    bool OpenReadGroup(std::uint32_t id);
    bool CloseReadGroup();
    bool CloseReading();

    // Writing.
    bool BeginWriting();
    bool WriteBytes(const CTextString& bytes);
    bool WriteChunkHeader(CChunkGroup& group);
    bool OpenWriteGroup(std::uint32_t id);
    bool CloseWriteGroup();
    bool CloseWriting();
    std::uint64_t OutputPosition();

    bool PushGroup(const CChunkGroup& group);
    void DropTopGroup();
    bool CloseAllGroups();
    void MarkClosed();
    bool TakeOverTmpTwin();

    bool isOpen;
    bool isWriting;
    bool inMemory;
    bool writeFailed;   // a write went wrong: Close must not let the .tmp twin replace the file
    bool outOfMemory;   // reading: memory failed, so a failed Open does not mean damage
    std::uint16_t version;
    std::uint32_t firstChunkOffset;   // reading: where the root's header starts
    CTextString fileName;
    CWindowedFile reader;
    FileHandle writeHandle;
    CChain<CChunkGroup> openGroups;   // the root first, the current group last
    CChunkGroup* currentGroup;        // borrowed from openGroups
    CTextString* memoryTarget;        // borrowed

protected:
    CTextString signature;   // the file kind; subclasses assign theirs in their constructor
};
