#pragma once
// "QuoteChars.txt": the optional file in the program's folder that picks the two bytes
// standing for double quotes in the arguments of an enhanced line. Read once at start-up,
// never written.
//
//   LeftArgQuote={
//   RightArgQuote=}
//
// Keys in any case, one to a line, CR LF or LF; each line is trimmed of bytes 0x00 to 0x20
// first. Only the value's first byte counts and it is not trimmed, so "LeftArgQuote= x"
// picks a space; a key with nothing behind it changes nothing; a later line wins. A missing
// file, or one without a valid key, leaves both as they were.

#include "text/TextString.h"

// programFolder: the running program's folder, with or without a trailing backslash. False
// when the file is there but could not be read to its end (locked, denied, a read failed,
// memory for a line), or its path could not be had: the two may then not be what the file
// says. A missing file is read whole.
bool ReadQuoteChars(const CTextString& programFolder, char& left, char& right);
