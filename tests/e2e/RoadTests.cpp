// Linkwright.exe worked with real drags under Wine: a shortcut's road from the drop through
// Save and Restore, and the drops it refuses, each checked on the shortcut and the registry
// files as the shell and the disk have them.
#include <gtest/gtest.h>

#include <windows.h>
#include <commctrl.h>
#include <shellapi.h>

#include <string>
#include <vector>

#include "app/Resource.h"
#include "tests/e2e/Dragger.h"
#include "tests/e2e/Driver.h"
#include "tests/e2e/Installation.h"
#include "tests/e2e/ShellLinkFile.h"

using e2e::CInstallation;
using e2e::CProgramRun;

namespace {

const char kDialogTitle[] = "Linkwright v1.0 for Zelmardeck";
const char kNotice[] =
    " currently modified. Do not delete the file \"ShortcutList\" or Zelmardeck\r\n"
    "will not be able to restore these shortcuts if you uninstall.\r\n";

std::string ReadBytes(const std::string& path)
{
    std::string bytes;
    HANDLE file = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return "<missing>";
    char buffer[4096];
    DWORD got = 0;
    while (ReadFile(file, buffer, sizeof(buffer), &got, nullptr) && got > 0)
        bytes.append(buffer, got);
    CloseHandle(file);
    return bytes;
}

// An installation with the parent, two profiles, a game and a plain shortcut to it, with
// Linkwright running on it.
class RoadTest : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(installation.IsReady());
        ASSERT_TRUE(installation.AddProgram());
        ASSERT_TRUE(installation.AddParent());
        ASSERT_TRUE(installation.AddProfile("wheel.idprof", "Racing Wheel"));
        ASSERT_TRUE(installation.AddProfile("yoke.idprof", "Flight Yoke"));
        ASSERT_TRUE(installation.AddProfile("stick.idprof", "Arcade Stick"));
        ASSERT_TRUE(installation.AddFolder("Games"));
        ASSERT_TRUE(installation.AddGame("Games\\Racer.exe"));
        ASSERT_TRUE(installation.AddFolder("Links"));
        game.target = installation.Path("Games\\Racer.exe");
        game.arguments = "-map \"C:\\My Maps\\one.map\" -fast";
        game.workDir = installation.Path("Games");
        game.iconPath = game.target;
        link = installation.Path("Links\\Racer.lnk");
        ASSERT_EQ(e2e::WriteShortcut(link, game), S_OK);
    }

    void StartProgram()
    {
        ASSERT_TRUE(run.Start(installation.Path("Linkwright.exe"), "", installation.Folder()));
        dialog = run.WaitForWindow(kDialogTitle, 30000);
        ASSERT_NE(dialog, nullptr) << "the dialog did not show";
    }

    void TearDown() override
    {
        if (dialog && IsWindow(dialog)) {
            EXPECT_TRUE(e2e::Press(dialog, IDCANCEL));
            EXPECT_TRUE(run.WaitForEnd(20000)) << "Close did not end the program";
        }
    }

    // The window as it is on the screen now, kept for people as <name>.bmp.
    void Picture(HWND window, const std::string& name) const
    {
        Sleep(300);   // let it finish painting
        EXPECT_TRUE(e2e::SaveWindowPicture(window, e2e::ArtifactFolder() + "\\" + name + ".bmp")) << name;
    }

    bool Enabled(int id) const { return e2e::IsItemEnabled(dialog, id); }

    void Pick(const std::string& name)
    {
        const std::vector<std::string> entries = e2e::ComboEntries(e2e::Item(dialog, IDC_PROFILE_COMBO));
        int index = 0;
        while (index < static_cast<int>(entries.size()) && entries[index] != name)
            ++index;
        ASSERT_LT(index, static_cast<int>(entries.size())) << name;
        SendMessageA(e2e::Item(dialog, IDC_PROFILE_COMBO), CB_SETCURSEL, index, 0);
    }

    // Drops the shortcut, adds one profile and saves; true once Save has gone through.
    bool DropAddAndSave(const std::string& profile)
    {
        DWORD effect = 0;
        if (!e2e::DragFiles(dialog, {link}, true, &effect) || !e2e::WaitUntil([&] { return Enabled(IDC_ADD); }))
            return false;
        return Add(profile) && e2e::Press(dialog, IDOK);
    }

    int Rows() const
    {
        return static_cast<int>(SendMessageA(e2e::Item(dialog, IDC_SELECTED_LIST), LVM_GETITEMCOUNT, 0, 0));
    }

    // Picks a profile and presses Add, then waits for its row. The press is posted while the
    // pick is sent, and a sent message overtakes a posted one: a second pick must wait.
    bool Add(const std::string& name)
    {
        const int before = Rows();
        Pick(name);
        return e2e::Press(dialog, IDC_ADD) && e2e::WaitUntil([&] { return Rows() == before + 1; });
    }

    // A drop whose analysis shows a message box: the box's text, answered with OK.
    std::string DropExpectingBox(const std::string& path, const std::string& caption)
    {
        e2e::CDrag drag;
        drag.Start(dialog, {path}, true);
        const HWND box = run.WaitForWindow(caption, 15000);
        e2e::MessageBoxFacts facts;
        if (!box || !e2e::ReadMessageBox(box, &facts))
            return "<no box \"" + caption + "\">";
        EXPECT_TRUE(e2e::Press(box, IDOK));
        DWORD effect = 0;
        EXPECT_TRUE(drag.Finish(20000, &effect));
        return facts.text;
    }

    CInstallation installation;
    CProgramRun run;
    HWND dialog = nullptr;
    e2e::ShortcutFacts game;
    std::string link;
};

