// The Win32 application object and the program's entry point.
//
// The entry point lives here, beside the constructor that every application object
// calls, so that linking the program's one static application object brings it in.

#include "platform/App.h"

#include <windows.h>
#include <commctrl.h>

namespace {
CWinApp* theApp = nullptr;
}

CWinApp::CWinApp()
{
    theApp = this;
}

CWinApp::~CWinApp()
{
    if (theApp == this)
        theApp = nullptr;
}

CWinApp* TheApp()
{
    return theApp;
}

const char* ProcessCommandLineText()
{
    return GetCommandLineA();
}

// The list view and the tool tips are common controls and need their classes registered
// before the first dialog is made. The process ends when InitInstance returns, whatever
// it answers: there is no message loop here besides the modal dialogs'.
int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int)
{
    INITCOMMONCONTROLSEX classes = {};
    classes.dwSize = sizeof(classes);
    classes.dwICC = ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES;
    InitCommonControlsEx(&classes);
    if (CWinApp* app = TheApp())
        (void)app->InitInstance();
    return 0;
}
