// The Win32 dialog backend: CDialog over a real dialog made from a resource template.
//
// One dialog procedure serves every dialog. It stores `this` in DWLP_USER at
// WM_INITDIALOG (the pointer comes as the creation parameter of DialogBoxParamA) and
// from then on hands the few messages the dialogs care about to the virtual handlers.
// Everything else goes to DefDlgProc by answering FALSE. Controls are looked up by id at
// each use; the wrapper keeps nothing but the window handle.

#include "platform/Dialog.h"

#include <windows.h>
#include <commctrl.h>
#include <shellapi.h>

#include "text/Allocation.h"
#include "text/TextString.h"

namespace {

// The dialog's tool tip control, and the keyboard hook that hides its tip, kept on the
// dialog window itself.
const char ToolTipProperty[] = "LinkwrightToolTip";
const char KeyHookProperty[] = "LinkwrightKeyHook";
// Set on the window by EndDialog: from then on the window is not to be shown.
const char EndedProperty[] = "LinkwrightEnded";

HINSTANCE ModuleInstance()
{
    return GetModuleHandleA(nullptr);
}

HWND AsWindow(void* window)
{
    return static_cast<HWND>(window);
}

template <class T>
LPARAM Pointer(T* pointer)
{
    return reinterpret_cast<LPARAM>(pointer);
}

// Centres the dialog over its owner, or over the work area of its monitor when it has
// none, as the templates leave the position at 0, 0 for the framework to choose.
void CentreWindow(HWND window)
{
    RECT area;
    HWND owner = GetWindow(window, GW_OWNER);
    if (owner && IsWindowVisible(owner) && !IsIconic(owner)) {
        GetWindowRect(owner, &area);
    } else {
        MONITORINFO monitor = {};
        monitor.cbSize = sizeof(monitor);
        if (!GetMonitorInfoA(MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY), &monitor))
            return;
        area = monitor.rcWork;
    }
    RECT own;
    GetWindowRect(window, &own);
    int width = own.right - own.left;
    int height = own.bottom - own.top;
    int x = area.left + (area.right - area.left - width) / 2;
    int y = area.top + (area.bottom - area.top - height) / 2;
    SetWindowPos(window, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// Fills text from a control message that copies at most `size` bytes, the terminator
// included, and answers how many it copied. The buffer doubles until the text fits.
// A failed allocation leaves text empty.
template <class Fill>
void ReadGrowing(CTextString& text, Fill fill)
{
    for (int size = 256; size > 0 && size <= (1 << 24); size *= 2) {
        char* buffer = static_cast<char*>(AllocateBlock(static_cast<std::size_t>(size)));
        if (!buffer)
            break;
        buffer[0] = '\0';
        int copied = fill(buffer, size);
        if (copied < size - 1) {
            text.Assign(copied > 0 ? buffer : "");
            FreeBlock(buffer);
            return;
        }
        FreeBlock(buffer);
    }
    text.Assign("");
}

// ---- tool tips ----
//
// The tool tip holds one tool at most: the window of the control under the pointer, found
// among the dialog's direct children by position, disabled or not, so that a combo box's
// edit part counts as the combo box. The dialog hands it every mouse message over itself
// and its controls; when the pointer comes onto another control the tool is made anew, so
// the tip of the control left goes and the new one's shows after the usual delay.

HWND ToolTipOf(HWND dialog)
{
    return static_cast<HWND>(GetPropA(dialog, ToolTipProperty));
}

// The control under a point of the screen; the dialog itself where there is none, and
// null outside its client area.
HWND ControlAt(HWND dialog, POINT screen)
{
    POINT client = screen;
    ScreenToClient(dialog, &client);
    return ChildWindowFromPointEx(dialog, client, CWP_SKIPINVISIBLE);
}

TOOLINFOA ToolFor(HWND dialog, HWND control)
{
    TOOLINFOA tool = {};
    tool.cbSize = TTTOOLINFOA_V2_SIZE;
    tool.uFlags = TTF_IDISHWND;
    tool.hwnd = dialog;
    tool.uId = reinterpret_cast<UINT_PTR>(control);
    tool.lpszText = LPSTR_TEXTCALLBACKA;
    return tool;
}

void RelayToToolTip(HWND dialog, UINT message)
{
    HWND tip = ToolTipOf(dialog);
    POINT screen;
    if (!tip || message < WM_MOUSEFIRST || message > WM_MOUSELAST || !GetCursorPos(&screen))
        return;
    // While a message box of its own is open the dialog is disabled and shows no tips.
    HWND control = IsWindowEnabled(dialog) ? ControlAt(dialog, screen) : nullptr;
    if (control == dialog)
        control = nullptr;
    TOOLINFOA held = ToolFor(dialog, nullptr);
    bool holds = SendMessageA(tip, TTM_ENUMTOOLSA, 0, Pointer(&held)) != 0;
    if (holds && reinterpret_cast<HWND>(held.uId) != control)
        SendMessageA(tip, TTM_DELTOOLA, 0, Pointer(&held));
    if (!control)
        return;
    if (!holds || reinterpret_cast<HWND>(held.uId) != control) {
        TOOLINFOA tool = ToolFor(dialog, control);
        SendMessageA(tip, TTM_ADDTOOLA, 0, Pointer(&tool));
    }
    POINT local = screen;
    ScreenToClient(control, &local);
    MSG relayed = {};
    relayed.hwnd = control;
    relayed.message = message;
    relayed.lParam = MAKELPARAM(local.x, local.y);
    relayed.time = static_cast<DWORD>(GetMessageTime());
    relayed.pt = screen;
    SendMessageA(tip, TTM_RELAYEVENT, 0, Pointer(&relayed));
}

// Before it shows a tip, and while it shows one, the tool tip asks which window is under
// the pointer. Over the dialog the answer is the control found as above: WindowFromPoint
// passes over a disabled control and answers a combo box's edit part. While one of the
// dialog's boxes has disabled it, the answer is the dialog, which no tool is: no tip shows.
LRESULT CALLBACK ToolTipProcedure(HWND tip, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR data)
{
    if (message == TTM_WINDOWFROMPOINT) {
        HWND dialog = reinterpret_cast<HWND>(data);
        POINT screen = *reinterpret_cast<const POINT*>(lParam);
        HWND under = WindowFromPoint(screen);
        if (under == dialog || IsChild(dialog, under))
            return reinterpret_cast<LRESULT>(IsWindowEnabled(dialog) ? ControlAt(dialog, screen) : dialog);
        return reinterpret_cast<LRESULT>(under);
    }
    if (message == WM_NCDESTROY)
        RemoveWindowSubclass(tip, ToolTipProcedure, 0);
    return DefSubclassProc(tip, message, wParam, lParam);
}

// A key pressed hides the tip on show, as the framework's tips do. The thread's keyboard hook
// sees every key before the control that has the focus; the tip is the one of the dialog that
// holds the focus, if it has one.
LRESULT CALLBACK KeyHidesTip(int code, WPARAM key, LPARAM flags)
{
    const bool pressed = (flags & 0x80000000) == 0;   // the transition bit: 0 for a key going down
    HWND focus = GetFocus();
    if (code == HC_ACTION && pressed && focus) {
        if (HWND tip = ToolTipOf(GetAncestor(focus, GA_ROOT)))
            SendMessageA(tip, TTM_POP, 0, 0);
    }
    return CallNextHookEx(nullptr, code, key, flags);
}

}   // namespace

// ---- message routing ----

class CDialogRouter {
public:
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

private:
    static INT_PTR Dispatch(CDialog& dialog, HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static INT_PTR NeedText(CDialog& dialog, LPARAM lParam);
};

// `this` is valid from WM_INITDIALOG on; the few messages that come before it (WM_SETFONT
// and the like) find no dialog and get the default handling. The window field is cleared
// at WM_NCDESTROY, the last message the window receives.
INT_PTR CALLBACK CDialogRouter::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    CDialog* dialog;
    if (message == WM_INITDIALOG) {
        dialog = reinterpret_cast<CDialog*>(lParam);
        SetWindowLongPtrA(window, DWLP_USER, lParam);
        dialog->window = window;
    } else {
        dialog = reinterpret_cast<CDialog*>(GetWindowLongPtrA(window, DWLP_USER));
    }
    if (!dialog)
        return FALSE;
    if (message == WM_NCDESTROY) {
        if (HHOOK hook = static_cast<HHOOK>(RemovePropA(window, KeyHookProperty)))
            UnhookWindowsHookEx(hook);
        RemovePropA(window, ToolTipProperty);
        RemovePropA(window, EndedProperty);
        dialog->window = nullptr;
        return FALSE;
    }
    return Dispatch(*dialog, window, message, wParam, lParam);
}

// The answer is a dialog procedure's: TRUE for a message handled, FALSE for the default
// handling; for WM_CTLCOLOR* and WM_QUERYDRAGICON the handle itself.
INT_PTR CDialogRouter::Dispatch(CDialog& dialog, HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_INITDIALOG:
        CentreWindow(window);
        return dialog.OnInitDialog() ? TRUE : FALSE;
    case WM_COMMAND: {
        // Button clicks only (BN_CLICKED, also the code of Enter and Escape in a dialog);
        // the notifications of the combo box come with other codes and are no commands.
        if (HIWORD(wParam) != BN_CLICKED)
            return FALSE;
        int id = LOWORD(wParam);
        if (id == IDOK)
            dialog.OnOK();
        else if (id == IDCANCEL)
            dialog.OnCancel();
        else
            dialog.OnCommand(id);
        return TRUE;
    }
    case WM_CLOSE:
        dialog.OnCancel();
        return TRUE;
    case WM_WINDOWPOSCHANGING:
        // A template with WS_VISIBLE has the dialog shown once WM_INITDIALOG returns,
        // even when the start-up ended it; an ended dialog is kept out of sight, so a
        // refused start shows nothing but its message.
        if (GetPropA(window, EndedProperty))
            reinterpret_cast<WINDOWPOS*>(lParam)->flags &= ~SWP_SHOWWINDOW;
        return FALSE;
    case WM_SETCURSOR:
        // Comes with every mouse message over the dialog: a control hands it to its
        // parent first, and over a disabled control it comes to the dialog.
        RelayToToolTip(window, HIWORD(lParam));
        return FALSE;
    case WM_APP:
        dialog.OnAppMessage();
        return TRUE;
    case WM_PAINT:
        dialog.OnPaint();
        return TRUE;
    case WM_QUERYDRAGICON:
        return reinterpret_cast<INT_PTR>(dialog.OnQueryDragIcon());
    case WM_CTLCOLORMSGBOX:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSCROLLBAR:
    case WM_CTLCOLORSTATIC: {
        CColourContext context(reinterpret_cast<void*>(wParam));
        HWND control = reinterpret_cast<HWND>(lParam);
        int id = control ? GetDlgCtrlID(control) : 0;
        return reinterpret_cast<INT_PTR>(dialog.OnCtlColor(context, id, static_cast<int>(message - WM_CTLCOLORMSGBOX)));
    }
    case WM_NOTIFY:
        if (reinterpret_cast<const NMHDR*>(lParam)->code == TTN_NEEDTEXTA)
            return NeedText(dialog, lParam);
        return FALSE;
    default:
        return FALSE;
    }
}

