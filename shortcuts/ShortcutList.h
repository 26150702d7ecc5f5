#pragma once
// The registry of modified shortcuts: the chain in memory, "ShortcutList" beside the program
// and the report "ShortcutList.txt" for people. The dialog's members of the same names call
// these with m_shortcuts and the program's folder (ModuleFolder of the running program; with
// or without a trailing backslash).
//
// Every entry is a shortcut path in wide path form: n UTF-16 units, low byte first, and one
// zero byte, 2n+1 bytes in all. "ShortcutList" is those entries back to back, nothing else:
// so the second entry of two starts at an odd offset, and a reader finds an entry's end by
// a zero low byte, never by a zero unit. An empty list is a file of 0 bytes.
//
// The chain mirrors the file: a change goes to the disk first, each file whole or not at all,
// and only then into the chain. The report is never read; a report that could not be
// written keeps its old text. Nothing here shows anything.

#include "text/Chain.h"
#include "text/TextString.h"

// The two files' paths in programFolder; empty when a path could not be had.
CTextString ShortcutListPath(const CTextString& programFolder);
CTextString ShortcutReportPath(const CTextString& programFolder);

// Ascending bytes with a to z folded to upper case, zero bytes included: so a path that
// begins another comes first, and among equal entries the earliest stays in front.
void SortShortcuts(CChain<CTextString>& shortcuts);

// Replaces the chain by the file's entries, exact duplicates once, sorted. An entry cut off
// by the end of the file is dropped. False when the chain may lack a listed entry: the file
// is there but could not be read, or memory for an entry failed; when the file could not be
// read the chain stays as it was. A missing file is an empty registry, read whole.
bool LoadList(CChain<CTextString>& shortcuts, const CTextString& programFolder);

// Sorts the chain and writes both files for it. False when "ShortcutList" could not be
// written whole; it is then as it was.
bool SaveList(CChain<CTextString>& shortcuts, const CTextString& programFolder);

// Lists path, unless it is empty or listed already in any case. True when it is listed on
// the disk now; false leaves the chain and the files as they were.
bool AddEntry(CChain<CTextString>& shortcuts, const CTextString& programFolder, const CTextString& path);

// Takes the first entry equal to path in any case out of the files, then out of the chain.
// True when it is on the disk no longer, or never was; false leaves both as they were.
bool RemoveEntry(CChain<CTextString>& shortcuts, const CTextString& programFolder, const CTextString& path);

// Deletes both files; a file that cannot be deleted stays.
void DeleteList(const CTextString& programFolder);
