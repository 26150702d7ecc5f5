// Reading "QuoteChars.txt".

#include "shortcuts/QuoteChars.h"

#include <cstdio>

#include "files/Paths.h"
#include "platform/Files.h"
#include "text/Allocation.h"

namespace {

// When line begins with key (case folded), cuts the key off and answers true.
bool TakeKey(CTextString& line, const char* key, int keyLength)
{
    if (line.Left(keyLength).CompareNoCase(key, keyLength) != 0)
        return false;
    line.KeepRight(line.Length() - keyLength);
    return true;
}

}   // namespace

bool ReadQuoteChars(const CTextString& programFolder, char& left, char& right)
{
    // Every step here may lose a byte or a line for want of memory without a sign of its
    // own; the seam's count of failures tells.
    const long failuresBefore = AllocationFailures();
    const CTextString path = PathInFolder(programFolder, "QuoteChars.txt");
    if (path.IsEmpty())
        return false;
    std::FILE* file = OpenStream(path.Text(), "rb");
    if (!file)
        return AllocationFailures() == failuresBefore;
    CTextString line(0);
    while (line.ReadLine(file)) {
        Trim(line, 0x00, 0x20);
        if (TakeKey(line, "LeftArgQuote=", 13)) {
            if (!line.IsEmpty())
                left = line.Text()[0];
        } else if (TakeKey(line, "RightArgQuote=", 14)) {
            if (!line.IsEmpty())
                right = line.Text()[0];
        }
    }
    std::fclose(file);
    return AllocationFailures() == failuresBefore;
}
