#include "app/HelpDlg.h"

#include "app/Resource.h"
#include "text/TextString.h"

namespace {

const std::uint32_t White = 0x00FFFFFF;

// Joined with nothing between them: a piece that ends in a blank runs on into the next
// one in the same paragraph, and the last one ends without a line break.
const char* const HelpPieces[] = {
    "Linkwright allows you to modify your shortcuts (desktop icons, menu items, quicklaunch icons, "
    "etc.) so that using Zelmardeck with your game or application becomes a single-step process. ",
    "A single click on the enhanced shortcut will launch Zelmardeck, select the desired profile(s), "
    "and launch your game. It's easy! And you can restore your shortcuts to their original form at "
    "any time.\r\n\r\n",
    "To enhance a shortcut, drag and drop it onto the Linkwright window, add one or more profiles to "
    "the list, and press the Save button. That's it.\r\n\r\n",
    "Before modifying your shortcuts, be sure to first create a working profile for your game or "
    "application within Zelmardeck.\r\n\r\n",
    "Starting Zelmardeck through an enhanced shortcut will first shut down any copies of Zelmardeck "
    "that are already running. This ensures that no other copies of Zelmardeck will interfere with "
    "your game or application. ",
    "When the target game or application ends, Zelmardeck will also end.\r\n\r\n",
    "For multi-player games where multiple copies of Zelmardeck are necessary (one profile per "
    "player), you can select multiple game profiles to associate with the shortcut. Make sure each "
    "profile uses a different game device.\r\n\r\n",
    "To return the shortcut to its original state, press the Restore button after dragging it onto "
    "the Linkwright window. ",
    "If you uninstall Zelmardeck, all modified shortcuts will be restored for you.",
};

}   // namespace

CHelpDlg::CHelpDlg() : CDialog(IDD_HELP_DIALOG), m_brush(nullptr) {}

CHelpDlg::~CHelpDlg()
{
    if (m_brush)
        DeleteBrushHandle(m_brush);
}

bool CHelpDlg::OnInitDialog()
{
    CDialog::OnInitDialog();
    m_brush = MakeSolidBrush(White);
    if (!HasItem(IDC_HELP_TEXT))
        return true;
    CTextString text;
    for (const char* piece : HelpPieces)
        text.Append(piece);
    SetItemText(IDC_HELP_TEXT, text.Text());
    return true;
}

// The brush is answered as it is, without the base's default and without touching the
// context; the edit draws its text in the platform's colour on it.
BrushHandle CHelpDlg::OnCtlColor(CColourContext& context, int controlId, int kind)
{
    if (kind == ColourKindStatic && controlId == IDC_HELP_TEXT)
        return m_brush;
    return CDialog::OnCtlColor(context, controlId, kind);
}
