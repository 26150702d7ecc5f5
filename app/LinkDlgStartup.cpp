// Start-up and shutdown of the main dialog: the constructor and destructor, the fixed order
// of OnInitDialog with its two ways out, the catalogue of profiles, and the routing of the
// commands and of the message that a drop posts.

#include "app/LinkDlg.h"

#include "app/Resource.h"
#include "chunks/EventProfile.h"
#include "files/Paths.h"
#include "platform/DropTarget.h"

namespace {

const int StatusFontHeight = 20;
const int NameFontHeight = 14;
const int BoldWeight = 700;       // FW_BOLD
const int ProofQuality = 2;       // PROOF_QUALITY
const int ListColumnWidth = 362;
const std::uint32_t FullRowSelect = 0x20;   // LVS_EX_FULLROWSELECT

}   // namespace

CLinkDlg::CLinkDlg()
    : CDialog(IDD_LINKWRIGHT_DIALOG),
      m_hIcon(nullptr),
      m_hTargetIcon(nullptr),
      m_oleStarted(false),
      m_statusFont(nullptr),
      m_nameFont(nullptr),
      m_isEnhanced(false),
      m_listWhole(false),
      m_quoteCharsWhole(false),
      m_leftArgQuote(DefaultLeftArgQuote),
      m_rightArgQuote(DefaultRightArgQuote)
{
    m_hIcon = LoadAppIcon(IDR_MAINFRAME);
}

// The window is gone by now. The fonts are given back here; the members' own destructors
// then free the chains, the strings and, last, the drop target, which gives back whatever
// OnCancel did not.
CLinkDlg::~CLinkDlg()
{
    if (m_nameFont)
        DeleteFontHandle(m_nameFont);
    if (m_statusFont)
        DeleteFontHandle(m_statusFont);
}

// Only FindParent and LoadProfiles can stop the start, each with its message; every later
// step fails without a word and leaves the platform's default in force. The command line
// is looked at last, so a refused start restores nothing.
bool CLinkDlg::OnInitDialog()
{
    CDialog::OnInitDialog();
    m_items.m_dialog = this;

    if (!FindParent()) {
        ShowMessage("Linkwright could not find Zelmardeck. Please re-install Zelmardeck.", "ZLD Not Found",
                    MessageOk | MessageIconExclamation);
        OnCancel();
        return true;
    }
    if (!LoadProfiles()) {
        ShowMessage("Linkwright could not find any Zelmardeck profiles.\n"
                    "Create a profile for the intended application, and restart Linkwright",
                    "No Profiles", MessageOk);
        OnCancel();
        return true;
    }
    ReadQuoteChars();
    LoadList();

    SetWindowIcon(true, m_hIcon);
    SetWindowIcon(false, m_hIcon);

    std::int32_t ole = StartOle();
    if (ole == 0 || ole == 1)
        m_oleStarted = true;

    m_statusFont = MakeFont(StatusFontHeight, BoldWeight, ProofQuality, "Arial");
    if (m_statusFont && HasItem(IDC_ENABLED_LABEL))
        SetItemFont(IDC_ENABLED_LABEL, m_statusFont);
    m_nameFont = MakeFont(NameFontHeight, BoldWeight, ProofQuality, "MS Sans Serif");
    if (m_nameFont && HasItem(IDC_SHORTCUT_NAME))
        SetItemFont(IDC_SHORTCUT_NAME, m_nameFont);

    if (HasItem(IDC_SELECTED_LIST)) {
        ListInsertColumn(IDC_SELECTED_LIST, 0, "Profile Name", ListColumnWidth);
        ListSetExtendedStyle(IDC_SELECTED_LIST, FullRowSelect);
    }

    // Without both shell interfaces the dialog opens and takes no drops.
    if (m_dropTarget.InitLinkInterfaces()) {
        m_dropTarget.m_owner = this;
        m_dropTarget.m_registered = m_dropTarget.Register(*this);
    }

    ResetControls();
    EnableToolTips();
    if (!ProcessCommandLine())
        OnCancel();
    return true;
}

bool CLinkDlg::FindParent()
{
    m_parentPath.Assign(ModuleFolder(nullptr));
    m_parentPath.AppendChar('\\');
    m_parentPath.Append("Zelmar.exe");
    return PathExists(m_parentPath.Text());
}

// The catalogue stays in m_selected until the first analysis of a shortcut empties it.
// The combo box sorts the names itself, so its first entry in sorted order is the current one.
bool CLinkDlg::LoadProfiles()
{
    CEventProfile profile;
    profile.ListProfiles(m_selected);
    if (m_selected.IsEmpty())
        return false;
    if (HasItem(IDC_PROFILE_COMBO)) {
        for (CChainNode<CTextString>* node = m_selected.Head(); node; node = node->next)
            ComboAddString(IDC_PROFILE_COMBO, node->payload->Text());
        ComboSetCurSel(IDC_PROFILE_COMBO, 0);
    }
    return true;
}

// Every end of the dialog comes through here. The registration goes before the interfaces,
// IPersistFile before IShellLinkA; OLE is stopped only if it was started.
void CLinkDlg::OnCancel()
{
    if (m_dropTarget.m_registered)
        m_dropTarget.Revoke();
    m_dropTarget.ReleaseInterfaces();
    if (m_oleStarted) {
        m_oleStarted = false;
        StopOle();
    }
    CDialog::OnCancel();
}

// In the order of the message map; IdOk and IdCancel never come here.
void CLinkDlg::OnCommand(int id)
{
    switch (id) {
    case IDC_HELP_BUTTON:
        OnHelp();
        break;
    case IDC_ADD:
        OnAdd();
        break;
    case IDC_REMOVE:
        OnRemove();
        break;
    case IDC_RESTORE:
        OnRestore();
        break;
    default:
        break;
    }
}

void CLinkDlg::OnAppMessage()
{
    OnShortcutLoaded();
}
