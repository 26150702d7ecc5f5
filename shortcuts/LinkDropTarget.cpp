// CLinkDropTarget, link side: the interfaces, LoadLink and the two saves.

#include "shortcuts/LinkDropTarget.h"

#include "files/Paths.h"
#include "platform/Dialog.h"
#include "platform/Files.h"
#include "shortcuts/ArgumentLine.h"

namespace {

const char LoadFailureText[] =
    "Could not load or resolve the link for this shortcut.\r\n\r\n"
    "Make sure it's not in use, that the target program was not deleted or moved, and try again.";

// *same tells whether the wide interface reads text as the single-byte one did, once
// widened by the code page; a look-alike the shell put in place of a character differs.
// False when either wide form could not be had.
bool SameThroughBothInterfaces(ShellLinkInterface* link, LinkText which, const CTextString& text, int* same)
{
    CTextString wide(0);
    CTextString widened(0);
    if (GetLinkTextWide(link, which, wide) != ShellOk || !WidenByCodePage(text, widened))
        return false;
    *same = wide.Equals(widened);
    return true;
}

}   // namespace

CLinkDropTarget::CLinkDropTarget()
    : m_linkPath(0),
      m_linkTarget(0),
      m_linkArgs(0),
      m_linkIconPath(0),
      m_linkWorkDir(0),
      m_linkIconIndex(0),
      m_linkBeyondCodePage(false),
      m_shellLink(nullptr),
      m_persistFile(nullptr),
      m_interfacesReady(false),
      m_owner(nullptr),
      m_registered(false),
      m_dropEffect(DropEffectNone),
      m_linkSuffix(0),
      m_droppedPath(0)
{
    m_linkSuffix.AppendBytes(".\0l\0n\0k\0\0", 9);
}

CLinkDropTarget::~CLinkDropTarget()
{
    ReleaseInterfaces();
    m_interfacesReady = false;
}

bool CLinkDropTarget::InitLinkInterfaces()
{
    if (m_interfacesReady)
        return true;
    if (CreateShellLink(&m_shellLink) != ShellOk)
        return false;
    if (QueryPersistFile(m_shellLink, &m_persistFile) == ShellOk)
        m_interfacesReady = true;
    return m_interfacesReady;
}

void CLinkDropTarget::ReleaseInterfaces()
{
    if (m_persistFile) {
        ReleasePersistFile(m_persistFile);
        m_persistFile = nullptr;
    }
    if (m_shellLink) {
        ReleaseShellLink(m_shellLink);
        m_shellLink = nullptr;
    }
}

bool CLinkDropTarget::LoadLink()
{
    // The flag alone is not enough: a release at shutdown leaves it set.
    if (!m_shellLink || !m_persistFile)
        return false;
    m_linkBeyondCodePage = false;

    // A read-only shortcut could be loaded but not saved. The attribute calls take the
    // single-byte form, which may name no file when a unit lies above 0xFF; then the bit
    // stays as it is. It is not put back, whatever follows.
    CTextString narrowPath(m_linkPath);
    narrowPath.CollapseWide();
    const std::uint32_t attributes = GetAttributes(narrowPath.Text());
    if (attributes != InvalidAttributes && (attributes & AttributeReadOnly) != 0)
        SetAttributes(narrowPath.Text(), attributes & ~AttributeReadOnly);

    if (LoadLinkFile(m_persistFile, m_linkPath) != ShellOk)
        return false;
    if (ResolveLink(m_shellLink, m_owner ? m_owner->Handle() : nullptr) != ShellOk)
        return false;

    char buffer[LinkBufferSize];
    if (GetLinkPath(m_shellLink, buffer, LinkBufferCapacity) != ShellOk || !AssignWhole(m_linkTarget, buffer))
        return false;
    if (GetLinkArguments(m_shellLink, buffer, LinkBufferCapacity) != ShellOk || !AssignWhole(m_linkArgs, buffer))
        return false;
    if (GetLinkIconLocation(m_shellLink, buffer, LinkBufferCapacity, &m_linkIconIndex) != ShellOk)
        return false;
    const bool namesIconFile = buffer[0] != 0;
    if (!AssignWhole(m_linkIconPath, namesIconFile ? buffer : m_linkTarget.Text()))
        return false;
    if (GetLinkWorkingDirectory(m_shellLink, buffer, LinkBufferCapacity) != ShellOk ||
        !AssignWhole(m_linkWorkDir, buffer))
        return false;

    const CTextString noIconFile(0);
    const CTextString* const texts[] = {&m_linkTarget, &m_linkArgs, &m_linkWorkDir,
                                        namesIconFile ? &m_linkIconPath : &noIconFile};
    const LinkText wideTexts[] = {LinkTextPath, LinkTextArguments, LinkTextWorkingDirectory, LinkTextIconLocation};
    for (int i = 0; i < 4; ++i) {
        int same = 0;
        if (!SameThroughBothInterfaces(m_shellLink, wideTexts[i], *texts[i], &same))
            return false;
        m_linkBeyondCodePage = m_linkBeyondCodePage || !same;
    }
    return true;
}

void CLinkDropTarget::ReportLoadFailure()
{
    m_linkPath.MakeEmpty();
    if (m_owner)
        m_owner->ShowMessage(LoadFailureText, "Load Failure", MessageOk);
}

bool CLinkDropTarget::SaveEnhanced(const CTextString& parentPath, const CTextString& target,
                                   const CTextString& workDir, const CTextString& args,
                                   const CChain<CTextString>& profiles, bool* tooLong)
{
    if (tooLong)
        *tooLong = false;
    if (!m_shellLink || !m_persistFile || m_linkPath.IsEmpty())
        return false;
    // Everything that is written is made first: a piece missing writes nothing.
    const CTextString parentFolder = FolderOf(parentPath.Text(), true);
    const CTextString line = ComposeArguments(target, workDir, args, profiles);
    if (parentFolder.IsEmpty() || line.IsEmpty())
        return false;
    // A longer line would come back cut short from the next load, and so restore wrongly.
    if (line.Length() > LinkBufferCapacity) {
        if (tooLong)
            *tooLong = true;
        return false;
    }
    if (SetLinkPath(m_shellLink, parentPath.Text()) != ShellOk)
        return false;
    bool saved = true;
    if (SetLinkWorkingDirectory(m_shellLink, parentFolder.Text()) != ShellOk)
        saved = false;
    if (SetLinkArguments(m_shellLink, line.Text()) != ShellOk)
        saved = false;
    if (SetLinkIconLocation(m_shellLink, m_linkIconPath.Text(), m_linkIconIndex) != ShellOk)
        saved = false;
    if (SaveLinkFile(m_persistFile, m_linkPath) != ShellOk)
        saved = false;
    return saved;
}

bool CLinkDropTarget::SaveRestored(const CTextString& target, const CTextString& workDir, const CTextString& args)
{
    if (!m_shellLink || !m_persistFile || m_linkPath.IsEmpty())
        return false;
    if (SetLinkPath(m_shellLink, target.Text()) != ShellOk)
        return false;
    bool saved = true;
    if (SetLinkWorkingDirectory(m_shellLink, workDir.Text()) != ShellOk)
        saved = false;
    if (SetLinkArguments(m_shellLink, args.Text()) != ShellOk)
        saved = false;
    if (SaveLinkFile(m_persistFile, m_linkPath) != ShellOk)
        saved = false;
    return saved;
}
