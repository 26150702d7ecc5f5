// The model drop target: nothing is registered with a platform. Registration, its end and
// OLE are logged; tests call the handlers themselves with DROPFILES bytes of their own.

#include "platform/DropTarget.h"

#include "platform/model/DialogModel.h"

COleDropTarget::~COleDropTarget() {}
bool COleDropTarget::Register(CDialog& dialog) { return DialogModel().calls.push_back("Register"), registration = &dialog, true; }

void COleDropTarget::Revoke()
{
    if (registration)
        DialogModel().calls.push_back("Revoke");
    registration = nullptr;
}

std::int32_t StartOle() { return DialogModel().calls.push_back("StartOle"), DialogModel().oleAnswer; }
void StopOle() { DialogModel().calls.push_back("StopOle"); }
