// The model dialog backend: CDialog and its helpers over the in-memory controls of
// DialogModel.h. Operations on a dialog without a window, or on a missing control, do
// nothing and answer the "missing" value, as the real ones do.

#include "platform/model/DialogModel.h"

#include <algorithm>
#include <cstring>

#include "text/TextString.h"

namespace {

CDialogModel* theModel = nullptr;

// The ordering of the sorted controls: ASCII letters folded, then bytes as unsigned.
bool SortsBefore(const std::string& a, const std::string& b)
{
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        unsigned char ux = static_cast<unsigned char>(x);
        unsigned char uy = static_cast<unsigned char>(y);
        if (ux >= 'a' && ux <= 'z')
            ux = static_cast<unsigned char>(ux - 32);
        if (uy >= 'a' && uy <= 'z')
            uy = static_cast<unsigned char>(uy - 32);
        return ux < uy;
    });
}

bool SameNoCase(const std::string& a, const std::string& b)
{
    return !SortsBefore(a, b) && !SortsBefore(b, a);
}

CModelWindow* WindowOf(void* window)
{
    return static_cast<CModelWindow*>(window);
}

CModelControl* ControlOf(void* window, int id)
{
    return window ? WindowOf(window)->Control(id) : nullptr;
}

template <class T>
void* HandleOf(const std::vector<T>& records)
{
    return reinterpret_cast<void*>(static_cast<std::uintptr_t>(records.size()));
}

template <class T>
T* RecordOf(std::vector<T>& records, void* handle)
{
    std::uintptr_t index = reinterpret_cast<std::uintptr_t>(handle);
    return index >= 1 && index <= records.size() ? &records[index - 1] : nullptr;
}

}   // namespace

CDialogModel& DialogModel()
{
    if (!theModel)
        theModel = new CDialogModel();
    return *theModel;
}

void ResetDialogModel()
{
    delete theModel;
    theModel = new CDialogModel();
}

CModelWindow* ModelWindowOf(const CDialog& dialog)
{
    return WindowOf(dialog.Handle());
}

// ---- the model's records ----

std::vector<std::string> CModelControl::RowTexts() const
{
    std::vector<std::string> texts;
    for (const ModelListRow& row : rows)
        texts.push_back(row.text);
    return texts;
}

std::vector<int> CModelControl::SelectedRows() const
{
    std::vector<int> selected;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].selected)
            selected.push_back(static_cast<int>(i));
    }
    return selected;
}

CModelWindow::CModelWindow(CDialog& owner, int templateId_, const std::vector<ModelControlSpec>& specs)
    : dialog(&owner), templateId(templateId_)
{
    for (const ModelControlSpec& spec : specs) {
        CModelControl control;
        control.id = spec.id;
        control.kind = spec.kind;
        control.enabled = spec.enabled;
        control.visible = spec.visible;
        controls.push_back(control);
    }
}

CModelControl* CModelWindow::Control(int id)
{
    for (CModelControl& control : controls) {
        if (control.id == id)
            return &control;
    }
    return nullptr;
}

bool CModelWindow::Press(int id)
{
    CModelControl* control = Control(id);
    if (!dialog || !control || !control->enabled || !control->visible)
        return false;
    if (id == IdOk)
        dialog->OnOK();
    else if (id == IdCancel)
        dialog->OnCancel();
    else
        dialog->OnCommand(id);
    return true;
}

void CModelWindow::Close()
{
    if (dialog)
        dialog->OnCancel();
}

bool CModelWindow::SelectEntry(int comboId, int index)
{
    CModelControl* control = Control(comboId);
    if (!control || !control->enabled || index < -1 || index >= static_cast<int>(control->entries.size()))
        return false;
    control->current = index;
    control->text = index >= 0 ? control->entries[static_cast<std::size_t>(index)] : std::string();
    return true;
}

bool CModelWindow::TypeText(int comboId, const char* text)
{
    CModelControl* control = Control(comboId);
    if (!control || !control->enabled)
        return false;
    control->text = text;
    return true;
}

