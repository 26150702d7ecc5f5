// Linkwright.exe under Wine, used as a person uses it: started in a fresh installation, worked
// with real drags and clicks, and checked on the screen, on the shortcut as the shell reads it
// and on the bytes of the list files. Few and slow; the logic behind them has its unit tests.
#include <gtest/gtest.h>

#include "tests/e2e/Driver.h"

#include <shellapi.h>

namespace e2e {
namespace {

const char kListNotice[] = " currently modified. Do not delete the file \"ShortcutList\" or Zelmardeck\r\n"
                           "will not be able to restore these shortcuts if you uninstall.\r\n";
// Made in neither the sorted nor the byte order; two names differ in letter case only.
const char* const kProfiles[][2] = {{"wheel.idprof", "Racing Wheel"}, {"yoke.idprof", "Flight Yoke"},
                                    {"stick.idprof", "Arcade Stick"}, {"loud.idprof", "flight yoke"}};

std::string Quoted(const std::string& text) { return "\"" + text + "\""; }

// ShortcutList's bytes: each path as UTF-16 units, then one zero byte.
std::string ListBytes(const Names& paths)
{
    std::string bytes;
    for (const std::filesystem::path path : paths)
        bytes += std::string(reinterpret_cast<const char*>(path.c_str()), 2 * path.native().size()) + '\0';
    return bytes;
}

// A fresh installation in a folder of its own: Linkwright.exe beside the stand-in Zelmar.exe,
// the profiles, a game and a plain shortcut to it. The steps wait for what they bring about.
struct ProgramTest : testing::Test, Session {
    void SetUp() override
    {
        static int count = 0;
        const std::string own = "lw-e2e-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(++count);
        folder = (std::filesystem::temp_directory_path() / own).string();
        link = Path("Links\\Racer.lnk");
        ASSERT_TRUE(RemoveFolder());   // left by an earlier run: process ids repeat under Wine
        for (const char* sub : {"", "\\Profiles", "\\Games", "\\Links"})
            ASSERT_TRUE(CreateDirectoryA((folder + sub).c_str(), nullptr)) << folder << sub;
        for (const auto& [from, to] :
             {std::pair{LW_LINKWRIGHT_EXE, "Linkwright.exe"}, {LW_ZELMAR_EXE, "Zelmar.exe"}, {LW_ZELMAR_EXE, "Games\\Racer.exe"}})
            ASSERT_TRUE(CopyFileA(from, Path(to).c_str(), FALSE)) << to;
        for (const auto& [file, name] : kProfiles) {
            CRun tool;
            ASSERT_TRUE(tool.Start(LW_MAKE_PROFILE_EXE, Quoted(Path("Profiles\\") + file) + " " + Quoted(name), "")
                        && tool.WaitForEnd(60000) && ReadBytes(Path("Profiles\\") + file) != "<missing>");
        }
        game = Shortcut{Path("Games\\Racer.exe"), "-map \"C:\\My Maps\\one.map\" -fast", Path("Games"),
                        Path("Games\\Racer.exe")};
        ASSERT_TRUE(WriteShortcut(link, game));
    }

    void TearDown() override
    {
        EXPECT_TRUE(!IsWindow(dialog) || (Press(dialog, IDCANCEL) && run.WaitForEnd(20000))) << "Close did not end it";
        // A program's file may stay in use for a moment after its process ended.
        EXPECT_TRUE(WaitUntil([&] { return RemoveFolder(); }, 10000)) << folder;
    }

    // The shell's delete takes read-only files too; true once the folder is gone.
    bool RemoveFolder() const
    {
        const std::string from = folder + '\0';   // names, each ended by a zero, then one more zero
        SHFILEOPSTRUCTA remove{nullptr, FO_DELETE, from.c_str(), nullptr, FOF_NO_UI};
        return SHFileOperationA(&remove) == 0 || GetFileAttributesA(folder.c_str()) == INVALID_FILE_ATTRIBUTES;
    }

    std::string Path(const std::string& relative) const { return folder + "\\" + relative; }
    // The shortcut as the shell reads it, then the bytes of both list files.
    std::string Files() const { return ReadShortcut(link) + ReadBytes(Path("ShortcutList")) + ReadBytes(Path("ShortcutList.txt")); }

