// The registry's two files and the chain they mirror.

#include "shortcuts/ShortcutList.h"

#include "files/Paths.h"
#include "files/WholeFile.h"
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
        CTextString shown(0);
        whole = node == leaveOut || (AssignWhole(shown, *node->payload) && shown.CollapseWide() &&
                                     AppendWhole(report, "\r\n") && AppendWhole(report, shown));
    }
    return whole;
}

// Sorts the chain and writes both files for it without leaveOut's entry (null: all), each made
// whole before it is written. True when "ShortcutList" was written.
bool WriteList(CChain<CTextString>& shortcuts, const CTextString& programFolder,
               const CChainNode<CTextString>* leaveOut)
{
    SortShortcuts(shortcuts);
    CTextString list(0);
    for (CChainNode<CTextString>* node = shortcuts.Head(); node; node = node->next) {
        if (node != leaveOut && !AppendWhole(list, *node->payload))
            return false;
    }
    if (!WriteWholeFile(ShortcutListPath(programFolder), list))
        return false;
    CTextString report(0);
    if (ComposeReport(shortcuts, leaveOut, report))
        (void)WriteWholeFile(ShortcutReportPath(programFolder), report);
    return true;
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
        return FileIsMissing(path.Text());
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
        if (entry.Length() != length || (!ListedExactly(shortcuts, entry) && !InsertEntry(shortcuts, entry)))
            whole = false;
        start = index + 1;
        index = start;
    }
    SortShortcuts(shortcuts);
    return whole;
}

bool SaveList(CChain<CTextString>& shortcuts, const CTextString& programFolder)
{
    return WriteList(shortcuts, programFolder, nullptr);
}

bool AddEntry(CChain<CTextString>& shortcuts, const CTextString& programFolder, const CTextString& path)
{
    if (path.IsEmpty())
        return false;
    if (FindNoCase(shortcuts, path))
        return true;
    if (!InsertEntry(shortcuts, path))
        return false;
    CChainNode<CTextString>* added = shortcuts.Tail();
    if (WriteList(shortcuts, programFolder, nullptr))
        return true;
    shortcuts.Remove(added);
    return false;
}

bool RemoveEntry(CChain<CTextString>& shortcuts, const CTextString& programFolder, const CTextString& path)
{
    CChainNode<CTextString>* listed = FindNoCase(shortcuts, path);
    if (!listed)
        return true;
    if (!WriteList(shortcuts, programFolder, listed))
        return false;
    shortcuts.Remove(listed);
    return true;
}

void DeleteList(const CTextString& programFolder)
{
    (void)DeleteFileAt(ShortcutListPath(programFolder).Text());
    (void)DeleteFileAt(ShortcutReportPath(programFolder).Text());
}
