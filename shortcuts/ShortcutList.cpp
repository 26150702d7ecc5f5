// The registry's two files and the chain they mirror.

#include "shortcuts/ShortcutList.h"

#include "files/Paths.h"
#include "files/WindowedFile.h"

namespace {

CTextString FileIn(const CTextString& programFolder, const char* name)
{
    CTextString path(programFolder);
    EnsureBackslash(path);
    path.Append(name);
    return path;
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
    return FileIn(programFolder, "ShortcutList");
}

CTextString ShortcutReportPath(const CTextString& programFolder)
{
    return FileIn(programFolder, "ShortcutList.txt");
}

void SortShortcuts(CChain<CTextString>& shortcuts)
{
    SelectionSort(shortcuts, [](const CTextString& entry, const CTextString& best) {
        return entry.CompareTo(best, true) < 0;
    });
}

void LoadList(CChain<CTextString>& shortcuts, const CTextString& programFolder)
{
    const CTextString path = ShortcutListPath(programFolder);
    CTextString bytes(0);
    CWindowedFile file(nullptr);
    if (!file.LoadWhole(path.Text(), bytes))
        return;
    shortcuts.Clear();

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
        if (entry.Length() == length && !ListedExactly(shortcuts, entry))
            (void)InsertEntry(shortcuts, entry, 0);
        start = index + 1;
        index = start;
    }
    SortShortcuts(shortcuts);
}

void AddEntry(CChain<CTextString>& shortcuts, const CTextString& programFolder, const CTextString& path)
{
    if (path.IsEmpty() || FindNoCase(shortcuts, path))
        return;
    (void)InsertEntry(shortcuts, path, 0);
    SaveList(shortcuts, programFolder);
}

void RemoveEntry(CChain<CTextString>& shortcuts, const CTextString& programFolder, const CTextString& path)
{
    const int count = shortcuts.Count();
    if (CChainNode<CTextString>* node = FindNoCase(shortcuts, path))
        shortcuts.Remove(node);
    if (shortcuts.Count() < count)
        SaveList(shortcuts, programFolder);
}

void SaveList(CChain<CTextString>& shortcuts, const CTextString& programFolder)
{
    SortShortcuts(shortcuts);
    CTextString bytes(0);
    for (CChainNode<CTextString>* node = shortcuts.Head(); node; node = node->next)
        bytes.Append(*node->payload);
    (void)WriteWholeFile(ShortcutListPath(programFolder).Text(), bytes);
    WriteReport(shortcuts, programFolder);
}

void WriteReport(const CChain<CTextString>& shortcuts, const CTextString& programFolder)
{
    const int count = shortcuts.Count();
    CTextString report = FormatInteger(static_cast<std::uint32_t>(count), true, 0);
    report.Append(" Shortcut");
    if (count != 1)
        report.AppendChar('s');
    report.Append(" currently modified. Do not delete the file \"ShortcutList\" or Zelmardeck\r\n"
                  "will not be able to restore these shortcuts if you uninstall.");
    report.Append("\r\n");
    for (CChainNode<CTextString>* node = shortcuts.Head(); node; node = node->next) {
        CTextString shown(*node->payload);
        shown.CollapseWide();
        report.Append("\r\n");
        report.Append(shown);
    }
    (void)WriteWholeFile(ShortcutReportPath(programFolder).Text(), report);
}
