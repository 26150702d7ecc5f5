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
    DialogModel().Call(line.str().substr(1));
}

// The order of the sorted controls: ASCII letters folded to upper case, then the bytes
// unsigned, as std::string compares them.
std::string Folded(std::string text)
{
    return std::transform(text.begin(), text.end(), text.begin(), [](char c) { return c >= 'a' && c <= 'z' ? c - 32 : c; }), text;
}

bool SortsBefore(const std::string& a, const std::string& b) { return Folded(a) < Folded(b); }

// The control with this id; when the dialog has no window or no such control, a blank
// stand-in, off and hidden, that the next call forgets.
ModelControl& Item(void* window, int id)
{
    static ModelControl missing;
    auto* controls = window ? &static_cast<CModelWindow*>(window)->controls : nullptr;
    return controls && controls->count(id) ? controls->at(id) : (missing = ModelControl{false, false, {}, {}, {}});
}

bool HasRow(void* window, int id, int row) { return row >= 0 && row < static_cast<int>(Item(window, id).items.size()); }

}   // namespace

CDialogModel& DialogModel() { return theModel ? *theModel : *(theModel = new CDialogModel()); }

void ResetDialogModel()
{
    delete theModel;
    theModel = new CDialogModel();
}

void CDialogModel::Call(const std::string& line) { beforeCall ? beforeCall() : void(), calls.push_back(line); }

void CDialogModel::PumpMessages()
{
    for (; !posted.empty(); posted.pop_front())
        posted.front()->Handle() ? posted.front()->OnAppMessage() : void();
}

bool CModelWindow::Press(int id)
{
    if (!Item(this, id).enabled)
        return false;
    id == IdOk ? dialog->OnOK() : id == IdCancel ? dialog->OnCancel() : dialog->OnCommand(id);
    return true;
}

bool CModelWindow::Select(int id, const std::vector<int>& rows) { return Item(this, id).enabled && (Item(this, id).selection = rows, true); }

CDialog::CDialog(int templateId_) : templateId(templateId_), window(nullptr) {}
CDialog::~CDialog() {}

// After OnInitDialog (whose true sets the focus) the session plays the user; a dialog still open then is closed with
// the close box, and one that an OnCancel failed to end ends all the same, so that a
// faulty handler fails its test instead of running for ever.
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

bool CDialog::OnInitDialog() { return true; }
void CDialog::OnOK() { EndDialog(IdOk); }
void CDialog::OnCancel() { EndDialog(IdCancel); }
void CDialog::OnCommand(int) {}
void CDialog::OnAppMessage() {}
void CDialog::OnPaint() { DefaultPaint(); }
IconHandle CDialog::OnQueryDragIcon() { return nullptr; }
BrushHandle CDialog::OnCtlColor(CColourContext&, int, int) { return nullptr; }
bool CDialog::OnNeedText(int, const char**) { return false; }
void CDialog::DefaultPaint() { Log("DefaultPaint"); }

bool CDialog::HasItem(int id) const { return window && static_cast<CModelWindow*>(window)->controls.count(id); }
bool CDialog::IsItemEnabled(int id) const { return Item(window, id).enabled; }
bool CDialog::IsItemVisible(int id) const { return Item(window, id).visible; }
void CDialog::EnableItemWindow(int id, bool enable) { Item(window, id).enabled = enable; }
void CDialog::ShowItemWindow(int id, bool show) { Item(window, id).visible = show; }
void CDialog::SetItemText(int id, const char* text) { Item(window, id).text = text; }
void CDialog::SetItemFont(int id, FontHandle font) { Log("SetItemFont", id, font); }

// Both sorted controls place a new item by their order; the item number is not looked at.
void CDialog::ComboAddString(int id, const char* text)
{
    std::vector<std::string>& items = Item(window, id).items;
    items.insert(std::upper_bound(items.begin(), items.end(), text, SortsBefore), text);
}

void CDialog::ListInsertItem(int id, int, const char* text) { ComboAddString(id, text); }
void CDialog::ComboSetCurSel(int id, int index) { Item(window, id).selection = {index}; }
int CDialog::ComboGetCurSel(int id) const { return Item(window, id).selection.empty() ? -1 : Item(window, id).selection[0]; }

void CDialog::ComboGetLBText(int id, int index, CTextString& text) const
{
    text.Assign(HasRow(window, id, index) ? Item(window, id).items[static_cast<std::size_t>(index)].c_str() : "");
}

