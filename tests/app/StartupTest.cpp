// Start-up and shutdown of the main dialog: the order of OnInitDialog, its two ways out,
// and what each run gives back.

#include "AppFixture.h"

#include "app/LinkApp.h"

namespace {

class StartupTest : public AppFixture {
protected:
    void SetUp() override
    {
        AppFixture::SetUp();
        WriteProfile("one.idprof", "Gamma");
        WriteProfile("two.idprof", "alpha");
        WriteProfile("three.idprof", "Beta");
    }
};

TEST_F(StartupTest, AStartLeavesTheDialogEmptyWithEverythingSetUp)
{
    CDialogModel& model = DialogModel();
    CModelWindow* seen = nullptr;
    {
        CLinkDlg dialog;
        int ended = Run(dialog, [&](CModelWindow& window) {
            seen = &window;
            EXPECT_EQ(1, model.oleStarts);
            EXPECT_EQ(1, model.registrations);
            EXPECT_EQ(&dialog, dialog.m_dropTarget.m_owner);
            EXPECT_TRUE(dialog.m_oleStarted);
            EXPECT_EQ(ProgramPath("Zelmar.exe"), dialog.m_parentPath.Text());
            // The whole catalogue waits in m_selected; the list stays empty.
            EXPECT_EQ(3, dialog.m_selected.Count());
            EXPECT_TRUE(window.Control(IDC_SELECTED_LIST)->rows.empty());
            EXPECT_EQ(2, model.LiveFonts());
        });
        EXPECT_EQ(IDCANCEL, ended);
        ASSERT_NE(nullptr, seen);
        EXPECT_TRUE(model.messageBoxes.empty());

        CModelControl* combo = seen->Control(IDC_PROFILE_COMBO);
        EXPECT_EQ((std::vector<std::string>{"alpha", "Beta", "Gamma"}), combo->entries);
        EXPECT_EQ(0, combo->current);

        for (int id : {IDC_PROFILE_COMBO, IDC_ADD, IDC_SELECTED_LIST, IDC_REMOVE, IDOK, IDC_RESTORE})
            EXPECT_FALSE(seen->Control(id)->enabled) << id;
        EXPECT_FALSE(seen->Control(IDC_ENABLED_LABEL)->visible);
        EXPECT_TRUE(seen->Control(IDC_HELP_BUTTON)->enabled);
        EXPECT_TRUE(seen->toolTipsEnabled);

        EXPECT_EQ(ModelAppIcon, seen->bigIcon);
        EXPECT_EQ(ModelAppIcon, seen->smallIcon);
        EXPECT_EQ(ModelAppIcon, dialog.OnQueryDragIcon());

        CModelControl* list = seen->Control(IDC_SELECTED_LIST);
        EXPECT_EQ((std::vector<std::string>{"Profile Name"}), list->columnHeadings);
        EXPECT_EQ((std::vector<int>{362}), list->columnWidths);
        EXPECT_EQ(0x20u, list->extendedStyle);

        ASSERT_EQ(2u, model.fonts.size());
        const ModelFont& status = model.fonts[0];
        const ModelFont& name = model.fonts[1];
        EXPECT_EQ(20, status.height);
        EXPECT_EQ("Arial", status.face);
        EXPECT_EQ(14, name.height);
        EXPECT_EQ("MS Sans Serif", name.face);
        for (const ModelFont* font : {&status, &name}) {
            EXPECT_EQ(700, font->weight);
            EXPECT_EQ(2, font->quality);
        }
        EXPECT_EQ(model.FontOf(seen->Control(IDC_ENABLED_LABEL)->font), &status);
        EXPECT_EQ(model.FontOf(seen->Control(IDC_SHORTCUT_NAME)->font), &name);

        // The close ended OLE and the registration; the fonts wait for the destructor.
        EXPECT_EQ(1, model.oleStops);
        EXPECT_EQ(0, model.registrations);
        EXPECT_FALSE(dialog.m_oleStarted);
        EXPECT_EQ(2, model.LiveFonts());
    }
    for (const ModelFont& font : model.fonts)
        EXPECT_EQ(1, font.deletions) << font.face;
    EXPECT_EQ(1, model.oleStops);
    EXPECT_TRUE(model.destroyedIcons.empty());
}

TEST_F(StartupTest, TheStartGoesOnWithoutFontsAndLeavesTheControlsTheirOwn)
{
    DialogModel().failFonts = true;
    CModelWindow* seen = nullptr;
    {
        CLinkDlg dialog;
        Run(dialog, [&](CModelWindow& window) { seen = &window; });
        ASSERT_NE(nullptr, seen);
    }
    EXPECT_EQ(0, seen->Control(IDC_ENABLED_LABEL)->fontsSet);
    EXPECT_EQ(0, seen->Control(IDC_SHORTCUT_NAME)->fontsSet);
    EXPECT_TRUE(seen->toolTipsEnabled);
}

TEST_F(StartupTest, MissingControlsAreSkippedAndTheStartGoesOn)
{
    DialogModel().templates[IDD_LINKWRIGHT_DIALOG] =
        MainTemplateControls({IDC_PROFILE_COMBO, IDC_SELECTED_LIST, IDC_ENABLED_LABEL, IDC_SHORTCUT_NAME});
    CModelWindow* seen = nullptr;
    {
        CLinkDlg dialog;
        Run(dialog, [&](CModelWindow& window) {
            seen = &window;
            EXPECT_EQ(3, dialog.m_selected.Count());
        });
    }
    ASSERT_NE(nullptr, seen);
    EXPECT_TRUE(seen->toolTipsEnabled);
    EXPECT_FALSE(seen->Control(IDC_ADD)->enabled);
    EXPECT_EQ(0, DialogModel().LiveFonts());
}

// OleInitialize counts as started with S_OK and S_FALSE, and each of those is owed
// exactly one OleUninitialize; any failure is owed none.
TEST_F(StartupTest, OleIsStoppedOnceForEveryAnswerThatStartedIt)
{
    struct Row {
        std::int32_t answer;
        int stops;
    };
    const Row rows[] = {
        {0, 1},                                                 // S_OK
        {1, 1},                                                 // S_FALSE
        {static_cast<std::int32_t>(0x80010106u), 0},            // RPC_E_CHANGED_MODE
        {static_cast<std::int32_t>(0x8007000Eu), 0},            // E_OUTOFMEMORY
    };
    for (const Row& row : rows) {
        DialogModel().oleAnswer = row.answer;
        DialogModel().oleStops = 0;
        {
            CLinkDlg dialog;
            Run(dialog, [&](CModelWindow& window) { window.Close(); window.Close(); });
        }
        EXPECT_EQ(row.stops, DialogModel().oleStops) << std::hex << row.answer;
    }
}

// The two refusals: the message, then OnCancel with nothing to give back, and no later
// step; a -RestoreAll on the command line is never looked at, so the lists stay.
TEST_F(StartupTest, ARefusedStartShowsItsMessageAndDoesNothingElse)
{
    struct Row {
        const char* name;
        bool parent;
        bool profiles;
        const char* text;
        const char* caption;
        std::uint32_t flags;
    };
    const Row rows[] = {
        {"no parent", false, true, "Linkwright could not find Zelmardeck. Please re-install Zelmardeck.",
         "ZLD Not Found", 0x30},
        {"no parent, no profiles", false, false,
         "Linkwright could not find Zelmardeck. Please re-install Zelmardeck.", "ZLD Not Found", 0x30},
        {"no profiles", true, false,
         "Linkwright could not find any Zelmardeck profiles.\nCreate a profile for the intended application, "
         "and restart Linkwright",
         "No Profiles", 0x00},
    };
    for (const char* commandLine : {"Linkwright.exe", "Linkwright.exe -RestoreAll", "x -restoreall"}) {
        for (const Row& row : rows) {
            SCOPED_TRACE(std::string(row.name) + " / " + commandLine);
            ResetDialogModel();
            CDialogModel& model = DialogModel();
            model.templates[IDD_LINKWRIGHT_DIALOG] = MainTemplateControls();
            model.commandLine = commandLine;
            WriteProgramFile("ShortcutList", std::string("A\0B\0\0\0", 6));
            WriteProgramFile("ShortcutList.txt", "report");
            if (!row.parent)
                RemoveProgramFile("Zelmar.exe");
            if (!row.profiles)
                RemoveProgramFile("Profiles");

            bool sessionRan = false;
            {
                CLinkDlg dialog;
                EXPECT_EQ(IDCANCEL, Run(dialog, [&](CModelWindow&) { sessionRan = true; }));
                EXPECT_EQ(ProgramPath("Zelmar.exe"), dialog.m_parentPath.Text());
                EXPECT_TRUE(dialog.m_shortcuts.IsEmpty());
            }
            EXPECT_FALSE(sessionRan);
            ASSERT_EQ(1u, model.messageBoxes.size());
            EXPECT_EQ(row.text, model.messageBoxes[0].text);
            EXPECT_EQ(row.caption, model.messageBoxes[0].caption);
            EXPECT_EQ(row.flags, model.messageBoxes[0].flags);
            EXPECT_EQ(IDD_LINKWRIGHT_DIALOG, model.messageBoxes[0].ownerTemplate);

            CModelWindow* window = model.LastWindow(IDD_LINKWRIGHT_DIALOG);
            EXPECT_EQ(nullptr, window->bigIcon);
            EXPECT_FALSE(window->toolTipsEnabled);
            EXPECT_EQ(0, model.oleStarts);
            EXPECT_EQ(0, model.oleStops);
            EXPECT_TRUE(model.fonts.empty());
            EXPECT_EQ(0, model.registerCalls);
            EXPECT_TRUE(ProgramFileExists("ShortcutList"));
            EXPECT_TRUE(ProgramFileExists("ShortcutList.txt"));

            WriteProgramFile("Zelmar.exe", "MZ");
            WriteProfile("one.idprof", "Gamma");
        }
    }
}

TEST_F(StartupTest, TheApplicationRunsTheDialogOnceAndAnswersFalse)
{
    CLinkApp app;
    EXPECT_EQ(&app, TheApp());
    int sessions = 0;
    DialogModel().sessions[IDD_LINKWRIGHT_DIALOG] = [&](CModelWindow& window) {
        ++sessions;
        EXPECT_TRUE(window.Press(IDCANCEL));
    };
    EXPECT_FALSE(app.InitInstance());
    EXPECT_EQ(1, sessions);
    EXPECT_EQ(0, DialogModel().LiveFonts());
    EXPECT_EQ(1, DialogModel().oleStops);
}

}   // namespace