    void Start()
    {
        ASSERT_TRUE(run.Start(Path("Linkwright.exe"), "", folder) && (dialog = run.WaitForWindow(kDialogTitle, 30000)));
    }

    // The box that shows with this caption, as "caption|text|icon" (a message box's text is
    // its control of id 0xFFFF; only an icon control answers with an icon), once it is owned
    // by the dialog and answered with OK.
    std::string Box(const std::string& caption)
    {
        const HWND box = run.WaitForWindow(caption);
        std::string icon = "|no icon";
        for (HWND child = nullptr; box && (child = FindWindowExA(box, child, nullptr, nullptr));)
            icon = Ask(child, STM_GETICON, 0, 0) > 0 ? "|icon" : icon;
        const std::string shown = box ? Text(box) + "|" + Text(GetDlgItem(box, 0xFFFF)) + icon : "no box";
        const bool answered = box && Text(GetWindow(box, GW_OWNER)) == kDialogTitle && Press(box, IDOK)
                              && WaitUntil([&] { return !IsWindow(box); });
        return answered ? shown : shown + " (not answered)";
    }

    // A picture of the window, for people.
    void Snap(HWND window, const std::string& name) const
    {
        EXPECT_TRUE(Picture(window, LW_ARTIFACT_DIR "/" + name + ".ppm")) << name;
    }

