// Reading "QuoteChars.txt".

#include "shortcuts/QuoteChars.h"

#include <cstdio>

#include "files/Paths.h"
#include "platform/Files.h"

namespace {

const char LeftKey[] = "LeftArgQuote=";
const char RightKey[] = "RightArgQuote=";

// The first byte behind key into quote, when line begins with key (case folded) and holds
// more. True when the line had the key.
bool TakeValue(const CTextString& line, const char* key, int keyLength, char& quote)
{
    if (!BeginsWithNoCase(line, key, keyLength))
        return false;
    if (line.Length() > keyLength)
        quote = line.Text()[keyLength];
    return true;
}

}   // namespace

bool ReadQuoteChars(const CTextString& programFolder, char& left, char& right)
{
    const CTextString path = PathInFolder(programFolder, "QuoteChars.txt");
    if (path.IsEmpty())
        return false;
    std::FILE* file = OpenStream(path.Text(), "rb");
    if (!file)
        return FileIsMissing(path.Text());
    CTextString line(0);
    while (line.ReadLine(file)) {
        Trim(line, 0x00, 0x20);
        if (!TakeValue(line, LeftKey, sizeof(LeftKey) - 1, left))
            (void)TakeValue(line, RightKey, sizeof(RightKey) - 1, right);
    }
    // A line that could not be kept, or a read that failed, stops short of the end.
    const bool whole = std::feof(file) && !std::ferror(file);
    CloseStream(file);
    return whole;
}