// Pictures of every state and of the help dialog are taken on the way.
TEST_F(RoadTest, DropSaveDropAgainAndRestore)
{
    StartProgram();
    Picture(dialog, "state-empty");
    ASSERT_TRUE(e2e::Press(dialog, IDC_HELP_BUTTON));
    const HWND help = run.WaitForWindow("Help for Linkwright", 15000);
    ASSERT_NE(help, nullptr);
    Picture(help, "help-dialog");
    ASSERT_TRUE(e2e::Press(help, IDOK));
    ASSERT_TRUE(e2e::WaitUntil([&] { return !IsWindow(help); }));

    DWORD effect = 0;
    ASSERT_TRUE(e2e::DragFiles(dialog, {link}, true, &effect));
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_COPY));
    ASSERT_TRUE(e2e::WaitUntil([&] { return Enabled(IDC_ADD); })) << "the dropped shortcut was not taken";
    EXPECT_EQ(e2e::WindowText(e2e::Item(dialog, IDC_SHORTCUT_NAME)), "Racer");
    Picture(dialog, "state-plain");

    ASSERT_TRUE(Add("Racing Wheel"));
    ASSERT_TRUE(Add("Flight Yoke"));
    EXPECT_TRUE(Enabled(IDOK));
    Picture(dialog, "state-picking");
    ASSERT_TRUE(e2e::Press(dialog, IDOK));
    ASSERT_TRUE(e2e::WaitUntil([&] { return Enabled(IDC_RESTORE); }) && e2e::WaitIdle(dialog)) << "Save did not finish";

    e2e::ShortcutFacts saved;
    ASSERT_EQ(e2e::ReadShortcut(link, &saved), S_OK);
    EXPECT_EQ(saved.target, installation.Path("Zelmar.exe"));
    EXPECT_EQ(saved.workDir, installation.Folder());
    EXPECT_EQ(saved.arguments, "profile=\"Racing Wheel\" profile=\"Flight Yoke\" target=\"" + game.target +
                                   "\" targetDir=\"" + game.workDir + "\" args=\"-map [C:\\My Maps\\one.map] -fast\"");
    EXPECT_EQ(saved.iconPath, game.iconPath);
    EXPECT_EQ(ReadBytes(installation.Path("ShortcutList")), e2e::ShortcutListBytes({link}));
    EXPECT_EQ(ReadBytes(installation.Path("ShortcutList.txt")), std::string("1 Shortcut") + kNotice + "\r\n" + link);

    ASSERT_TRUE(e2e::DragFiles(dialog, {link}, false, &effect));
    ASSERT_TRUE(e2e::WaitUntil([&] { return Rows() == 2 && e2e::IsItemVisible(dialog, IDC_ENABLED_LABEL); }))
        << "the enhanced shortcut was not recognised";
    Picture(dialog, "state-enhanced");
    // A change that Restore throws away.
    ASSERT_TRUE(Add("Arcade Stick"));
    EXPECT_TRUE(Enabled(IDOK));
    Picture(dialog, "state-edited");
    ASSERT_TRUE(e2e::Press(dialog, IDC_RESTORE));
    ASSERT_TRUE(e2e::WaitUntil([&] { return !Enabled(IDC_RESTORE); }) && e2e::WaitIdle(dialog)) << "Restore did not finish";

    e2e::ShortcutFacts restored;
    ASSERT_EQ(e2e::ReadShortcut(link, &restored), S_OK);
    EXPECT_EQ(restored.target, game.target);
    EXPECT_EQ(restored.arguments, game.arguments);
    EXPECT_EQ(restored.workDir, game.workDir);
    EXPECT_EQ(ReadBytes(installation.Path("ShortcutList")), "");
    EXPECT_EQ(ReadBytes(installation.Path("ShortcutList.txt")), std::string("0 Shortcuts") + kNotice);
}

