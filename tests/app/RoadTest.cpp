// A shortcut's road through the dialog on the in-memory link object: the drop, the
// analysis, Save and Restore with the registry files, the refusals, and the restore-all run.

#include "AppFixture.h"

#include <fstream>
#include <iterator>

#include "platform/model/ShellLinkModel.h"

namespace {

using ShellLinkModel::LinkFile;
using ShellLinkModel::Wide;

const char Notice[] =
    " currently modified. Do not delete the file \"ShortcutList\" or Zelmardeck\r\n"
    "will not be able to restore these shortcuts if you uninstall.\r\n";

// A CF_HDROP block: the DROPFILES record, then the names, each terminated, and one more zero.
std::string DropFiles(const std::vector<std::string>& names, bool wide)
{
    std::string block = std::string("\x14\0\0\0", 4) + std::string(12, '\0') +
                        std::string(wide ? "\x01\0\0\0" : "\0\0\0\0", 4);
    for (const std::string& name : names) {
        for (char ch : name) {
            block += ch;
            if (wide)
                block += '\0';
        }
        block += wide ? std::string(2, '\0') : std::string(1, '\0');
    }
    return block + (wide ? std::string(2, '\0') : std::string(1, '\0'));
}

class RoadTest : public AppFixture {
protected:
    void SetUp() override
    {
        AppFixture::SetUp();
        ShellLinkModel::Reset();
        WriteProfile("a.idprof", "Wheel");
        WriteProfile("b.idprof", "Yoke");
        game = {"C:\\Games\\race.exe", "-f \"a b\"", "C:\\Games", "C:\\Games\\race.ico", 2, "kept"};
        ShellLinkModel::PutFile(Wide(link), game);
    }

    // Drags names over the dialog and drops them; the posted analysis runs afterwards.
    bool Drop(CLinkDlg& dialog, const std::vector<std::string>& names, bool wide = true)
    {
        const std::string block = DropFiles(names, wide);
        const int effect = dialog.m_dropTarget.OnDragEnter(block.data(), block.size(), 0);
        const bool taken = dialog.m_dropTarget.OnDrop(dialog.m_dropTarget.OnDragOver(0));
        DialogModel().PumpMessages();
        return effect == DropEffectCopy && taken;
    }