bool CModelWindow::SelectRows(int listId, const std::vector<int>& rows)
{
    CModelControl* control = Control(listId);
    if (!control || !control->enabled)
        return false;
    for (int row : rows) {
        if (row < 0 || row >= static_cast<int>(control->rows.size()))
            return false;
    }
    for (ModelListRow& row : control->rows)
        row.selected = false;
    for (int row : rows)
        control->rows[static_cast<std::size_t>(row)].selected = true;
    return true;
}

int CDialogModel::LiveFonts() const
{
    return static_cast<int>(std::count_if(fonts.begin(), fonts.end(), [](const ModelFont& f) { return f.deletions == 0; }));
}

int CDialogModel::LiveBrushes() const
{
    return static_cast<int>(std::count_if(brushes.begin(), brushes.end(), [](const ModelBrush& b) { return b.deletions == 0; }));
}

const ModelFont* CDialogModel::FontOf(FontHandle font) const
{
    return RecordOf(const_cast<std::vector<ModelFont>&>(fonts), font);
}

int CDialogModel::PumpMessages()
{
    int delivered = 0;
    while (!posted.empty()) {
        CDialog* target = posted.front();
        posted.pop_front();
        if (target && target->Handle()) {
            target->OnAppMessage();
            ++delivered;
        }
    }
    return delivered;
}

CModelWindow* CDialogModel::LastWindow(int templateId)
{
    for (auto it = windows.rbegin(); it != windows.rend(); ++it) {
        if (it->templateId == templateId)
            return &*it;
    }
    return nullptr;
}

// ---- CDialog ----

CDialog::CDialog(int templateId_) : templateId(templateId_), window(nullptr) {}

CDialog::~CDialog() {}

int CDialog::DoModal()
{
    CDialogModel& model = DialogModel();
    auto found = model.templates.find(templateId);
    if (found == model.templates.end())
        return -1;
    model.windows.emplace_back(*this, templateId, found->second);
    CModelWindow& made = model.windows.back();
    window = &made;

    OnInitDialog();
    if (!made.ended) {
        auto session = model.sessions.find(templateId);
        if (session != model.sessions.end() && session->second)
            session->second(made);
    }
    if (!made.ended)
        made.Close();
    // An OnCancel that does not end the dialog would keep the real loop running for
    // ever; the model ends it so that a faulty handler fails its test instead.
    if (!made.ended)
        EndDialog(IdCancel);

    made.dialog = nullptr;
    window = nullptr;
    return made.endCode;
}

void CDialog::EndDialog(int code)
{
    if (!window || WindowOf(window)->ended)
        return;
    WindowOf(window)->ended = true;
    WindowOf(window)->endCode = code;
}

bool CDialog::OnInitDialog() { return true; }
void CDialog::OnOK() { EndDialog(IdOk); }
void CDialog::OnCancel() { EndDialog(IdCancel); }
void CDialog::OnCommand(int) {}
void CDialog::OnAppMessage() {}
void CDialog::OnPaint() { DefaultPaint(); }
IconHandle CDialog::OnQueryDragIcon() { return nullptr; }
BrushHandle CDialog::OnCtlColor(CColourContext&, int, int) { return ModelDefaultBrush; }
bool CDialog::OnNeedText(int, const char**) { return false; }

void CDialog::DefaultPaint()
{
    if (window)
        ++WindowOf(window)->defaultPaints;
}

bool CDialog::HasItem(int id) const
{
    return ControlOf(window, id) != nullptr;
}

void CDialog::EnableItemWindow(int id, bool enable)
{
    if (CModelControl* control = ControlOf(window, id))
        control->enabled = enable;
}

void CDialog::ShowItemWindow(int id, bool show)
{
    if (CModelControl* control = ControlOf(window, id))
        control->visible = show;
}

bool CDialog::IsItemEnabled(int id) const
{
    CModelControl* control = ControlOf(window, id);
    return control && control->enabled;
}

bool CDialog::IsItemVisible(int id) const
{
    CModelControl* control = ControlOf(window, id);
    return control && control->visible;
}

void CDialog::SetItemText(int id, const char* text)
{
    if (CModelControl* control = ControlOf(window, id))
        control->text = text;
}

void CDialog::SetItemFont(int id, FontHandle font)
{
    if (CModelControl* control = ControlOf(window, id)) {
        control->font = font;
        ++control->fontsSet;
    }
}

