#pragma once
// CDialogItems: switches a dialog's controls by id, and does nothing when the dialog is
// not set yet or has no such control.

#include "platform/Dialog.h"

class CDialogItems {
public:
    void EnableItem(int id) { if (m_dialog && m_dialog->HasItem(id)) m_dialog->EnableItemWindow(id, true); }
    void DisableItem(int id) { if (m_dialog && m_dialog->HasItem(id)) m_dialog->EnableItemWindow(id, false); }
    void ShowItem(int id) { if (m_dialog && m_dialog->HasItem(id)) m_dialog->ShowItemWindow(id, true); }
    void HideItem(int id) { if (m_dialog && m_dialog->HasItem(id)) m_dialog->ShowItemWindow(id, false); }

    CDialog* m_dialog = nullptr;   // not owned; set by OnInitDialog
};
