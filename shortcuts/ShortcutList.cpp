// The registry's two files and the chain they mirror.

#include "shortcuts/ShortcutList.h"

#include "files/Paths.h"
#include "files/WindowedFile.h"

namespace {

// "ShortcutList.txt": the count and notice, an empty line, then each entry's single-byte
// form, CR LF between lines and none behind the last. False when it cannot be made whole.
bool ComposeReport(const CChain<CTextString>& shortcuts, const CChainNode<CTextString>* leaveOut,
                   CTextString& report)
{
    const int count = shortcuts.Count() - (leaveOut ? 1 : 0);
    report.Assign(FormatInteger(static_cast<std::uint32_t>(count), true, 0));
    bool whole = !report.IsEmpty() && AppendWhole(report, count != 1 ? " Shortcuts" : " Shortcut") &&
                 AppendWhole(report, " currently modified. Do not delete the file \"ShortcutList\" or "
                                     "Zelmardeck\r\nwill not be able to restore these shortcuts if you "
                                     "uninstall.\r\n");
    for (CChainNode<CTextString>* node = shortcuts.Head(); node && whole; node = node->next) {
        if (node == leaveOut)
            continue;
        CTextString shown(0);
        whole = AssignWhole(shown, *node->payload);
        shown.CollapseWide();
        whole = whole && AppendWhole(report, "\r\n") && AppendWhole(report, shown);
    }
    return whole;
}

// The node of the first payload equal to path under CompareTo with case folded, or null.
CChainNode<CTextString>* FindNoCase(const CChain<CTextString>& shortcuts, const CTextString& path)
{
    for (CChainNode<CTextString>* node = shortcuts.Head(); node; node = node->next) {
        if (node->payload->CompareTo(path, true) == 0)
            return node;
    }
    return nullptr;
}

bool ListedExactly(const CChain<CTextString>& shortcuts, const CTextString& entry)
{
    for (CChainNode<CTextString>* node = shortcuts.Head(); node; node = node->next) {
        if (node->payload->Equals(entry))
            return true;
    }
    return false;
}

}   // namespace

CTextString ShortcutListPath(const CTextString& programFolder)
{
    return PathInFolder(programFolder, "ShortcutList");
}

CTextString ShortcutReportPath(const CTextString& programFolder)
{
    return PathInFolder(programFolder, "ShortcutList.txt");
}

void SortShortcuts(CChain<CTextString>& shortcuts)
{
    SelectionSort(shortcuts, [](const CTextString& entry, const CTextString& best) {
        return entry.CompareTo(best, true) < 0;
    });
}

bool LoadList(CChain<CTextString>& shortcuts, const CTextString& programFolder)
{
    const CTextString path = ShortcutListPath(programFolder);
    CTextString bytes(0);
    CWindowedFile file(nullptr);
    if (path.IsEmpty())
        return false;
    if (!file.LoadWhole(path.Text(), bytes))
        return !PathExists(path.Text());
    shortcuts.Clear();
    bool whole = true;

    // Only the first byte of each pair is tested: a zero high byte, as every Latin
    // character has, never ends an entry. The terminator is one byte, so the next entry
    // starts right behind it, odd offset or not.
    const char* text = bytes.Text();
    const int size = bytes.Length();
    int start = 0;
    int index = 0;
    while (index < size) {
        if (text[index] != 0) {
            index += 2;
            continue;
        }
        const int length = index - start + 1;
        CTextString entry(0);
        entry.AppendBytes(text + start, length);
        if (entry.Length() != length || (!ListedExactly(shortcuts, entry) && !InsertEntry(shortcuts, entry, 0)))
            whole = false;
        start = index + 1;
        index = start;
    }
    SortShortcuts(shortcuts);
    return whole;
}

ListFiles::ListFiles() : listPath(0), reportPath(0), list(0), report(0) {}

ListChange::ListChange() : added(nullptr), removed(nullptr) {}

bool ComposeList(CChain<CTextString>& shortcuts, const CTextString& programFolder,
                 const CChainNode<CTextString>* leaveOut, ListFiles& files)
{
    SortShortcuts(shortcuts);
    files.listPath.Assign(ShortcutListPath(programFolder));
    files.reportPath.Assign(ShortcutReportPath(programFolder));
    if (files.listPath.IsEmpty() || files.reportPath.IsEmpty())
        return false;
    files.list.MakeEmpty();
    for (CChainNode<CTextString>* node = shortcuts.Head(); node; node = node->next) {
        if (node != leaveOut && !AppendWhole(files.list, *node->payload))
            return false;
    }
    return ComposeReport(shortcuts, leaveOut, files.report);
}

void WriteList(const ListFiles& files)
{
    (void)WriteWholeFile(files.listPath.Text(), files.list);
    (void)WriteWholeFile(files.reportPath.Text(), files.report);
}

bool PrepareAdd(CChain<CTextString>& shortcuts, const CTextString& programFolder, const CTextString& path,
                ListChange& change)
{
    change.added = nullptr;
    if (path.IsEmpty() || FindNoCase(shortcuts, path))
        return true;
    if (!InsertEntry(shortcuts, path, 0))
        return false;
    change.added = shortcuts.Tail();
    if (ComposeList(shortcuts, programFolder, nullptr, change.files))
        return true;
    CancelChange(shortcuts, change);
    return false;
}

bool PrepareRemove(CChain<CTextString>& shortcuts, const CTextString& programFolder, const CTextString& path,
                   ListChange& change)
{
    change.removed = FindNoCase(shortcuts, path);
    return !change.removed || ComposeList(shortcuts, programFolder, change.removed, change.files);
}

void CommitChange(CChain<CTextString>& shortcuts, ListChange& change)
{
    if (change.removed)
        shortcuts.Remove(change.removed);
    if (change.added || change.removed)
        WriteList(change.files);
    change.added = change.removed = nullptr;
}

void CancelChange(CChain<CTextString>& shortcuts, ListChange& change)
{
    if (change.added)
        shortcuts.Remove(change.added);
    change.added = change.removed = nullptr;
}
