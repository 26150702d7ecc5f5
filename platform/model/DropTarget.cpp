// The model drop target: nothing is registered with a platform; the model counts
// registrations so that a test can see each one ended. Tests call the handlers themselves
// with DROPFILES bytes of their own.

#include "platform/DropTarget.h"

#include "platform/model/DialogModel.h"

COleDropTarget::COleDropTarget() : registration(nullptr) {}

COleDropTarget::~COleDropTarget()
{
    if (registration)
        --DialogModel().registrations;
}

bool COleDropTarget::Register(CDialog& dialog)
{
    CDialogModel& model = DialogModel();
    ++model.registerCalls;
    if (!model.registerAnswer || registration)
        return false;
    registration = &dialog;
    ++model.registrations;
    return true;
}

void COleDropTarget::Revoke()
{
    if (!registration)
        return;
    registration = nullptr;
    CDialogModel& model = DialogModel();
    --model.registrations;
    ++model.revokeCalls;
}

int COleDropTarget::OnDragEnter(const void*, std::size_t, std::uint32_t) { return DropEffectNone; }
int COleDropTarget::OnDragOver(std::uint32_t) { return DropEffectNone; }
void COleDropTarget::OnDragLeave() {}
bool COleDropTarget::OnDrop(int) { return false; }

std::int32_t StartOle()
{
    CDialogModel& model = DialogModel();
    ++model.oleStarts;
    return model.oleAnswer;
}

void StopOle()
{
    ++DialogModel().oleStops;
}
