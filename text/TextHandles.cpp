// CTextString: raw input and output through file handles of the platform layer. Kept apart
// so that users of the string who never touch a handle do not pull in the file backend.

#include "platform/Files.h"
#include "text/TextString.h"

int CTextString::ReadFromHandle(FileHandle file, std::uint32_t n)
{
    if (!Reserve(static_cast<int>(n) + 1, false, false))
        return -1;
    std::uint32_t delivered = 0;
    if (!ReadFromFile(file, cursor, n, &delivered)) {
        // The old length no longer describes the bytes behind the rebased cursor.
        length = 0;
        cursor[0] = 0;
        return -1;
    }
    length = static_cast<int>(delivered);
    cursor[length] = 0;
    return length;
}

int CTextString::WriteToHandle(FileHandle file) const
{
    std::uint32_t written = 0;
    if (!WriteToFile(file, Text(), static_cast<std::uint32_t>(length), &written))
        return -1;
    return static_cast<int>(written);
}
