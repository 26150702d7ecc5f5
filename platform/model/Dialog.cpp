// The model dialog backend: CDialog and its helpers over the in-memory controls of
// DialogModel.h. An operation on a dialog without a window, or on a missing control, does
// nothing and answers the "missing" value, as the real one does.

#include "platform/model/DialogModel.h"

#include <algorithm>
#include <sstream>

#include "text/TextString.h"

namespace {

CDialogModel* theModel = nullptr;

// One line of the log: the parts separated by blanks, handles and colours as pointers.
template <class... Parts>
void Log(const Parts&... parts)
{
    std::ostringstream line;
    ((line << ' ' << parts), ...);
    DialogModel().Call(line.str().substr(1));
}

void* Hex(std::uintptr_t value) { return reinterpret_cast<void*>(value); }

// The order of the sorted controls: ASCII letters folded to upper case, bytes unsigned.
std::string Folded(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(), [](char c) { return c >= 'a' && c <= 'z' ? c - 32 : c; });
    return text;
}

bool SortsBefore(const std::string& a, const std::string& b)
{
    const std::string x = Folded(a), y = Folded(b);
    return std::lexicographical_compare(x.begin(), x.end(), y.begin(), y.end(),
                                        [](unsigned char l, unsigned char r) { return l < r; });
}

// The control with this id, or a blank stand-in that is gone by the next call when the
// dialog has no window or no such control.
ModelControl& Item(void* window, int id)
{
    static ModelControl missing;
    auto* controls = window ? &static_cast<CModelWindow*>(window)->controls : nullptr;
    return controls && controls->count(id) ? controls->at(id) : (missing = ModelControl{false, false, {}, {}, {}});
}

// The item at index of a control, or null.
const std::string* ItemAt(void* window, int id, int index)
{
    const std::vector<std::string>& items = Item(window, id).items;
    return index >= 0 && index < static_cast<int>(items.size()) ? &items[static_cast<std::size_t>(index)] : nullptr;
}

// Fonts and brushes are numbered in the order made: the nth is 0xf0 + n or 0xb0 + n.
void* NextHandle(std::uintptr_t base) { return Hex(base + static_cast<std::uintptr_t>(++DialogModel().handlesMade)); }

}   // namespace

CDialogModel& DialogModel() { return theModel ? *theModel : *(theModel = new CDialogModel()); }

void ResetDialogModel()
{
    delete theModel;
    theModel = new CDialogModel();
}

void CDialogModel::Call(const std::string& line)
{
    if (beforeCall)
        beforeCall();
    calls.push_back(line);
}

int CDialogModel::PumpMessages()
{
    int delivered = 0;
    for (; !posted.empty(); posted.pop_front()) {
        if (posted.front()->Handle() && ++delivered)
            posted.front()->OnAppMessage();
    }
    return delivered;
}

CModelWindow* CDialogModel::LastWindow(int templateId)
{
    auto found = std::find_if(windows.rbegin(), windows.rend(), [&](CModelWindow& w) { return w.templateId == templateId; });
    return found == windows.rend() ? nullptr : &*found;
}

bool CModelWindow::Press(int id)
{
    if (!dialog || !Item(this, id).enabled)
        return false;
    id == IdOk ? dialog->OnOK() : id == IdCancel ? dialog->OnCancel() : dialog->OnCommand(id);
    return true;
}

bool CModelWindow::Select(int id, const std::vector<int>& selection)
{
    return Item(this, id).enabled && (Item(this, id).selection = selection, true);
}

CDialog::CDialog(int templateId_) : templateId(templateId_), window(nullptr) {}
CDialog::~CDialog() {}

