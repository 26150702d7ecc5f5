#pragma once
// CLinkDropTarget: owner of the shell link object through which a shortcut file is read and
// written, and of the fields of the shortcut loaded last. The dialog embeds one.
//
// Link side (LinkDropTarget.cpp): obtaining the two interfaces, loading a shortcut, writing
// it in enhanced form and writing it back. The save operations write through the link
// object as the last load (or save) left it, so whatever they do not set (description,
// hot key, show command) stays as the file had it; they change the object and the file,
// never the fields, so a second save finds the same icon location.
//
// Drop side (DropReception.cpp): during a drag the first dropped name is taken into
// m_droppedPath; only a drop moves it into m_linkPath for LoadLink. A drag that leaves or is
// refused therefore never touches m_linkPath. A drop whose load fails empties m_linkPath,
// since the link object and the fields no longer describe the shortcut loaded before: a
// later Save or Restore then writes nothing and answers false, until a load succeeds.
//
// m_linkPath is in wide path form (UTF-16 units, low byte first, one zero byte behind): it
// alone opens the file. Its single-byte form serves only the read-only attribute.

#include <cstdint>

#include "platform/DropTarget.h"
#include "platform/ShellLink.h"
#include "text/Chain.h"
#include "text/TextString.h"

class CDialog;

// The one scratch buffer of a load; each read is told one byte less, for the terminator.
const int LinkBufferSize = 16384;
const int LinkBufferCapacity = LinkBufferSize - 1;

class CLinkDropTarget : public COleDropTarget {
public:
    CLinkDropTarget();
    ~CLinkDropTarget() override;   // ReleaseInterfaces, and m_interfacesReady cleared
    CLinkDropTarget(const CLinkDropTarget&) = delete;
    CLinkDropTarget& operator=(const CLinkDropTarget&) = delete;

    // True when both interfaces are held; at once if they already are. COM must be started.
    bool InitLinkInterfaces();

    // Gives back IPersistFile, then IShellLinkA, each set to null. Safe to repeat.
    void ReleaseInterfaces();

    // Reads the shortcut named by m_linkPath into the fields. The read-only bit of the file
    // is cleared first and never set back. The first failing step answers false and leaves
    // the fields read so far as they are. Without both interfaces: false, nothing touched.
    // True only when every field was read whole, through both interfaces of the object;
    // m_linkBeyondCodePage then tells whether a text differs between them.
    bool LoadLink();

    // A shortcut that could not be read whole: m_linkPath is emptied and the user told
    // "Load Failure" (when there is an owner to tell).
    void ReportLoadFailure();

    // Points the shortcut at the parent program and stores the enhanced line, then writes
    // the file. The dialog passes m_parentPath (the full path of Zelmar.exe; its folder
    // becomes the working folder), m_target, m_targetDir, m_args (in substituted form) and
    // m_selected. Without both interfaces or without a path nothing is touched and the
    // answer is false. A failing SetPath stops at once and nothing is written; any later failing
    // step makes the answer false but the remaining steps still run, the file included.
    // The line and the working folder are made before anything is set: when either could not
    // be had, or the line is longer than a load reads back (*tooLong then set), nothing is
    // touched and the answer is false.
    bool SaveEnhanced(const CTextString& parentPath, const CTextString& target, const CTextString& workDir,
                      const CTextString& args, const CChain<CTextString>& profiles, bool* tooLong = nullptr);

    // The drag: a copy effect for a drag whose first name ends in ".lnk" in any case, none
    // for anything else or while the interfaces are missing. The key state plays no part.
    int OnDragEnter(const void* dropFiles, std::size_t size, std::uint32_t keyState) override;
    int OnDragOver(std::uint32_t keyState) override;
    // Loads the dropped shortcut and posts AppMessage to the owner, which analyses it once
    // the drag has ended; a failed load is told to the user and answers false.
    bool OnDrop(int dropEffect) override;

    // Writes the shortcut back to target, workDir and args (already restored; empty texts
    // are passed on, not skipped). No icon location is set: what SaveEnhanced stored stays.
    // Same failure rule as SaveEnhanced.
    bool SaveRestored(const CTextString& target, const CTextString& workDir, const CTextString& args);

    CTextString m_linkPath;       // wide path form
    CTextString m_linkTarget;
    CTextString m_linkArgs;
    CTextString m_linkIconPath;   // m_linkTarget when the shortcut names no icon file
    CTextString m_linkWorkDir;
    std::int32_t m_linkIconIndex;
    // The target, arguments, working folder or icon file hold characters that the code page
    // cannot carry: the single-byte reading holds look-alikes, and a save would keep them.
    bool m_linkBeyondCodePage;
    ShellLinkInterface* m_shellLink;     // one reference, owned; null when released
    PersistFileInterface* m_persistFile; // one reference, owned; null when released
    bool m_interfacesReady;
    CDialog* m_owner;   // not owned; its window is handed to Resolve (null: no owner window)
    bool m_registered;        // Register succeeded; OnCancel revokes
    int m_dropEffect;         // decided by OnDragEnter
    CTextString m_linkSuffix; // ".lnk" as four UTF-16 units and the closing zero byte
    CTextString m_droppedPath;   // the name of the drag in progress, wide path form
};