TEST_F(RoadTest, RefusedDropsChangeNothing)
{
    e2e::ShortcutFacts parent;
    parent.target = installation.Path("Zelmar.exe");
    ASSERT_EQ(e2e::WriteShortcut(installation.Path("Links\\Parent.lnk"), parent), S_OK);
    e2e::ShortcutFacts self;
    self.target = installation.Path("Linkwright.exe");
    ASSERT_EQ(e2e::WriteShortcut(installation.Path("Links\\Self.lnk"), self), S_OK);
    ASSERT_TRUE(installation.WriteFile("Links\\Broken.lnk", "not a shortcut"));
    ASSERT_TRUE(installation.WriteFile("Links\\Notes.txt", "text"));
    StartProgram();

    DWORD effect = DROPEFFECT_COPY;
    ASSERT_TRUE(e2e::DragFiles(dialog, {installation.Path("Links\\Notes.txt"), link}, true, &effect));
    EXPECT_EQ(effect, static_cast<DWORD>(DROPEFFECT_NONE));
    EXPECT_EQ(e2e::WindowText(e2e::Item(dialog, IDC_SHORTCUT_NAME)), "");

    EXPECT_EQ(DropExpectingBox(installation.Path("Links\\Parent.lnk"), "Zelmardeck Shortcut"),
              "This is a shortcut to Zelmardeck itself, and cannot be modified.");
    EXPECT_EQ(DropExpectingBox(installation.Path("Links\\Self.lnk"), "Linkwright"),
              "This is a shortcut to this program, and cannot be modified.");
    EXPECT_FALSE(Enabled(IDC_ADD));
    EXPECT_EQ(DropExpectingBox(installation.Path("Links\\Broken.lnk"), "Load Failure"),
              "Could not load or resolve the link for this shortcut.\r\n\r\nMake sure it's not in use, that the "
              "target program was not deleted or moved, and try again.");
    EXPECT_FALSE(installation.Exists("ShortcutList"));
}

// Other quote characters, a read-only shortcut, and the saved shortcut started through the
// shell: the parent program gets exactly the line that was saved.
TEST_F(RoadTest, AReadOnlyShortcutIsEnhancedWithTheChosenQuotesAndStartsTheParent)
{
    ASSERT_TRUE(installation.WriteFile("QuoteChars.txt", "LeftArgQuote={\r\nRightArgQuote=}\r\n"));
    game.readOnly = true;
    ASSERT_EQ(e2e::WriteShortcut(link, game), S_OK);
    StartProgram();
    ASSERT_TRUE(DropAddAndSave("Flight Yoke"));
    ASSERT_TRUE(e2e::WaitUntil([&] { return Enabled(IDC_RESTORE); }) && e2e::WaitIdle(dialog)) << "Save did not finish";

    e2e::ShortcutFacts saved;
    ASSERT_EQ(e2e::ReadShortcut(link, &saved), S_OK);
    EXPECT_FALSE(saved.readOnly);
    const std::string line = "profile=\"Flight Yoke\" target=\"" + game.target + "\" targetDir=\"" + game.workDir +
                             "\" args=\"-map {C:\\My Maps\\one.map} -fast\"";
    EXPECT_EQ(saved.arguments, line);

    const HINSTANCE started = ShellExecuteA(nullptr, "open", link.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    ASSERT_GT(reinterpret_cast<INT_PTR>(started), 32);
    ASSERT_TRUE(e2e::WaitUntil([&] { return installation.Exists("Zelmar.log"); })) << "the parent did not start";
    Sleep(500);
    const std::string log = ReadBytes(installation.Path("Zelmar.log"));
    EXPECT_NE(log.find(" " + line + "\r\n"), std::string::npos) << log;
}

// A shortcut that cannot be written: the message, and nothing changes in the dialog.
TEST_F(RoadTest, AFailedSaveShowsTheWriteErrorAndKeepsSaveOn)
{
    StartProgram();
    DWORD effect = 0;
    ASSERT_TRUE(e2e::DragFiles(dialog, {link}, true, &effect));
    ASSERT_TRUE(e2e::WaitUntil([&] { return Enabled(IDC_ADD); }));
    ASSERT_TRUE(Add("Racing Wheel"));
    // A folder where the shortcut was: the shell cannot write the file.
    ASSERT_TRUE(DeleteFileA(link.c_str()));
    ASSERT_TRUE(CreateDirectoryA(link.c_str(), nullptr));

    ASSERT_TRUE(e2e::Press(dialog, IDOK));
    const HWND box = run.WaitForWindow("Shortcut Write Error", 15000);
    ASSERT_NE(box, nullptr);
    e2e::MessageBoxFacts facts;
    ASSERT_TRUE(e2e::ReadMessageBox(box, &facts));
    EXPECT_EQ(facts.text, "There was an unknown problem while trying to modify this shortcut. Try again or modify the "
                          "shortcut by hand.");
    EXPECT_STREQ(e2e::MessageIconName(facts.icon), "exclamation");
    ASSERT_TRUE(e2e::Press(box, IDOK));
    ASSERT_TRUE(e2e::WaitUntil([&] { return IsWindowEnabled(dialog) != 0; }) && e2e::WaitIdle(dialog));
    EXPECT_TRUE(Enabled(IDOK));
    EXPECT_FALSE(Enabled(IDC_RESTORE));
    EXPECT_FALSE(installation.Exists("ShortcutList"));
}

}  // namespace
