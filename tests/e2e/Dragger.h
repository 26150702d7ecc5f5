#pragma once
// A real OLE drag of file names from the check's process onto a window of another process.
//
// The drag is made as a person makes it: the left button is pressed on a small window of the
// check's own (the files' place), the pointer is moved onto the target window's centre and the
// button let go there, all through the system's input queue. It runs on a thread of its own,
// so that the check can go on while the target is still inside its drop, for instance to
// answer a message box that the drop shows.

#include <windows.h>
#include <ole2.h>

#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace e2e {

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// A data object with one CF_HDROP block. Made on the stack of whoever runs the drag, so its
// references are counted by nobody.
class CFileData : public IDataObject {
public:
    explicit CFileData(std::string bytes);

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetData(FORMATETC* format, STGMEDIUM* medium) override;
    HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC*, STGMEDIUM*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* format) override;
    HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC*, FORMATETC* out) override;
    HRESULT STDMETHODCALLTYPE SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD, IEnumFORMATETC**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override { return OLE_E_ADVISENOTSUPPORTED; }
    HRESULT STDMETHODCALLTYPE DUnadvise(DWORD) override { return OLE_E_ADVISENOTSUPPORTED; }
    HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA**) override { return OLE_E_ADVISENOTSUPPORTED; }

private:
    std::string m_bytes;
};

// The hand that holds the drag: the left button went down on the drag's start; each round of
// the drag loop moves the pointer a step towards the drop point, and a few rounds after it
// arrived the button is let go. The loop drops once it sees the button up, as for a person.
class CHandDrag : public IDropSource {
public:
    CHandDrag(POINT from, POINT to) : m_from(from), m_to(to) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE QueryContinueDrag(BOOL escape, DWORD keyState) override;
    HRESULT STDMETHODCALLTYPE GiveFeedback(DWORD) override { return DRAGDROP_S_USEDEFAULTCURSORS; }

private:
    POINT m_from;
    POINT m_to;
    int m_rounds = 0;
};

#pragma GCC diagnostic pop

// A DROPFILES record, then each name terminated, then one more terminator.
std::string DropFilesBlock(const std::vector<std::string>& names, bool wide);

class CDrag {
public:
    CDrag() = default;
    CDrag(const CDrag&) = delete;
    CDrag& operator=(const CDrag&) = delete;
    ~CDrag();   // a drag that never ended is left to itself

    // Starts dragging names (single-byte paths), as UTF-16 or as ANSI names, onto window.
    void Start(HWND window, const std::vector<std::string>& names, bool wide);
    // Waits for the drag to end; true when it ended in time. effect: what the target answered.
    [[nodiscard]] bool Finish(DWORD timeoutMs, DWORD* effect);

private:
    // Shared with the drag thread, which may outlive a check that gave up on it.
    struct State {
        HANDLE ended = nullptr;
        DWORD effect = DROPEFFECT_NONE;
        ~State() { if (ended) CloseHandle(ended); }
    };
    std::shared_ptr<State> m_state;
    std::thread m_thread;
};

// A whole drag: Start, then Finish within the time a drop takes.
[[nodiscard]] bool DragFiles(HWND window, const std::vector<std::string>& names, bool wide, DWORD* effect);

}  // namespace e2e
