// The dialog's states. There is no state variable: the state is what these switches left
// behind (Empty, Plain, Picking, Enhanced, Edited). Help and Close are never switched.

#include "app/LinkDlg.h"

#include "app/Resource.h"

// Empty: every profile control off and the label hidden. The shown name, the target icon
// and m_selected are left as they are.
void CLinkDlg::ResetControls()
{
    if (HasItem(IDC_SELECTED_LIST))
        ListDeleteAllItems(IDC_SELECTED_LIST);
    m_items.DisableItem(IDC_PROFILE_COMBO);
    m_items.DisableItem(IDC_ADD);
    m_items.DisableItem(IDC_SELECTED_LIST);
    m_items.DisableItem(IDC_REMOVE);
    m_items.DisableItem(IDOK);
    m_items.DisableItem(IDC_RESTORE);
    m_items.HideItem(IDC_ENABLED_LABEL);
}

// Empty to Plain, or to Enhanced when the analysis found the shortcut enhanced. Save stays
// off either way until the lists change.
void CLinkDlg::ShowEditable()
{
    m_items.EnableItem(IDC_PROFILE_COMBO);
    m_items.EnableItem(IDC_ADD);
    if (m_isEnhanced) {
        m_items.EnableItem(IDC_REMOVE);
        m_items.EnableItem(IDC_RESTORE);
        m_items.EnableItem(IDC_SELECTED_LIST);
        m_items.ShowItem(IDC_ENABLED_LABEL);
    }
}