// After OnInitDialog the session plays the user; a dialog still open then is closed with
// the close box, and one that an OnCancel failed to end is ended, so that a faulty
// handler fails its test instead of running for ever.
int CDialog::DoModal()
{
    CDialogModel& model = DialogModel();
    if (!model.templates.count(templateId))
        return -1;
    model.windows.push_back(CModelWindow{this, templateId, model.templates[templateId]});
    CModelWindow& made = model.windows.back();
    window = &made;
    OnInitDialog();
    if (!made.ended && model.sessions[templateId])
        model.sessions[templateId](made);
    if (!made.ended)
        OnCancel();
    EndDialog(IdCancel);
    made.dialog = nullptr;
    window = nullptr;
    return made.endCode;
}

void CDialog::EndDialog(int code)
{
    auto* made = static_cast<CModelWindow*>(window);
    if (made && !made->ended) {
        made->ended = true;
        made->endCode = code;
    }
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
    text.Assign(ItemAt(window, id, index) ? ItemAt(window, id, index)->c_str() : "");
}

void CDialog::ListGetItemText(int id, int row, CTextString& text) const { ComboGetLBText(id, row, text); }
void CDialog::ListSetExtendedStyle(int id, std::uint32_t style) { Log("ListSetExtendedStyle", id, Hex(style)); }

void CDialog::ListInsertColumn(int id, int column, const char* heading, int width)
{
    Log("ListInsertColumn", id, column, heading, width);
}

void CDialog::ListDeleteAllItems(int id)
{
    Item(window, id).items.clear();
    Item(window, id).selection.clear();
}

int CDialog::ListFindItem(int id, const char* text) const
{
    for (int row = 0; ItemAt(window, id, row); ++row) {
        if (Folded(*ItemAt(window, id, row)) == Folded(text))
            return row;
    }
    return -1;
}

int CDialog::ListGetNextSelected(int id, int row) const
{
    const std::vector<int>& selection = Item(window, id).selection;
    auto next = std::upper_bound(selection.begin(), selection.end(), row);
    return next == selection.end() ? -1 : *next;
}

// The rows behind a deleted one move up; the selection is dropped, as the dialog rebuilds
// the list after its deletes. Deletes are logged, since their order decides which go.
void CDialog::ListDeleteItem(int id, int row)
{
    Log("ListDeleteItem", id, row);
    if (ItemAt(window, id, row))
        Item(window, id).items.erase(Item(window, id).items.begin() + row);
    Item(window, id).selection.clear();
}

int CDialog::ShowMessage(const char* text, const char* caption, std::uint32_t flags)
{
    DialogModel().messageBoxes.push_back(ModelMessageBox{text, caption, flags});
    return IdOk;
}

void CDialog::QueueAppMessage() { DialogModel().posted.push_back(this); }
void CDialog::SetWindowIcon(bool big, IconHandle icon) { Log("SetWindowIcon", big ? "big" : "small", icon); }
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
void CColourContext::SetTextColour(std::uint32_t colour) { Log("SetTextColour", Hex(colour)); }

IconHandle LoadAppIcon(int resourceId) { return Log("LoadAppIcon", resourceId), ModelAppIcon; }

IconHandle ExtractIconFrom(const char* path, int index)
{
    Log("ExtractIconFrom", path, index);
    return DialogModel().fileIcons.count(path) ? DialogModel().fileIcons[path] : nullptr;
}

void DestroyIconHandle(IconHandle icon) { Log("DestroyIconHandle", icon); }
int SystemIconWidth() { return 32; }
int SystemIconHeight() { return 31; }

FontHandle MakeFont(int height, int weight, int quality, const char* face)
{
    FontHandle font = DialogModel().failFonts ? nullptr : NextHandle(0xF0);
    return Log("MakeFont", height, weight, quality, face, font), font;
}

void DeleteFontHandle(FontHandle font) { Log("DeleteFontHandle", font); }
BrushHandle MakeSolidBrush(std::uint32_t colour) { return Log("MakeSolidBrush", Hex(colour)), NextHandle(0xB0); }
void DeleteBrushHandle(BrushHandle brush) { Log("DeleteBrushHandle", brush); }

void LoadResourceString(int id, CTextString& text)
{
    text.Assign(DialogModel().strings.count(id) ? DialogModel().strings[id].c_str() : "");
}
