// CTextString: skip-table search, replacement, line input, collapsing of 16-bit text,
// and integer formatting.

#include <cstring>

#include "text/Allocation.h"
#include "text/TextString.h"

namespace {

const int SkipTableEntries = 256;

// Every entry holds the pattern's length, except that each byte of the pattern but its last
// holds its distance from the pattern's end; later occurrences overwrite earlier ones.
void FillSkipTable(std::int32_t* table, const unsigned char* pattern, int n)
{
    for (int b = 0; b < SkipTableEntries; ++b)
        table[b] = n;
    for (int i = 0; i + 1 < n; ++i)
        table[pattern[i]] = n - 1 - i;
}

// The first occurrence of the n-byte pattern in a run of t >= n bytes, or -1. The pattern is
// compared from its right end; on a mismatch the table entry of the run's mismatching byte
// gives the shift, lowered by what already matched when it stays above zero that way.
int SearchRun(const unsigned char* run, int t, const unsigned char* pattern, int n,
              const std::int32_t* table)
{
    const int m = n - 1;
    int pos = m;
    do {
        int i = pos;
        int j = m;
        int matched = 0;
        while (j >= 0 && pattern[j] == run[i]) {
            --i;
            --j;
            ++matched;
        }
        if (j < 0)
            return pos - m;
        int shift = table[run[i]];
        if (shift > matched)
            shift -= matched;
        pos += shift;
    } while (pos < t);
    return -1;
}

const unsigned char* Bytes(const void* p)
{
    return static_cast<const unsigned char*>(p);
}

}  // namespace

int CTextString::Find(const void* pattern, int start, int n) const
{
    if (start < 0 || start >= length || n < 0 || length - start < n)
        return -1;
    std::int32_t table[SkipTableEntries];
    FillSkipTable(table, Bytes(pattern), n);
    const int found = SearchRun(Bytes(cursor + start), length - start, Bytes(pattern), n, table);
    return found == -1 ? -1 : found + start;
}

int CTextString::Find(const CTextString& pattern, int start) const
{
    if (!pattern.skipTable)
        return Find(pattern.Text(), start, pattern.length);
    if (start < 0 || start >= length || length - start < pattern.length)
        return -1;
    const int found = SearchRun(Bytes(cursor + start), length - start, Bytes(pattern.Text()),
                                pattern.length, pattern.skipTable);
    return found == -1 ? -1 : found + start;
}

bool CTextString::BuildSkipTable() const
{
    if (!skipTable) {
        skipTable = static_cast<std::int32_t*>(AllocateBlock(sizeof(std::int32_t) * SkipTableEntries));
        if (!skipTable)
            return false;
    }
    FillSkipTable(skipTable, Bytes(Text()), length);
    return true;
}

void CTextString::Replace(const char* search, const char* replacement)
{
    CTextString searchText(search);
    CTextString replacementText(replacement);
    // A temporary that could not be made would turn the call into a deletion or a search
    // for nothing; the text is left alone instead.
    if (!searchText.HasAllocation() || !replacementText.HasAllocation())
        return;
    Replace(searchText, replacementText);
}

// Replaces every occurrence, leftmost first, without overlaps; replaced text is not
// scanned again. The table built on search stays with search.
void CTextString::Replace(const CTextString& search, const CTextString& replacement)
{
    const int s = search.length;
    const int r = replacement.length;
    // An empty search would be found at the same place forever.
    if (s == 0)
        return;
    // Without a table of its own the search falls back to one on the stack.
    (void)search.BuildSkipTable();

    if (s == r && s == 1) {
        const char from = search.cursor[0];
        const char to = replacement.cursor[0];
        for (int i = 0; i < length; ++i) {
            if (cursor[i] == from)
                cursor[i] = to;
        }
        return;
    }
    if (s == r) {
        for (int at = Find(search, 0); at != -1; at = Find(search, at + r))
            std::memcpy(cursor + at, replacement.cursor, static_cast<std::size_t>(r));
        return;
    }

    CTextString built(length);
    if (s == 1) {
        const char from = search.cursor[0];
        for (int i = 0; i < length; ++i) {
            if (cursor[i] == from)
                built.Append(replacement);
            else
                built.AppendChar(cursor[i]);
        }
        Assign(built);
        return;
    }

    // The text is consumed from the left: each cut moves the cursor and copies nothing.
    for (int at = Find(search, 0); at != -1; at = Find(search, 0)) {
        built.AppendBytes(cursor, at);
        const int end = at + s;
        if (end == length)
            MakeEmpty();
        else
            KeepRight(length - end);
        built.Append(replacement);
    }
    built.Append(*this);
    Assign(built);
}

// Both CR and LF end a line; empty lines are skipped, so a delivered line is never empty.
// Reads byte by byte and relies on the stream's buffering.
bool CTextString::ReadLine(std::FILE* stream)
{
    MakeEmpty();
    for (;;) {
        unsigned char byte;
        if (std::fread(&byte, 1, 1, stream) != 1)
            return length > 0;
        if (byte == 0x0D || byte == 0x0A) {
            if (length > 0)
                return true;
            continue;
        }
        const int before = length;
        AppendChar(static_cast<char>(byte));
        if (length == before)
            return false;
    }
}

bool CTextString::CollapseWide()
{
    if (length == 0)
        return true;
    CTextString narrow((length + 1) / 2);
    if (!narrow.HasAllocation())
        return false;
    for (int i = 0; i < length; i += 2)
        narrow.AppendChar(cursor[i]);
    // The terminating unit of a wide string leaves one zero byte behind; only that one goes.
    const int last = narrow.Length() - 1;
    if (last >= 0 && narrow.Text()[last] == 0) {
        if (last == 0)
            narrow.MakeEmpty();
        else
            narrow.Truncate(last);
    }
    Swap(narrow);
    return true;
}

CTextString FormatInteger(std::uint32_t value, bool group, int minWidth)
{
    // Digits lowest first, with a comma after every third one that has a digit above it.
    CTextString reversed(0);
    int digits = 0;
    do {
        reversed.AppendChar(static_cast<char>('0' + value % 10));
        value /= 10;
        ++digits;
        if (group && digits % 3 == 0 && value != 0)
            reversed.AppendChar(',');
    } while (value != 0);

    CTextString result(0);
    for (int fill = minWidth - reversed.Length(); fill > 0; --fill)
        result.AppendChar('0');
    for (int i = reversed.Length() - 1; i >= 0; --i)
        result.AppendChar(reversed.Text()[i]);
    return result;
}

CTextString FormatInteger(std::int32_t value, bool group, int minWidth)
{
    if (value >= 0)
        return FormatInteger(static_cast<std::uint32_t>(value), group, minWidth);
    // Negating in unsigned arithmetic gives the exact magnitude of the lowest value too.
    const std::uint32_t magnitude = 0u - static_cast<std::uint32_t>(value);
    CTextString result('-');
    result.Append(FormatInteger(magnitude, group, minWidth));
    return result;
}
