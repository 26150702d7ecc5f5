// Save and Restore: the two commands that write to the shortcut. Neither changes m_target,
// m_targetDir or m_args, so a shortcut can be saved, restored and saved again without
// being dropped anew. Neither ends the dialog.

#include "app/LinkDlg.h"

#include "app/Resource.h"
#include "shortcuts/ArgumentLine.h"

namespace {

const char WriteErrorText[] =
    "There was an unknown problem while trying to modify this shortcut. "
    "Try again or modify the shortcut by hand.";
const char WriteErrorCaption[] = "Shortcut Write Error";

}   // namespace

// A failed write changes nothing in the dialog, so Save stays on for another try.
void CLinkDlg::OnOK()
{
    if (!m_dropTarget.SaveEnhanced(m_parentPath, m_target, m_targetDir, m_args, m_selected)) {
        ShowMessage(WriteErrorText, WriteErrorCaption, MessageOk | MessageIconExclamation);
        return;
    }
    m_items.DisableItem(IDOK);
    m_items.EnableItem(IDC_RESTORE);
    m_items.ShowItem(IDC_ENABLED_LABEL);
    AddEntry(m_dropTarget.m_linkPath);
}

// During a restore-all run only the write happens: no message, no control, no entry; the
// end of the run deletes the list files.
void CLinkDlg::OnRestore()
{
    CTextString args(m_args);
    RestoreQuotes(args, m_leftArgQuote, m_rightArgQuote);
    if (!m_dropTarget.SaveRestored(m_target, m_targetDir, args)) {
        if (!m_restoringAll)
            ShowMessage(WriteErrorText, WriteErrorCaption, MessageOk | MessageIconExclamation);
        return;
    }
    if (m_restoringAll)
        return;
    m_items.DisableItem(IDOK);
    m_items.DisableItem(IDC_RESTORE);
    m_items.DisableItem(IDC_SELECTED_LIST);
    m_items.DisableItem(IDC_REMOVE);
    m_items.HideItem(IDC_ENABLED_LABEL);
    m_selected.Clear();
    RefreshSelected();
    RemoveEntry(m_dropTarget.m_linkPath);
}