// The tool is a control's window when TTF_IDISHWND is set; its id is the control id.
// The text handed back must outlive the call: the tool tip copies it after we return,
// and it may be longer than the record's own 80-byte buffer.
INT_PTR CDialogRouter::NeedText(CDialog& dialog, LPARAM lParam)
{
    TOOLTIPTEXTA* record = reinterpret_cast<TOOLTIPTEXTA*>(lParam);
    UINT_PTR from = record->hdr.idFrom;
    int id = (record->uFlags & TTF_IDISHWND) ? GetDlgCtrlID(reinterpret_cast<HWND>(from)) : static_cast<int>(from);
    const char* text = nullptr;
    if (!dialog.OnNeedText(id, &text) || !text)
        return FALSE;
    record->lpszText = const_cast<char*>(text);
    record->hinst = nullptr;
    return TRUE;
}

// ---- the dialog ----



// A dialog without a parent of its own is owned by the window active on this thread, so
// that a dialog opened from another one blocks it for as long as it runs.
int CDialog::DoModal()
{
    INT_PTR result = DialogBoxParamA(ModuleInstance(), MAKEINTRESOURCEA(templateId), GetActiveWindow(),
                                     CDialogRouter::Procedure, reinterpret_cast<LPARAM>(this));
    window = nullptr;
    return static_cast<int>(result);
}

