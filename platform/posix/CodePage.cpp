// The ANSI code page of the native build: code page 1252, Western European, as a Windows
// system here would have it. Every byte is one unit; only 0x80 to 0x9F differ from Latin-1.

#include "platform/ShellLink.h"

#include <cstdint>

#include "text/TextString.h"

namespace {

// Units of bytes 0x80 to 0x9F; the five bytes the code page leaves undefined keep their value.
const std::uint16_t HighControls[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

}   // namespace

bool WidenByCodePage(const CTextString& text, CTextString& wide)
{
    wide.MakeEmpty();
    for (int i = 0; i < text.Length(); ++i) {
        const unsigned char byte = static_cast<unsigned char>(text.Text()[i]);
        const std::uint16_t unit = byte >= 0x80 && byte <= 0x9F ? HighControls[byte - 0x80] : byte;
        const char pair[2] = {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
        wide.AppendBytes(pair, 2);
    }
    wide.AppendChar('\0');
    return wide.Length() == 2 * text.Length() + 1;
}
