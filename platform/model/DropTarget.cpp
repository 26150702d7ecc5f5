// The model drop target: nothing is registered with a platform. Registration, its end and
// OLE are logged; tests call the handlers themselves with DROPFILES bytes of their own.

#include "platform/DropTarget.h"

#include "platform/model/DialogModel.h"

COleDropTarget::COleDropTarget() : registration(nullptr) {}
COleDropTarget::~COleDropTarget() {}
bool COleDropTarget::Register(CDialog& dialog) { return DialogModel().calls.push_back("Register"), registration = &dialog, true; }

void COleDropTarget::Revoke()
{
    if (registration)
        DialogModel().calls.push_back("Revoke");
    registration = nullptr;
}

int COleDropTarget::OnDragEnter(const void*, std::size_t, std::uint32_t) { return DropEffectNone; }
int COleDropTarget::OnDragOver(std::uint32_t) { return DropEffectNone; }
void COleDropTarget::OnDragLeave() {}
bool COleDropTarget::OnDrop(int) { return false; }
std::int32_t StartOle() { return DialogModel().calls.push_back("StartOle"), DialogModel().oleAnswer; }
void StopOle() { DialogModel().calls.push_back("StopOle"); }
