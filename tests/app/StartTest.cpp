// The start and end of the dialog, and what it shows beyond its controls (icons, colour, tool
// tips, help).

#include "AppFixture.h"

#include <fstream>

#include "app/LinkApp.h"

namespace {

// The help as the dialog shows it: the paragraphs of HelpText.txt, one a line.
std::string HelpText()
{
    std::ifstream file(LW_HELP_TEXT);
    std::string text;
    for (std::string line; std::getline(file, line);)
        text += (text.empty() ? "" : "\r\n\r\n") + line;
    return text;
}

// A whole run: the start in its order, which leaves the Empty state with the catalogue in
// the combo box; paint (the shortcut's icon at 20, 30 scaled to 64; minimised, the
// application's icon centred in the model's 386 by 317, icons 32 by 31); the colour of the
// status label only; a tip with its limits; help on a white brush of its own; Close twice,
// which gives everything back once, in order; the destructor.
const Lines WholeRun = {
    "LoadAppIcon 128", "SetWindowIcon 1 0xa1", "SetWindowIcon 0 0xa1", "StartOle", "MakeFont 20 700 2 Arial",
    "SetItemFont 1011 0x14", "MakeFont 14 700 2 MS Sans Serif", "SetItemFont 1012 0xe",
    "ListInsertColumn 1008 0 Profile Name 362", "ListSetExtendedStyle 1008 32", "Create", "QueryPersistFile",
    "Register", "EnableToolTips", "SetFocus", "DefaultPaint", "DrawIconSized 20 30 0x77 64 64", "DefaultPaint",
    "EraseIconBackground", "DrawIconAt 177 143 0xa1", "SetTextColour 0x2784 13107200", "SetToolTipLimits 300 5000",
    "MakeSolidBrush 16777215", "SetFocus", "DeleteBrush 0xffffff", "Revoke", "ReleasePersistFile",
    "ReleaseShellLink", "StopOle", "DeleteFont 0xe", "DeleteFont 0x14"};

void PlayTheLook(CModelWindow& window)
{
    CLinkDlg& dialog = *static_cast<CLinkDlg*>(window.dialog);
    EXPECT_EQ(Empty, States(window));
    EXPECT_EQ((Lines{"Alpha", "Beta", "Gamma"}), window.controls[IDC_PROFILE_COMBO].items);
    EXPECT_EQ(0, dialog.ComboGetCurSel(IDC_PROFILE_COMBO));
    for (auto [minimised, icon] : {std::pair<bool, int>{false, 0}, {false, 0x77}, {true, 0x77}}) {
        window.minimised = minimised;
        dialog.m_hTargetIcon = reinterpret_cast<IconHandle>(icon);
        dialog.OnPaint();
    }
    window.minimised = false;
    for (auto [id, kind] : {std::pair<int, int>{IDC_ENABLED_LABEL, 6}, {IDC_ENABLED_LABEL, 5}, {IDC_SHORTCUT_NAME, 6}}) {
        CColourContext context(reinterpret_cast<void*>(static_cast<std::uintptr_t>(id * 10 + kind)));
        EXPECT_EQ(nullptr, dialog.OnCtlColor(context, id, kind));
    }
    const char* tip = "none";
    EXPECT_FALSE(dialog.OnNeedText(0, &tip));
    EXPECT_TRUE(dialog.OnNeedText(IDC_SELECTED_LIST, &tip));
    EXPECT_STREQ("a tip", tip);
    EXPECT_EQ(ModelAppIcon, dialog.OnQueryDragIcon());
    DialogModel().sessions[IDD_HELP_DIALOG] = [](CModelWindow& help) {
        CColourContext colours(nullptr);
        EXPECT_EQ(reinterpret_cast<BrushHandle>(0xffffff), help.dialog->OnCtlColor(colours, IDC_HELP_TEXT, 6));
        EXPECT_EQ(nullptr, help.dialog->OnCtlColor(colours, IDC_HELP_TEXT, 5));
        EXPECT_EQ(nullptr, help.dialog->OnCtlColor(colours, IDOK, 6));
        EXPECT_EQ(HelpText(), help.controls[IDC_HELP_TEXT].text);
    };
    EXPECT_TRUE(window.Press(IDC_HELP_BUTTON) && window.Press(IDCANCEL) && window.Press(IDCANCEL));
}

// A start with the OLE answer S_FALSE, which counts as started; then a run whose template
// lacks the controls that get fonts and a column, the list and the label: they go without,
// no switch is thrown for a control that is not there, and Add does nothing.
TEST_F(AppFixture, AStartSetsUpInOrderAndItsEndGivesBackInOrder)
{
    DialogModel().oleAnswer = 1;
    DialogModel().sessions[IDD_LINKWRIGHT_DIALOG] = PlayTheLook;
    EXPECT_FALSE(CLinkApp().InitInstance());
    EXPECT_EQ(WholeRun, Log());
    ResetModels();
    for (int id : {IDC_SELECTED_LIST, IDC_ENABLED_LABEL, IDC_SHORTCUT_NAME})
        DialogModel().templates[IDD_LINKWRIGHT_DIALOG].erase(id);
    ShellLinkModel::PutFile(ShellLinkModel::Wide("C:\\e.lnk"), {"C:\\Zelmar.exe", "profile=A target=g", "", "", 0, ""});
    CLinkDlg dialog;
    Run(dialog, [&](CModelWindow& window) {
        EXPECT_TRUE(Drop(dialog, "C:\\e.lnk") && window.Press(IDC_RESTORE) && window.Press(IDC_ADD));
        EXPECT_FALSE(dialog.IsItemEnabled(IDOK));
    });
    EXPECT_EQ(Lines{}, Log({"SetItemFont", "ListInsertColumn", "NoSuchItem"}));
}

}   // namespace
