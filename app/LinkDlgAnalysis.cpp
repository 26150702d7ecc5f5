// What a loaded shortcut is: enhanced, a shortcut to the parent program itself, one to this
// program, or plain. The analysis fills the dialog's four values, sets the controls and shows
// the shortcut's name; Save and Restore rest on what it leaves behind.

#include "app/LinkDlg.h"

#include <algorithm>

#include "app/Resource.h"
#include "files/Paths.h"
#include "shortcuts/ArgumentLine.h"

namespace {

const char ParentName[] = "Zelmar.exe";
const int ParentNameLength = sizeof(ParentName) - 1;
const char LinkExtension[] = ".lnk";
const int LinkExtensionLength = sizeof(LinkExtension) - 1;

const char BeyondCodePageText[] =
    "This shortcut holds characters that Linkwright cannot keep, and cannot be modified.";
const char BeyondCodePageCaption[] = "Unsupported Characters";

// A shortcut whose values could not be taken over whole: nothing of it is kept, and a
// drop is told "Load Failure" as if the load itself had failed.
std::intptr_t NotLoaded(CLinkDlg& dialog)
{
    dialog.m_selected.Clear();
    dialog.m_target.MakeEmpty();
    dialog.m_targetDir.MakeEmpty();
    dialog.m_args.MakeEmpty();
    if (!dialog.m_restoringAll)
        dialog.m_dropTarget.ReportLoadFailure();
    return 0;
}

}   // namespace

// Only the end of the target is compared with the parent's name, so any file whose name
// ends in it counts; this program is recognised by its whole path. While m_restoringAll is
// set nothing is shown and the controls are left alone: the dialog of a restore-all run is
// never seen, as it closes before it appears, and switching its controls costs most of the
// run's time. A shortcut whose values could not be taken over whole is not
// loaded at all: Save and Restore would write only part of it.
std::intptr_t CLinkDlg::OnShortcutLoaded(std::uintptr_t /*wParam*/, std::intptr_t /*lParam*/)
{
    m_selected.Clear();
    m_target.MakeEmpty();
    m_targetDir.MakeEmpty();
    m_args.MakeEmpty();
    m_isEnhanced = false;
    RefreshIcon();
    if (!m_restoringAll)
        ResetControls();

    const CTextString& linkTarget = m_dropTarget.m_linkTarget;
    const CTextString programPath = ModulePath(nullptr);
    const CTextString targetEnd = linkTarget.Right(ParentNameLength);
    const int endLength = std::min(linkTarget.Length(), ParentNameLength);
    if (programPath.IsEmpty() || targetEnd.Length() != endLength)
        return NotLoaded(*this);
    bool editable = false;
    if (m_dropTarget.m_linkBeyondCodePage) {
        if (!m_restoringAll)
            ShowMessage(BeyondCodePageText, BeyondCodePageCaption, MessageOk);
    } else if (targetEnd.Length() == ParentNameLength && targetEnd.CompareNoCase(ParentName, ParentNameLength) == 0) {
        if (!TakeApartArguments(m_dropTarget.m_linkArgs, m_argTokens, m_selected, m_target, m_targetDir, m_args))
            return NotLoaded(*this);
        m_isEnhanced = !m_target.IsEmpty() && !m_selected.IsEmpty();
        if (m_isEnhanced) {
            if (!m_restoringAll)
                RefreshSelected();
            editable = true;
        } else if (!m_restoringAll) {
            ShowMessage("This is a shortcut to Zelmardeck itself, and cannot be modified.", "Zelmardeck Shortcut",
                        MessageOk);
        }
    } else if (linkTarget.CompareNoCase(programPath.Text(), programPath.Length()) == 0) {
        if (!m_restoringAll)
            ShowMessage("This is a shortcut to this program, and cannot be modified.", "Linkwright", MessageOk);
    } else {
        if (!QuoteCharsKnown() || !AssignWhole(m_target, linkTarget) ||
            !AssignWhole(m_targetDir, m_dropTarget.m_linkWorkDir) || !AssignWhole(m_args, m_dropTarget.m_linkArgs))
            return NotLoaded(*this);
        SubstituteQuotes(m_args, m_leftArgQuote, m_rightArgQuote);
        editable = true;
    }
    if (m_restoringAll)
        return 0;
    if (editable)
        ShowEditable();

    if (HasItem(IDC_SHORTCUT_NAME)) {
        CTextString name(m_dropTarget.m_linkPath);
        name.CollapseWide();
        const CTextString ending = name.Right(LinkExtensionLength);
        if (ending.Length() == LinkExtensionLength &&
            ending.CompareNoCase(LinkExtension, LinkExtensionLength) == 0)
            name.Truncate(name.Length() - LinkExtensionLength);
        SetItemText(IDC_SHORTCUT_NAME, FileNamePart(name.Text()));
    }
    return 0;
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