void CDialog::EndDialog(int code)
{
    if (!window)
        return;
    SetPropA(AsWindow(window), EndedProperty, AsWindow(window));
    ::EndDialog(AsWindow(window), code);
}


// The default brush and colours are DefWindowProc's for this kind of control.
BrushHandle CDialog::OnCtlColor(CColourContext& context, int controlId, int kind)
{
    if (!window)
        return nullptr;
    HWND control = controlId ? GetDlgItem(AsWindow(window), controlId) : AsWindow(window);
    return reinterpret_cast<BrushHandle>(DefWindowProcA(AsWindow(window), WM_CTLCOLORMSGBOX + kind,
                                                        reinterpret_cast<WPARAM>(context.Handle()),
                                                        reinterpret_cast<LPARAM>(control)));
}

// DefWindowProc, not DefDlgProc: the latter would call this dialog's procedure again.
void CDialog::DefaultPaint()
{
    if (window)
        DefWindowProcA(AsWindow(window), WM_PAINT, 0, 0);
}

// ---- controls by id ----

namespace {

HWND Item(void* window, int id)
{
    return window ? GetDlgItem(AsWindow(window), id) : nullptr;
}

// Sends to the control with this id; `missing` when there is no such control.
LRESULT SendItem(void* window, int id, UINT message, WPARAM wParam, LPARAM lParam, LRESULT missing = 0)
{
    HWND control = Item(window, id);
    return control ? SendMessageA(control, message, wParam, lParam) : missing;
}

}   // namespace