void CDialog::ComboAddString(int id, const char* text)
{
    CModelControl* control = ControlOf(window, id);
    if (!control)
        return;
    std::string entry(text);
    auto place = std::upper_bound(control->entries.begin(), control->entries.end(), entry, SortsBefore);
    int index = static_cast<int>(place - control->entries.begin());
    control->entries.insert(place, entry);
    if (control->current >= index)
        ++control->current;
}

void CDialog::ComboSetCurSel(int id, int index)
{
    CModelControl* control = ControlOf(window, id);
    if (!control)
        return;
    bool valid = index >= 0 && index < static_cast<int>(control->entries.size());
    control->current = valid ? index : -1;
    control->text = valid ? control->entries[static_cast<std::size_t>(index)] : std::string();
}

int CDialog::ComboGetCurSel(int id) const
{
    CModelControl* control = ControlOf(window, id);
    return control ? control->current : -1;
}

void CDialog::ComboGetLBText(int id, int index, CTextString& text) const
{
    CModelControl* control = ControlOf(window, id);
    if (control && index >= 0 && index < static_cast<int>(control->entries.size()))
        text.Assign(control->entries[static_cast<std::size_t>(index)].c_str());
    else
        text.Assign("");
}

void CDialog::ListInsertColumn(int id, int, const char* heading, int width)
{
    if (CModelControl* control = ControlOf(window, id)) {
        control->columnHeadings.push_back(heading);
        control->columnWidths.push_back(width);
    }
}

void CDialog::ListSetExtendedStyle(int id, std::uint32_t style)
{
    if (CModelControl* control = ControlOf(window, id))
        control->extendedStyle = style;
}

void CDialog::ListDeleteAllItems(int id)
{
    if (CModelControl* control = ControlOf(window, id))
        control->rows.clear();
}

// The list sorts ascending, so the item number is not looked at.
void CDialog::ListInsertItem(int id, int, const char* text)
{
    CModelControl* control = ControlOf(window, id);
    if (!control)
        return;
    ModelListRow row;
    row.text = text;
    auto place = std::upper_bound(control->rows.begin(), control->rows.end(), row,
                                  [](const ModelListRow& a, const ModelListRow& b) { return SortsBefore(a.text, b.text); });
    control->rows.insert(place, row);
}

int CDialog::ListFindItem(int id, const char* text) const
{
    CModelControl* control = ControlOf(window, id);
    if (!control)
        return -1;
    for (std::size_t i = 0; i < control->rows.size(); ++i) {
        if (SameNoCase(control->rows[i].text, text))
            return static_cast<int>(i);
    }
    return -1;
}

int CDialog::ListGetNextSelected(int id, int row) const
{
    CModelControl* control = ControlOf(window, id);
    if (!control)
        return -1;
    for (int i = row < 0 ? 0 : row + 1; i < static_cast<int>(control->rows.size()); ++i) {
        if (control->rows[static_cast<std::size_t>(i)].selected)
            return i;
    }
    return -1;
}

void CDialog::ListGetItemText(int id, int row, CTextString& text) const
{
    CModelControl* control = ControlOf(window, id);
    if (control && row >= 0 && row < static_cast<int>(control->rows.size()))
        text.Assign(control->rows[static_cast<std::size_t>(row)].text.c_str());
    else
        text.Assign("");
}

void CDialog::ListDeleteItem(int id, int row)
{
    CModelControl* control = ControlOf(window, id);
    if (control && row >= 0 && row < static_cast<int>(control->rows.size()))
        control->rows.erase(control->rows.begin() + row);
}

int CDialog::ShowMessage(const char* text, const char* caption, std::uint32_t flags)
{
    CDialogModel& model = DialogModel();
    ModelMessageBox box;
    box.text = text;
    box.caption = caption;
    box.flags = flags;
    box.ownerTemplate = window ? WindowOf(window)->templateId : 0;
    model.messageBoxes.push_back(box);
    if (model.messageAnswers.empty())
        return IdOk;
    int answer = model.messageAnswers.front();
    model.messageAnswers.pop_front();
    return answer;
}

void CDialog::QueueAppMessage()
{
    DialogModel().posted.push_back(this);
}

