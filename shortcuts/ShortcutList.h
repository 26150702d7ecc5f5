#pragma once
// The registry of modified shortcuts: the chain in memory, "ShortcutList" beside the program
// and the report "ShortcutList.txt" for people. The dialog's members of the same names call
// these one-to-one with m_shortcuts and the program's folder (ModuleFolder of the running
// program; with or without a trailing backslash).
//
// Every entry is a shortcut path in wide path form: n UTF-16 units, low byte first, and one
// zero byte, 2n+1 bytes in all. "ShortcutList" is those entries back to back, nothing else:
// so the second entry of two starts at an odd offset, and a reader finds an entry's end by
// a zero low byte, never by a zero unit. An empty list is a file of 0 bytes.
//
// Nothing here shows anything or reports a failure: a file that cannot be read is an empty
// registry, one that cannot be written leaves memory updated and the file as it was.

#include "text/Chain.h"
#include "text/TextString.h"

// The two files' paths in programFolder.
CTextString ShortcutListPath(const CTextString& programFolder);
CTextString ShortcutReportPath(const CTextString& programFolder);

// Ascending bytes with a to z folded to upper case, zero bytes included: so a path that
// begins another comes first, and among equal entries the earliest stays in front.
void SortShortcuts(CChain<CTextString>& shortcuts);

// Replaces the chain by the file's entries, exact duplicates once, sorted. An entry cut off
// by the end of the file is dropped, and so is one whose memory cannot be had. When the
// file cannot be opened or read, the chain stays as it was.
void LoadList(CChain<CTextString>& shortcuts, const CTextString& programFolder);

// Adds path unless it is empty or listed already in any case; then saves.
void AddEntry(CChain<CTextString>& shortcuts, const CTextString& programFolder, const CTextString& path);

// Removes the first entry equal to path in any case; saves only if one went.
void RemoveEntry(CChain<CTextString>& shortcuts, const CTextString& programFolder, const CTextString& path);

// Sorts, rewrites "ShortcutList" whole, then the report.
void SaveList(CChain<CTextString>& shortcuts, const CTextString& programFolder);

// Rewrites "ShortcutList.txt": the count and notice, an empty line, then each entry's
// single-byte form, CR LF between lines and none behind the last.
void WriteReport(const CChain<CTextString>& shortcuts, const CTextString& programFolder);
