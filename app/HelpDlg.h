#pragma once
// CHelpDlg: the help window, a fixed text on a white ground. Built afresh for each press
// of Help and ended by its Close button through the base OnOK.

#include "platform/Dialog.h"

class CHelpDlg : public CDialog {
public:
    CHelpDlg();
    ~CHelpDlg() override;

    bool OnInitDialog() override;   // always true
    // The read-only help text asks as a static control; it gets the white brush.
    BrushHandle OnCtlColor(CColourContext& context, int controlId, int kind) override;

    BrushHandle m_brush;   // owned; null until OnInitDialog, or when it could not be made
};
