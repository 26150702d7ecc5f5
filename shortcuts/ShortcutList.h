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
// Nothing here shows anything: a file that cannot be read is an empty registry, one that
// cannot be written leaves memory updated and the file as it was.

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
// file cannot be opened or read, the chain stays as it was. False when the chain may lack
// a listed entry: its path, its bytes or an entry's memory could not be had. A missing
// file is an empty registry, read whole.
bool LoadList(CChain<CTextString>& shortcuts, const CTextString& programFolder);

// Both files, paths and contents, made whole before either is written: a path or a content
// that could not be had means that neither file is written. The paths lie in the program's
// folder and nowhere else.
struct ListFiles {
    ListFiles();
    CTextString listPath;
    CTextString reportPath;
    CTextString list;
    CTextString report;
};

// Sorts the chain and makes both files for it, without leaveOut's entry (null: all). False
// when programFolder is empty or anything could not be had.
bool ComposeList(CChain<CTextString>& shortcuts, const CTextString& programFolder,
                 const CChainNode<CTextString>* leaveOut, ListFiles& files);

// "ShortcutList", then "ShortcutList.txt".
void WriteList(const ListFiles& files);

// One change of the registry in two steps, so that a shortcut is written between them only
// when its registry can follow. A Prepare answers false, with the chain as it was and
// nothing to write, when a piece could not be had. After it, either CommitChange writes the
// files (when the chain changes) and takes out the entry to remove, or CancelChange takes
// out the entry added.
struct ListChange {
    ListChange();
    ListFiles files;
    CChainNode<CTextString>* added;     // appended by PrepareAdd; null: nothing to add
    CChainNode<CTextString>* removed;   // found by PrepareRemove; null: nothing to remove
};
// path is added unless it is empty or listed already in any case.
bool PrepareAdd(CChain<CTextString>& shortcuts, const CTextString& programFolder, const CTextString& path,
                ListChange& change);
// The first entry equal to path in any case is to go.
bool PrepareRemove(CChain<CTextString>& shortcuts, const CTextString& programFolder, const CTextString& path,
                   ListChange& change);
void CommitChange(CChain<CTextString>& shortcuts, ListChange& change);
void CancelChange(CChain<CTextString>& shortcuts, ListChange& change);
