// The Win32 drop target: an IDropTarget registered for the dialog's window, which hands
// the OLE drag loop's calls to the COleDropTarget that made it.
//
// The order of calls in a drag: DragEnter once, DragOver while the cursor moves, then
// either DragLeave or Drop. Each call answers the effect through *effect, limited to what
// the source allows on the way in. No call leaves an IUnknown method by anything but its
// HRESULT.

#include "platform/DropTarget.h"

#include "platform/Dialog.h"
#include "text/Allocation.h"

#include <windows.h>
#include <ole2.h>

namespace {

// A COM object is destroyed by its own Release, never through an interface pointer, so
// the interface's non-virtual destructor is as it should be.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

class CDropTargetObject : public IDropTarget {
public:
    CDropTargetObject(COleDropTarget& owner_, HWND window_) : owner(&owner_), window(window_), references(1),
                                                              lastEffect(DROPEFFECT_NONE) {}
    virtual ~CDropTargetObject() {}

    HWND Window() const { return window; }
    // After this the object answers every drag with "none", for calls that the system
    // may still have queued or a reference that someone still holds.
    void Detach() { owner = nullptr; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override
    {
        if (!object)
            return E_POINTER;
        if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDropTarget)) {
            *object = static_cast<IDropTarget*>(this);
            AddRef();
            return S_OK;
        }
        *object = nullptr;
        return E_NOINTERFACE;
    }

    ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }

    ULONG STDMETHODCALLTYPE Release() override
    {
        ULONG left = --references;
        if (left == 0)
            HeapDelete(this);
        return left;
    }

    HRESULT STDMETHODCALLTYPE DragEnter(IDataObject* data, DWORD keyState, POINTL, DWORD* effect) override
    {
        lastEffect = DROPEFFECT_NONE;
        if (owner)
            lastEffect = Allowed(EnterWith(data, keyState), effect);
        *effect = lastEffect;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE DragOver(DWORD keyState, POINTL, DWORD* effect) override
    {
        lastEffect = owner ? Allowed(owner->OnDragOver(keyState), effect) : DROPEFFECT_NONE;
        *effect = lastEffect;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE DragLeave() override
    {
        if (owner)
            owner->OnDragLeave();
        return S_OK;
    }

    // The drop takes the effect last answered to the drag loop.
    HRESULT STDMETHODCALLTYPE Drop(IDataObject*, DWORD, POINTL, DWORD* effect) override
    {
        bool taken = owner && owner->OnDrop(static_cast<int>(lastEffect));
        *effect = taken ? lastEffect : DROPEFFECT_NONE;
        return S_OK;
    }

private:
    static DWORD Allowed(int answer, const DWORD* effect) { return static_cast<DWORD>(answer) & *effect; }

    // The CF_HDROP block stays locked for the length of OnDragEnter only.
    int EnterWith(IDataObject* data, DWORD keyState)
    {
        FORMATETC format = {CF_HDROP, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
        STGMEDIUM medium = {};
        if (!data || data->GetData(&format, &medium) != S_OK)
            return owner->OnDragEnter(nullptr, 0, keyState);
        int answer;
        const void* bytes = medium.tymed == TYMED_HGLOBAL ? GlobalLock(medium.hGlobal) : nullptr;
        if (bytes) {
            answer = owner->OnDragEnter(bytes, GlobalSize(medium.hGlobal), keyState);
            GlobalUnlock(medium.hGlobal);
        } else {
            answer = owner->OnDragEnter(nullptr, 0, keyState);
        }
        ReleaseStgMedium(&medium);
        return answer;
    }

    COleDropTarget* owner;
    HWND window;
    ULONG references;
    DWORD lastEffect;
};

#pragma GCC diagnostic pop

CDropTargetObject* ObjectOf(void* registration)
{
    return static_cast<CDropTargetObject*>(registration);
}

}   // namespace


COleDropTarget::~COleDropTarget()
{
    COleDropTarget::Revoke();
}

// RegisterDragDrop holds a reference of its own until RevokeDragDrop; ours is given back
// by Revoke. It fails when OLE is not started on this thread.
bool COleDropTarget::Register(CDialog& dialog)
{
    HWND window = static_cast<HWND>(dialog.Handle());
    if (registration || !window)
        return false;
    CDropTargetObject* object = HeapNew<CDropTargetObject>(*this, window);
    if (!object)
        return false;
    if (RegisterDragDrop(window, object) != S_OK) {
        object->Detach();
        object->Release();
        return false;
    }
    registration = object;
    return true;
}

void COleDropTarget::Revoke()
{
    CDropTargetObject* object = ObjectOf(registration);
    if (!object)
        return;
    registration = nullptr;
    object->Detach();
    RevokeDragDrop(object->Window());
    object->Release();
}


std::int32_t StartOle()
{
    return OleInitialize(nullptr);
}

void StopOle()
{
    OleUninitialize();
}
