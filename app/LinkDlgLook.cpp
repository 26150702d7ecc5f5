// What the dialog shows beyond its template: the icons it draws, the colour of the status
// label, the tool tips and the help window.

#include "app/LinkDlg.h"

#include "app/HelpDlg.h"
#include "app/Resource.h"

namespace {

const int TargetIconX = 20;
const int TargetIconY = 30;
const int TargetIconSize = 64;
const std::uint32_t StatusColour = 0x00C80000;   // blue 200
const int TipMaxWidth = 300;
const int TipAutoPopMilliseconds = 5000;

}   // namespace

// Minimised, the dialog shows the application's icon centred and nothing else; otherwise
// the loaded shortcut's icon, scaled, when there is one, and then the default painting.
void CLinkDlg::OnPaint()
{
    if (IsMinimised()) {
        CPaintContext paint(*this);
        paint.EraseIconBackground();
        int x = (ClientWidth() - SystemIconWidth() + 1) / 2;
        int y = (ClientHeight() - SystemIconHeight() + 1) / 2;
        paint.DrawIconAt(x, y, m_hIcon);
        return;
    }
    if (m_hTargetIcon) {
        CPaintContext paint(*this);
        paint.DrawIconSized(TargetIconX, TargetIconY, m_hTargetIcon, TargetIconSize, TargetIconSize);
    }
    DefaultPaint();
}

IconHandle CLinkDlg::OnQueryDragIcon()
{
    return m_hIcon;
}

BrushHandle CLinkDlg::OnCtlColor(CColourContext& context, int controlId, int kind)
{
    BrushHandle brush = CDialog::OnCtlColor(context, controlId, kind);
    if (kind == ColourKindStatic && controlId == IDC_ENABLED_LABEL)
        context.SetTextColour(StatusColour);
    return brush;
}

// The tip text lives in m_tipText, so it outlives the request and comes through whole
// however long it is. The tip settings are sent afresh at each request.
bool CLinkDlg::OnNeedText(int controlId, const char** text)
{
    if (controlId == 0)
        return false;
    SetToolTipLimits(TipMaxWidth, TipAutoPopMilliseconds);
    LoadResourceString(controlId, m_tipText);
    *text = m_tipText.Text();
    return true;
}

// The help window is modal: the main dialog waits until it is closed.
void CLinkDlg::OnHelp()
{
    CHelpDlg help;
    (void)help.DoModal();
}
