// Linkwright.exe worked with real drags under Wine: a shortcut's road from the drop through
// Save and Restore, and the drops it refuses, each checked on the shortcut and the registry
// files as the shell and the disk have them.
#include <gtest/gtest.h>

#include <windows.h>
#include <shellapi.h>

#include <string>
#include <vector>

#include "app/Resource.h"
#include "tests/e2e/Controls.h"
#include "tests/e2e/DialogTest.h"
#include "tests/e2e/Dragger.h"

namespace e2e {
namespace {

using RoadTest = DialogTest;

// Pictures of every state and of the help dialog are taken on the way.
TEST_F(RoadTest, DropSaveDropAgainChangeAndRestore)
{
    StartProgram();
    EXPECT_EQ(ControlSet(), kEmpty);
    Picture(dialog, "state-empty");
    ASSERT_TRUE(Press(dialog, IDC_HELP_BUTTON));
    const HWND help = run.WaitForWindow("Help for Linkwright", 15000);
    ASSERT_NE(help, nullptr);
    Picture(help, "help-dialog");
    ASSERT_TRUE(Press(help, IDOK));
    ASSERT_TRUE(WaitUntil([&] { return !IsWindow(help); }));

    DWORD effect = 0;
    ASSERT_TRUE(DragFiles(dialog, {link}, true, &effect));
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_COPY));
    ASSERT_TRUE(WaitUntil([&] { return Enabled(IDC_ADD); })) << "the dropped shortcut was not taken";
    EXPECT_EQ(WindowText(Control(IDC_SHORTCUT_NAME)), "Racer");
    EXPECT_EQ(ControlSet(), kPlain);
    Picture(dialog, "state-plain");

    // Added in this order, shown sorted, written in this order.
    ASSERT_TRUE(Add("Racing Wheel"));
    ASSERT_TRUE(Add("Flight Yoke"));
    EXPECT_EQ(Chosen(), (std::vector<std::string>{"Flight Yoke", "Racing Wheel"}));
    EXPECT_EQ(ControlSet(), kPicking);
    Picture(dialog, "state-picking");
    ASSERT_TRUE(Save()) << "Save did not finish";
    EXPECT_EQ(ControlSet(), kEnhanced);

    const std::string tail = " target=\"" + game.target + "\" targetDir=\"" + game.workDir +
                             "\" args=\"-map [C:\\My Maps\\one.map] -fast\"";
    ShortcutFacts saved;
    ASSERT_EQ(ReadShortcut(link, &saved), S_OK);
    EXPECT_EQ(saved.target, installation.Path("Zelmar.exe"));
    EXPECT_EQ(saved.workDir, installation.Folder());
    EXPECT_EQ(saved.arguments, "profile=\"Racing Wheel\" profile=\"Flight Yoke\"" + tail);
    EXPECT_EQ(saved.iconPath, game.iconPath);
    const std::string listBytes = ShortcutListBytes({link});
    const std::string listText = std::string("1 Shortcut") + kListNotice + "\r\n" + link;
    EXPECT_EQ(ReadBytes(installation.Path("ShortcutList")), listBytes);
    EXPECT_EQ(ReadBytes(installation.Path("ShortcutList.txt")), listText);

    // Dropped again, as ANSI names: the saved profiles come back. One removed and saved.
    ASSERT_TRUE(DragFiles(dialog, {link}, false, &effect));
    ASSERT_TRUE(WaitUntil([&] { return Rows() == 2 && Enabled(IDC_RESTORE); }))
        << "the enhanced shortcut was not recognised";
    EXPECT_EQ(Chosen(), (std::vector<std::string>{"Flight Yoke", "Racing Wheel"}));
    EXPECT_EQ(ControlSet(), kEnhanced);
    Picture(dialog, "state-enhanced");
    ASSERT_TRUE(Remove({"Racing Wheel"}));
    EXPECT_EQ(ControlSet(), kEdited);
    ASSERT_TRUE(Save()) << "Save did not finish";
    ASSERT_EQ(ReadShortcut(link, &saved), S_OK);
    EXPECT_EQ(saved.target, installation.Path("Zelmar.exe"));
    EXPECT_EQ(saved.arguments, "profile=\"Flight Yoke\"" + tail);
    EXPECT_EQ(ReadBytes(installation.Path("ShortcutList")), listBytes);
    EXPECT_EQ(ReadBytes(installation.Path("ShortcutList.txt")), listText);

    // A change that Restore throws away.
    ASSERT_TRUE(Add("Arcade Stick"));
    EXPECT_EQ(ControlSet(), kEdited);
    Picture(dialog, "state-edited");
    ASSERT_TRUE(Restore()) << "Restore did not finish";
    EXPECT_EQ(ControlSet(), kPlain);
    EXPECT_EQ(Rows(), 0);

    ShortcutFacts restored;
    ASSERT_EQ(ReadShortcut(link, &restored), S_OK);
    EXPECT_EQ(restored.target, game.target);
    EXPECT_EQ(restored.arguments, game.arguments);
    EXPECT_EQ(restored.workDir, game.workDir);
    EXPECT_EQ(ReadBytes(installation.Path("ShortcutList")), "");
    EXPECT_EQ(ReadBytes(installation.Path("ShortcutList.txt")), std::string("0 Shortcuts") + kListNotice);
}

