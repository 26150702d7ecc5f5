#pragma once
// CDialog: the least of a dialog framework that the application's dialogs need.
//
// A dialog is made from a resource template and run modally. Its controls are reached by
// id at each use and never kept: every operation below names the control by id and does
// nothing (or answers the "missing" value) when the dialog has no such control. Messages
// come to the virtual handlers on the one user-interface thread.
//
// Two backends: the real Win32 dialog (platform/win32/), and an in-memory model of the
// controls for tests and scripted runs (platform/model/, with its own test-facing header).
// The dialogs above this layer read the same on both.

#include <cstdint>

class CTextString;
class CDialog;

// Opaque handles of the platform: HICON, HFONT, HBRUSH, HDC on Windows.
typedef void* IconHandle;
typedef void* FontHandle;
typedef void* BrushHandle;

// Control ids the framework itself gives meaning to.
const int IdOk = 1;
const int IdCancel = 2;

// Message box flags, as Windows has them.
const std::uint32_t MessageOk = 0x00;
const std::uint32_t MessageIconExclamation = 0x30;

// The private message a dialog posts to itself; it reaches OnAppMessage.
const std::uint32_t AppMessage = 0x8000;

// ExtractIconFrom's answer for a file that is no executable, library or icon file.
const IconHandle NotAnIconFile = reinterpret_cast<IconHandle>(1);

// Kinds of control that ask for colours (CTLCOLOR_*).
const int ColourKindStatic = 6;

// Draws during OnPaint (a paint DC on Windows). Open only inside OnPaint.
class CPaintContext {
public:
    explicit CPaintContext(CDialog& dialog);   // BeginPaint
    ~CPaintContext();                                 // EndPaint
    CPaintContext(const CPaintContext&) = delete;
    CPaintContext& operator=(const CPaintContext&) = delete;

    // Sends the dialog WM_ICONERASEBKGND with this context.
    void EraseIconBackground();
    void DrawIconAt(int x, int y, IconHandle icon);                                   // DrawIcon
    void DrawIconSized(int x, int y, IconHandle icon, int width, int height);         // DrawIconEx, DI_NORMAL

private:
    // The backend's record of the painting, owned by it; null when nothing is painted.
    void* context;
};

// The device context a control's colours are asked for with (OnCtlColor).
class CColourContext {
public:
    explicit CColourContext(void* deviceContext) : context(deviceContext) {}
    void SetTextColour(std::uint32_t colour);   // a Windows COLORREF: 0x00BBGGRR
    void* Handle() const { return context; }

private:
    void* context;
};

class CDialog {
public:
    explicit CDialog(int templateId_) : templateId(templateId_), window(nullptr) {}
    virtual ~CDialog() = default;
    CDialog(const CDialog&) = delete;
    CDialog& operator=(const CDialog&) = delete;

    // Runs the dialog from its template until EndDialog, and answers the code given there
    // (-1 when the dialog could not be made). EndDialog called inside OnInitDialog ends
    // the run before the dialog is ever shown.
    int DoModal();
    void EndDialog(int code);
    // The window handle (HWND) while the dialog exists, null otherwise.
    void* Handle() const { return window; }

    // Handlers. The base versions do what the framework does by default.
    virtual bool OnInitDialog() { return true; }   // true: the framework sets the focus
    virtual void OnOK() { EndDialog(IdOk); }
    virtual void OnCancel() { EndDialog(IdCancel); }   // IdCancel, the close box, Escape
    virtual void OnCommand(int /*id*/) {}              // any other command id
    virtual void OnAppMessage() {}                     // the posted AppMessage
    virtual void OnPaint() { DefaultPaint(); }
    virtual IconHandle OnQueryDragIcon() { return nullptr; }   // null: the framework's default
    // Colours of a control: the base answers the platform's default brush. An override
    // may change the context's text colour and answer the base's brush.
    virtual BrushHandle OnCtlColor(CColourContext& context, int controlId, int kind);
    // Text of a tool tip for the control with this id (0 when the platform knows none).
    // *text must stay valid after the call; false leaves the tip without text.
    virtual bool OnNeedText(int /*controlId*/, const char** /*text*/) { return false; }

    // The default handling of WM_PAINT (CWnd::Default).
    void DefaultPaint();

    // Controls by id.
    bool HasItem(int id) const;
    void EnableItemWindow(int id, bool enable);
    void ShowItemWindow(int id, bool show);
    bool IsItemEnabled(int id) const;
    bool IsItemVisible(int id) const;
    void SetItemText(int id, const char* text);
    void SetItemFont(int id, FontHandle font);   // WM_SETFONT with redraw

    // Combo box: CB_ADDSTRING, CB_SETCURSEL, CB_GETCURSEL (-1 for none), GetLBText
    // (empty text for -1 or a failed allocation).
    void ComboAddString(int id, const char* text);
    void ComboSetCurSel(int id, int index);
    int ComboGetCurSel(int id) const;
    void ComboGetLBText(int id, int index, CTextString& text) const;

    // List view in report mode, one column.
    void ListInsertColumn(int id, int column, const char* heading, int width);   // LVCFMT_LEFT, sub-item -1
    void ListSetExtendedStyle(int id, std::uint32_t style);                      // LVM_SETEXTENDEDLISTVIEWSTYLE, mask 0
    void ListDeleteAllItems(int id);
    void ListInsertItem(int id, int item, const char* text);                     // LVIF_TEXT
    int ListFindItem(int id, const char* text) const;        // LVFI_STRING from -1: whole text, any case; -1 if none
    int ListGetNextSelected(int id, int row) const;          // LVNI_SELECTED after row (-1: from the top); -1 if none
    void ListGetItemText(int id, int row, CTextString& text) const;   // sub-item 0
    void ListDeleteItem(int id, int row);

    // A modal message box owned by the dialog; answers the button pressed.
    int ShowMessage(const char* text, const char* caption, std::uint32_t flags);
    // Queues AppMessage (wParam 0, lParam 0) for the dialog's message loop.
    void QueueAppMessage();

    // Icons and drawing of the window.
    void SetWindowIcon(bool big, IconHandle icon);   // WM_SETICON
    bool IsMinimised() const;
    int ClientWidth() const;
    int ClientHeight() const;
    void Redraw();   // RedrawWindow: invalidate, erase, update now

    // Tool tips for every control of the dialog, enabled or not, texts asked of OnNeedText
    // with the control's id. None shows while a box of the dialog has disabled it, and a key
    // pressed hides the one on show.
    bool EnableToolTips();
    // On the tool tip control of the dialog, if there is one: maximum width in pixels,
    // and how long a tip stays (TTDT_AUTOPOP) in milliseconds.
    void SetToolTipLimits(int maxWidth, int autoPopMilliseconds);

protected:
    int templateId;
    void* window;

private:
    friend class CDialogRouter;   // the backend's message routing sets window and calls the handlers
};

// Icons of the module and of files.
IconHandle LoadAppIcon(int resourceId);                          // from the program's resources
IconHandle ExtractIconFrom(const char* path, int index);         // null: none; NotAnIconFile
void DestroyIconHandle(IconHandle icon);
int SystemIconWidth();    // SM_CXICON
int SystemIconHeight();   // SM_CYICON

// Fonts and brushes the dialogs make and own.
FontHandle MakeFont(int height, int weight, int quality, const char* face);   // other CreateFontA arguments 0
void DeleteFontHandle(FontHandle font);
BrushHandle MakeSolidBrush(std::uint32_t colour);
void DeleteBrushHandle(BrushHandle brush);

// The string resource with this id into text; empty text when there is none.
void LoadResourceString(int id, CTextString& text);
