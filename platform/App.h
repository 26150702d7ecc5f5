#pragma once
// CWinApp: the application object. The program has exactly one, a static object built
// before the entry point runs. The entry point (Windows backend) calls its InitInstance
// once; the process ends when InitInstance returns, whatever it answers, since the
// program has no message loop of its own besides its modal dialogs.

class CWinApp {
public:
    CWinApp();             // makes this the program's application object
    virtual ~CWinApp();
    CWinApp(const CWinApp&) = delete;
    CWinApp& operator=(const CWinApp&) = delete;

    virtual bool InitInstance() = 0;
};

// The application object, or null when none was built.
CWinApp* TheApp();

// The command line of the process as one text, the program's name first
// (GetCommandLineA on Windows). The model backend answers what a test set.
const char* ProcessCommandLineText();
