// bare_start: the bare baseline of the start-up figure. It registers the common control
// classes that the dialog's template needs and shows template 102 from Linkwright's own
// resources, linked in here, as a modal dialog with no owner; nothing else. Closing the
// dialog ends it.
#include <windows.h>
#include <commctrl.h>

#include "app/Resource.h"

namespace {

INT_PTR CALLBACK BareProc(HWND dialog, UINT message, WPARAM wParam, LPARAM)
{
    if (message == WM_INITDIALOG)
        return TRUE;
    if ((message == WM_COMMAND && LOWORD(wParam) == IDCANCEL) || message == WM_CLOSE) {
        EndDialog(dialog, 0);
        return TRUE;
    }
    return FALSE;
}

}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int)
{
    INITCOMMONCONTROLSEX classes = {};
    classes.dwSize = sizeof(classes);
    classes.dwICC = ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES;
    InitCommonControlsEx(&classes);
    DialogBoxParamA(instance, MAKEINTRESOURCEA(IDD_LINKWRIGHT_DIALOG), nullptr, BareProc, 0);
    return 0;
}
