#pragma once
// The shell's link object: a shortcut file read and written through the shell, whose format
// stays behind it. On Windows it is the COM object of CLSID_ShellLink, reached through its
// two interfaces IShellLinkA and IPersistFile; the native build has an in-memory stand-in
// (platform/model/ShellLinkModel.h).
//
// Every call answers a result: 0 for success, and anything else (an HRESULT on Windows),
// S_FALSE included, for failure. Text goes in and out single-byte, as the "A" interface
// takes it, except the wide reads below and the shortcut's own path, which is always given
// in wide path form: a CTextString holding UTF-16 units, low byte first, and one zero byte
// behind them.
//
// The object is reached through the two pointers below, each one reference of its own that
// the holder gives back with the matching Release call. Nothing here throws or allocates
// beyond what the shell does, except that the wide path is copied to an aligned block
// (through the allocation seam) before it goes out.

#include <cstdint>
#include <utility>

class CTextString;

typedef std::int32_t ShellResult;
const ShellResult ShellOk = 0;
const ShellResult ShellFalse = 1;   // S_FALSE: e.g. GetLinkPath of a link without a file target

// Opaque: IShellLinkA and IPersistFile on Windows, the stand-in's records natively.
struct ShellLinkInterface;
struct PersistFileInterface;

// A new link object (CoCreateInstance, in-process). *link is null on failure.
ShellResult CreateShellLink(ShellLinkInterface** link);
// The same object's persistence interface (QueryInterface). *file is null on failure.
ShellResult QueryPersistFile(ShellLinkInterface* link, PersistFileInterface** file);
void ReleaseShellLink(ShellLinkInterface* link);
void ReleasePersistFile(PersistFileInterface* file);

// Reads the file into the object, opened for reading and writing (STGM_READWRITE).
ShellResult LoadLinkFile(PersistFileInterface* file, const CTextString& widePath);
// True for the answer of a load whose file is not in its folder. A folder or drive that is not
// there (path not found) may only be out of reach for now, and does not count.
bool IsLinkFileMissing(ShellResult result);
// Writes the object to the file, which need not be the one it was read from (fRemember FALSE).
ShellResult SaveLinkFile(PersistFileInterface* file, const CTextString& widePath);

// The shortcut files themselves, by wide path, on the same volume: one moved over another in
// one step (MoveFileExW, replacing, written through), and one deleted.
ShellResult ReplaceLinkFile(const CTextString& fromWidePath, const CTextString& toWidePath);
ShellResult DeleteLinkFile(const CTextString& widePath);

// Settles the link without asking the user, updating or searching (flags 0x19, no
// time-out). window: the owner's window handle, or null.
ShellResult ResolveLink(ShellLinkInterface* link, void* window);

// Each fills buffer with a terminated text of at most capacity - 1 bytes.
ShellResult GetLinkPath(ShellLinkInterface* link, char* buffer, int capacity);   // no find data, flags 0
ShellResult GetLinkArguments(ShellLinkInterface* link, char* buffer, int capacity);
ShellResult GetLinkIconLocation(ShellLinkInterface* link, char* buffer, int capacity, std::int32_t* index);
ShellResult GetLinkWorkingDirectory(ShellLinkInterface* link, char* buffer, int capacity);
ShellResult GetLinkDescription(ShellLinkInterface* link, char* buffer, int capacity);

// The same object's texts read through its wide interface (IShellLinkW), which carries what
// the single-byte one can only replace by look-alikes. wide receives the system's wide form:
// UTF-16 units, low byte first, one zero byte behind. A wide form that could not be had
// answers a failure.
enum LinkText { LinkTextPath, LinkTextArguments, LinkTextWorkingDirectory, LinkTextIconLocation };
ShellResult GetLinkTextWide(ShellLinkInterface* link, LinkText which, CTextString& wide);

// text widened by the ANSI code page into the same wide form: what the single-byte reading
// stands for. False when the wide form could not be had.
bool WidenByCodePage(const CTextString& text, CTextString& wide);

ShellResult SetLinkPath(ShellLinkInterface* link, const char* path);
ShellResult SetLinkWorkingDirectory(ShellLinkInterface* link, const char* folder);
ShellResult SetLinkArguments(ShellLinkInterface* link, const char* arguments);
ShellResult SetLinkIconLocation(ShellLinkInterface* link, const char* path, std::int32_t index);

// One link object through both its interfaces, given back on every way out: IPersistFile
// first, then IShellLinkA.
class CLinkObject {
public:
    CLinkObject() = default;
    ~CLinkObject() { Release(); }
    CLinkObject(const CLinkObject&) = delete;
    CLinkObject& operator=(const CLinkObject&) = delete;

    // A new object; true when both interfaces are held.
    bool Create()
    {
        Release();
        if (CreateShellLink(&link) != ShellOk)
            return false;
        return QueryPersistFile(link, &file) == ShellOk;
    }

    void Release()
    {
        if (file)
            ReleasePersistFile(file);
        if (link)
            ReleaseShellLink(link);
        file = nullptr;
        link = nullptr;
    }

    void Swap(CLinkObject& other)
    {
        std::swap(link, other.link);
        std::swap(file, other.file);
    }

    ShellLinkInterface* link = nullptr;
    PersistFileInterface* file = nullptr;
};
