#include "app/LinkApp.h"

#include "app/LinkDlg.h"

bool CLinkApp::InitInstance()
{
    CLinkDlg dialog;
    (void)dialog.DoModal();
    return false;
}
