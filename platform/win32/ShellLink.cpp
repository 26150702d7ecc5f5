// Shell links through COM: CLSID_ShellLink, IShellLinkA, IShellLinkW and IPersistFile. The caller has
// started COM (OleInitialize or CoInitialize) on this thread.

#include "platform/ShellLink.h"

#include <windows.h>
#include <objbase.h>
#include <objidl.h>
#include <shlobj.h>
#include <shobjidl.h>

#include <cstring>
#include <cwchar>

#include "text/Allocation.h"
#include "text/TextString.h"

namespace {

IShellLinkA* LinkOf(ShellLinkInterface* link)
{
    return reinterpret_cast<IShellLinkA*>(link);
}

IPersistFile* FileOf(PersistFileInterface* file)
{
    return reinterpret_cast<IPersistFile*>(file);
}

// The wide path form as a terminated wide string in a block of its own: the text's bytes
// need not lie at an even address, and a second zero byte makes the terminating unit
// whole whatever the text ends with. Null when the block cannot be had.
wchar_t* WideCopy(const CTextString& widePath)
{
    const std::size_t bytes = static_cast<std::size_t>(widePath.Length());
    void* block = AllocateBlock(bytes + 4);
    if (!block)
        return nullptr;
    std::memset(block, 0, bytes + 4);
    std::memcpy(block, widePath.Text(), bytes);
    return static_cast<wchar_t*>(block);
}

// units terminated, as the shell left them, in the system's wide form; x86 keeps a
// wchar_t low byte first, as the form wants.
bool WideForm(const wchar_t* units, CTextString& wide)
{
    const int bytes = static_cast<int>(std::wcslen(units) * sizeof(wchar_t));
    wide.MakeEmpty();
    wide.AppendBytes(units, bytes);
    wide.AppendChar('\0');
    return wide.Length() == bytes + 1;
}

}   // namespace

ShellResult CreateShellLink(ShellLinkInterface** link)
{
    IShellLinkA* created = nullptr;
    const HRESULT hr = CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkA,
                                        reinterpret_cast<void**>(&created));
    *link = hr == S_OK ? reinterpret_cast<ShellLinkInterface*>(created) : nullptr;
    if (hr != S_OK && created)
        created->Release();
    return hr;
}

ShellResult QueryPersistFile(ShellLinkInterface* link, PersistFileInterface** file)
{
    IPersistFile* persist = nullptr;
    const HRESULT hr = LinkOf(link)->QueryInterface(IID_IPersistFile, reinterpret_cast<void**>(&persist));
    *file = hr == S_OK ? reinterpret_cast<PersistFileInterface*>(persist) : nullptr;
    if (hr != S_OK && persist)
        persist->Release();
    return hr;
}

void ReleaseShellLink(ShellLinkInterface* link)
{
    if (link)
        LinkOf(link)->Release();
}

void ReleasePersistFile(PersistFileInterface* file)
{
    if (file)
        FileOf(file)->Release();
}

ShellResult LoadLinkFile(PersistFileInterface* file, const CTextString& widePath)
{
    wchar_t* path = WideCopy(widePath);
    if (!path)
        return E_OUTOFMEMORY;
    const HRESULT hr = FileOf(file)->Load(path, STGM_READWRITE);
    FreeBlock(path);
    return hr;
}

bool IsLinkFileMissing(ShellResult result)
{
    return result == HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND);
}

ShellResult SaveLinkFile(PersistFileInterface* file, const CTextString& widePath)
{
    wchar_t* path = WideCopy(widePath);
    if (!path)
        return E_OUTOFMEMORY;
    const HRESULT hr = FileOf(file)->Save(path, FALSE);
    FreeBlock(path);
    return hr;
}

ShellResult ReplaceLinkFile(const CTextString& fromWidePath, const CTextString& toWidePath)
{
    wchar_t* from = WideCopy(fromWidePath);
    wchar_t* to = WideCopy(toWidePath);
    HRESULT hr = E_OUTOFMEMORY;
    if (from && to)
        hr = MoveFileExW(from, to, MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) ? S_OK
                                                                                    : HRESULT_FROM_WIN32(GetLastError());
    FreeBlock(from);
    FreeBlock(to);
    return hr;
}

