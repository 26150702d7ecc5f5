#pragma once
// CLinkDropTarget: owner of the shell link object through which a shortcut file is read and
// written, and of the fields of the shortcut loaded last. The dialog embeds one.
//
// Link side (LinkDropTarget.cpp): obtaining the link object, loading a shortcut, writing it
// in enhanced form and writing it back. A load reads into a fresh object and fresh values,
// taken over only when everything was read whole: a failed load changes nothing, so the
// shortcut shown stays the one that Save and Restore act on. The saves write through the
// object as the last load (or save) left it, so whatever they do not set (description, hot
// key, show command) stays as the file had it. They set everything first and write only
// when every step succeeded; then the object goes to a temporary beside the shortcut, which
// is read back through a fresh object and moves over the shortcut in one step only when it
// reads as meant. So a shortcut is always as it was or wholly written, whatever the shell
// or the disk did, a crash included.
//
// Drop side (DropReception.cpp): during a drag the first dropped name is taken into
// m_droppedPath, whole or not at all; only a load that succeeds on the drop makes it
// m_linkPath. A drag that leaves, is refused or fails to load never touches it.
//
// m_linkPath is in wide path form (UTF-16 units, low byte first, one zero byte behind): it
// alone opens the file. Its single-byte form serves only the read-only attribute.

#include <cstdint>

#include "platform/DropTarget.h"
#include "platform/ShellLink.h"
#include "text/Chain.h"
#include "text/TextString.h"

class CDialog;

// The one scratch buffer of a read; each read is told one byte less, for the terminator. A
// reading that fills the buffer may have been cut short, so the longest text that a load
// takes whole is two bytes shorter than the buffer.
const int LinkBufferSize = 16384;
const int LinkBufferCapacity = LinkBufferSize - 1;
const int LongestLinkText = LinkBufferCapacity - 2;

// Why a Save cannot go ahead, found before anything is written.
enum class SaveRefusal {
    None,
    Unmade,          // a piece could not be had (memory, no link object, no shortcut)
    TooLong,         // a load could not read the line back whole
    Unsupported,     // taken apart, the line would not give back what went into it
    TargetRefused,   // the shell would not take the target back on Restore
};

class CLinkDropTarget : public COleDropTarget {
public:
    CLinkDropTarget();
    CLinkDropTarget(const CLinkDropTarget&) = delete;
    CLinkDropTarget& operator=(const CLinkDropTarget&) = delete;

    // True when the link object is held through both interfaces; at once if it already is.
    // COM must be started.
    bool InitLinkInterfaces();

    // Gives back IPersistFile, then IShellLinkA, as the object's end does too. Safe to repeat.
    void ReleaseInterfaces();

    // Reads the shortcut at widePath through a fresh link object. The read-only bit of the
    // file is cleared first and never set back. Only when every text was read whole do the
    // object, the path and the fields become this shortcut's; otherwise nothing changes and
    // the answer is false, with *missing telling a shortcut that is not there. Without the
    // link object: false, nothing touched.
    bool LoadLink(const CTextString& widePath, bool* missing = nullptr);

    // Tells the owner "Load Failure" (when there is an owner to tell).
    void ReportLoadFailure();

    // Whether the shortcut loaded last holds characters the code page cannot carry in this
    // text: its single-byte reading holds look-alikes, which a save would keep.
    bool BeyondCodePage(LinkText which) const { return (m_linkBeyondCodePage >> which & 1) != 0; }

    // The proof that a Save of these values can be undone, made before anything is written:
    // the enhanced line is made into line, and taken apart it must give back the target,
    // folder, arguments and profiles exactly; a load must read it back whole; the icon file
    // that the save stores must hold no look-alike; and the link object must take the target
    // back (it is set on the object, which nothing writes yet).
    SaveRefusal ProveEnhanced(const CTextString& target, const CTextString& workDir, const CTextString& args,
                              const CChain<CTextString>& profiles, CTextString& line);

    // Points the shortcut at the parent program (parentPath: the full path of Zelmar.exe; its
    // folder becomes the working folder), stores line, a proven enhanced line, with the icon
    // location that was loaded, and writes the file as told above.
    bool SaveEnhanced(const CTextString& parentPath, const CTextString& line);

    // Writes the shortcut back to target, workDir and args (already restored; empty texts
    // are passed on, not skipped), as told above. No icon location is set: what the
    // shortcut holds stays.
    bool SaveRestored(const CTextString& target, const CTextString& workDir, const CTextString& args);

    // The drag: a copy effect for a drag whose first name ends in ".lnk" in any case, none
    // for anything else or while the interfaces are missing. The key state plays no part.
    int OnDragEnter(const void* dropFiles, std::size_t size, std::uint32_t keyState) override;
    int OnDragOver(std::uint32_t keyState) override;
    // Loads the dropped shortcut and posts AppMessage to the owner, which analyses it once
    // the drag has ended; a failed load is told to the user and answers false.
    bool OnDrop(int dropEffect) override;

    CTextString m_linkPath;       // wide path form
    CTextString m_linkTarget;
    CTextString m_linkArgs;
    CTextString m_linkIconPath;   // m_linkTarget when the shortcut names no icon file
    CTextString m_linkWorkDir;
    std::int32_t m_linkIconIndex;
    int m_linkBeyondCodePage;     // a bit (1 << LinkText) for each text that holds look-alikes
    CLinkObject m_link;           // the object of the shortcut loaded last; null interfaces when released
    bool m_interfacesReady;
    CDialog* m_owner;   // not owned; its window is handed to Resolve (null: no owner window)
    bool m_registered;        // Register succeeded; OnCancel revokes
    int m_dropEffect;         // decided by OnDragEnter
    CTextString m_linkSuffix; // ".lnk" as four UTF-16 units and the closing zero byte
    CTextString m_droppedPath;   // the name of the drag in progress, wide path form

private:
    // The write of both saves: target, folder and arguments set, then written as told above.
    bool SaveChecked(const CTextString& target, const CTextString& workDir, const CTextString& args);
};
