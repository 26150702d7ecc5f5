// Save and Restore: the two commands that write to the shortcut. Neither changes m_target,
// m_targetDir or m_args, so a shortcut can be saved, restored and saved again without
// being dropped anew. Neither ends the dialog.
//
// Only what can be undone is written, and the list is never behind the disk: Save proves that
// its Restore will work before it writes anything, then lists the shortcut, then writes it;
// Restore writes the shortcut back first, then takes it off the list. A listed shortcut that
// is plain is harmless, as restore-all passes over it; so a Save whose shortcut write fails
// after the listing leaves the entry where it is.

#include "app/LinkDlg.h"

#include "app/Resource.h"
#include "shortcuts/ArgumentLine.h"

namespace {

const char WriteErrorText[] =
    "There was an unknown problem while trying to modify this shortcut. "
    "Try again or modify the shortcut by hand.";
const char WriteErrorCaption[] = "Shortcut Write Error";

const char TooLongText[] =
    "The enhanced shortcut would be too long to be restored. "
    "Remove a profile or shorten the shortcut's arguments.";
const char TooLongCaption[] = "Shortcut Too Long";

const char TargetRefusedText[] =
    "The target of this shortcut could not be set back on Restore, and the shortcut cannot be modified.";
const char TargetRefusedCaption[] = "Linkwright";

}   // namespace

// A Save refused or failed changes nothing in the dialog, so Save stays on for another try.
void CLinkDlg::OnOK()
{
    CTextString line(0);
    switch (m_dropTarget.ProveEnhanced(m_target, m_targetDir, m_args, m_selected, line)) {
    case SaveRefusal::None:
        break;
    case SaveRefusal::TooLong:
        ShowMessage(TooLongText, TooLongCaption, MessageOk);
        return;
    case SaveRefusal::Unsupported:
        ShowUnsupported();
        return;
    case SaveRefusal::TargetRefused:
        ShowMessage(TargetRefusedText, TargetRefusedCaption, MessageOk);
        return;
    case SaveRefusal::Unmade:
        ShowMessage(WriteErrorText, WriteErrorCaption, MessageOk | MessageIconExclamation);
        return;
    }
    if (!AddEntry(m_dropTarget.m_linkPath) || !m_dropTarget.SaveEnhanced(m_parentPath, line)) {
        ShowMessage(WriteErrorText, WriteErrorCaption, MessageOk | MessageIconExclamation);
        return;
    }
    m_items.DisableItem(IDOK);
    m_items.EnableItem(IDC_RESTORE);
    m_items.ShowItem(IDC_ENABLED_LABEL);
}

// The entry goes only once the shortcut is back; a list that cannot be read or written keeps
// it, which blocks nothing. Save goes off with the emptied selection (RefreshSelected); without
// a list of profiles it never came on.
void CLinkDlg::OnRestore()
{
    if (!WriteRestored()) {
        ShowMessage(WriteErrorText, WriteErrorCaption, MessageOk | MessageIconExclamation);
        return;
    }
    m_items.DisableItem(IDC_RESTORE);
    m_items.DisableItem(IDC_SELECTED_LIST);
    m_items.DisableItem(IDC_REMOVE);
    m_items.HideItem(IDC_ENABLED_LABEL);
    m_selected.Clear();
    RefreshSelected();
    RemoveEntry(m_dropTarget.m_linkPath);
}

// The quote restoration works on a copy, so that the substituted arguments stay for another
// Save. Quotes put back with characters that may not be the file's would not give the
// arguments back: nothing is written while the quote characters are not known.
bool CLinkDlg::WriteRestored()
{
    CTextString args(0);
    return AssignWhole(args, m_args) && QuoteCharsKnown() && RestoreQuotes(args, m_leftArgQuote, m_rightArgQuote) &&
           m_dropTarget.SaveRestored(m_target, m_targetDir, args);
}
