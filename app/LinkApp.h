#pragma once
// CLinkApp: the application object. The program has exactly one, a static object in the
// file that makes the program; it holds nothing, so it can be built before anything else.

#include "platform/App.h"

class CLinkApp : public CWinApp {
public:
    // Runs the main dialog once and answers false: the process then ends without a
    // message loop of its own.
    bool InitInstance() override;
};
