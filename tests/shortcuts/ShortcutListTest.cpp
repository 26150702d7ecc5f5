// The registry: ShortcutList's bytes, its order, duplicates, damaged files, the report and
// the round trip. Real files in a folder of the test's own, on both builds.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "shortcuts/ShortcutList.h"
#include "tests/shortcuts/ProgramFolder.h"

namespace {

typedef std::vector<std::string> List;

List Entries(const CChain<CTextString>& chain)
{
    List entries;
    for (const CChainNode<CTextString>* node = chain.Head(); node; node = node->next)
        entries.push_back(Bytes(*node->payload));
    return entries;
}

void Fill(CChain<CTextString>& chain, const List& entries)
{
    for (const std::string& entry : entries)
        ASSERT_TRUE(InsertEntry(chain, Make(entry)));
}

std::string Joined(const List& entries)
{
    std::string bytes;
    for (const std::string& entry : entries)
        bytes += entry;
    return bytes;
}

const char Notice[] = " currently modified. Do not delete the file \"ShortcutList\" or Zelmardeck\r\n"
                      "will not be able to restore these shortcuts if you uninstall.\r\n";

class ShortcutList : public ProgramFolder {};

}  // namespace

TEST_F(ShortcutList, TwoEntriesGiveTheDocumentedBytesAndReport)
{
    CChain<CTextString> shortcuts;
    AddEntry(shortcuts, Folder(), Make(WideForm("C:\\b.lnk")));
    AddEntry(shortcuts, Folder(), Make(WideForm("C:\\a.lnk")));

    const unsigned char expected[34] = {0x43, 0, 0x3A, 0, 0x5C, 0, 0x61, 0, 0x2E, 0, 0x6C, 0, 0x6E, 0, 0x6B, 0, 0,
                                        0x43, 0, 0x3A, 0, 0x5C, 0, 0x62, 0, 0x2E, 0, 0x6C, 0, 0x6E, 0, 0x6B, 0, 0};
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(expected), sizeof expected), ReadFile("ShortcutList"));
    EXPECT_EQ(std::string("2 Shortcuts") + Notice + "\r\nC:\\a.lnk\r\nC:\\b.lnk", ReadFile("ShortcutList.txt"));
    EXPECT_EQ(folder + "\\ShortcutList", Bytes(ShortcutListPath(Folder())));
    EXPECT_EQ(folder + "\\ShortcutList.txt", Bytes(ShortcutReportPath(Make(folder + "\\"))));
}

TEST_F(ShortcutList, SortFoldsLettersAndKeepsEqualEntriesInPlace)
{
    // Letters fold to upper case, so [ \ ] ^ _ ` (0x5B to 0x60) come after all of them; a
    // path that begins another sorts first through its zero byte.
    const List unsorted = {WideForm("C:\\`x"), WideForm("C:\\_x"), WideForm("C:\\zed"), WideForm("C:\\[x"),
                           WideForm("C:\\Abc.lnk"), WideForm("C:\\abc"), WideForm("C:\\B"), WideForm("C:\\^x"),
                           WideForm("C:\\1")};
    const List sorted = {WideForm("C:\\1"), WideForm("C:\\abc"), WideForm("C:\\Abc.lnk"), WideForm("C:\\B"),
                         WideForm("C:\\zed"), WideForm("C:\\[x"), WideForm("C:\\^x"), WideForm("C:\\_x"),
                         WideForm("C:\\`x")};
    CChain<CTextString> shortcuts;
    Fill(shortcuts, unsorted);
    SortShortcuts(shortcuts);
    EXPECT_EQ(sorted, Entries(shortcuts));

    CChain<CTextString> equal;
    Fill(equal, {WideForm("C:\\Y"), WideForm("c:\\x"), WideForm("C:\\X")});
    SortShortcuts(equal);
    EXPECT_EQ(List({WideForm("c:\\x"), WideForm("C:\\X"), WideForm("C:\\Y")}), Entries(equal));
}

