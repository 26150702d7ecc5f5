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
// m_linkPath is in wide path form (UTF-16 units, low byte first, one zero byte behind): it
// alone opens the file. Its single-byte form serves only the read-only attribute.

#include <cstdint>

#include "platform/ShellLink.h"
#include "text/Chain.h"
#include "text/TextString.h"

class CDialog;

// The one scratch buffer of a load; each read is told one byte less, for the terminator.
const int LinkBufferSize = 16384;
const int LinkBufferCapacity = LinkBufferSize - 1;

class CLinkDropTarget {
public:
    CLinkDropTarget();
    ~CLinkDropTarget();   // ReleaseInterfaces, and m_interfacesReady cleared
    CLinkDropTarget(const CLinkDropTarget&) = delete;
    CLinkDropTarget& operator=(const CLinkDropTarget&) = delete;

    // True when both interfaces are held; at once if they already are. COM must be started.
    bool InitLinkInterfaces();

    // Gives back IPersistFile, then IShellLinkA, each set to null. Safe to repeat.
    void ReleaseInterfaces();

    // Reads the shortcut named by m_linkPath into the fields. The read-only bit of the file
    // is cleared first and never set back. The first failing step answers false and leaves
    // the fields read so far as they are. Without both interfaces: false, nothing touched.
    bool LoadLink();

    // Points the shortcut at the parent program and stores the enhanced line, then writes
    // the file. The dialog passes m_parentPath (the full path of Zelmar.exe; its folder
    // becomes the working folder), m_target, m_targetDir, m_args (in substituted form) and
    // m_selected. A failing SetPath stops at once and nothing is written; any later failing
    // step makes the answer false but the remaining steps still run, the file included.
    bool SaveEnhanced(const CTextString& parentPath, const CTextString& target, const CTextString& workDir,
                      const CTextString& args, const CChain<CTextString>& profiles);

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
    ShellLinkInterface* m_shellLink;     // one reference, owned; null when released
    PersistFileInterface* m_persistFile; // one reference, owned; null when released
    bool m_interfacesReady;
    CDialog* m_owner;   // not owned; its window is handed to Resolve (null: no owner window)
};
