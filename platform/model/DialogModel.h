#pragma once
// The in-memory model behind platform/Dialog.h, platform/DropTarget.h and platform/App.h,
// as tests and scripted runs see it.
//
// A test declares the controls of each template it runs, sets the answers the platform is
// to give (icons, strings, OleInitialize, the command line), supplies a session per
// template that plays the user, and afterwards reads what the dialogs left behind.
// The controls behave as the real ones do where the dialog's logic depends on it: the
// combo box sorts and keeps a current entry, the list view sorts ascending, finds a whole
// text without regard to case, keeps several selected rows and renumbers them after a
// delete. Message boxes are recorded and answered; posted messages wait until the test
// pumps them.
//
// The model's own bookkeeping uses the standard library and not the allocation seam, so
// that a test making the Nth allocation fail counts the system's allocations only.

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/Dialog.h"

enum ModelControlKind { ModelButton, ModelStatic, ModelCombo, ModelListView, ModelEdit };

// One control of a template as declared by the test.
struct ModelControlSpec {
    int id;
    ModelControlKind kind;
    bool enabled = true;
    bool visible = true;
};

struct ModelListRow {
    std::string text;
    bool selected = false;
};

class CModelControl {
public:
    int id;
    ModelControlKind kind;
    bool enabled;
    bool visible;
    std::string text;              // caption, or the edit field of a combo box
    FontHandle font = nullptr;     // last WM_SETFONT
    int fontsSet = 0;

    // Combo box: entries sorted without regard to case; -1 when there is no current entry.
    std::vector<std::string> entries;
    int current = -1;

    // List view: rows sorted ascending without regard to case, one column.
    std::vector<ModelListRow> rows;
    std::vector<std::string> columnHeadings;
    std::vector<int> columnWidths;
    std::uint32_t extendedStyle = 0;

    std::vector<std::string> RowTexts() const;
    std::vector<int> SelectedRows() const;
};

// One drawing call made through CPaintContext.
struct ModelDrawing {
    bool sized;   // DrawIconEx rather than DrawIcon
    int x;
    int y;
    IconHandle icon;
    int width;    // 0 for DrawIcon
    int height;
};

// A dialog made by DoModal. It stays in the model after the dialog has ended, so that a
// test can look at what the run left behind; only `dialog` is cleared then.
class CModelWindow {
public:
    CModelWindow(CDialog& owner, int templateId_, const std::vector<ModelControlSpec>& specs);

    CModelControl* Control(int id);

    // The user's actions. Each answers false, doing nothing, when the control is missing,
    // disabled or hidden, or the index is out of range.
    // Press routes as the real dialog does: IdOk -> OnOK, IdCancel -> OnCancel, any other
    // id -> OnCommand(id).
    bool Press(int id);
    void Close();                               // the close box: OnCancel
    bool SelectEntry(int comboId, int index);   // -1: no current entry, edit field cleared
    bool TypeText(int comboId, const char* text);   // the edit field only
    bool SelectRows(int listId, const std::vector<int>& rows);   // replaces the selection

    CDialog* dialog;   // null once the dialog has ended
    int templateId;
    bool ended = false;
    int endCode = 0;
    std::vector<CModelControl> controls;

    IconHandle bigIcon = nullptr;
    IconHandle smallIcon = nullptr;
    bool minimised = false;
    int clientWidth = 386;
    int clientHeight = 318;
    int redraws = 0;
    bool toolTipsEnabled = false;
    int toolTipLimitsSent = 0;
    int toolTipMaxWidth = 0;
    int toolTipAutoPop = 0;

    int paintContextsOpen = 0;     // CPaintContext objects alive now
    int paintContextsMade = 0;
    int iconBackgroundErases = 0;
    int defaultPaints = 0;
    std::vector<ModelDrawing> drawings;
};

struct ModelMessageBox {
    std::string text;
    std::string caption;
    std::uint32_t flags;
    int ownerTemplate;   // template of the owning dialog, 0 when it had no window
};

// The device context a test hands to OnCtlColor through CColourContext.
struct ModelDeviceContext {
    bool textColourSet = false;
    std::uint32_t textColour = 0;
};

const IconHandle ModelAppIcon = reinterpret_cast<IconHandle>(0x1280);
const BrushHandle ModelDefaultBrush = reinterpret_cast<BrushHandle>(0xB0);

struct ModelFont {
    int height;
    int weight;
    int quality;
    std::string face;
    int deletions;   // 1 once given back; more is a double delete
};

struct ModelBrush {
    std::uint32_t colour;
    int deletions;
};

struct CDialogModel {
    // Templates and sessions. A session runs after OnInitDialog when that did not end the
    // dialog; if the dialog is still open when the session returns (or there is none),
    // the model closes it with the close box.
    std::map<int, std::vector<ModelControlSpec>> templates;
    std::map<int, std::function<void(CModelWindow&)>> sessions;
    std::deque<CModelWindow> windows;   // every dialog made since the last reset

    // Message boxes, and the buttons that answer them in turn (IdOk once they run out).
    std::vector<ModelMessageBox> messageBoxes;
    std::deque<int> messageAnswers;

    // Posted AppMessages, by dialog, in order.
    std::deque<CDialog*> posted;

    // Icons: LoadAppIcon answers appIcons[id] (ModelAppIcon when not set); ExtractIconFrom
    // answers fileIcons[path] (null when not set) and is recorded.
    std::map<int, IconHandle> appIcons;
    std::map<std::string, IconHandle> fileIcons;
    std::vector<std::string> extractedFrom;
    std::vector<IconHandle> destroyedIcons;
    int systemIconWidth = 32;
    int systemIconHeight = 32;

    // Fonts and brushes: handles are 1-based indexes into these; failFonts/failBrushes
    // make the next ones come out null.
    std::vector<ModelFont> fonts;
    std::vector<ModelBrush> brushes;
    bool failFonts = false;
    bool failBrushes = false;
    int LiveFonts() const;
    int LiveBrushes() const;
    const ModelFont* FontOf(FontHandle font) const;

    // String resources by id.
    std::map<int, std::string> strings;

    // OLE and drop registration.
    std::int32_t oleAnswer = 0;
    int oleStarts = 0;
    int oleStops = 0;
    bool registerAnswer = true;
    int registrations = 0;       // registered now
    int registerCalls = 0;
    int revokeCalls = 0;         // Revoke calls that ended a registration

    std::string commandLine = "Linkwright.exe";

    // Delivers the posted messages to OnAppMessage of their dialogs, in order, those
    // posted meanwhile included; a message for a dialog that has ended is dropped.
    // Answers how many were delivered.
    int PumpMessages();

    // The newest window made from this template, or null.
    CModelWindow* LastWindow(int templateId);
};

// The one model, for the whole process.
CDialogModel& DialogModel();
// Forgets everything: templates, sessions, windows, records and answers.
void ResetDialogModel();
// The window of a dialog that is open now, or null.
CModelWindow* ModelWindowOf(const CDialog& dialog);