    std::string ReadProgramFile(const std::string& name) const
    {
        std::ifstream in(nativeFolder + "/" + name, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }

    std::vector<std::string> Captions() const
    {
        std::vector<std::string> captions;
        for (const ModelMessageBox& box : DialogModel().messageBoxes)
            captions.push_back(box.caption);
        return captions;
    }

    const std::string link = "C:\\Links\\Race.lnk";
    LinkFile game;
};

TEST_F(RoadTest, DropSaveDropAgainAndRestore)
{
    CLinkDlg dialog;
    Run(dialog, [&](CModelWindow& window) {
        ASSERT_TRUE(Drop(dialog, {link}));
        EXPECT_STREQ("-f [a b]", dialog.m_args.Text());
        EXPECT_EQ("Race", window.Control(IDC_SHORTCUT_NAME)->text);
        EXPECT_TRUE(window.Control(IDC_ADD)->enabled);
        EXPECT_FALSE(window.Control(IDOK)->enabled);

        ASSERT_TRUE(window.SelectEntry(IDC_PROFILE_COMBO, 1));   // Yoke
        ASSERT_TRUE(window.Press(IDC_ADD));
        ASSERT_TRUE(window.SelectEntry(IDC_PROFILE_COMBO, 0));   // Wheel
        ASSERT_TRUE(window.Press(IDC_ADD));
        ASSERT_TRUE(window.Press(IDOK));
        LinkFile saved = ShellLinkModel::GetFile(Wide(link));
        EXPECT_EQ(ProgramPath("Zelmar.exe"), saved.path);
        EXPECT_EQ(folder, saved.workDir);
        EXPECT_EQ("profile=\"Yoke\" profile=\"Wheel\" target=\"C:\\Games\\race.exe\" targetDir=\"C:\\Games\" "
                  "args=\"-f [a b]\"",
                  saved.arguments);
        EXPECT_EQ(game.iconPath, saved.iconPath);
        EXPECT_EQ(2, saved.iconIndex);
        EXPECT_EQ(Wide(link), ReadProgramFile("ShortcutList"));
        EXPECT_EQ(std::string("1 Shortcut") + Notice + "\r\n" + link, ReadProgramFile("ShortcutList.txt"));
        EXPECT_FALSE(window.Control(IDOK)->enabled);
        EXPECT_TRUE(window.Control(IDC_RESTORE)->enabled);
        EXPECT_TRUE(window.Control(IDC_ENABLED_LABEL)->visible);

        ASSERT_TRUE(Drop(dialog, {link}));
        EXPECT_TRUE(dialog.m_isEnhanced);
        EXPECT_EQ((std::vector<std::string>{"Wheel", "Yoke"}), window.Control(IDC_SELECTED_LIST)->RowTexts());
        ASSERT_TRUE(window.Press(IDC_RESTORE));
        EXPECT_EQ(game, ShellLinkModel::GetFile(Wide(link)));
        EXPECT_EQ("", ReadProgramFile("ShortcutList"));
        EXPECT_EQ(std::string("0 Shortcuts") + Notice, ReadProgramFile("ShortcutList.txt"));
        EXPECT_TRUE(dialog.m_selected.IsEmpty());
        EXPECT_TRUE(window.Control(IDC_ADD)->enabled);   // it can be enhanced again at once
    });
    EXPECT_TRUE(DialogModel().messageBoxes.empty());
}

// Only the first name counts; its ".lnk" may be in any case, and ANSI names arrive as the
// same wide path.
TEST_F(RoadTest, TheDragDecidesByTheFirstNamesSuffix)
{
    ShellLinkModel::PutFile(Wide("C:\\Links\\GAME.LNK"), game);
    CLinkDlg dialog;
    Run(dialog, [&](CModelWindow&) {
        CLinkDropTarget& target = dialog.m_dropTarget;
        struct Case {
            std::vector<std::string> names;
            bool wide;
            int effect;
        } cases[] = {
            {{"C:\\Links\\GAME.LNK", "C:\\x.txt"}, true, DropEffectCopy},
            {{"C:\\Links\\GAME.LNK"}, false, DropEffectCopy},
            {{"C:\\x.txt", "C:\\Links\\GAME.LNK"}, true, DropEffectNone},
            {{"C:\\game.lnk.txt"}, true, DropEffectNone},
            {{"a.lnk"}, false, DropEffectCopy},
            {{".lnk"}, true, DropEffectCopy},
            {{"nk"}, true, DropEffectNone},
        };
        for (const Case& c : cases) {
            const std::string block = DropFiles(c.names, c.wide);
            EXPECT_EQ(c.effect, target.OnDragEnter(block.data(), block.size(), 0x0C)) << c.names[0];
            EXPECT_EQ(c.effect, target.OnDragOver(0)) << c.names[0];
        }
        EXPECT_EQ(DropEffectNone, target.OnDragEnter(nullptr, 0, 0));
        EXPECT_FALSE(target.OnDrop(DropEffectNone));
        EXPECT_TRUE(target.m_linkPath.IsEmpty());   // refused drags leave the path alone

        // A unit whose low byte is zero ends the name.
        std::string block = DropFiles({"C:\\a\x01.lnk"}, true);
        block[20 + 2 * 4] = '\0';
        EXPECT_EQ(DropEffectNone, target.OnDragEnter(block.data(), block.size(), 0));

        ASSERT_TRUE(Drop(dialog, {"C:\\Links\\GAME.LNK"}, false));
        EXPECT_EQ(Wide("C:\\Links\\GAME.LNK"), std::string(target.m_linkPath.Text(), target.m_linkPath.Length()));
    });
}

TEST_F(RoadTest, RefusedShortcutsAndAFailedLoadWriteNothing)
{
    ShellLinkModel::PutFile(Wide("C:\\p.lnk"), {"D:\\Other\\zelmar.EXE", "", "", "", 0, ""});
    ShellLinkModel::PutFile(Wide("C:\\q.lnk"), {"C:\\Zelmar.exe", "profile=\"Yoke\"", "", "", 0, ""});
    ShellLinkModel::PutFile(Wide("C:\\self.lnk"), {ProgramPath("LINKWRIGHT.exe"), "", "", "", 0, ""});
    CLinkDlg dialog;
    Run(dialog, [&](CModelWindow& window) {
        for (const char* path : {"C:\\p.lnk", "C:\\q.lnk", "C:\\self.lnk"}) {
            ASSERT_TRUE(Drop(dialog, {path}));
            EXPECT_FALSE(dialog.m_isEnhanced);
            EXPECT_FALSE(window.Control(IDC_ADD)->enabled) << path;
        }
        EXPECT_TRUE(dialog.m_target.IsEmpty());

        ASSERT_TRUE(Drop(dialog, {link}));
        ASSERT_TRUE(window.SelectEntry(IDC_PROFILE_COMBO, 0));
        ASSERT_TRUE(window.Press(IDC_ADD));
        EXPECT_FALSE(Drop(dialog, {"C:\\gone.lnk"}));
        EXPECT_TRUE(window.Press(IDOK));   // still on: the controls did not change
    });
    EXPECT_EQ(0, ShellLinkModel::SaveCount(Wide(link)));
    EXPECT_EQ((std::vector<std::string>{"Zelmardeck Shortcut", "Zelmardeck Shortcut", "Linkwright", "Load Failure",
                                        "Shortcut Write Error"}),
              Captions());
    const std::vector<ModelMessageBox>& boxes = DialogModel().messageBoxes;
    EXPECT_EQ("This is a shortcut to Zelmardeck itself, and cannot be modified.", boxes[0].text);
    EXPECT_EQ("This is a shortcut to this program, and cannot be modified.", boxes[2].text);
    EXPECT_EQ("Could not load or resolve the link for this shortcut.\r\n\r\nMake sure it's not in use, that the "
              "target program was not deleted or moved, and try again.",
              boxes[3].text);
    EXPECT_EQ(0u, boxes[3].flags);
    EXPECT_EQ("There was an unknown problem while trying to modify this shortcut. Try again or modify the "
              "shortcut by hand.",
              boxes[4].text);
    EXPECT_EQ(0x30u, boxes[4].flags);
}

// Enhanced, plain, parent without a line, this program, and one that no longer loads: only
// the first is written, nothing is shown, and both list files go.
TEST_F(RoadTest, RestoreAllPutsBackOnlyEnhancedShortcutsSilently)
{
    const LinkFile enhanced = {ProgramPath("Zelmar.exe"),
                               "profile=\"Yoke\" target=\"C:\\g.exe\" args=\"{x}\"", folder, "C:\\g.exe", 0, ""};
    const std::vector<std::pair<std::string, LinkFile>> listed = {
        {"C:\\a.lnk", enhanced},
        {"C:\\b.lnk", game},
        {"C:\\c.lnk", {ProgramPath("Zelmar.exe"), "", "", "", 0, ""}},
        {"C:\\d.lnk", {ProgramPath("Linkwright.exe"), "", "", "", 0, ""}},
    };
    std::string list;
    for (const auto& entry : listed) {
        ShellLinkModel::PutFile(Wide(entry.first), entry.second);
        list += Wide(entry.first);
    }
    WriteProgramFile("ShortcutList", list + Wide("C:\\e.lnk"));
    WriteProgramFile("ShortcutList.txt", "report");
    WriteProgramFile("QuoteChars.txt", "LeftArgQuote={\r\nRightArgQuote=}\r\n");

    for (const char* line : {"Linkwright.exe \"-RESTOREALL\"", "-RestoreAll"}) {
        DialogModel().commandLine = line;
        CLinkDlg dialog;
        bool shown = false;
        EXPECT_EQ(IDCANCEL, Run(dialog, [&](CModelWindow&) { shown = true; }));
        EXPECT_EQ(std::string(line).find("Linkwright") == 0, !shown) << line;
        if (shown)
            continue;   // the first token is the program's name, whatever it says
        EXPECT_TRUE(DialogModel().messageBoxes.empty());
        EXPECT_FALSE(dialog.m_restoringAll);
        EXPECT_FALSE(ProgramFileExists("ShortcutList"));
        EXPECT_FALSE(ProgramFileExists("ShortcutList.txt"));
    }
    const LinkFile restored = ShellLinkModel::GetFile(Wide("C:\\a.lnk"));
    EXPECT_EQ("C:\\g.exe", restored.path);
    EXPECT_EQ("\"x\"", restored.arguments);
    EXPECT_EQ("", restored.workDir);
    for (const char* untouched : {"C:\\b.lnk", "C:\\c.lnk", "C:\\d.lnk"})
        EXPECT_EQ(0, ShellLinkModel::SaveCount(Wide(untouched))) << untouched;
}

TEST_F(RoadTest, OtherTokensLeaveTheDialogOpen)
{
    for (const char* line : {"Linkwright.exe -RestoreAllX", "Linkwright.exe RestoreAll -Restore", ""}) {
        DialogModel().commandLine = line;
        CLinkDlg dialog;
        bool shown = false;
        Run(dialog, [&](CModelWindow&) { shown = true; });
        EXPECT_TRUE(shown) << line;
    }
}

}   // namespace
