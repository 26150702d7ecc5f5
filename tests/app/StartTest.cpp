// The start and end of the dialog, and what it shows beyond its controls: icons, colour,
// tool tips and help.

#include "AppFixture.h"

#include <algorithm>

#include "app/LinkApp.h"

namespace {

// The start in its order; Close pressed twice, which gives back everything once, IPersistFile
// ahead of IShellLinkA; then the destructor.
const Lines WholeRun = {
    "LoadAppIcon 128", "SetWindowIcon big 0xa1", "SetWindowIcon small 0xa1", "StartOle",
    "MakeFont 20 700 2 Arial 0xf1", "SetItemFont 1011 0xf1", "MakeFont 14 700 2 MS Sans Serif 0xf2",
    "SetItemFont 1012 0xf2", "ListInsertColumn 1008 0 Profile Name 362", "ListSetExtendedStyle 1008 0x20", "Create",
    "QueryPersistFile", "Register", "EnableToolTips", "Revoke", "ReleasePersistFile", "ReleaseShellLink", "StopOle",
    "DeleteFontHandle 0xf2", "DeleteFontHandle 0xf1"};

// Only the parent and the profiles can stop the start; anything else that fails is left out
// without a word. The start leaves the Empty state with the catalogue in the combo box.
TEST_F(AppFixture, AStartSetsUpInOrderAndItsEndGivesBackInOrder)
{
    struct Row {
        std::function<void()> setUp;
        Lines present, absent;
    };
    const Row rows[] = {
        {[] { DialogModel().oleAnswer = 1; }, {"StopOle"}, {}},
        {[] { DialogModel().oleAnswer = 2; }, {"StartOle"}, {"StopOle"}},
        {[] { DialogModel().oleAnswer = static_cast<std::int32_t>(0x80010106u); }, {}, {"StopOle"}},
        {[] { DialogModel().failFonts = true; }, {"MakeFont 14 700 2 MS Sans Serif 0"}, {"SetItemFont 1011 0", "DeleteFontHandle 0"}},
        {[] { ShellLinkModel::FailStep(ShellLinkModel::StepCreate); }, {"EnableToolTips"}, {"Register", "Revoke"}},
        {[] { DialogModel().templates[IDD_LINKWRIGHT_DIALOG].erase(IDC_SELECTED_LIST); }, {"SetItemFont 1011 0xf1"},
         {"ListInsertColumn 1008 0 Profile Name 362"}},
        {[] { DialogModel().templates[IDD_LINKWRIGHT_DIALOG].erase(IDC_ENABLED_LABEL); }, {"SetItemFont 1012 0xf2"},
         {"SetItemFont 1011 0xf1"}},
        {[] { DialogModel().templates[IDD_LINKWRIGHT_DIALOG].erase(IDC_SHORTCUT_NAME); }, {}, {"SetItemFont 1012 0xf2"}},
    };
    for (const Row& row : rows) {
        ResetModels();
        row.setUp();
        {
            CLinkDlg dialog;
            EXPECT_EQ(IDCANCEL, Run(dialog, [&](CModelWindow& window) {
                          EXPECT_EQ(Empty, States(window));
                          EXPECT_EQ((Lines{"Alpha", "Beta", "Gamma"}), window.controls[IDC_PROFILE_COMBO].items);
                          EXPECT_EQ(0, dialog.ComboGetCurSel(IDC_PROFILE_COMBO));
                      }));
            EXPECT_EQ(ModelAppIcon, dialog.OnQueryDragIcon());
        }
        const Lines log = Log();
        for (const std::string& line : row.present)
            EXPECT_NE(log.end(), std::find(log.begin(), log.end(), line)) << line;
        for (const std::string& line : row.absent)
            EXPECT_EQ(log.end(), std::find(log.begin(), log.end(), line)) << line;
    }
    ResetModels();
    DialogModel().sessions[IDD_LINKWRIGHT_DIALOG] = [](CModelWindow& window) {
        EXPECT_TRUE(window.Press(IDCANCEL) && window.Press(IDCANCEL));
    };
    CLinkApp app;
    EXPECT_FALSE(app.InitInstance());
    EXPECT_EQ(WholeRun, Log());
    EXPECT_TRUE(DialogModel().messageBoxes.empty());
}

// Either refusal shows its message and ends the start there: nothing more is set up and a
// -RestoreAll is never looked at, so the list files stay.
TEST_F(AppFixture, ARefusedStartShowsItsMessageAndDoesNothingElse)
{
    const Lines rows[] = {
        {"Zelmar.exe", "Linkwright could not find Zelmardeck. Please re-install Zelmardeck.", "ZLD Not Found", "48"},
        {"Profiles",
         "Linkwright could not find any Zelmardeck profiles.\nCreate a profile for the intended application, and "
         "restart Linkwright",
         "No Profiles", "0"},
    };
    for (const Lines& row : rows) {
        ResetModels();
        DialogModel().commandLine = "Linkwright.exe -RestoreAll";
        WriteProgramFile("ShortcutList", "");
        RemoveProgramFile(row[0]);
        CLinkDlg dialog;
        EXPECT_EQ(IDCANCEL, Run(dialog, [&](CModelWindow&) { ADD_FAILURE() << "shown"; }));
        EXPECT_EQ(ProgramPath("Zelmar.exe"), dialog.m_parentPath.Text());
        ASSERT_EQ(1u, DialogModel().messageBoxes.size());
        const ModelMessageBox& box = DialogModel().messageBoxes[0];
        EXPECT_EQ(Lines(row.begin() + 1, row.end()), (Lines{box.text, box.caption, std::to_string(box.flags)}));
        EXPECT_EQ(Lines{"LoadAppIcon 128"}, Log());
        EXPECT_TRUE(ProgramFileExists("ShortcutList"));
        WriteProgramFile("Zelmar.exe", "MZ");
        WriteProfile("a.idprof", "Gamma");
    }
}

// Minimised, the application's icon is drawn centred in the client area (386 by 317 in the
// model, icons 32 by 31); otherwise the shortcut's icon at 20, 30, scaled to 64. Only the
// status label is coloured. A tip comes whole, however long, and sets the tip limits.
TEST_F(AppFixture, PaintColoursAndTipsAreTheDialogsOwn)
{
    DialogModel().strings[IDC_SELECTED_LIST] = std::string(100, 'x');
    CLinkDlg dialog;
    Run(dialog, [&](CModelWindow& window) {
        DialogModel().calls.clear();
        for (bool minimised : {false, true}) {
            for (std::uintptr_t icon : {0x0, 0x77}) {
                window.minimised = minimised;
                dialog.m_hTargetIcon = reinterpret_cast<IconHandle>(icon);
                dialog.OnPaint();
            }
        }
        dialog.m_hTargetIcon = nullptr;
        CColourContext context(nullptr);
        for (auto [id, kind] : {std::pair<int, int>{IDC_ENABLED_LABEL, 6}, {IDC_ENABLED_LABEL, 5}, {IDC_SHORTCUT_NAME, 6}})
            EXPECT_EQ(nullptr, dialog.OnCtlColor(context, id, kind));
        const char* tip = "none";
        EXPECT_FALSE(dialog.OnNeedText(0, &tip));
        EXPECT_STREQ("none", tip);
        EXPECT_TRUE(dialog.OnNeedText(IDC_SELECTED_LIST, &tip));
        EXPECT_EQ(std::string(100, 'x'), tip);
        EXPECT_TRUE(dialog.OnNeedText(IDC_ENABLED_LABEL, &tip));
        EXPECT_STREQ("", tip);
        EXPECT_EQ((Lines{"DefaultPaint", "DrawIconSized 20 30 0x77 64 64", "DefaultPaint", "EraseIconBackground",
                         "DrawIconAt 177 143 0xa1", "EraseIconBackground", "DrawIconAt 177 143 0xa1",
                         "SetTextColour 0xc80000", "SetToolTipLimits 300 5000", "SetToolTipLimits 300 5000"}),
                  Log());
    });
}

const char HelpText[] =
    "Linkwright allows you to modify your shortcuts (desktop icons, menu items, quicklaunch icons, etc.) so that "
    "using Zelmardeck with your game or application becomes a single-step process. A single click on the enhanced "
    "shortcut will launch Zelmardeck, select the desired profile(s), and launch your game. It's easy! And you can "
    "restore your shortcuts to their original form at any time.\r\n\r\nTo enhance a shortcut, drag and drop it "
    "onto the Linkwright window, add one or more profiles to the list, and press the Save button. That's it.\r\n\r\n"
    "Before modifying your shortcuts, be sure to first create a working profile for your game or application within "
    "Zelmardeck.\r\n\r\nStarting Zelmardeck through an enhanced shortcut will first shut down any copies of "
    "Zelmardeck that are already running. This ensures that no other copies of Zelmardeck will interfere with your "
    "game or application. When the target game or application ends, Zelmardeck will also end.\r\n\r\nFor "
    "multi-player games where multiple copies of Zelmardeck are necessary (one profile per player), you can select "
    "multiple game profiles to associate with the shortcut. Make sure each profile uses a different game "
    "device.\r\n\r\nTo return the shortcut to its original state, press the Restore button after dragging it onto "
    "the Linkwright window. If you uninstall Zelmardeck, all modified shortcuts will be restored for you.";

// Each press of Help makes the window anew: its text on a white brush of its own, which
// goes with the window. Without its text control it still ends cleanly.
TEST_F(AppFixture, HelpShowsItsTextOnAWhiteGround)
{
    for (bool withText : {true, false}) {
        ResetModels();
        if (!withText)
            DialogModel().templates[IDD_HELP_DIALOG].erase(IDC_HELP_TEXT);
        DialogModel().sessions[IDD_HELP_DIALOG] = [&](CModelWindow& help) {
            CColourContext context(nullptr);
            EXPECT_EQ(reinterpret_cast<BrushHandle>(0xb3), help.dialog->OnCtlColor(context, IDC_HELP_TEXT, 6));
            EXPECT_EQ(nullptr, help.dialog->OnCtlColor(context, IDC_HELP_TEXT, 5));
            EXPECT_EQ(nullptr, help.dialog->OnCtlColor(context, IDOK, 6));
            EXPECT_EQ(withText ? HelpText : "", help.controls[IDC_HELP_TEXT].text);
            EXPECT_TRUE(help.Press(IDOK));
        };
        CLinkDlg dialog;
        Run(dialog, [&](CModelWindow& window) { EXPECT_TRUE(window.Press(IDC_HELP_BUTTON)); });
        EXPECT_EQ(IDOK, DialogModel().LastWindow(IDD_HELP_DIALOG)->endCode);
        EXPECT_EQ((Lines{"MakeSolidBrush 0xffffff", "DeleteBrushHandle 0xb3"}), Log({"MakeSolidBrush", "DeleteBrush"}));
    }
}

}   // namespace