    std::string folder, link;
    Shortcut game;
    CRun run;
};

// The shortcut starts read-only, and is saved without the bit. Pictures of every state and of
// help are taken on the way. A tip shows for the control under a resting pointer, disabled or
// not, a combo box's edit part counts as the combo box, and a key hides the tip. A drop that
// fails to load changes nothing: Restore then restores the shortcut shown. Restore-all ends it.
TEST_F(ProgramTest, RoadOfOneShortcut)
{
    ASSERT_TRUE(WriteBytes(Path("Links\\Notes.txt"), "text") && WriteBytes(Path("Links\\Broken.lnk"), "not a shortcut")
                && SetFileAttributesA(link.c_str(), FILE_ATTRIBUTE_READONLY));
    const auto tip = [&](int id, const char* text) { return RestPointer(dialog, Centre(Control(id))) ? run.WaitForWindow(text) : nullptr; };
    Start();
    const Names entries = ComboEntries(Control(IDC_PROFILE_COMBO));
    const auto byName = [](const std::string& a, const std::string& b) { return lstrcmpiA(a.c_str(), b.c_str()) < 0; };
    EXPECT_TRUE(entries.size() == 4 && std::is_sorted(entries.begin(), entries.end(), byName)) << testing::PrintToString(entries);
    Snap(dialog, "state-empty");
    ASSERT_TRUE(Press(dialog, IDC_HELP_BUTTON));
    const HWND help = run.WaitForWindow("Help for Linkwright");
    Snap(help, "help-dialog");
    ASSERT_TRUE(Press(help, IDOK) && WaitUntil([&] { return !IsWindow(help); }));
    const HWND shown = tip(IDOK, "Press this button to save changes made to the current shortcut. Changes are not saved "
                                 "until this button is pressed.");
    // Hidden by the key well before its 5 s are over.
    EXPECT_TRUE(shown && PressKey(dialog, VK_SHIFT, 1) && WaitUntil([&] { return !IsWindowVisible(shown); }, 1500));

    // Of several names only the first counts: the shortcut is taken.
    ASSERT_TRUE(Drop({link, Path("Links\\Notes.txt")}, [&] { return Enabled(IDC_ADD); }));
    EXPECT_EQ(std::to_string(drag.get()) + Text(Control(IDC_SHORTCUT_NAME)), std::to_string(DROPEFFECT_COPY) + "Racer");
    Snap(dialog, "state-plain");
    EXPECT_TRUE(tip(IDC_PROFILE_COMBO, "This is a list of available profiles from Zelmardeck."));

    // Written in the order added.
    ASSERT_TRUE(Add("Racing Wheel") && Add("Flight Yoke"));
    Snap(dialog, "state-picking");
    ASSERT_TRUE(Save());
    Snap(dialog, "state-enhanced");
    const std::string tail = " target=" + Quoted(game.target) + " targetDir=" + Quoted(game.folder)
                             + " args=\"-map [C:\\My Maps\\one.map] -fast\"";
    Shortcut enhanced{Path("Zelmar.exe"), "profile=\"Racing Wheel\" profile=\"Flight Yoke\"" + tail, folder, game.icon};
    const std::string lists = ListBytes({link}) + "1 Shortcut" + kListNotice + "\r\n" + link;
    EXPECT_EQ(Files(), Describe(enhanced) + lists);
    // Started through the shell, it gives the parent exactly the line that was saved.
    ASSERT_GT(INT_PTR(ShellExecuteA(nullptr, "open", link.c_str(), nullptr, nullptr, SW_SHOWNORMAL)), 32);
    const auto logged = [&] { return ReadBytes(Path("Zelmar.log")).find(" " + enhanced.arguments + "\r\n") != std::string::npos; };
    EXPECT_TRUE(WaitUntil(logged)) << ReadBytes(Path("Zelmar.log"));

    ASSERT_TRUE(Add("Arcade Stick"));
    Snap(dialog, "state-edited");
    // Shown sorted, the last row is Racing Wheel. A person selects it from the first row (the list
    // has no header) with arrow keys and presses Remove: exactly that row goes.
    const HWND list = Control(IDC_SELECTED_LIST);
    POINT first{20, 4};
    ClientToScreen(list, &first);
    ASSERT_TRUE(ClickAt(list, first) && PressKey(list, VK_DOWN, 2)
                && WaitUntil([&] { return Ask(list, LVM_GETNEXTITEM, -1, LVNI_SELECTED) == 2; })
                && Click(IDC_REMOVE, [&] { return Rows() == 2; }) && Ask(list, LVM_GETSELECTEDCOUNT, 0, 0) == 0);
    ASSERT_TRUE(Save());
    enhanced.arguments = "profile=\"Flight Yoke\" profile=\"Arcade Stick\"" + tail;
    EXPECT_EQ(Files(), Describe(enhanced) + lists);

    Drag({Path("Links\\Broken.lnk")});
    EXPECT_EQ(Box("Load Failure"), "Load Failure|Could not load or resolve the link for this shortcut.\r\n\r\nMake sure it's "
                                   "not in use, that the target program was not deleted or moved, and try again.|no icon");
    ASSERT_TRUE(Dropped([&] { return IsWindowEnabled(dialog) != 0; }) && Text(Control(IDC_SHORTCUT_NAME)) == "Racer");
    ASSERT_TRUE(Click(IDC_RESTORE, [&] { return !Enabled(IDC_RESTORE) && Rows() == 0; }));
    EXPECT_EQ(Files(), Describe(game) + "0 Shortcuts" + kListNotice);

    // Characters beyond the code page (Ω, ł and a CJK character), read through the shell's wide
    // interface: refused at the drop, untouched.
    const std::string world = "\u03A9mega \u0142\u00F3d\u017A \u6E38", odd = Path("Links\\World.lnk");
    ASSERT_TRUE(WriteShortcut(odd, {game.target, "-title " + world + " -x", Path("Games\\") + world}));
    const std::string before = ReadBytes(odd);
    Drag({odd});
    EXPECT_EQ(Box("Unsupported Characters"), "Unsupported Characters|This shortcut holds characters that Linkwright "
                                             "cannot keep, and cannot be modified.|no icon");
    ASSERT_TRUE(Dropped([&] { return IsWindowEnabled(dialog) != 0; }));
    EXPECT_EQ(ReadBytes(odd), before);

    // Enhanced again, made read-only and closed: a start with -RestoreAll shows no window, puts
    // it back and takes both list files away.
    ASSERT_TRUE(Drop({link}, [&] { return Enabled(IDC_ADD); }) && Add("Flight Yoke") && Save()
                && SetFileAttributesA(link.c_str(), FILE_ATTRIBUTE_READONLY) && Press(dialog, IDCANCEL) && run.WaitForEnd(20000));
    CRun restoreAll;
    ASSERT_TRUE(restoreAll.Start(Path("Linkwright.exe"), "-restoreall", folder));
    EXPECT_TRUE(!restoreAll.WaitForWindow("", 30000) && restoreAll.WaitForEnd(0)) << "a window showed, or the run did not end";
    EXPECT_EQ(Files(), Describe(game) + "<missing><missing>");
}

}  // namespace
}  // namespace e2e
