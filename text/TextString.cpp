// CTextString: construction, assignment, appending, capacity, comparison, cutting, trims.
// Search, replace, line and handle input and output, collapsing and formatting are in
// TextSearch.cpp.

#include "text/TextString.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "text/Allocation.h"

int MinimumCapacity = 16;

namespace {

int Larger(int a, int b)
{
    return a > b ? a : b;
}

// The one case fold of the system: ASCII lower case to upper case, nothing else.
struct FoldTable {
    unsigned char map[256];
    FoldTable()
    {
        for (unsigned char& folded : map) {
            const int byte = static_cast<int>(&folded - map);
            folded = static_cast<unsigned char>(byte >= 0x61 && byte <= 0x7A ? byte - 0x20 : byte);
        }
    }
};
const FoldTable g_fold;

char* AllocateText(int size)
{
    return static_cast<char*>(AllocateBlock(static_cast<std::size_t>(size)));
}

// Three-way comparison over the common prefix as unsigned bytes, through map; the shorter
// side sorts first when the prefix agrees.
int CompareBytes(const char* text, int length, const void* bytes, int n, const unsigned char* map)
{
    const unsigned char* mine = reinterpret_cast<const unsigned char*>(text);
    const unsigned char* theirs = static_cast<const unsigned char*>(bytes);
    const int common = n < length ? n : length;
    for (int i = 0; i < common; ++i) {
        const unsigned char a = map ? map[mine[i]] : mine[i];
        const unsigned char b = map ? map[theirs[i]] : theirs[i];
        if (a != b)
            return a < b ? -1 : 1;
    }
    if (n > length)
        return -1;
    return n < length ? 1 : 0;
}

}  // namespace

CTextString::CTextString(int capacity_)
    : buffer(nullptr), cursor(nullptr), capacity(0), length(0), borrowed(0), skipTable(nullptr)
{
    const int size = Larger(capacity_, MinimumCapacity) + 1;
    buffer = AllocateText(size);
    if (!buffer)
        return;
    cursor = buffer;
    capacity = size;
    cursor[0] = 0;
}

CTextString::CTextString(char ch)
    : buffer(nullptr), cursor(nullptr), capacity(0), length(0), borrowed(0), skipTable(nullptr)
{
    buffer = AllocateText(MinimumCapacity);
    if (!buffer)
        return;
    cursor = buffer;
    capacity = MinimumCapacity;
    cursor[0] = ch;
    cursor[1] = 0;
    length = 1;
}

CTextString::CTextString(const char* text)
    : buffer(nullptr), cursor(nullptr), capacity(0), length(0), borrowed(0), skipTable(nullptr)
{
    const int n = text ? static_cast<int>(std::strlen(text)) : 0;
    const int size = Larger(n + 1, MinimumCapacity);
    buffer = AllocateText(size);
    if (!buffer)
        return;
    cursor = buffer;
    capacity = size;
    if (n > 0)
        std::memcpy(cursor, text, static_cast<std::size_t>(n));
    cursor[n] = 0;
    length = n;
}

CTextString::CTextString(const CTextString& other)
    : buffer(nullptr), cursor(nullptr), capacity(0), length(0), borrowed(0), skipTable(nullptr)
{
    if (!other.cursor)
        return;
    buffer = AllocateText(other.capacity);
    if (!buffer)
        return;
    cursor = buffer;
    capacity = other.capacity;
    length = other.length;
    std::memcpy(cursor, other.cursor, static_cast<std::size_t>(length) + 1);
}

CTextString::~CTextString()
{
    if (!(borrowed & 1))
        FreeBlock(buffer);
    FreeBlock(skipTable);
    capacity = 0;
    length = 0;
}

int CTextString::CompareTo(const CTextString& other, bool noCase) const
{
    return noCase ? CompareNoCase(other.Text(), other.length) : Compare(other.Text(), other.length);
}

CTextString& CTextString::Assign(const char* text)
{
    if (!text)
        return *this;
    Rebase();
    length = static_cast<int>(std::strlen(text));
    if (!buffer || capacity < length + 1) {
        FreeBlock(buffer);
        const int size = Larger(length + 1, MinimumCapacity);
        buffer = cursor = AllocateText(size);
        if (!buffer) {
            capacity = length = 0;
            return *this;
        }
        capacity = size;
    }
    std::memcpy(cursor, text, static_cast<std::size_t>(length));
    cursor[length] = 0;
    return *this;
}

CTextString& CTextString::Assign(const CTextString& other)
{
    Rebase();
    length = other.length;
    if (!buffer || capacity < length + 1) {
        FreeBlock(buffer);
        buffer = cursor = AllocateText(length + 1);
        if (!buffer) {
            capacity = length = 0;
            return *this;
        }
        capacity = length + 1;
    }
    if (length > 0)
        std::memcpy(cursor, other.cursor, static_cast<std::size_t>(length));
    cursor[length] = 0;
    return *this;
}