void CDialog::SetWindowIcon(bool big, IconHandle icon)
{
    if (!window)
        return;
    (big ? WindowOf(window)->bigIcon : WindowOf(window)->smallIcon) = icon;
}

bool CDialog::IsMinimised() const
{
    return window && WindowOf(window)->minimised;
}

int CDialog::ClientWidth() const
{
    return window ? WindowOf(window)->clientWidth : 0;
}

int CDialog::ClientHeight() const
{
    return window ? WindowOf(window)->clientHeight : 0;
}

void CDialog::Redraw()
{
    if (window)
        ++WindowOf(window)->redraws;
}

bool CDialog::EnableToolTips()
{
    if (!window)
        return false;
    WindowOf(window)->toolTipsEnabled = true;
    return true;
}

void CDialog::SetToolTipLimits(int maxWidth, int autoPopMilliseconds)
{
    if (!window || !WindowOf(window)->toolTipsEnabled)
        return;
    CModelWindow* made = WindowOf(window);
    ++made->toolTipLimitsSent;
    made->toolTipMaxWidth = maxWidth;
    made->toolTipAutoPop = autoPopMilliseconds;
}

// ---- drawing ----

// The model's record of a painting is the window painted.
CPaintContext::CPaintContext(CDialog& dialog) : context(dialog.Handle())
{
    if (context) {
        ++WindowOf(context)->paintContextsOpen;
        ++WindowOf(context)->paintContextsMade;
    }
}

CPaintContext::~CPaintContext()
{
    if (context)
        --WindowOf(context)->paintContextsOpen;
}

void CPaintContext::EraseIconBackground()
{
    if (context)
        ++WindowOf(context)->iconBackgroundErases;
}

void CPaintContext::DrawIconAt(int x, int y, IconHandle icon)
{
    if (context)
        WindowOf(context)->drawings.push_back(ModelDrawing{false, x, y, icon, 0, 0});
}

void CPaintContext::DrawIconSized(int x, int y, IconHandle icon, int width, int height)
{
    if (context)
        WindowOf(context)->drawings.push_back(ModelDrawing{true, x, y, icon, width, height});
}

void CColourContext::SetTextColour(std::uint32_t colour)
{
    if (ModelDeviceContext* device = static_cast<ModelDeviceContext*>(context)) {
        device->textColourSet = true;
        device->textColour = colour;
    }
}

// ---- icons, fonts, brushes, strings ----

IconHandle LoadAppIcon(int resourceId)
{
    CDialogModel& model = DialogModel();
    auto found = model.appIcons.find(resourceId);
    return found != model.appIcons.end() ? found->second : ModelAppIcon;
}

IconHandle ExtractIconFrom(const char* path, int)
{
    CDialogModel& model = DialogModel();
    model.extractedFrom.push_back(path);
    auto found = model.fileIcons.find(path);
    return found != model.fileIcons.end() ? found->second : nullptr;
}

void DestroyIconHandle(IconHandle icon)
{
    DialogModel().destroyedIcons.push_back(icon);
}

int SystemIconWidth() { return DialogModel().systemIconWidth; }
int SystemIconHeight() { return DialogModel().systemIconHeight; }

FontHandle MakeFont(int height, int weight, int quality, const char* face)
{
    CDialogModel& model = DialogModel();
    if (model.failFonts)
        return nullptr;
    model.fonts.push_back(ModelFont{height, weight, quality, face, 0});
    return HandleOf(model.fonts);
}

void DeleteFontHandle(FontHandle font)
{
    if (ModelFont* record = RecordOf(DialogModel().fonts, font))
        ++record->deletions;
}

BrushHandle MakeSolidBrush(std::uint32_t colour)
{
    CDialogModel& model = DialogModel();
    if (model.failBrushes)
        return nullptr;
    model.brushes.push_back(ModelBrush{colour, 0});
    return HandleOf(model.brushes);
}

void DeleteBrushHandle(BrushHandle brush)
{
    if (ModelBrush* record = RecordOf(DialogModel().brushes, brush))
        ++record->deletions;
}

void LoadResourceString(int id, CTextString& text)
{
    CDialogModel& model = DialogModel();
    auto found = model.strings.find(id);
    text.Assign(found != model.strings.end() ? found->second.c_str() : "");
}
