// The model application object and command line. A test builds the application object
// itself and calls InitInstance; the command line is whatever the test set in the model.

#include "platform/App.h"

#include "platform/model/DialogModel.h"

namespace {
CWinApp* theApp = nullptr;
}

CWinApp::CWinApp() { theApp = this; }
CWinApp::~CWinApp() { theApp = theApp == this ? nullptr : theApp; }
CWinApp* TheApp() { return theApp; }
const char* ProcessCommandLineText() { return DialogModel().commandLine.c_str(); }
