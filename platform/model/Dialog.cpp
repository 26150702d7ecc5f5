// The model dialog backend: CDialog and its helpers over the in-memory controls of
// DialogModel.h. An operation on a dialog without a window, or on a missing control, does
// nothing and answers the "missing" value, as the real one does.

#include "platform/model/DialogModel.h"

#include <algorithm>
#include <sstream>

#include "text/TextString.h"

namespace {

CDialogModel* theModel = nullptr;

// One line of the log: the parts separated by blanks, handles as pointers.
template <class... Parts>
void Log(const Parts&... parts)
{
    std::ostringstream line;
    ((line << ' ' << parts), ...);
    DialogModel().calls.push_back(line.str().substr(1));
}

// The order of the sorted controls: ASCII letters folded to upper case, then the bytes
// unsigned, as std::string compares them.
std::string Folded(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(), [](char c) { return c >= 'a' && c <= 'z' ? c - 32 : c; });
    return text;
}

// The control with this id; when the dialog has no window or no such control, a blank
// stand-in, off and hidden, that the next call forgets.
ModelControl& Item(void* window, int id)
{
    static ModelControl missing;
    auto* controls = window ? &static_cast<CModelWindow*>(window)->controls : nullptr;
    return controls && controls->count(id) ? controls->at(id) : (missing = ModelControl{false, false, {}, {}, {}});
}

const char* Row(void* window, int id, int row)
{
    const std::vector<std::string>& items = Item(window, id).items;
    return row >= 0 && row < static_cast<int>(items.size()) ? items[static_cast<std::size_t>(row)].c_str() : nullptr;
}

}   // namespace

CDialogModel& DialogModel() { return theModel ? *theModel : *(theModel = new CDialogModel()); }

void ResetDialogModel()
{
    delete theModel;
    theModel = new CDialogModel();
}

bool CModelWindow::Press(int id)
{
    if (!Item(this, id).enabled)
        return false;
    id == IdOk ? dialog->OnOK() : id == IdCancel ? dialog->OnCancel() : dialog->OnCommand(id);
    return true;
}


// After OnInitDialog (whose true sets the focus) the session plays the user; a dialog still
// open then is closed with the close box, and one that an OnCancel failed to end ends all
// the same, so that a faulty handler fails its test instead of running for ever.
int CDialog::DoModal()
{
    CModelWindow made{this, DialogModel().templates[templateId]};
    window = &made;
    if (OnInitDialog())
        Log("SetFocus");
    if (!made.ended && DialogModel().sessions[templateId])
        DialogModel().sessions[templateId](made);
    if (!made.ended)
        OnCancel();
    window = nullptr;
    return made.ended ? made.endCode : IdCancel;
}

void CDialog::EndDialog(int code)
{
    auto* made = static_cast<CModelWindow*>(window);
    if (made && !made->ended)
        made->endCode = (made->ended = true, code);
}

BrushHandle CDialog::OnCtlColor(CColourContext&, int, int) { return nullptr; }
void CDialog::DefaultPaint() { Log("DefaultPaint"); }

bool CDialog::HasItem(int id) const { return window && static_cast<CModelWindow*>(window)->controls.count(id); }
bool CDialog::IsItemEnabled(int id) const { return Item(window, id).enabled; }
bool CDialog::IsItemVisible(int id) const { return Item(window, id).visible; }
void CDialog::SetItemText(int id, const char* text) { Item(window, id).text = text; }
void CDialog::SetItemFont(int id, FontHandle font) { Log("SetItemFont", id, font); }

// Switching a control that the dialog lacks does nothing; it is logged, as callers look first.
static ModelControl& Switched(const CDialog& dialog, void* window, int id)
{
    if (!dialog.HasItem(id))
        Log("NoSuchItem", id);
    return Item(window, id);
}

void CDialog::EnableItemWindow(int id, bool enable) { Switched(*this, window, id).enabled = enable; }
void CDialog::ShowItemWindow(int id, bool show) { Switched(*this, window, id).visible = show; }

// Both sorted controls place a new item by their order; the item number is not looked at.
void CDialog::ComboAddString(int id, const char* text)
{
    std::vector<std::string>& items = Item(window, id).items;
    auto place = std::find_if(items.begin(), items.end(), [&](auto& item) { return Folded(text) < Folded(item); });
    items.insert(place, text);
}

