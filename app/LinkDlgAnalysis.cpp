// What a loaded shortcut is: enhanced, a shortcut to the parent program itself, one to this
// program, or plain. The analysis fills the dialog's four values, sets the controls and shows
// the shortcut's name; Save and Restore rest on what it leaves behind.

#include "app/LinkDlg.h"

#include "app/Resource.h"
#include "files/Paths.h"
#include "shortcuts/ArgumentLine.h"

namespace {

const char ParentName[] = "Zelmar.exe";
const int ParentNameLength = sizeof(ParentName) - 1;
const char LinkExtension[] = ".lnk";
const int LinkExtensionLength = sizeof(LinkExtension) - 1;

}   // namespace

// Only the end of the target is compared with the parent's name, so any file whose name
// ends in it counts; this program is recognised by its whole path. While m_restoringAll is
// set nothing is shown and the controls are left alone: the dialog of a restore-all run is
// never seen, as it closes before it appears, and switching its controls costs most of the
// run's time.
std::intptr_t CLinkDlg::OnShortcutLoaded(std::uintptr_t /*wParam*/, std::intptr_t /*lParam*/)
{
    m_selected.Clear();
    m_target.MakeEmpty();
    m_targetDir.MakeEmpty();
    m_args.MakeEmpty();
    RefreshIcon();
    if (!m_restoringAll)
        ResetControls();

    const CTextString& linkTarget = m_dropTarget.m_linkTarget;
    const CTextString programPath = ModulePath(nullptr);
    const CTextString targetEnd = linkTarget.Right(ParentNameLength);
    bool editable = false;
    if (targetEnd.Length() == ParentNameLength && targetEnd.CompareNoCase(ParentName, ParentNameLength) == 0) {
        if (!m_dropTarget.m_linkArgs.IsEmpty())
            TakeApartArguments(m_dropTarget.m_linkArgs, m_argTokens, m_selected, m_target, m_targetDir, m_args);
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
        m_isEnhanced = false;
        if (!m_restoringAll)
            ShowMessage("This is a shortcut to this program, and cannot be modified.", "Linkwright", MessageOk);
    } else {
        m_isEnhanced = false;
        m_target.Assign(linkTarget);
        m_targetDir.Assign(m_dropTarget.m_linkWorkDir);
        m_args.Assign(m_dropTarget.m_linkArgs);
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
