#pragma once
// COleDropTarget: drag and drop of files onto a dialog, and the OLE libraries it needs.
//
// Windows: an IDropTarget registered for the dialog with RegisterDragDrop. During a drag
// it fetches the CF_HDROP data, locks the block for the length of OnDragEnter and hands
// over its bytes: a DROPFILES record followed by the list of names. The model backend
// registers nothing; tests call the handlers with DROPFILES bytes of their own.
//
// All handlers run on the user-interface thread inside the platform's drag loop: they
// must not show anything modal. A drop answers at once; what follows it goes through a
// posted message.

#include <cstddef>
#include <cstdint>

class CDialog;

const int DropEffectNone = 0;
const int DropEffectCopy = 1;

class COleDropTarget {
public:
    COleDropTarget() : registration(nullptr) {}
    virtual ~COleDropTarget();
    COleDropTarget(const COleDropTarget&) = delete;
    COleDropTarget& operator=(const COleDropTarget&) = delete;

    // Registers this target for the dialog's window; false when the platform refuses.
    bool Register(CDialog& dialog);
    // Ends the registration; returns at once when there is none.
    virtual void Revoke();

    // dropFiles: the locked bytes of the CF_HDROP block, or null when the drag offers no
    // file names or the block cannot be fetched or locked. Answers a drop effect.
    virtual int OnDragEnter(const void* /*dropFiles*/, std::size_t /*size*/, std::uint32_t /*keyState*/)
    {
        return DropEffectNone;
    }
    virtual int OnDragOver(std::uint32_t /*keyState*/) { return DropEffectNone; }
    virtual void OnDragLeave() {}
    // dropEffect: the effect last answered by OnDragEnter or OnDragOver, as the source
    // allows it. True if the drop was taken.
    virtual bool OnDrop(int /*dropEffect*/) { return false; }

private:
    void* registration;   // the registered IDropTarget object, or null
};

// OleInitialize(null) / OleUninitialize. The result is the HRESULT: 0 (S_OK) and
// 1 (S_FALSE) mean started, and each of those is owed one StopOle.
std::int32_t StartOle();
void StopOle();