CTextString& CTextString::AssignChar(char ch)
{
    // A live allocation always has room for two bytes; a string without one gets one.
    if (!buffer && !Reserve(2, false))
        return *this;
    Rebase();
    cursor[0] = ch;
    cursor[1] = 0;
    length = 1;
    return *this;
}

CTextString& CTextString::AssignBigEndian16(std::uint16_t value)
{
    if (!Reserve(3, false))
        return *this;
    cursor[0] = static_cast<char>(value >> 8);
    cursor[1] = static_cast<char>(value);
    cursor[2] = 0;
    length = 2;
    return *this;
}

CTextString& CTextString::AssignBigEndian32(std::uint32_t value)
{
    if (!Reserve(5, false))
        return *this;
    cursor[0] = static_cast<char>(value >> 24);
    cursor[1] = static_cast<char>(value >> 16);
    cursor[2] = static_cast<char>(value >> 8);
    cursor[3] = static_cast<char>(value);
    cursor[4] = 0;
    length = 4;
    return *this;
}

CTextString& CTextString::AppendChar(char ch)
{
    return AppendBytes(&ch, 1);
}

CTextString& CTextString::Append(const char* text)
{
    return AppendBytes(text, static_cast<int>(std::strlen(text)));
}

CTextString& CTextString::Append(const CTextString& other)
{
    return AppendBytes(other.Text(), other.length);
}

CTextString& CTextString::AppendBytes(const void* bytes, int n)
{
    Compact();
    if (cursor && capacity > length + n) {
        if (n > 0)
            std::memcpy(cursor + length, bytes, static_cast<std::size_t>(n));
        length += n;
        cursor[length] = 0;
    } else {
        Grow(bytes, n);
    }
    return *this;
}

// Runs with the cursor at the buffer. Leaves room for a tenth of the new length, at least
// the minimum capacity, so that runs of appends reallocate seldom.
void CTextString::Grow(const void* bytes, int n)
{
    const int total = length + n;
    const int growth = Larger(total / 10, MinimumCapacity);
    const int size = total + growth;
    char* fresh = AllocateText(size);
    if (!fresh)
        return;
    if (buffer) {
        if (length > 0)
            std::memcpy(fresh, buffer, static_cast<std::size_t>(length));
        FreeBlock(buffer);
    }
    buffer = cursor = fresh;
    capacity = size;
    if (n > 0)
        std::memcpy(cursor + length, bytes, static_cast<std::size_t>(n));
    length += n;
    cursor[length] = 0;
}

bool CTextString::OverwriteBytes(int offset, const void* bytes, int n)
{
    if (offset < 0 || n < 0 || offset > length - n)
        return false;
    if (n > 0)
        std::memcpy(cursor + offset, bytes, static_cast<std::size_t>(n));
    return true;
}

CTextString CTextString::Concat(const char* text) const
{
    const int n = static_cast<int>(std::strlen(text));
    CTextString result(length + n + 1);
    if (!result.HasAllocation())
        return result;
    result.AppendBytes(Text(), length);
    result.AppendBytes(text, n);
    return result;
}

CTextString CTextString::Concat(const CTextString& other) const
{
    CTextString result(length + other.length + 1);
    if (!result.HasAllocation())
        return result;
    result.AppendBytes(Text(), length);
    result.AppendBytes(other.Text(), other.length);
    return result;
}

CTextString CTextString::Left(int n) const
{
    n = std::clamp(n, 0, length);
    CTextString result(n);
    if (result.HasAllocation())
        result.AppendBytes(Text(), n);
    return result;
}

CTextString CTextString::Right(int n) const
{
    n = std::clamp(n, 0, length);
    CTextString result(n);
    if (result.HasAllocation())
        result.AppendBytes(Text() + (length - n), n);
    return result;
}

// Works on the size of the whole allocation. With keep false an allocation that is good
// enough is only rebased: `length` then stands over bytes the caller overwrites.
bool CTextString::Reserve(int size, bool keep, bool exact)
{
    size = Larger(size, 4);
    const int total = capacity + static_cast<int>(cursor - buffer);   // 0 without a buffer
    if (buffer && (exact ? total == size : total >= size)) {
        if (keep)
            Compact();
        else
            Rebase();
        return true;
    }
    char* fresh = AllocateText(size);
    if (!fresh)
        return false;
    char* oldBuffer = buffer;
    const char* oldCursor = cursor;
    buffer = cursor = fresh;
    capacity = size;
    if (!oldBuffer) {
        length = 0;
        cursor[0] = 0;
        return true;
    }
    if (length + 1 >= size)
        length = size - 1;
    if (keep) {
        std::memcpy(cursor, oldCursor, static_cast<std::size_t>(length));
    } else {
        length = 0;
    }
    cursor[length] = 0;
    FreeBlock(oldBuffer);
    return true;
}

