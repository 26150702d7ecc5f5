// Save and Restore: the two commands that write to the shortcut. Neither changes m_target,
// m_targetDir or m_args, so a shortcut can be saved, restored and saved again without
// being dropped anew. Neither ends the dialog.

#include "app/LinkDlg.h"

#include "app/Resource.h"
#include "shortcuts/ArgumentLine.h"
#include "shortcuts/ShortcutList.h"

namespace {

const char WriteErrorText[] =
    "There was an unknown problem while trying to modify this shortcut. "
    "Try again or modify the shortcut by hand.";
const char WriteErrorCaption[] = "Shortcut Write Error";

const char TooLongText[] =
    "The enhanced shortcut would be too long to be restored. "
    "Remove a profile or shorten the shortcut's arguments.";
const char TooLongCaption[] = "Shortcut Too Long";

}   // namespace

// Everything written is made first: the shortcut's entry and both list files, then the line
// inside SaveEnhanced. A failure anywhere writes nothing and changes nothing in the dialog,
// so Save stays on for another try.
void CLinkDlg::OnOK()
{
    ListChange change;
    bool tooLong = false;
    if (!PrepareAdd(m_dropTarget.m_linkPath, change)) {
        ShowMessage(WriteErrorText, WriteErrorCaption, MessageOk | MessageIconExclamation);
        return;
    }
    if (!m_dropTarget.SaveEnhanced(m_parentPath, m_target, m_targetDir, m_args, m_selected, &tooLong)) {
        CancelChange(m_shortcuts, change);
        if (tooLong)
            ShowMessage(TooLongText, TooLongCaption, MessageOk);
        else
            ShowMessage(WriteErrorText, WriteErrorCaption, MessageOk | MessageIconExclamation);
        return;
    }
    CommitChange(m_shortcuts, change);
    m_items.DisableItem(IDOK);
    m_items.EnableItem(IDC_RESTORE);
    m_items.ShowItem(IDC_ENABLED_LABEL);
}

// During a restore-all run only the write happens: no message, no control, no entry; the
// end of the run deletes the list files. Otherwise the list files without the entry are
// made before the shortcut is written, so that both change or neither.
void CLinkDlg::OnRestore()
{
    CTextString args(m_args);
    ListChange change;
    const bool made = args.Length() == m_args.Length() && QuoteCharsKnown() &&
                      RestoreQuotes(args, m_leftArgQuote, m_rightArgQuote) &&
                      (m_restoringAll || PrepareRemove(m_dropTarget.m_linkPath, change));
    if (!made || !m_dropTarget.SaveRestored(m_target, m_targetDir, args)) {
        if (!m_restoringAll)
            ShowMessage(WriteErrorText, WriteErrorCaption, MessageOk | MessageIconExclamation);
        return;
    }
    if (m_restoringAll)
        return;
    CommitChange(m_shortcuts, change);
    m_items.DisableItem(IDOK);
    m_items.DisableItem(IDC_RESTORE);
    m_items.DisableItem(IDC_SELECTED_LIST);
    m_items.DisableItem(IDC_REMOVE);
    m_items.HideItem(IDC_ENABLED_LABEL);
    m_selected.Clear();
    RefreshSelected();
}
