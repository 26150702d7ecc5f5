#pragma once
// CEventProfile: the document of one device profile. The tool asks a profile file two
// things only, whether it is a profile and what it is called:
//   group 1, child 0: the type text "EventProfile", exactly;
//   group 3, child 0: the display name.
// Everything else in the file belongs to the program that writes profiles and is passed
// over. Of the rest of a whole profile only the parts that own memory are members here,
// the two lists of entries and the two texts: nothing fills them, and the destructor gives
// them back.

#include <cstdint>

#include "chunks/BinaryChunkFile.h"
#include "text/Chain.h"
#include "text/TextString.h"

// An object that a profile entry's cell points at; destroyed through this base.
class CProfileCellObject {
public:
    virtual ~CProfileCellObject() {}
};

struct CProfileCell {
    CProfileCellObject* object;   // owned unless the entry says its cells are borrowed
};

// One entry of a profile's two lists. The tool never makes one; what is settled is what
// its destructor gives back: the cells' objects, the cells, the text, the blocks.
struct CProfileEntry {
    CProfileEntry() : text(0), cellsAreBorrowed(false) {}
    ~CProfileEntry();
    CProfileEntry(const CProfileEntry&) = delete;
    CProfileEntry& operator=(const CProfileEntry&) = delete;

    CChain<unsigned char> blocks;
    CTextString text;
    CChain<CProfileCell> cells;
    bool cellsAreBorrowed;
};

class CEventProfile : public CBinaryChunkFile {
public:
    CEventProfile();

    // The display name of the profile in the file at path; empty when the file is no
    // usable profile. The object is closed on entry and on return.
    CTextString ReadProfileName(const CTextString& path);
    // ".idprof": the extension of profile files, with its point.
    CTextString GetExtension() const;
    // Empties list, then appends the name of every profile in the Profiles folder beside
    // the program, in the order the folder delivers them; no sorting, duplicates kept.
    // Files that give no name are passed over. Always true; the list stays empty when the
    // folder's path or the pattern could not be had.
    bool ListProfiles(CChain<CTextString>& list);

    static const std::uint32_t TypeGroupId = 1;
    static const std::uint32_t NameGroupId = 3;

private:
    CChain<CProfileEntry> firstEntries;
    CChain<CProfileEntry> secondEntries;
    CTextString typeTag;
    CTextString firstText;
    CTextString secondText;
};
