// The dialog backend on real windows made from the program's templates.

#include <gtest/gtest.h>

#include <windows.h>
#include <commctrl.h>

#include <functional>
#include <string>
#include <vector>

#include "app/Resource.h"
#include "platform/Dialog.h"
#include "text/TextString.h"

namespace {

const char SelectedListTip[] =
    "This is the list of profiles that will be used by Zelmardeck when launching the program from this shortcut. "
    "A separate instance of Zelmardeck will run for each profile specified. Use multiple profiles only for "
    "multi-player games.";

HWND ItemWindow(CDialog& dialog, int id)
{
    return GetDlgItem(static_cast<HWND>(dialog.Handle()), id);
}

// The main template with hooks: `start` runs in OnInitDialog, `posted` at each AppMessage;
// every handler call is written to `events`.
class CProbeDialog : public CDialog {
public:
    CProbeDialog() : CDialog(IDD_LINKWRIGHT_DIALOG) {}

    bool OnInitDialog() override
    {
        events.push_back("init");
        if (start)
            start(*this);
        return true;
    }
    void OnOK() override { events.push_back("ok"); }
    void OnCancel() override
    {
        events.push_back("cancel");
        CDialog::OnCancel();
    }
    void OnCommand(int id) override { events.push_back("command " + std::to_string(id)); }
    void OnAppMessage() override
    {
        events.push_back("app");
        if (posted)
            posted(*this);
    }
    BrushHandle OnCtlColor(CColourContext& context, int controlId, int kind) override
    {
        BrushHandle brush = CDialog::OnCtlColor(context, controlId, kind);
        if (kind == ColourKindStatic && controlId == IDC_ENABLED_LABEL)
            context.SetTextColour(0x00C80000);
        return brush;
    }
    bool OnNeedText(int controlId, const char** text) override
    {
        events.push_back("tip " + std::to_string(controlId));
        if (controlId == 0)
            return false;
        LoadResourceString(controlId, tipText);
        *text = tipText.Text();
        return true;
    }

