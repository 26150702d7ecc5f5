#pragma once
// The enhanced argument line that an enhanced shortcut carries, and the quote-honouring
// splitter that reads it (and the command line):
//
//   profile="A" profile="B" target="C:\x.exe" targetDir="C:\" args="-f [a b]"
//
// One item per chosen profile, then target always, targetDir and args only when not empty,
// one space between items. Values are written byte for byte: there is no escape, so a
// double quote of the started program's arguments travels as a quote character (by default
// [ and ]) and is put back on restore.

#include "text/Chain.h"
#include "text/TextString.h"

// Splits source on bytes 0x00 to 0x20. Double quotes group and are dropped; an unclosed one
// runs to the end. tokens is emptied first and receives heap copies; empty tokens are
// dropped. False when a token or its place in the chain could not be had: the chain then
// lacks it, and the split must not be taken for the whole line.
bool Tokenize(const CTextString& source, CChain<CTextString>& tokens);

// The line for the four values; args must already be in substituted form. The line is
// never empty when made (target is always written), so an empty line says that a piece
// could not be had, and nothing may be written from it.
CTextString ComposeArguments(const CTextString& target, const CTextString& workDir,
                             const CTextString& args, const CChain<CTextString>& profiles);

// Fills profiles, target, workDir and args from a line, keys matched in any case, in any
// order; a later item replaces an earlier one, profiles accumulate. The caller empties the
// four first. tokens is scratch space and keeps the tokens of the line. False when any item
// could not be taken over whole; the four then hold only part of the line.
bool TakeApartArguments(const CTextString& line, CChain<CTextString>& tokens,
                        CChain<CTextString>& profiles, CTextString& target,
                        CTextString& workDir, CTextString& args);

// Replaces double quotes in place, alternately by left and by right, starting with left.
void SubstituteQuotes(CTextString& args, char left, char right);

// The way back: every left, then every right, becomes a double quote. Callers apply it to
// a copy, so that the substituted arguments they hold stay as they are. False, and args
// untouched, when the one-byte texts of the replacement could not be had.
bool RestoreQuotes(CTextString& args, char left, char right);