TEST_F(ShortcutList, LoadTakesFilesAsTheyCome)
{
    const std::string a = WideForm("C:\\a.lnk"), b = WideForm("C:\\b.lnk");
    const std::string upperA = WideForm("C:\\A.LNK");
    const struct {
        const char* name;
        std::string file;
        List loaded;
    } rows[] = {
        {"empty file", "", {}},
        {"one entry", a, {a}},
        {"out of order", b + a, {a, b}},
        {"exact duplicates once", a + b + a + a, {a, b}},
        {"case duplicates both, in file order", a + upperA, {a, upperA}},
        {"case duplicates keep file order", upperA + a, {upperA, a}},
        {"entry cut off at the end", a + std::string("D\0:\0", 4), {a}},
        {"last byte without partner", a + "D", {a}},
        {"lone terminator is an entry", std::string(1, '\0') + a, {std::string(1, '\0'), a}},
        {"unit above 0xFF kept whole", WideForm(u"C:\\\u4E2D.lnk"), {WideForm(u"C:\\\u4E2D.lnk")}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        WriteFile("ShortcutList", row.file);
        CChain<CTextString> shortcuts;
        Fill(shortcuts, {WideForm("C:\\stale.lnk")});
        LoadList(shortcuts, Folder());
        EXPECT_EQ(row.loaded, Entries(shortcuts));
        EXPECT_FALSE(Exists("ShortcutList.txt"));
    }
}

TEST_F(ShortcutList, MissingFileLeavesTheChainAlone)
{
    CChain<CTextString> shortcuts;
    Fill(shortcuts, {WideForm("C:\\kept.lnk")});
    LoadList(shortcuts, Folder());
    EXPECT_EQ(List({WideForm("C:\\kept.lnk")}), Entries(shortcuts));
}

TEST_F(ShortcutList, AddAndRemoveWriteOnlyWhenTheListChanges)
{
    const std::string game = WideForm("C:\\Games\\Game.lnk");
    CChain<CTextString> shortcuts;

    AddEntry(shortcuts, Folder(), Make(""));
    EXPECT_TRUE(shortcuts.IsEmpty());
    EXPECT_FALSE(Exists("ShortcutList"));

    AddEntry(shortcuts, Folder(), Make(game));
    EXPECT_EQ(game, ReadFile("ShortcutList"));
    EXPECT_EQ(std::string("1 Shortcut") + Notice + "\r\nC:\\Games\\Game.lnk", ReadFile("ShortcutList.txt"));

    // Listed already in another case: nothing changes and nothing is written.
    std::filesystem::remove("ShortcutList");
    std::filesystem::remove("ShortcutList.txt");
    AddEntry(shortcuts, Folder(), Make(WideForm("c:\\GAMES\\game.lnk")));
    EXPECT_EQ(List({game}), Entries(shortcuts));
    EXPECT_FALSE(Exists("ShortcutList"));
    RemoveEntry(shortcuts, Folder(), Make(WideForm("C:\\Other.lnk")));
    EXPECT_FALSE(Exists("ShortcutList"));
    EXPECT_FALSE(Exists("ShortcutList.txt"));

    RemoveEntry(shortcuts, Folder(), Make(WideForm("C:\\GAMES\\GAME.LNK")));
    EXPECT_TRUE(shortcuts.IsEmpty());
    EXPECT_TRUE(Exists("ShortcutList"));
    EXPECT_EQ("", ReadFile("ShortcutList"));
    EXPECT_EQ(std::string("0 Shortcuts") + Notice, ReadFile("ShortcutList.txt"));
}

TEST_F(ShortcutList, RemoveTakesOnlyTheFirstCaseMatch)
{
    const std::string lower = WideForm("c:\\x.lnk"), upper = WideForm("C:\\X.lnk");
    WriteFile("ShortcutList", lower + upper);
    CChain<CTextString> shortcuts;
    LoadList(shortcuts, Folder());
    RemoveEntry(shortcuts, Folder(), Make(upper));
    EXPECT_EQ(List({upper}), Entries(shortcuts));
    EXPECT_EQ(upper, ReadFile("ShortcutList"));
}

TEST_F(ShortcutList, ReportCountsAndShowsLowBytes)
{
    const struct {
        int count;
        const char* head;
    } rows[] = {{0, "0 Shortcuts"}, {1, "1 Shortcut"}, {2, "2 Shortcuts"}, {1000, "1,000 Shortcuts"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.count);
        CChain<CTextString> shortcuts;
        std::string lines;
        for (int i = 0; i < row.count; ++i) {
            const std::string path = "C:\\s" + std::to_string(i) + ".lnk";
            Fill(shortcuts, {WideForm(path)});
            lines += "\r\n" + path;
        }
        WriteReport(shortcuts, Folder());
        EXPECT_EQ(row.head + std::string(Notice) + lines, ReadFile("ShortcutList.txt"));
    }

    CChain<CTextString> wide;
    Fill(wide, {WideForm(u"C:\\\u4E2D\u00E9.lnk")});
    WriteReport(wide, Folder());
    EXPECT_EQ(std::string("1 Shortcut") + Notice + "\r\nC:\\\x2D\xE9.lnk", ReadFile("ShortcutList.txt"));
}

TEST_F(ShortcutList, WhatWasWrittenReadsBackToTheSameBytes)
{
    const List entries = {WideForm("C:\\Users\\me\\Desktop\\Sim.lnk"), WideForm(u"D:\\\u4E2D\u6587.lnk"),
                          WideForm("c:\\users\\me\\desktop\\sim.lnk"), WideForm("C:\\_under.lnk"),
                          WideForm("C:\\a")};
    WriteFile("ShortcutList", Joined(entries));
    CChain<CTextString> shortcuts;
    LoadList(shortcuts, Folder());
    SaveList(shortcuts, Folder());
    const std::string first = ReadFile("ShortcutList");
    const std::string report = ReadFile("ShortcutList.txt");
    EXPECT_EQ(Joined(Entries(shortcuts)), first);
    EXPECT_EQ(entries.size(), Entries(shortcuts).size());

    CChain<CTextString> again;
    LoadList(again, Folder());
    SaveList(again, Folder());
    EXPECT_EQ(first, ReadFile("ShortcutList"));
    EXPECT_EQ(report, ReadFile("ShortcutList.txt"));
}
