// What the dialog draws and shows beyond its controls: icons, the label's colour, tool
// tips and the help window.

#include "AppFixture.h"

#include <cstring>

namespace {

const char* const ListTip =
    "This is the list of profiles that will be used by Zelmardeck when launching the program from this "
    "shortcut. A separate instance of Zelmardeck will run for each profile specified. Use multiple profiles "
    "only for multi-player games.";

class LookTest : public AppFixture {
protected:
    void SetUp() override
    {
        AppFixture::SetUp();
        WriteProfile("a.idprof", "Alpha");
        DialogModel().strings[IDCANCEL] = "Close Linkwright";
        DialogModel().strings[IDC_SELECTED_LIST] = ListTip;
    }
};

TEST_F(LookTest, PaintDrawsTheRightIconInTheRightPlace)
{
    const IconHandle target = reinterpret_cast<IconHandle>(0x77);
    struct Row {
        const char* name;
        bool minimised;
        IconHandle targetIcon;
        int width, height;
        std::vector<ModelDrawing> drawn;
        int erases, defaults;
    };
    // The minimised icon is centred with a division that truncates toward zero.
    const Row rows[] = {
        {"nothing loaded", false, nullptr, 386, 318, {}, 0, 1},
        {"a shortcut's icon", false, target, 386, 318, {{true, 20, 30, target, 64, 64}}, 0, 1},
        {"minimised", true, target, 160, 26, {{false, 64, -2, ModelAppIcon, 0, 0}}, 1, 0},
        {"minimised, odd sizes", true, nullptr, 101, 33, {{false, 35, 1, ModelAppIcon, 0, 0}}, 1, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        CLinkDlg dialog;
        Run(dialog, [&](CModelWindow& window) {
            dialog.m_hTargetIcon = row.targetIcon;
            window.minimised = row.minimised;
            window.clientWidth = row.width;
            window.clientHeight = row.height;
            dialog.OnPaint();
            ASSERT_EQ(row.drawn.size(), window.drawings.size());
            for (std::size_t i = 0; i < row.drawn.size(); ++i) {
                const ModelDrawing& got = window.drawings[i];
                const ModelDrawing& want = row.drawn[i];
                EXPECT_EQ(want.sized, got.sized);
                EXPECT_EQ(want.x, got.x);
                EXPECT_EQ(want.y, got.y);
                EXPECT_EQ(want.icon, got.icon);
                EXPECT_EQ(want.width, got.width);
                EXPECT_EQ(want.height, got.height);
            }
            EXPECT_EQ(row.erases, window.iconBackgroundErases);
            EXPECT_EQ(row.defaults, window.defaultPaints);
            EXPECT_EQ(0, window.paintContextsOpen);
            dialog.m_hTargetIcon = nullptr;
        });
    }
}

TEST_F(LookTest, OnlyTheStatusLabelIsColoured)
{
    struct Row {
        int id;
        int kind;
        bool coloured;
    };
    const Row rows[] = {
        {IDC_ENABLED_LABEL, ColourKindStatic, true},
        {IDC_ENABLED_LABEL, 1, false},
        {IDC_SHORTCUT_NAME, ColourKindStatic, false},
        {-1, ColourKindStatic, false},
    };
    CLinkDlg dialog;
    Run(dialog, [&](CModelWindow&) {
        for (const Row& row : rows) {
            ModelDeviceContext device;
            CColourContext context(&device);
            EXPECT_EQ(ModelDefaultBrush, dialog.OnCtlColor(context, row.id, row.kind));
            EXPECT_EQ(row.coloured, device.textColourSet) << row.id << "/" << row.kind;
            if (row.coloured) {
                EXPECT_EQ(0x00C80000u, device.textColour);
            }
        }
    });
}

TEST_F(LookTest, TipTextsComeWholeAndSetTheTipLimitsEachTime)
{
    CLinkDlg dialog;
    Run(dialog, [&](CModelWindow& window) {
        const char* text = "untouched";
        EXPECT_FALSE(dialog.OnNeedText(0, &text));
        EXPECT_STREQ("untouched", text);
        EXPECT_EQ(0, window.toolTipLimitsSent);

        struct Row {
            int id;
            const char* text;
        };
        const Row rows[] = {{IDC_SELECTED_LIST, ListTip}, {IDCANCEL, "Close Linkwright"}, {IDC_ENABLED_LABEL, ""}};
        int sent = 0;
        for (const Row& row : rows) {
            ASSERT_TRUE(dialog.OnNeedText(row.id, &text)) << row.id;
            EXPECT_STREQ(row.text, text);
            EXPECT_EQ(text, dialog.m_tipText.Text());
            EXPECT_EQ(++sent, window.toolTipLimitsSent);
            EXPECT_EQ(300, window.toolTipMaxWidth);
            EXPECT_EQ(5000, window.toolTipAutoPop);
        }
        EXPECT_GT(std::strlen(ListTip), 80u);
    });
}

// Help opens the help window modally; its text is six paragraphs and ends without a line
// break; its brush is white, given to the help text only, and gone with the window.
TEST_F(LookTest, HelpShowsItsTextOnAWhiteGround)
{
    CDialogModel& model = DialogModel();
    int helpRuns = 0;
    model.sessions[IDD_HELP_DIALOG] = [&](CModelWindow& help) {
        ++helpRuns;
        ASSERT_EQ(1, model.LiveBrushes());
        EXPECT_EQ(0x00FFFFFFu, model.brushes.back().colour);
        ModelDeviceContext device;
        CColourContext context(&device);
        BrushHandle white = help.dialog->OnCtlColor(context, IDC_HELP_TEXT, ColourKindStatic);
        EXPECT_NE(nullptr, white);
        EXPECT_NE(ModelDefaultBrush, white);
        EXPECT_EQ(ModelDefaultBrush, help.dialog->OnCtlColor(context, IDC_HELP_TEXT, 1));
        EXPECT_EQ(ModelDefaultBrush, help.dialog->OnCtlColor(context, IDOK, ColourKindStatic));
        EXPECT_FALSE(device.textColourSet);
        EXPECT_TRUE(help.Press(IDOK));
    };
    CLinkDlg dialog;
    Run(dialog, [&](CModelWindow& window) {
        EXPECT_TRUE(window.Press(IDC_HELP_BUTTON));
        EXPECT_TRUE(window.Press(IDC_HELP_BUTTON));
    });
    EXPECT_EQ(2, helpRuns);
    EXPECT_EQ(0, model.LiveBrushes());

    CModelWindow* help = model.LastWindow(IDD_HELP_DIALOG);
    ASSERT_NE(nullptr, help);
    EXPECT_EQ(IDOK, help->endCode);
    const std::string text = help->Control(IDC_HELP_TEXT)->text;
    std::vector<std::string> paragraphs;
    for (std::size_t from = 0;;) {
        std::size_t end = text.find("\r\n\r\n", from);
        paragraphs.push_back(text.substr(from, end == std::string::npos ? std::string::npos : end - from));
        if (end == std::string::npos)
            break;
        from = end + 4;
    }
    ASSERT_EQ(6u, paragraphs.size());
    for (const std::string& paragraph : paragraphs) {
        EXPECT_EQ(std::string::npos, paragraph.find_first_of("\r\n")) << paragraph;
        EXPECT_NE(' ', paragraph.back()) << paragraph;
    }
    EXPECT_EQ(0u, paragraphs[0].find("Linkwright allows you to modify your shortcuts"));
    EXPECT_NE(std::string::npos, paragraphs[0].find("single-step process. A single click"));
    EXPECT_NE(std::string::npos, paragraphs[3].find("interfere with your game or application. When the target"));
    EXPECT_NE(std::string::npos, paragraphs[5].find("onto the Linkwright window. If you uninstall"));
    EXPECT_EQ("If you uninstall Zelmardeck, all modified shortcuts will be restored for you.",
              paragraphs[5].substr(paragraphs[5].size() - 77));
}

TEST_F(LookTest, HelpWithoutItsTextControlStillEndsCleanly)
{
    CDialogModel& model = DialogModel();
    model.templates[IDD_HELP_DIALOG] = HelpTemplateControls({IDC_HELP_TEXT});
    CLinkDlg dialog;
    Run(dialog, [&](CModelWindow& window) { EXPECT_TRUE(window.Press(IDC_HELP_BUTTON)); });
    EXPECT_EQ(IDCANCEL, model.LastWindow(IDD_HELP_DIALOG)->endCode);
    EXPECT_EQ(1u, model.brushes.size());
    EXPECT_EQ(0, model.LiveBrushes());
}

}   // namespace
