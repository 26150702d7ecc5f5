#pragma once
// Conversions between CTextString and std::string for the tests: both carry zero bytes.

#include <string>

#include "text/TextString.h"

inline std::string Bytes(const CTextString& text) { return std::string(text.Text(), static_cast<std::size_t>(text.Length())); }

inline CTextString Make(const std::string& bytes)
{
    CTextString text(0);
    text.AppendBytes(bytes.data(), static_cast<int>(bytes.size()));
    return text;
}
