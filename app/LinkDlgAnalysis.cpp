// What a loaded shortcut is: enhanced, a shortcut to the parent program itself, one to this
// program, or plain. The analysis fills the dialog's four values, sets the controls and shows
// the shortcut's name; Save and Restore rest on what it leaves behind.

#include "app/LinkDlg.h"

#include "app/Resource.h"
#include "files/Paths.h"
#include "shortcuts/ArgumentLine.h"

namespace {

const char ParentName[] = "Zelmar.exe";
const char LinkExtension[] = ".lnk";

const char BeyondCodePageText[] =
    "This shortcut holds characters that Linkwright cannot keep, and cannot be modified.";
const char BeyondCodePageCaption[] = "Unsupported Characters";

}   // namespace

// Only the end of the target is compared with the parent's name, so any file whose name
// ends in it counts; this program is recognised by its whole path. Characters beyond the code
// page count only in the texts that a write takes from the shortcut: of a shortcut to the
// parent, its line alone, which both Restore and Save write again; of a plain one, all of
// them. A shortcut whose values could not be taken over whole is refused as not loaded, with
// nothing editable: Save and Restore would write only part of it.
CLinkDlg::LinkKind CLinkDlg::Analyse()
{
    m_selected.Clear();
    m_target.MakeEmpty();
    m_targetDir.MakeEmpty();
    m_args.MakeEmpty();
    m_isEnhanced = false;

    const CLinkDropTarget& link = m_dropTarget;
    const CTextString programPath = ModulePath(nullptr);
    if (programPath.IsEmpty())
        return LinkKind::NotTaken;
    if (EndsWithNoCase(link.m_linkTarget, ParentName, sizeof(ParentName) - 1)) {
        if (link.BeyondCodePage(LinkTextArguments))
            return LinkKind::Unsupported;
        if (!TakeApartArguments(link.m_linkArgs, m_argTokens, m_selected, m_target, m_targetDir, m_args))
            return LinkKind::NotTaken;
        m_isEnhanced = !m_target.IsEmpty() && !m_selected.IsEmpty();
        return m_isEnhanced ? LinkKind::Enhanced : LinkKind::ParentItself;
    }
    if (link.m_linkTarget.CompareNoCase(programPath.Text(), programPath.Length()) == 0)
        return LinkKind::ThisProgram;
    if (link.m_linkBeyondCodePage != 0)
        return LinkKind::Unsupported;
    if (!QuoteCharsKnown() || !AssignWhole(m_target, link.m_linkTarget) ||
        !AssignWhole(m_targetDir, link.m_linkWorkDir) || !AssignWhole(m_args, link.m_linkArgs))
        return LinkKind::NotTaken;
    SubstituteQuotes(m_args, m_leftArgQuote, m_rightArgQuote);
    return LinkKind::Plain;
}

// The icon goes first, refused shortcuts too. A shortcut whose values could not be taken is
// told as a failed load and shows no name; a name that could not be had leaves the one shown.
void CLinkDlg::OnShortcutLoaded()
{
    RefreshIcon();
    ResetControls();
    switch (Analyse()) {
    case LinkKind::Enhanced:
        RefreshSelected();
        ShowEditable();
        break;
    case LinkKind::Plain:
        ShowEditable();
        break;
    case LinkKind::ParentItself:
        ShowMessage("This is a shortcut to Zelmardeck itself, and cannot be modified.", "Zelmardeck Shortcut",
                    MessageOk);
        break;
    case LinkKind::ThisProgram:
        ShowMessage("This is a shortcut to this program, and cannot be modified.", "Linkwright", MessageOk);
        break;
    case LinkKind::Unsupported:
        ShowUnsupported();
        break;
    case LinkKind::NotTaken:
        m_dropTarget.ReportLoadFailure();
        return;
    }

    CTextString name(0);
    if (!HasItem(IDC_SHORTCUT_NAME) || !AssignWhole(name, m_dropTarget.m_linkPath) || !name.CollapseWide())
        return;
    if (EndsWithNoCase(name, LinkExtension, sizeof(LinkExtension) - 1))
        name.Truncate(name.Length() - (sizeof(LinkExtension) - 1));
    SetItemText(IDC_SHORTCUT_NAME, FileNamePart(name.Text()));
}

void CLinkDlg::ShowUnsupported()
{
    ShowMessage(BeyondCodePageText, BeyondCodePageCaption, MessageOk);
}

// A file without an icon keeps whatever icon is on display, the previous shortcut's too.
void CLinkDlg::RefreshIcon()
{
    if (m_dropTarget.m_linkIconPath.IsEmpty())
        return;
    IconHandle icon = ExtractIconFrom(m_dropTarget.m_linkIconPath.Text(), m_dropTarget.m_linkIconIndex);
    if (!icon || icon == NotAnIconFile)
        return;
    if (m_hTargetIcon)
        DestroyIconHandle(m_hTargetIcon);
    m_hTargetIcon = icon;
    Redraw();
}