// Refused drops leave the dialog Empty and write nothing; of several names only the first
// counts.
TEST_F(RoadTest, RefusedDropsChangeNothingAndTheFirstNameCounts)
{
    ShortcutFacts parent;
    parent.target = installation.Path("Zelmar.exe");
    ASSERT_EQ(WriteShortcut(installation.Path("Links\\Parent.lnk"), parent), S_OK);
    ShortcutFacts self;
    self.target = installation.Path("Linkwright.exe");
    ASSERT_EQ(WriteShortcut(installation.Path("Links\\Self.lnk"), self), S_OK);
    ASSERT_TRUE(installation.WriteFile("Links\\Broken.lnk", "not a shortcut"));
    ASSERT_TRUE(installation.WriteFile("Links\\Notes.txt", "text"));
    StartProgram();

    DWORD effect = DROPEFFECT_COPY;
    ASSERT_TRUE(DragFiles(dialog, {installation.Path("Links\\Notes.txt"), link}, true, &effect));
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_NONE));
    ASSERT_TRUE(WaitIdle(dialog));
    EXPECT_EQ(WindowText(Control(IDC_SHORTCUT_NAME)), "");
    EXPECT_EQ(ControlSet(), kEmpty);

    EXPECT_EQ(DropExpectingBox(installation.Path("Links\\Parent.lnk"), "Zelmardeck Shortcut"),
              "This is a shortcut to Zelmardeck itself, and cannot be modified.");
    EXPECT_EQ(DropExpectingBox(installation.Path("Links\\Self.lnk"), "Linkwright"),
              "This is a shortcut to this program, and cannot be modified.");
    EXPECT_EQ(WindowText(Control(IDC_SHORTCUT_NAME)), "Self");
    EXPECT_EQ(ControlSet(), kEmpty);
    EXPECT_EQ(DropExpectingBox(installation.Path("Links\\Broken.lnk"), "Load Failure"),
              "Could not load or resolve the link for this shortcut.\r\n\r\nMake sure it's not in use, that the "
              "target program was not deleted or moved, and try again.");
    EXPECT_EQ(ControlSet(), kEmpty);
    EXPECT_FALSE(installation.Exists("ShortcutList"));

    ASSERT_TRUE(DragFiles(dialog, {link, installation.Path("Links\\Notes.txt")}, true, &effect));
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_COPY));
    ASSERT_TRUE(WaitUntil([&] { return Enabled(IDC_ADD); })) << "the shortcut named first was not taken";
    EXPECT_EQ(WindowText(Control(IDC_SHORTCUT_NAME)), "Racer");
    EXPECT_EQ(ControlSet(), kPlain);
}

// Other quote characters, a read-only shortcut, and the saved shortcut started through the
// shell: the parent program gets exactly the line that was saved.
TEST_F(RoadTest, AReadOnlyShortcutIsEnhancedWithTheChosenQuotesAndStartsTheParent)
{
    ASSERT_TRUE(installation.WriteFile("QuoteChars.txt", "LeftArgQuote={\r\nRightArgQuote=}\r\n"));
    game.readOnly = true;
    ASSERT_EQ(WriteShortcut(link, game), S_OK);
    StartProgram();
    ASSERT_TRUE(DropShortcut());
    ASSERT_TRUE(Add("Flight Yoke"));
    ASSERT_TRUE(Save()) << "Save did not finish";

    ShortcutFacts saved;
    ASSERT_EQ(ReadShortcut(link, &saved), S_OK);
    EXPECT_FALSE(saved.readOnly);
    const std::string line = "profile=\"Flight Yoke\" target=\"" + game.target + "\" targetDir=\"" + game.workDir +
                             "\" args=\"-map {C:\\My Maps\\one.map} -fast\"";
    EXPECT_EQ(saved.arguments, line);

    const HINSTANCE started = ShellExecuteA(nullptr, "open", link.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    ASSERT_GT(reinterpret_cast<INT_PTR>(started), 32);
    ASSERT_TRUE(WaitUntil([&] { return installation.Exists("Zelmar.log"); })) << "the parent did not start";
    Sleep(500);
    const std::string log = ReadBytes(installation.Path("Zelmar.log"));
    EXPECT_NE(log.find(" " + line + "\r\n"), std::string::npos) << log;
}

// A shortcut that cannot be written: the message, and nothing changes in the dialog.
TEST_F(RoadTest, AFailedSaveShowsTheWriteErrorAndKeepsSaveOn)
{
    StartProgram();
    ASSERT_TRUE(DropShortcut());
    ASSERT_TRUE(Add("Racing Wheel"));
    // A folder where the shortcut was: the shell cannot write the file.
    ASSERT_TRUE(DeleteFileA(link.c_str()));
    ASSERT_TRUE(CreateDirectoryA(link.c_str(), nullptr));

    ASSERT_TRUE(Press(dialog, IDOK));
    const HWND box = run.WaitForWindow("Shortcut Write Error", 15000);
    ASSERT_NE(box, nullptr);
    MessageBoxFacts facts;
    ASSERT_TRUE(ReadMessageBox(box, &facts));
    EXPECT_EQ(facts.text, "There was an unknown problem while trying to modify this shortcut. Try again or modify the "
                          "shortcut by hand.");
    EXPECT_STREQ(MessageIconName(facts.icon), "exclamation");
    ASSERT_TRUE(Press(box, IDOK));
    ASSERT_TRUE(WaitUntil([&] { return IsWindowEnabled(dialog) != 0; }) && WaitIdle(dialog));
    EXPECT_EQ(ControlSet(), kPicking);
    EXPECT_FALSE(installation.Exists("ShortcutList"));
}

}  // namespace
}  // namespace e2e