ShellResult DeleteLinkFile(const CTextString& widePath)
{
    wchar_t* path = WideCopy(widePath);
    if (!path)
        return E_OUTOFMEMORY;
    const HRESULT hr = DeleteFileW(path) ? S_OK : HRESULT_FROM_WIN32(GetLastError());
    FreeBlock(path);
    return hr;
}

ShellResult ResolveLink(ShellLinkInterface* link, void* window)
{
    // The time-out is the high word of the flags; zero leaves the shell's default.
    return LinkOf(link)->Resolve(static_cast<HWND>(window), SLR_NO_UI | SLR_NOUPDATE | SLR_NOSEARCH);
}

ShellResult GetLinkPath(ShellLinkInterface* link, char* buffer, int capacity)
{
    return LinkOf(link)->GetPath(buffer, capacity, nullptr, 0);
}

ShellResult GetLinkArguments(ShellLinkInterface* link, char* buffer, int capacity)
{
    return LinkOf(link)->GetArguments(buffer, capacity);
}

ShellResult GetLinkIconLocation(ShellLinkInterface* link, char* buffer, int capacity, std::int32_t* index)
{
    int shellIndex = *index;   // left as it was when the shell writes nothing
    const HRESULT hr = LinkOf(link)->GetIconLocation(buffer, capacity, &shellIndex);
    *index = shellIndex;
    return hr;
}

ShellResult GetLinkWorkingDirectory(ShellLinkInterface* link, char* buffer, int capacity)
{
    return LinkOf(link)->GetWorkingDirectory(buffer, capacity);
}

ShellResult GetLinkDescription(ShellLinkInterface* link, char* buffer, int capacity)
{
    return LinkOf(link)->GetDescription(buffer, capacity);
}

ShellResult GetLinkTextWide(ShellLinkInterface* link, LinkText which, CTextString& wide)
{
    IShellLinkW* wideLink = nullptr;
    HRESULT hr = LinkOf(link)->QueryInterface(IID_IShellLinkW, reinterpret_cast<void**>(&wideLink));
    if (hr != S_OK) {
        if (wideLink)
            wideLink->Release();
        return hr;
    }
    // As large as the single-byte reads; the last unit stays the terminator.
    const int capacity = 16384;
    wchar_t buffer[capacity] = {};
    int index = 0;
    switch (which) {
    case LinkTextPath:
        hr = wideLink->GetPath(buffer, capacity - 1, nullptr, 0);
        break;
    case LinkTextArguments:
        hr = wideLink->GetArguments(buffer, capacity - 1);
        break;
    case LinkTextWorkingDirectory:
        hr = wideLink->GetWorkingDirectory(buffer, capacity - 1);
        break;
    case LinkTextIconLocation:
        hr = wideLink->GetIconLocation(buffer, capacity - 1, &index);
        break;
    }
    wideLink->Release();
    if (hr == S_OK && !WideForm(buffer, wide))
        hr = E_OUTOFMEMORY;
    return hr;
}

bool WidenByCodePage(const CTextString& text, CTextString& wide)
{
    wide.MakeEmpty();
    if (text.IsEmpty()) {
        wide.AppendChar('\0');
        return wide.Length() == 1;
    }
    const int units = MultiByteToWideChar(CP_ACP, 0, text.Text(), text.Length(), nullptr, 0);
    if (units <= 0)
        return false;
    const std::size_t bytes = static_cast<std::size_t>(units + 1) * sizeof(wchar_t);
    wchar_t* block = static_cast<wchar_t*>(AllocateBlock(bytes));
    if (!block)
        return false;
    std::memset(block, 0, bytes);
    MultiByteToWideChar(CP_ACP, 0, text.Text(), text.Length(), block, units);
    const bool made = WideForm(block, wide);
    FreeBlock(block);
    return made;
}

ShellResult SetLinkPath(ShellLinkInterface* link, const char* path)
{
    return LinkOf(link)->SetPath(path);
}

ShellResult SetLinkWorkingDirectory(ShellLinkInterface* link, const char* folder)
{
    return LinkOf(link)->SetWorkingDirectory(folder);
}

ShellResult SetLinkArguments(ShellLinkInterface* link, const char* arguments)
{
    return LinkOf(link)->SetArguments(arguments);
}

ShellResult SetLinkIconLocation(ShellLinkInterface* link, const char* path, std::int32_t index)
{
    return LinkOf(link)->SetIconLocation(path, index);
}
