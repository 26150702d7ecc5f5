#pragma once
// The in-memory model behind platform/Dialog.h, platform/DropTarget.h and platform/App.h,
// as tests and scripted runs see it.
//
// A test declares the controls of each template by id, sets what the platform answers,
// supplies a session per template that plays the user, and reads afterwards what the run
// left behind: each control's switches, text, items and selection, the message boxes, and
// a log of the other platform calls that show, in order. Combo boxes and list views alike
// keep their items sorted without regard to case, and the list view finds a whole text in
// any case: that is what the dialog's logic depends on. A message that a dialog posts to
// itself is delivered at once, as there is no drag loop to wait for.
//
// The model's own bookkeeping uses the standard library and not the allocation seam, so
// that a test making the Nth allocation fail counts the system's allocations only.

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/Dialog.h"

struct ModelControl {
    bool enabled = true, visible = true;
    std::string text;
    std::vector<std::string> items;   // combo entries or list rows, sorted
    std::vector<int> selection;       // the combo's current entry, or the selected rows ascending
};

// A dialog while DoModal runs it.
struct CModelWindow {
    CDialog* dialog;
    std::map<int, ModelControl> controls;
    bool ended = false, minimised = false;
    int endCode = 0;

    // The user presses a control: IdOk -> OnOK, IdCancel -> OnCancel, any other id ->
    // OnCommand; false, doing nothing, when the control is missing or disabled. The user
    // selects by setting a control's selection.
    bool Press(int id);
};

const IconHandle ModelAppIcon = reinterpret_cast<IconHandle>(0xA1);

struct CDialogModel {
    std::map<int, std::map<int, ModelControl>> templates;   // the controls of each, as they start
    std::map<int, std::function<void(CModelWindow&)>> sessions;

    std::vector<std::string> messageBoxes;   // "caption|text|flags", each answered with IdOk
    // Every other platform call that shows, one line each, handles in hex: "MakeFont 20 700
    // 2 Arial", "SetItemFont 1011 0x14", "Revoke", "DrawIconSized 20 30 0x77 64 64", and for
    // a colour the device context it was set on, "SetTextColour 0x3f3 13107200"; the link
    // stand-in's calls among them, in order.
    std::vector<std::string> calls;

    // What the platform answers. A font's handle is its height, a brush's its colour, and
    // every string resource is "a tip".
    std::map<std::string, IconHandle> icons;   // ExtractIconFrom by path; null when absent
    std::int32_t oleAnswer = 0;                // OleInitialize
    std::string commandLine = "Linkwright.exe";

};

// The one model of the process, and a fresh one.
CDialogModel& DialogModel();
void ResetDialogModel();