void CDialog::ListGetItemText(int id, int row, CTextString& text) const { ComboGetLBText(id, row, text); }
void CDialog::ListInsertColumn(int id, int column, const char* head, int width) { Log("ListInsertColumn", id, column, head, width); }
void CDialog::ListSetExtendedStyle(int id, std::uint32_t style) { Log("ListSetExtendedStyle", id, style); }
void CDialog::ListDeleteAllItems(int id) { Item(window, id).items.clear(), Item(window, id).selection.clear(); }

int CDialog::ListFindItem(int id, const char* text) const
{
    const std::vector<std::string>& items = Item(window, id).items;
    auto found = std::find_if(items.begin(), items.end(), [&](auto& item) { return Folded(item) == Folded(text); });
    return found == items.end() ? -1 : static_cast<int>(found - items.begin());
}

int CDialog::ListGetNextSelected(int id, int row) const
{
    const std::vector<int>& selection = Item(window, id).selection;
    auto next = std::upper_bound(selection.begin(), selection.end(), row);
    return next == selection.end() ? -1 : *next;
}

// The rows behind a deleted one move up, and the selection goes, as the dialog rebuilds the
// list after its deletes. Deletes are logged, since their order decides which rows go.
void CDialog::ListDeleteItem(int id, int row)
{
    Log("ListDeleteItem", row);
    if (HasRow(window, id, row))
        Item(window, id).items.erase(Item(window, id).items.begin() + row);
    Item(window, id).selection.clear();
}

int CDialog::ShowMessage(const char* text, const char* caption, std::uint32_t flags)
{
    return DialogModel().messageBoxes.push_back(std::string(caption) + "|" + text + "|" + std::to_string(flags)), IdOk;
}

void CDialog::QueueAppMessage() { DialogModel().posted.push_back(this); }
void CDialog::SetWindowIcon(bool big, IconHandle icon) { Log("SetWindowIcon", big, icon); }
bool CDialog::IsMinimised() const { return window && static_cast<CModelWindow*>(window)->minimised; }
int CDialog::ClientWidth() const { return 386; }
int CDialog::ClientHeight() const { return 317; }
void CDialog::Redraw() { Log("Redraw"); }
bool CDialog::EnableToolTips() { return Log("EnableToolTips"), true; }
void CDialog::SetToolTipLimits(int maxWidth, int autoPop) { Log("SetToolTipLimits", maxWidth, autoPop); }

CPaintContext::CPaintContext(CDialog& dialog_) : dialog(dialog_), context(nullptr), paint(nullptr) {}
CPaintContext::~CPaintContext() {}
void CPaintContext::EraseIconBackground() { Log("EraseIconBackground"); }
void CPaintContext::DrawIconAt(int x, int y, IconHandle icon) { Log("DrawIconAt", x, y, icon); }
void CPaintContext::DrawIconSized(int x, int y, IconHandle icon, int w, int h) { Log("DrawIconSized", x, y, icon, w, h); }
void CColourContext::SetTextColour(std::uint32_t colour) { Log("SetTextColour", context, colour); }

// Icons come as the test set them for a file; a font is known by its height, a brush by its
// colour.
IconHandle LoadAppIcon(int resourceId) { return Log("LoadAppIcon", resourceId), ModelAppIcon; }
IconHandle ExtractIconFrom(const char* path, int index) { return Log("ExtractIcon", path, index), DialogModel().icons[path]; }
void DestroyIconHandle(IconHandle icon) { Log("DestroyIcon", icon); }
int SystemIconWidth() { return 32; }
int SystemIconHeight() { return 31; }
FontHandle MakeFont(int height, int weight, int quality, const char* face)
{
    return Log("MakeFont", height, weight, quality, face), reinterpret_cast<FontHandle>(static_cast<std::uintptr_t>(height));
}
void DeleteFontHandle(FontHandle font) { Log("DeleteFont", font); }
BrushHandle MakeSolidBrush(std::uint32_t colour)
{
    return Log("MakeSolidBrush", colour), reinterpret_cast<BrushHandle>(static_cast<std::uintptr_t>(colour));
}
void DeleteBrushHandle(BrushHandle brush) { Log("DeleteBrush", brush); }
void LoadResourceString(int, CTextString& text) { text.Assign("a tip"); }
