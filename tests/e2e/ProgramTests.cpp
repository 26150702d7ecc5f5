// Linkwright.exe itself under Wine, used as a person uses it: started in a fresh
// installation, looked at through its windows, closed with its buttons. These checks are few
// and slow; the logic behind them is covered by the unit tests.
#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

#include "app/Resource.h"
#include "tests/e2e/Controls.h"
#include "tests/e2e/Driver.h"
#include "tests/e2e/Installation.h"
#include "tests/e2e/ShellLinkFile.h"

using e2e::CInstallation;
using e2e::CProgramRun;
using e2e::kDialogTitle;

namespace {

constexpr DWORD kStartMs = 30000;
constexpr DWORD kEndMs = 20000;

// Waits for the program to end and gives the titles of all visible top-level windows it
// showed meanwhile. ended tells whether it ended in time.
std::vector<std::string> TitlesShownUntilEnd(const CProgramRun& run, DWORD timeoutMs, bool* ended)
{
    std::vector<std::string> titles;
    const DWORD start = GetTickCount();
    for (;;) {
        for (HWND window : run.TopWindows()) {
            const std::string title = e2e::WindowText(window);
            if (std::find(titles.begin(), titles.end(), title) == titles.end())
                titles.push_back(title);
        }
        *ended = run.HasEnded();
        if (*ended || GetTickCount() - start >= timeoutMs)
            return titles;
        Sleep(50);
    }
}

bool Contains(const std::vector<std::string>& texts, const std::string& text)
{
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

// Profiles are written in an order that is neither the sorted order nor, for a case-blind
// sort, the byte order, so that only the combo box's own sorting gives kSortedNames.
struct ProfileFile {
    const char* file;
    const char* name;
};
const ProfileFile kProfiles[] = {
    {"wheel.idprof", "Racing Wheel"},
    {"stick.idprof", "arcade stick"},
    {"yoke.idprof", "Flight Yoke"},
};
const std::vector<std::string> kSortedNames = {"arcade stick", "Flight Yoke", "Racing Wheel"};

bool AddProfiles(CInstallation& installation)
{
    for (const ProfileFile& profile : kProfiles)
        if (!installation.AddProfile(profile.file, profile.name))
            return false;
    return true;
}

TEST(Program, OpensOnItsProfilesWithNothingToEditAndEndsOnClose)
{
    CInstallation installation;
    ASSERT_TRUE(installation.IsReady());
    ASSERT_TRUE(installation.AddProgram());
    ASSERT_TRUE(installation.AddParent());
    ASSERT_TRUE(AddProfiles(installation));

    CProgramRun run;
    ASSERT_TRUE(run.Start(installation.Path("Linkwright.exe"), "", installation.Folder()));
    const HWND dialog = run.WaitForWindow(kDialogTitle, kStartMs);
    ASSERT_NE(dialog, nullptr) << "the dialog did not show";

    const HWND combo = e2e::Item(dialog, IDC_PROFILE_COMBO);
    ASSERT_NE(combo, nullptr);
    EXPECT_EQ(e2e::ComboEntries(combo), kSortedNames);
    EXPECT_EQ(e2e::ComboCurrent(combo), 0);

    // Nothing loaded yet: every control that works on a shortcut is off.
    for (int id : {IDC_PROFILE_COMBO, IDC_ADD, IDC_SELECTED_LIST, IDC_REMOVE, IDOK, IDC_RESTORE})
        EXPECT_FALSE(e2e::IsItemEnabled(dialog, id)) << "control " << id;
    EXPECT_FALSE(e2e::IsItemVisible(dialog, IDC_ENABLED_LABEL));
    EXPECT_TRUE(e2e::IsItemEnabled(dialog, IDC_HELP_BUTTON));
    EXPECT_TRUE(e2e::IsItemEnabled(dialog, IDCANCEL));
    EXPECT_EQ(e2e::WindowText(e2e::Item(dialog, IDCANCEL)), "Close");

    Sleep(500);   // let it finish painting before the picture is taken
    EXPECT_TRUE(e2e::SaveWindowPicture(dialog, e2e::ArtifactFolder() + "\\linkwright-dialog.bmp"));

    ASSERT_TRUE(e2e::Press(dialog, IDCANCEL));
    EXPECT_TRUE(run.WaitForEnd(kEndMs)) << "Close did not end the program";
}

// A start-up that is refused shows one message box, owned by the dialog, and never the
// dialog itself; -RestoreAll is not looked at then, so listed shortcuts stay as they are.
struct RefusedStart {
    const char* what;
    bool parent;
    bool profiles;
    const char* arguments;
    const char* caption;
    const char* text;
    e2e::MessageIcon icon;
};

void PrintTo(const RefusedStart& row, std::ostream* out)
{
    *out << row.what;
}

const char kNotFoundText[] = "Linkwright could not find Zelmardeck. Please re-install Zelmardeck.";
const char kNoProfilesText[] =
    "Linkwright could not find any Zelmardeck profiles.\n"
    "Create a profile for the intended application, and restart Linkwright";

class RefusedStartTest : public testing::TestWithParam<RefusedStart> {};

TEST_P(RefusedStartTest, ShowsItsMessageAndNeverTheDialog)
{
    const RefusedStart& row = GetParam();
    CInstallation installation;
    ASSERT_TRUE(installation.IsReady());
    ASSERT_TRUE(installation.AddProgram());
    if (row.parent) {
        ASSERT_TRUE(installation.AddParent());
    }
    ASSERT_TRUE(installation.AddFolder("Profiles"));
    if (row.profiles) {
        ASSERT_TRUE(AddProfiles(installation));
    }
    ASSERT_TRUE(installation.AddGame("Game.exe"));
    e2e::ShortcutFacts enhanced;
    enhanced.target = installation.Path("Zelmar.exe");
    enhanced.arguments = "profile=\"Racing Wheel\" target=\"" + installation.Path("Game.exe") + "\"";
    ASSERT_EQ(e2e::WriteShortcut(installation.Path("Game.lnk"), enhanced), S_OK);
    const std::string list = e2e::ShortcutListBytes({installation.Path("Game.lnk")});
    ASSERT_TRUE(installation.WriteFile("ShortcutList", list));

    CProgramRun run;
    ASSERT_TRUE(run.Start(installation.Path("Linkwright.exe"), row.arguments, installation.Folder()));
    const HWND box = run.WaitForWindow(row.caption, kStartMs);
    ASSERT_NE(box, nullptr) << "no message box \"" << row.caption << "\"";
    e2e::MessageBoxFacts facts;
    ASSERT_TRUE(e2e::ReadMessageBox(box, &facts));
    EXPECT_EQ(facts.text, row.text);
    EXPECT_STREQ(e2e::MessageIconName(facts.icon), e2e::MessageIconName(row.icon));
    EXPECT_EQ(facts.buttons, std::vector<std::string>{"OK"});
    const HWND owner = GetWindow(box, GW_OWNER);
    EXPECT_EQ(e2e::WindowText(owner), kDialogTitle) << "the box is not owned by the dialog";

    ASSERT_TRUE(e2e::Press(box, IDOK));
    bool ended = false;
    const std::vector<std::string> shown = TitlesShownUntilEnd(run, kEndMs, &ended);
    EXPECT_TRUE(ended) << "the program did not end after the message";
    EXPECT_FALSE(Contains(shown, kDialogTitle)) << "the dialog showed";

    EXPECT_TRUE(installation.Exists("ShortcutList"));
    e2e::ShortcutFacts after;
    ASSERT_EQ(e2e::ReadShortcut(installation.Path("Game.lnk"), &after), S_OK);
    EXPECT_EQ(after.target, enhanced.target);
    EXPECT_EQ(after.arguments, enhanced.arguments);
}

INSTANTIATE_TEST_SUITE_P(
    Program, RefusedStartTest,
    testing::Values(
        RefusedStart{"NoParent", false, true, "", "ZLD Not Found", kNotFoundText, e2e::MessageIcon::Exclamation},
        RefusedStart{"NoParentRestoreAll", false, true, "-RestoreAll", "ZLD Not Found", kNotFoundText,
                     e2e::MessageIcon::Exclamation},
        RefusedStart{"NoProfiles", true, false, "", "No Profiles", kNoProfilesText, e2e::MessageIcon::None},
        RefusedStart{"NoProfilesRestoreAll", true, false, "-RestoreAll", "No Profiles", kNoProfilesText,
                     e2e::MessageIcon::None}),
    [](const testing::TestParamInfo<RefusedStart>& row) { return std::string(row.param.what); });

TEST(Program, RestoreAllPutsListedShortcutsBackWithoutAWindow)
{
    CInstallation installation;
    ASSERT_TRUE(installation.IsReady());
    ASSERT_TRUE(installation.AddProgram());
    ASSERT_TRUE(installation.AddParent());
    ASSERT_TRUE(AddProfiles(installation));
    ASSERT_TRUE(installation.AddFolder("Games"));
    ASSERT_TRUE(installation.AddGame("Games\\Racer.exe"));
    ASSERT_TRUE(installation.AddFolder("Links"));
    const std::string parent = installation.Path("Zelmar.exe");
    const std::string game = installation.Path("Games\\Racer.exe");
    const std::string games = installation.Path("Games");

    // Enhanced with everything, read-only; its own arguments held a quoted path.
    e2e::ShortcutFacts full;
    full.target = parent;
    full.arguments = "profile=\"arcade stick\" profile=\"Flight Yoke\" target=\"" + game + "\" targetDir=\"" + games
                     + "\" args=\"-map [C:\\My Maps\\one.map] -fast\"";
    full.workDir = installation.Folder();
    full.iconPath = game;
    full.readOnly = true;
    // Enhanced with a target and a profile only, and no icon location of its own.
    e2e::ShortcutFacts bare;
    bare.target = parent;
    bare.arguments = "profile=\"Racing Wheel\" target=\"" + game + "\"";
    // Listed, but put back by hand since: a plain shortcut, left alone.
    e2e::ShortcutFacts plain;
    plain.target = game;
    plain.arguments = "-x \"1\"";
    plain.workDir = games;
    plain.iconPath = game;
    // Enhanced, but not in the list: the run goes by the list only.
    e2e::ShortcutFacts unlisted = bare;

    const std::string fullLink = installation.Path("Links\\Full.lnk");
    const std::string bareLink = installation.Path("Links\\Bare.lnk");
    const std::string plainLink = installation.Path("Links\\Plain.lnk");
    const std::string unlistedLink = installation.Path("Links\\Unlisted.lnk");
    ASSERT_EQ(e2e::WriteShortcut(fullLink, full), S_OK);
    ASSERT_EQ(e2e::WriteShortcut(bareLink, bare), S_OK);
    ASSERT_EQ(e2e::WriteShortcut(plainLink, plain), S_OK);
    ASSERT_EQ(e2e::WriteShortcut(unlistedLink, unlisted), S_OK);
    const std::string list = e2e::ShortcutListBytes(
        {bareLink, fullLink, installation.Path("Links\\Gone.lnk"), plainLink});
    ASSERT_TRUE(installation.WriteFile("ShortcutList", list));
    ASSERT_TRUE(installation.WriteFile("ShortcutList.txt", "4 Shortcuts currently modified."));
    e2e::ShortcutFacts plainBefore;
    ASSERT_EQ(e2e::ReadShortcut(plainLink, &plainBefore), S_OK);

    CProgramRun run;
    ASSERT_TRUE(run.Start(installation.Path("Linkwright.exe"), "-restoreall", installation.Folder()));
    bool ended = false;
    const std::vector<std::string> shown = TitlesShownUntilEnd(run, kStartMs, &ended);
    ASSERT_TRUE(ended) << "the restore-all run did not end";
    EXPECT_TRUE(shown.empty()) << "a window showed: " << shown.front();

    e2e::ShortcutFacts after;
    ASSERT_EQ(e2e::ReadShortcut(fullLink, &after), S_OK);
    EXPECT_EQ(after.target, game);
    EXPECT_EQ(after.arguments, "-map \"C:\\My Maps\\one.map\" -fast");
    EXPECT_EQ(after.workDir, games);
    EXPECT_FALSE(after.readOnly);

    ASSERT_EQ(e2e::ReadShortcut(bareLink, &after), S_OK);
    EXPECT_EQ(after.target, game);
    EXPECT_EQ(after.arguments, "");
    EXPECT_EQ(after.workDir, "");

    ASSERT_EQ(e2e::ReadShortcut(plainLink, &after), S_OK);
    EXPECT_EQ(after.target, plainBefore.target);
    EXPECT_EQ(after.arguments, plainBefore.arguments);
    EXPECT_EQ(after.workDir, plainBefore.workDir);

    ASSERT_EQ(e2e::ReadShortcut(unlistedLink, &after), S_OK);
    EXPECT_EQ(after.target, parent);
    EXPECT_EQ(after.arguments, unlisted.arguments);

    EXPECT_FALSE(installation.Exists("ShortcutList"));
    EXPECT_FALSE(installation.Exists("ShortcutList.txt"));
    EXPECT_FALSE(installation.Exists("Links\\Gone.lnk"));
}

}  // namespace