void CDialog::ListInsertItem(int id, int, const char* text) { ComboAddString(id, text); }
void CDialog::ComboSetCurSel(int id, int index) { Item(window, id).selection = {index}; }
int CDialog::ComboGetCurSel(int id) const { return Item(window, id).selection.empty() ? -1 : Item(window, id).selection[0]; }
void CDialog::ComboGetLBText(int id, int index, CTextString& text) const
{
    text.Assign(Row(window, id, index) ? Row(window, id, index) : "");
}
void CDialog::ListGetItemText(int id, int row, CTextString& text) const { ComboGetLBText(id, row, text); }
void CDialog::ListSetExtendedStyle(int id, std::uint32_t style) { Log("ListSetExtendedStyle", id, style); }

void CDialog::ListInsertColumn(int id, int column, const char* heading, int width)
{
    Log("ListInsertColumn", id, column, heading, width);
}

int CDialog::ListFindItem(int id, const char* text) const
{
    for (int row = 0; Row(window, id, row); ++row) {
        if (Folded(Row(window, id, row)) == Folded(text))
            return row;
    }
    return -1;
}

// A search starts behind a row, or at the first with -1; the control defines no other start.
int CDialog::ListGetNextSelected(int id, int row) const
{
    const std::vector<int>& selection = Item(window, id).selection;
    auto next = std::upper_bound(selection.begin(), selection.end(), row);
    return next == selection.end() || row < -1 ? -1 : *next;
}

// The rows behind a deleted one move up, and the selection goes, as the dialog rebuilds the
// list after its deletes. Deletes of one row are logged: their order decides which go.
void CDialog::ListDeleteItem(int id, int row)
{
    Log("ListDeleteItem", row);
    if (Row(window, id, row))
        Item(window, id).items.erase(Item(window, id).items.begin() + row);
    Item(window, id).selection.clear();
}

void CDialog::ListDeleteAllItems(int id)
{
    Item(window, id).items.clear();
    Item(window, id).selection.clear();
}

int CDialog::ShowMessage(const char* text, const char* caption, std::uint32_t flags)
{
    DialogModel().messageBoxes.push_back(std::string(caption) + "|" + text + "|" + std::to_string(flags));
    return IdOk;
}

// The posted message is delivered at once: the model has no drag loop to wait for.
void CDialog::QueueAppMessage() { OnAppMessage(); }
void CDialog::SetWindowIcon(bool big, IconHandle icon) { Log("SetWindowIcon", big, icon); }
bool CDialog::IsMinimised() const { return window && static_cast<CModelWindow*>(window)->minimised; }
int CDialog::ClientWidth() const { return 386; }
int CDialog::ClientHeight() const { return 317; }
void CDialog::Redraw() { Log("Redraw"); }
bool CDialog::EnableToolTips() { return Log("EnableToolTips"), true; }
void CDialog::SetToolTipLimits(int maxWidth, int autoPop) { Log("SetToolTipLimits", maxWidth, autoPop); }

CPaintContext::CPaintContext(CDialog& dialog) : context(dialog.Handle()) {}
CPaintContext::~CPaintContext() {}
void CPaintContext::EraseIconBackground() { Log("EraseIconBackground"); }
void CPaintContext::DrawIconAt(int x, int y, IconHandle icon) { Log("DrawIconAt", x, y, icon); }
void CPaintContext::DrawIconSized(int x, int y, IconHandle icon, int width, int height)
{
    Log("DrawIconSized", x, y, icon, width, height);
}
void CColourContext::SetTextColour(std::uint32_t colour) { Log("SetTextColour", context, colour); }

// An icon is what the test set for its file; a font is known by its height, a brush by its
// colour; every string resource is "a tip".
IconHandle LoadAppIcon(int resourceId) { return Log("LoadAppIcon", resourceId), ModelAppIcon; }
IconHandle ExtractIconFrom(const char* path, int) { return DialogModel().icons[path]; }
void DestroyIconHandle(IconHandle icon) { Log("DestroyIcon", icon); }
int SystemIconWidth() { return 32; }
int SystemIconHeight() { return 31; }
void DeleteFontHandle(FontHandle font) { Log("DeleteFont", font); }
void DeleteBrushHandle(BrushHandle brush) { Log("DeleteBrush", brush); }
void LoadResourceString(int, CTextString& text) { text.Assign("a tip"); }

FontHandle MakeFont(int height, int weight, int quality, const char* face)
{
    Log("MakeFont", height, weight, quality, face);
    return reinterpret_cast<FontHandle>(static_cast<std::uintptr_t>(height));
}

BrushHandle MakeSolidBrush(std::uint32_t colour)
{
    Log("MakeSolidBrush", colour);
    return reinterpret_cast<BrushHandle>(static_cast<std::uintptr_t>(colour));
}
