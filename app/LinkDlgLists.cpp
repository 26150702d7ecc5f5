// The profile lists. m_selected is the truth that Save writes, in its own order; the list
// view only shows it, sorted by the control. So rows are matched to nodes by name, never by
// number.

#include "app/LinkDlg.h"

#include "app/Resource.h"

void CLinkDlg::RefreshSelected()
{
    if (!HasItem(IDC_SELECTED_LIST))
        return;
    ListDeleteAllItems(IDC_SELECTED_LIST);
    int item = 0;
    for (CChainNode<CTextString>* node = m_selected.Head(); node; node = node->next)
        ListInsertItem(IDC_SELECTED_LIST, item++, node->payload->Text());
    if (m_selected.IsEmpty())
        m_items.DisableItem(IDOK);
}

// Takes the current entry of the combo box, never its edit field, so a typed name can't be
// added. The duplicate test is the list view's own find, which ignores letter case.
void CLinkDlg::OnAdd()
{
    if (!HasItem(IDC_PROFILE_COMBO) || !HasItem(IDC_SELECTED_LIST))
        return;
    CTextString name;
    ComboGetLBText(IDC_PROFILE_COMBO, ComboGetCurSel(IDC_PROFILE_COMBO), name);
    if (ListFindItem(IDC_SELECTED_LIST, name.Text()) != -1)
        return;
    if (name.IsEmpty())
        return;
    // A name that can't be stored is dropped; Save is enabled all the same.
    (void)InsertEntry(m_selected, name);
    RefreshSelected();
    m_items.EnableItem(IDOK);
    m_items.EnableItem(IDC_SELECTED_LIST);
    m_items.EnableItem(IDC_REMOVE);
}

// Each selected row takes away the first node of its name, so two rows of one name take
// away both nodes. The list view gives the selected rows in ascending order; they are
// deleted from the highest down, which keeps the lower numbers valid. The list is rebuilt
// from the chain afterwards anyway, so a row that could not be remembered still goes.
void CLinkDlg::OnRemove()
{
    if (!HasItem(IDC_SELECTED_LIST))
        return;
    int row = ListGetNextSelected(IDC_SELECTED_LIST, -1);
    if (row == -1)
        return;

    CTextString name;
    CChain<std::int32_t> rows;
    for (;;) {
        int following = ListGetNextSelected(IDC_SELECTED_LIST, row);
        std::int32_t* number = HeapNew<std::int32_t>(row);
        if (number && !rows.Append(number))
            HeapDelete(number);
        ListGetItemText(IDC_SELECTED_LIST, row, name);
        for (CChainNode<CTextString>* node = m_selected.Head(); node; node = node->next) {
            if (node->payload->Equals(name)) {
                m_selected.Remove(node);
                break;
            }
        }
        if (following == -1)
            break;
        row = following;
    }

    for (CChainNode<std::int32_t>* node = rows.Tail(); node; node = node->prev)
        ListDeleteItem(IDC_SELECTED_LIST, *node->payload);

    if (!m_selected.IsEmpty())
        m_items.EnableItem(IDOK);
    RefreshSelected();
}