    std::function<void(CProbeDialog&)> start;
    std::function<void(CProbeDialog&)> posted;
    std::vector<std::string> events;
    CTextString tipText;
};

std::string Text(const CTextString& text)
{
    return std::string(text.Text(), static_cast<std::size_t>(text.Length()));
}

// Counts the dialog windows of this thread that are made visible.
int dialogsShown = 0;

LRESULT CALLBACK CountShows(int code, WPARAM wParam, LPARAM lParam)
{
    const CWPSTRUCT* message = reinterpret_cast<const CWPSTRUCT*>(lParam);
    if (code >= 0 && message->message == WM_WINDOWPOSCHANGED &&
        (reinterpret_cast<const WINDOWPOS*>(message->lParam)->flags & SWP_SHOWWINDOW)) {
        char name[16] = {};
        GetClassNameA(message->hwnd, name, sizeof(name));
        if (std::string(name) == "#32770")
            ++dialogsShown;
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

// The template has WS_VISIBLE, yet a run ended inside OnInitDialog never shows the
// dialog and never enters the loop that would deliver the posted message.
TEST(DialogWine, EndDialogDuringStartEndsTheRunUnseen)
{
    CProbeDialog dialog;
    dialog.start = [](CProbeDialog& d) {
        d.QueueAppMessage();
        d.EndDialog(IdCancel);
    };
    HHOOK hook = SetWindowsHookExA(WH_CALLWNDPROC, CountShows, nullptr, GetCurrentThreadId());
    dialogsShown = 0;
    EXPECT_EQ(dialog.DoModal(), IdCancel);
    UnhookWindowsHookEx(hook);
    EXPECT_EQ(dialogsShown, 0);
    EXPECT_EQ(dialog.events, std::vector<std::string>{"init"});
    EXPECT_EQ(dialog.Handle(), nullptr);
}

TEST(DialogWine, ModalLoopRoutesPostedMessageCommandsAndClose)
{
    CProbeDialog dialog;
    bool shown = false;
    dialog.start = [](CProbeDialog& d) { d.QueueAppMessage(); };
    dialog.posted = [&shown](CProbeDialog& d) {
        HWND window = static_cast<HWND>(d.Handle());
        shown = IsWindowVisible(window) != 0;
        SendMessageA(window, WM_COMMAND, MAKEWPARAM(IDC_ADD, BN_CLICKED), reinterpret_cast<LPARAM>(ItemWindow(d, IDC_ADD)));
        // A combo box notification is no command.
        SendMessageA(window, WM_COMMAND, MAKEWPARAM(IDC_PROFILE_COMBO, CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(ItemWindow(d, IDC_PROFILE_COMBO)));
        SendMessageA(window, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
        SendMessageA(window, WM_CLOSE, 0, 0);
    };
    EXPECT_EQ(dialog.DoModal(), IdCancel);
    EXPECT_TRUE(shown);
    EXPECT_EQ(dialog.events, (std::vector<std::string>{"init", "app", "command 1005", "ok", "cancel"}));
}

// Every control operation of one run, checked on the real controls.
TEST(DialogWine, ControlsByIdOnTheRealTemplate)
{
    CProbeDialog dialog;
    dialog.start = [](CProbeDialog& d) {
        EXPECT_TRUE(d.HasItem(IDC_SELECTED_LIST));
        EXPECT_FALSE(d.HasItem(4242));
        EXPECT_FALSE(d.IsItemEnabled(IDOK));
        EXPECT_TRUE(d.IsItemEnabled(IDCANCEL));
        EXPECT_FALSE(d.IsItemVisible(IDC_ENABLED_LABEL));
        EXPECT_TRUE(d.IsItemVisible(IDC_SHORTCUT_NAME));   // before the dialog is shown
        d.ShowItemWindow(IDC_ENABLED_LABEL, true);
        d.EnableItemWindow(IDOK, true);
        EXPECT_TRUE(d.IsItemVisible(IDC_ENABLED_LABEL));
        EXPECT_TRUE(d.IsItemEnabled(IDOK));
        EXPECT_FALSE(d.IsItemVisible(4242));

        d.ComboAddString(IDC_PROFILE_COMBO, "beta");
        d.ComboAddString(IDC_PROFILE_COMBO, "Alpha");
        d.ComboAddString(IDC_PROFILE_COMBO, "gamma");
        EXPECT_EQ(d.ComboGetCurSel(IDC_PROFILE_COMBO), -1);
        d.ComboSetCurSel(IDC_PROFILE_COMBO, 1);
        EXPECT_EQ(d.ComboGetCurSel(IDC_PROFILE_COMBO), 1);
        EXPECT_EQ(d.ComboGetCurSel(4242), -1);
        CTextString text("stale");
        d.ComboGetLBText(IDC_PROFILE_COMBO, 0, text);
        EXPECT_EQ(Text(text), "Alpha");
        d.ComboGetLBText(IDC_PROFILE_COMBO, -1, text);
        EXPECT_EQ(Text(text), "");

        const std::string longName(700, 'x');
        d.ListInsertColumn(IDC_SELECTED_LIST, 0, "Profile Name", 362);
        d.ListSetExtendedStyle(IDC_SELECTED_LIST, LVS_EX_FULLROWSELECT);
        d.ListInsertItem(IDC_SELECTED_LIST, 0, "Zeta");
        d.ListInsertItem(IDC_SELECTED_LIST, 0, "alpha");
        d.ListInsertItem(IDC_SELECTED_LIST, 0, longName.c_str());
        // Sorted without regard to case: alpha, xxx..., Zeta.
        EXPECT_EQ(d.ListFindItem(IDC_SELECTED_LIST, "ALPHA"), 0);
        EXPECT_EQ(d.ListFindItem(IDC_SELECTED_LIST, "zeta"), 2);
        EXPECT_EQ(d.ListFindItem(IDC_SELECTED_LIST, "Zet"), -1);   // whole text only
        EXPECT_EQ(d.ListFindItem(4242, "alpha"), -1);
        EXPECT_EQ(d.ListGetNextSelected(IDC_SELECTED_LIST, -1), -1);
        ListView_SetItemState(ItemWindow(d, IDC_SELECTED_LIST), 1, LVIS_SELECTED, LVIS_SELECTED);
        EXPECT_EQ(d.ListGetNextSelected(IDC_SELECTED_LIST, -1), 1);
        EXPECT_EQ(d.ListGetNextSelected(IDC_SELECTED_LIST, 1), -1);
        d.ListGetItemText(IDC_SELECTED_LIST, 1, text);
        EXPECT_EQ(Text(text), longName);
        d.ListDeleteItem(IDC_SELECTED_LIST, 0);
        d.ListGetItemText(IDC_SELECTED_LIST, 1, text);
        EXPECT_EQ(Text(text), "Zeta");
        d.ListGetItemText(IDC_SELECTED_LIST, 5, text);
        EXPECT_EQ(Text(text), "");
        d.ListDeleteAllItems(IDC_SELECTED_LIST);
        EXPECT_EQ(d.ListFindItem(IDC_SELECTED_LIST, "Zeta"), -1);

        d.SetItemText(IDC_SHORTCUT_NAME, "Game");
        char shown[16] = {};
        GetWindowTextA(ItemWindow(d, IDC_SHORTCUT_NAME), shown, sizeof(shown));
        EXPECT_STREQ(shown, "Game");
        EXPECT_GT(d.ClientWidth(), 0);
        EXPECT_GT(d.ClientHeight(), 0);
        EXPECT_FALSE(d.IsMinimised());
        d.EndDialog(IdOk);
    };
    EXPECT_EQ(dialog.DoModal(), IdOk);
}

// The tip text is the handler's own and comes through whole; the tool is resolved from
// its window to the control id.
TEST(DialogWine, ToolTipTextsAndColours)
{
    CProbeDialog dialog;
    dialog.start = [](CProbeDialog& d) {
        HWND window = static_cast<HWND>(d.Handle());
        ASSERT_TRUE(d.EnableToolTips());
        d.SetToolTipLimits(300, 5000);

        TOOLTIPTEXTA record = {};
        record.hdr.code = TTN_NEEDTEXTA;
        record.hdr.idFrom = reinterpret_cast<UINT_PTR>(ItemWindow(d, IDC_SELECTED_LIST));
        record.uFlags = TTF_IDISHWND;
        SendMessageA(window, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&record));
        ASSERT_NE(record.lpszText, nullptr);
        EXPECT_STREQ(record.lpszText, SelectedListTip);

        TOOLTIPTEXTA none = {};
        none.hdr.code = TTN_NEEDTEXTA;
        SendMessageA(window, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&none));
        EXPECT_EQ(none.lpszText, nullptr);

        // The base gives the platform's brush and colours; only the override's control
        // gets its own text colour.
        HDC context = CreateCompatibleDC(nullptr);
        LRESULT brush = SendMessageA(window, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(context),
                                     reinterpret_cast<LPARAM>(ItemWindow(d, IDC_SHORTCUT_NAME)));
        EXPECT_NE(brush, 0);
        EXPECT_EQ(GetTextColor(context), GetSysColor(COLOR_WINDOWTEXT));
        SendMessageA(window, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(context),
                     reinterpret_cast<LPARAM>(ItemWindow(d, IDC_ENABLED_LABEL)));
        EXPECT_EQ(GetTextColor(context), 0x00C80000u);
        DeleteDC(context);
        d.EndDialog(IdCancel);
    };
    EXPECT_EQ(dialog.DoModal(), IdCancel);
    EXPECT_EQ(dialog.events, (std::vector<std::string>{"init", "tip 1008", "tip 0"}));
}

TEST(DialogWine, ResourcesOfTheProgram)
{
    CTextString text("stale");
    LoadResourceString(IDC_SELECTED_LIST, text);
    EXPECT_EQ(Text(text), SelectedListTip);
    LoadResourceString(IDCANCEL, text);
    EXPECT_EQ(Text(text), "Close Linkwright");
    LoadResourceString(IDC_ENABLED_LABEL, text);
    EXPECT_EQ(Text(text), "");

    EXPECT_NE(LoadAppIcon(IDR_MAINFRAME), nullptr);
    char self[MAX_PATH];
    GetModuleFileNameA(nullptr, self, sizeof(self));
    IconHandle icon = ExtractIconFrom(self, 0);
    EXPECT_NE(icon, nullptr);
    EXPECT_NE(icon, NotAnIconFile);
    DestroyIconHandle(icon);
    EXPECT_EQ(ExtractIconFrom("C:\\no such folder\\none.exe", 0), nullptr);

    FontHandle font = MakeFont(20, FW_BOLD, PROOF_QUALITY, "Arial");
    ASSERT_NE(font, nullptr);
    LOGFONTA made = {};
    GetObjectA(static_cast<HFONT>(font), sizeof(made), &made);
    EXPECT_EQ(made.lfHeight, 20);
    EXPECT_EQ(made.lfWeight, FW_BOLD);
    EXPECT_STREQ(made.lfFaceName, "Arial");
    DeleteFontHandle(font);
}

}   // namespace
