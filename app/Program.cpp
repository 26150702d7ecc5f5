// The program's one application object. It is built before the entry point runs, which
// then calls its InitInstance once.

#include "app/LinkApp.h"

namespace {
CLinkApp theLinkApp;
}
