#pragma once
// CTextString: the system's one byte string.
//
// A counted run of bytes in an allocation of its own, with a zero byte behind it, so that
// the text can go to any interface that takes a terminated string. Zero bytes inside the
// run are legal. The text need not start at the allocation's start: a cursor marks it,
// so that cutting from the left (KeepRight) moves the cursor and copies nothing.
// `capacity` is measured from the cursor, the terminator's byte included.
//
// Every allocation goes through the seam in text/Allocation.h. A failed allocation never
// throws; each operation's contract says what it leaves behind (see the .cpp).

#include <cstdint>
#include <cstdio>

#include "platform/Files.h"

// The floor of every allocation that the constructors, Assign from characters, growth and
// the two-argument Reserve make. Read at each use; nothing in the system changes it.
extern int MinimumCapacity;

class CTextString {
public:
    explicit CTextString(int capacity = 0);
    explicit CTextString(char ch);
    explicit CTextString(const char* text);
    CTextString(const CTextString& other);   // other's capacity exactly; no skip table
    virtual ~CTextString();

    // Wide text never mixes with bytes by accident.
    explicit CTextString(const wchar_t*) = delete;
    CTextString& operator=(const CTextString&) = delete;   // Assign says what it does

    // Comparison slot used by sorting and look-ups: CompareNoCase or Compare of other's text.
    virtual int CompareTo(const CTextString& other, bool noCase) const;

    const char* Text() const { return cursor ? cursor : ""; }
    int Length() const { return length; }
    int Capacity() const { return capacity; }
    bool IsEmpty() const { return length == 0; }
    bool HasAllocation() const { return buffer != nullptr; }
    int CursorOffset() const { return static_cast<int>(cursor - buffer); }   // for tests
    const std::int32_t* SkipTable() const { return skipTable; }

    // Replacing the whole text (each starts with Rebase).
    CTextString& Assign(const char* text);           // null leaves the string untouched
    CTextString& Assign(const CTextString& other);   // other must be another string
    CTextString& AssignChar(char ch);
    CTextString& AssignBigEndian16(std::uint16_t value);
    CTextString& AssignBigEndian32(std::uint32_t value);

    // Adding to the text (each starts with Compact). Failure leaves the string unchanged.
    CTextString& AppendChar(char ch);
    CTextString& Append(const char* text);           // text must not be null
    CTextString& Append(const CTextString& other);   // zero bytes included
    CTextString& AppendBytes(const void* bytes, int n);
    CTextString& Append(const wchar_t*) = delete;

    // Overwrites n bytes at offset in place; false, and nothing written, when they would
    // reach past the end of the text.
    bool OverwriteBytes(int offset, const void* bytes, int n);

    CTextString Concat(const char* text) const;
    CTextString Concat(const CTextString& other) const;
    CTextString Left(int n) const;
    CTextString Right(int n) const;

    [[nodiscard]] bool Reserve(int size, bool keep, bool exact);   // size of the allocation
    [[nodiscard]] bool Reserve(int size, bool keep);               // bytes from the cursor

    int Equals(const char* text) const;
    int Equals(const CTextString& other) const;
    int Compare(const void* bytes, int n) const;
    int CompareNoCase(const void* bytes, int n) const;

    void Truncate(int n);
    CTextString& KeepRight(int n);
    void MakeEmpty();
    // Exchanges the two texts whole, allocations included; nothing is copied, so it cannot fail.
    void Swap(CTextString& other);
    void Rebase();
    void Compact();

    int WriteTo(std::FILE* stream) const;

    // Search and replace.
    int Find(const void* pattern, int start, int n) const;
    int Find(const CTextString& pattern, int start) const;
    // The table belongs to the text it was built from; building it does not change the text,
    // so a const pattern can carry one.
    [[nodiscard]] bool BuildSkipTable() const;
    void Replace(const char* search, const char* replacement);
    void Replace(const CTextString& search, const CTextString& replacement);

    // Input and output. ReadLine gives the next line that is not empty, without its CR or LF;
    // false at the end of the stream, or when a byte could not be kept: the stream is then
    // not at its end, which is how a reader tells a line lost from the last one.
    bool ReadLine(std::FILE* stream);
    int ReadFromHandle(FileHandle file, std::uint32_t n);
    int WriteToHandle(FileHandle file) const;

    // Keeps the bytes at even offsets: UTF-16 text whose units fit a byte becomes plain text.
    // False, and the text untouched, when the plain text could not be had whole.
    [[nodiscard]] bool CollapseWide();

private:
    void Grow(const void* bytes, int n);

    char* buffer;
    char* cursor;
    int capacity;
    int length;
    unsigned char borrowed;
    mutable std::int32_t* skipTable;
};

void TrimLeft(CTextString& text, unsigned char low, unsigned char high);
void TrimRight(CTextString& text, unsigned char low, unsigned char high);
void Trim(CTextString& text, unsigned char low, unsigned char high);
// The system's one case fold: ASCII lower case to upper case, every other byte as it is.
unsigned char FoldCase(unsigned char ch);
bool IsLetter(unsigned char ch);
// True when text begins (ends) with the n bytes of prefix (suffix), letters in any case.
// Compared in place: a copy of a part of the text that could not be had would tell "no".
bool BeginsWithNoCase(const CTextString& text, const char* prefix, int n);
bool EndsWithNoCase(const CTextString& text, const char* suffix, int n);

// Assign and Append that tell whether all of the text went in: false when memory failed and
// to holds only part of it, which nothing may then be written from. text is not null.
[[nodiscard]] bool AssignWhole(CTextString& to, const CTextString& from);
[[nodiscard]] bool AssignWhole(CTextString& to, const char* text);
[[nodiscard]] bool AppendWhole(CTextString& to, const CTextString& text);
[[nodiscard]] bool AppendWhole(CTextString& to, const char* text);

// Decimal text; with group, a comma after every third digit; zeros fill to minWidth.
CTextString FormatInteger(std::uint32_t value, bool group, int minWidth);
CTextString FormatInteger(std::int32_t value, bool group, int minWidth);