bool CDialog::HasItem(int id) const { return Item(window, id) != nullptr; }

void CDialog::EnableItemWindow(int id, bool enable)
{
    if (HWND control = Item(window, id))
        EnableWindow(control, enable ? TRUE : FALSE);
}

void CDialog::ShowItemWindow(int id, bool show)
{
    if (HWND control = Item(window, id))
        ShowWindow(control, show ? SW_SHOW : SW_HIDE);
}

bool CDialog::IsItemEnabled(int id) const
{
    HWND control = Item(window, id);
    return control && IsWindowEnabled(control);
}

// The control's own flag: a control of a dialog not yet shown still counts as visible.
bool CDialog::IsItemVisible(int id) const
{
    HWND control = Item(window, id);
    return control && (GetWindowLongA(control, GWL_STYLE) & WS_VISIBLE) != 0;
}

void CDialog::SetItemText(int id, const char* text)
{
    if (HWND control = Item(window, id))
        SetWindowTextA(control, text);
}

void CDialog::SetItemFont(int id, FontHandle font)
{
    SendItem(window, id, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
}

void CDialog::ComboAddString(int id, const char* text)
{
    SendItem(window, id, CB_ADDSTRING, 0, Pointer(text));
}

void CDialog::ComboSetCurSel(int id, int index)
{
    SendItem(window, id, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
}

int CDialog::ComboGetCurSel(int id) const
{
    return static_cast<int>(SendItem(window, id, CB_GETCURSEL, 0, 0, CB_ERR));
}

void CDialog::ComboGetLBText(int id, int index, CTextString& text) const
{
    LRESULT length = index < 0 ? CB_ERR : SendItem(window, id, CB_GETLBTEXTLEN, static_cast<WPARAM>(index), 0, CB_ERR);
    char* buffer = length < 0 ? nullptr : static_cast<char*>(AllocateBlock(static_cast<std::size_t>(length) + 1));
    if (!buffer) {
        text.Assign("");
        return;
    }
    buffer[0] = '\0';
    SendItem(window, id, CB_GETLBTEXT, static_cast<WPARAM>(index), Pointer(buffer));
    buffer[length] = '\0';
    text.Assign(buffer);
    FreeBlock(buffer);
}

void CDialog::ListInsertColumn(int id, int column, const char* heading, int width)
{
    LVCOLUMNA record = {};
    record.mask = LVCF_FMT | LVCF_TEXT | LVCF_WIDTH;
    record.fmt = LVCFMT_LEFT;
    record.cx = width;
    record.pszText = const_cast<char*>(heading);
    SendItem(window, id, LVM_INSERTCOLUMNA, static_cast<WPARAM>(column), Pointer(&record));
}

void CDialog::ListSetExtendedStyle(int id, std::uint32_t style)
{
    SendItem(window, id, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, static_cast<LPARAM>(style));
}

void CDialog::ListDeleteAllItems(int id)
{
    SendItem(window, id, LVM_DELETEALLITEMS, 0, 0);
}

void CDialog::ListInsertItem(int id, int item, const char* text)
{
    LVITEMA record = {};
    record.mask = LVIF_TEXT;
    record.iItem = item;
    record.pszText = const_cast<char*>(text);
    SendItem(window, id, LVM_INSERTITEMA, 0, Pointer(&record));
}

int CDialog::ListFindItem(int id, const char* text) const
{
    LVFINDINFOA record = {};
    record.flags = LVFI_STRING;
    record.psz = text;
    return static_cast<int>(SendItem(window, id, LVM_FINDITEMA, static_cast<WPARAM>(-1), Pointer(&record), -1));
}

int CDialog::ListGetNextSelected(int id, int row) const
{
    return static_cast<int>(SendItem(window, id, LVM_GETNEXTITEM, static_cast<WPARAM>(row), LVNI_SELECTED, -1));
}

void CDialog::ListGetItemText(int id, int row, CTextString& text) const
{
    if (!Item(window, id)) {
        text.Assign("");
        return;
    }
    ReadGrowing(text, [&](char* buffer, int size) {
        LVITEMA record = {};
        record.iSubItem = 0;
        record.pszText = buffer;
        record.cchTextMax = size;
        return static_cast<int>(SendItem(window, id, LVM_GETITEMTEXTA, static_cast<WPARAM>(row), Pointer(&record)));
    });
}

void CDialog::ListDeleteItem(int id, int row)
{
    SendItem(window, id, LVM_DELETEITEM, static_cast<WPARAM>(row), 0);
}

// ---- messages, icons, drawing ----

int CDialog::ShowMessage(const char* text, const char* caption, std::uint32_t flags)
{
    return MessageBoxA(AsWindow(window), text, caption, flags);
}

void CDialog::QueueAppMessage()
{
    if (window)
        PostMessageA(AsWindow(window), WM_APP, 0, 0);
}

void CDialog::SetWindowIcon(bool big, IconHandle icon)
{
    if (window)
        SendMessageA(AsWindow(window), WM_SETICON, big ? ICON_BIG : ICON_SMALL, reinterpret_cast<LPARAM>(icon));
}

bool CDialog::IsMinimised() const
{
    return window && IsIconic(AsWindow(window));
}

int CDialog::ClientWidth() const
{
    RECT client = {};
    if (window)
        GetClientRect(AsWindow(window), &client);
    return client.right - client.left;
}

int CDialog::ClientHeight() const
{
    RECT client = {};
    if (window)
        GetClientRect(AsWindow(window), &client);
    return client.bottom - client.top;
}

void CDialog::Redraw()
{
    if (window)
        RedrawWindow(AsWindow(window), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
}

// The tool tip control of the dialog, with the tool of the control under the pointer
// made as the pointer moves (above); it asks the dialog for the text (TTN_NEEDTEXTA)
// each time it shows.
bool CDialog::EnableToolTips()
{
    if (!window)
        return false;
    HWND dialog = AsWindow(window);
    if (ToolTipOf(dialog))
        return true;
    HWND tip = CreateWindowExA(WS_EX_TOPMOST, TOOLTIPS_CLASSA, nullptr, WS_POPUP | TTS_ALWAYSTIP, CW_USEDEFAULT,
                               CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, dialog, nullptr, ModuleInstance(), nullptr);
    if (!tip)
        return false;
    SetPropA(dialog, ToolTipProperty, tip);
    SetWindowSubclass(tip, ToolTipProcedure, 0, reinterpret_cast<DWORD_PTR>(dialog));
    if (HHOOK hook = SetWindowsHookExA(WH_KEYBOARD, KeyHidesTip, nullptr, GetCurrentThreadId()))
        SetPropA(dialog, KeyHookProperty, hook);
    return true;
}

void CDialog::SetToolTipLimits(int maxWidth, int autoPopMilliseconds)
{
    HWND tip = window ? ToolTipOf(AsWindow(window)) : nullptr;
    if (!tip)
        return;
    SendMessageA(tip, TTM_SETMAXTIPWIDTH, 0, maxWidth);
    SendMessageA(tip, TTM_SETDELAYTIME, TTDT_AUTOPOP, MAKELPARAM(autoPopMilliseconds, 0));
}

// ---- painting ----

namespace {

// What EndPaint needs: the window and its PAINTSTRUCT, whose hdc is drawn on.
struct CPaintRecord {
    HWND window;
    PAINTSTRUCT paint;
};

HDC PaintDC(void* context)
{
    return context ? static_cast<CPaintRecord*>(context)->paint.hdc : nullptr;
}

}   // namespace

// The record lives in a block of its own; without one nothing is painted and the
// default painting that follows validates the window.
CPaintContext::CPaintContext(CDialog& dialog) : context(nullptr)
{
    if (!dialog.Handle())
        return;
    CPaintRecord* record = static_cast<CPaintRecord*>(AllocateBlock(sizeof(CPaintRecord)));
    if (!record)
        return;
    record->window = AsWindow(dialog.Handle());
    BeginPaint(record->window, &record->paint);
    context = record;
}

CPaintContext::~CPaintContext()
{
    if (!context)
        return;
    CPaintRecord* record = static_cast<CPaintRecord*>(context);
    EndPaint(record->window, &record->paint);
    FreeBlock(record);
}

void CPaintContext::EraseIconBackground()
{
    if (context)
        SendMessageA(static_cast<CPaintRecord*>(context)->window, WM_ICONERASEBKGND,
                     reinterpret_cast<WPARAM>(PaintDC(context)), 0);
}

void CPaintContext::DrawIconAt(int x, int y, IconHandle icon)
{
    if (context)
        DrawIcon(PaintDC(context), x, y, static_cast<HICON>(icon));
}

void CPaintContext::DrawIconSized(int x, int y, IconHandle icon, int width, int height)
{
    if (context)
        DrawIconEx(PaintDC(context), x, y, static_cast<HICON>(icon), width, height, 0, nullptr, DI_NORMAL);
}

void CColourContext::SetTextColour(std::uint32_t colour)
{
    SetTextColor(static_cast<HDC>(context), colour);
}

// ---- icons, fonts, brushes, strings ----

IconHandle LoadAppIcon(int resourceId)
{
    return LoadIconA(ModuleInstance(), MAKEINTRESOURCEA(resourceId));
}

IconHandle ExtractIconFrom(const char* path, int index)
{
    return ExtractIconA(ModuleInstance(), path, static_cast<UINT>(index));
}

void DestroyIconHandle(IconHandle icon)
{
    if (icon && icon != NotAnIconFile)
        DestroyIcon(static_cast<HICON>(icon));
}

int SystemIconWidth() { return GetSystemMetrics(SM_CXICON); }
int SystemIconHeight() { return GetSystemMetrics(SM_CYICON); }

FontHandle MakeFont(int height, int weight, int quality, const char* face)
{
    return CreateFontA(height, 0, 0, 0, weight, 0, 0, 0, ANSI_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                       static_cast<DWORD>(quality), DEFAULT_PITCH | FF_DONTCARE, face);
}

void DeleteFontHandle(FontHandle font)
{
    if (font)
        DeleteObject(static_cast<HFONT>(font));
}

BrushHandle MakeSolidBrush(std::uint32_t colour)
{
    return CreateSolidBrush(colour);
}

void DeleteBrushHandle(BrushHandle brush)
{
    if (brush)
        DeleteObject(static_cast<HBRUSH>(brush));
}

// LoadStringA copies at most size - 1 bytes and answers how many; a text that fills the
// buffer may have been cut, so the buffer grows until it does not.
void LoadResourceString(int id, CTextString& text)
{
    ReadGrowing(text, [id](char* buffer, int size) {
        return LoadStringA(ModuleInstance(), static_cast<UINT>(id), buffer, size);
    });
}