bool CTextString::Reserve(int size, bool keep)
{
    if (size < capacity)
        return true;
    return Reserve(size + Larger(size / 10, MinimumCapacity), keep, false);
}

int CTextString::Equals(const char* text) const
{
    if (static_cast<int>(std::strlen(text)) != length)
        return 0;
    return std::memcmp(Text(), text, static_cast<std::size_t>(length)) == 0 ? 1 : 0;
}

int CTextString::Equals(const CTextString& other) const
{
    if (other.length != length)
        return 0;
    return std::memcmp(Text(), other.Text(), static_cast<std::size_t>(length)) == 0 ? 1 : 0;
}

int CTextString::Compare(const void* bytes, int n) const
{
    return CompareBytes(Text(), length, bytes, n, nullptr);
}

int CTextString::CompareNoCase(const void* bytes, int n) const
{
    return CompareBytes(Text(), length, bytes, n, g_fold.map);
}

void CTextString::Truncate(int n)
{
    if (n < length) {
        cursor[n] = 0;
        length = n;
    }
}

CTextString& CTextString::KeepRight(int n)
{
    if (n <= 0) {
        if (cursor)
            cursor[0] = 0;
        length = 0;
        return *this;
    }
    const int cut = Larger(length - n, 0);
    cursor += cut;
    capacity -= cut;
    length -= cut;
    return *this;
}

void CTextString::MakeEmpty()
{
    Rebase();
    length = 0;
    if (cursor)
        cursor[0] = 0;
}

void CTextString::Swap(CTextString& other)
{
    std::swap(buffer, other.buffer);
    std::swap(cursor, other.cursor);
    std::swap(capacity, other.capacity);
    std::swap(length, other.length);
    std::swap(borrowed, other.borrowed);
    std::swap(skipTable, other.skipTable);
}

void CTextString::Rebase()
{
    if (cursor == buffer)
        return;
    capacity += static_cast<int>(cursor - buffer);
    cursor = buffer;
}

void CTextString::Compact()
{
    if (cursor == buffer)
        return;
    char* from = cursor;
    Rebase();
    std::memmove(buffer, from, static_cast<std::size_t>(length) + 1);
}

int CTextString::WriteTo(std::FILE* stream) const
{
    if (length == 0)
        return 0;
    return static_cast<int>(std::fwrite(cursor, 1, static_cast<std::size_t>(length), stream));
}

void TrimLeft(CTextString& text, unsigned char low, unsigned char high)
{
    const unsigned char* bytes = reinterpret_cast<const unsigned char*>(text.Text());
    const int length = text.Length();
    int count = 0;
    while (count < length && bytes[count] >= low && bytes[count] <= high)
        ++count;
    if (count > 0)
        text.KeepRight(length - count);
}

void TrimRight(CTextString& text, unsigned char low, unsigned char high)
{
    const unsigned char* bytes = reinterpret_cast<const unsigned char*>(text.Text());
    int remain = text.Length();
    while (remain > 0 && bytes[remain - 1] >= low && bytes[remain - 1] <= high)
        --remain;
    if (remain == text.Length())
        return;
    if (remain > 0)
        text.Truncate(remain);
    else
        text.MakeEmpty();
}

void Trim(CTextString& text, unsigned char low, unsigned char high)
{
    TrimLeft(text, low, high);
    TrimRight(text, low, high);
}

bool BeginsWithNoCase(const CTextString& text, const char* prefix, int n)
{
    return text.Length() >= n && CompareBytes(text.Text(), n, prefix, n, g_fold.map) == 0;
}

bool EndsWithNoCase(const CTextString& text, const char* suffix, int n)
{
    return text.Length() >= n && CompareBytes(text.Text() + text.Length() - n, n, suffix, n, g_fold.map) == 0;
}

unsigned char FoldCase(unsigned char ch)
{
    return g_fold.map[ch];
}

// The letters are the bytes that fold to an upper-case one.
bool IsLetter(unsigned char ch)
{
    return FoldCase(ch) >= 0x41 && FoldCase(ch) <= 0x5A;
}

bool AssignWhole(CTextString& to, const CTextString& from)
{
    to.Assign(from);
    return to.Length() == from.Length();
}

bool AssignWhole(CTextString& to, const char* text)
{
    to.Assign(text);
    return to.Length() == static_cast<int>(std::strlen(text));
}

bool AppendWhole(CTextString& to, const CTextString& text)
{
    const int before = to.Length();
    to.Append(text);
    return to.Length() == before + text.Length();
}

bool AppendWhole(CTextString& to, const char* text)
{
    const int before = to.Length();
    to.Append(text);
    return to.Length() == before + static_cast<int>(std::strlen(text));
}
