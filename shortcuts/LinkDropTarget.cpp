// CLinkDropTarget, link side: the link object, LoadLink, the proof of a Save and the two saves.

#include "shortcuts/LinkDropTarget.h"

#include <cstring>

#include "files/Paths.h"
#include "platform/Dialog.h"
#include "platform/Files.h"
#include "shortcuts/ArgumentLine.h"

namespace {

const char LoadFailureText[] =
    "Could not load or resolve the link for this shortcut.\r\n\r\n"
    "Make sure it's not in use, that the target program was not deleted or moved, and try again.";

// A save goes to the shortcut's name with this behind it, in the same folder, before it
// moves over the shortcut. A temporary that a crash left behind is replaced by the next save.
const char TemporarySuffix[] = ".lw.tmp";

// What a link object says of its shortcut, each text read whole.
struct LinkTexts {
    CTextString target;
    CTextString arguments;
    CTextString workDir;
    CTextString iconPath;   // empty when the shortcut names no icon file
    CTextString description;
    std::int32_t iconIndex{};
};

// One text through read into text, whole: the buffer is terminated whatever the shell left in
// it, and a reading that fills it counts as cut short.
template <class Read>
bool ReadWhole(char* buffer, CTextString& text, Read read)
{
    const ShellResult result = read(buffer);
    buffer[LinkBufferCapacity] = 0;
    return result == ShellOk && std::strlen(buffer) <= static_cast<std::size_t>(LongestLinkText) &&
           AssignWhole(text, buffer);
}

bool ReadTexts(ShellLinkInterface* link, LinkTexts& texts)
{
    char buffer[LinkBufferSize];
    const int n = LinkBufferCapacity;
    return ReadWhole(buffer, texts.target, [&](char* into) { return GetLinkPath(link, into, n); }) &&
           ReadWhole(buffer, texts.arguments, [&](char* into) { return GetLinkArguments(link, into, n); }) &&
           ReadWhole(buffer, texts.iconPath,
                     [&](char* into) { return GetLinkIconLocation(link, into, n, &texts.iconIndex); }) &&
           ReadWhole(buffer, texts.workDir, [&](char* into) { return GetLinkWorkingDirectory(link, into, n); }) &&
           ReadWhole(buffer, texts.description, [&](char* into) { return GetLinkDescription(link, into, n); });
}

// The shell may give a target back in the file system's case; every other text is its own.
bool SameTexts(const LinkTexts& a, const LinkTexts& b)
{
    return a.target.CompareNoCase(b.target.Text(), b.target.Length()) == 0 && a.arguments.Equals(b.arguments) &&
           a.workDir.Equals(b.workDir) && a.iconPath.Equals(b.iconPath) && a.description.Equals(b.description) &&
           a.iconIndex == b.iconIndex;
}

bool SameChains(const CChain<CTextString>& a, const CChain<CTextString>& b)
{
    const CChainNode<CTextString>* x = a.Head();
    const CChainNode<CTextString>* y = b.Head();
    for (; x && y; x = x->next, y = y->next) {
        if (!x->payload->Equals(*y->payload))
            return false;
    }
    return !x && !y;
}

// A bit (1 << LinkText) for each text whose wide reading differs from the single-byte one
// widened by the code page, where the shell put a look-alike; -1 when a wide form could not
// be had.
int TextsBeyondCodePage(ShellLinkInterface* link, const LinkTexts& texts)
{
    const CTextString* const read[] = {&texts.target, &texts.arguments, &texts.workDir, &texts.iconPath};
    int beyond = 0;
    for (LinkText which : {LinkTextPath, LinkTextArguments, LinkTextWorkingDirectory, LinkTextIconLocation}) {
        CTextString wide(0);
        CTextString widened(0);
        if (GetLinkTextWide(link, which, wide) != ShellOk || !WidenByCodePage(*read[which], widened))
            return -1;
        beyond |= wide.Equals(widened) ? 0 : 1 << which;
    }
    return beyond;
}

// A read-only shortcut could be loaded but not replaced. The attribute calls take the
// single-byte form, which may name no file when a unit lies above 0xFF; then the bit stays
// as it is. It is not put back, whatever follows.
void ClearReadOnly(const CTextString& widePath)
{
    CTextString narrow(0);
    if (!AssignWhole(narrow, widePath) || !narrow.CollapseWide())
        return;
    const std::uint32_t attributes = GetAttributes(narrow.Text());
    if (attributes != InvalidAttributes && (attributes & AttributeReadOnly) != 0)
        (void)SetAttributes(narrow.Text(), attributes & ~AttributeReadOnly);
}

// The temporary's path in wide path form: the shortcut's units, the suffix's, one zero byte.
bool TemporaryBeside(const CTextString& widePath, CTextString& temporary)
{
    CTextString units = widePath.Left(widePath.Length() - 1);
    for (const char* suffix = TemporarySuffix; *suffix; ++suffix) {
        const char unit[2] = {*suffix, 0};
        units.AppendBytes(unit, 2);
    }
    units.AppendChar('\0');
    temporary.Swap(units);
    return temporary.Length() == widePath.Length() + 2 * static_cast<int>(std::strlen(TemporarySuffix));
}

// The file as a fresh link object reads it.
bool ReadsAsMeant(const CTextString& widePath, const LinkTexts& meant)
{
    CLinkObject check;
    LinkTexts read;
    return check.Create() && LoadLinkFile(check.file, widePath) == ShellOk && ReadTexts(check.link, read) &&
           SameTexts(read, meant);
}

}   // namespace

CLinkDropTarget::CLinkDropTarget()
    : m_linkPath(0),
      m_linkTarget(0),
      m_linkArgs(0),
      m_linkIconPath(0),
      m_linkWorkDir(0),
      m_linkIconIndex(0),
      m_linkBeyondCodePage(0),
      m_interfacesReady(false),
      m_owner(nullptr),
      m_registered(false),
      m_dropEffect(DropEffectNone),
      m_linkSuffix(0),
      m_droppedPath(0)
{
    m_linkSuffix.AppendBytes(".\0l\0n\0k\0\0", 9);
}

bool CLinkDropTarget::InitLinkInterfaces()
{
    if (!m_interfacesReady)
        m_interfacesReady = m_link.Create();
    return m_interfacesReady;
}

void CLinkDropTarget::ReleaseInterfaces()
{
    m_link.Release();
}

bool CLinkDropTarget::LoadLink(const CTextString& widePath, bool* missing)
{
    if (missing)
        *missing = false;
    // The flag alone is not enough: a release at shutdown leaves it set.
    if (!m_link.link)
        return false;
    ClearReadOnly(widePath);

    CLinkObject fresh;
    if (!fresh.Create())
        return false;
    const ShellResult loaded = LoadLinkFile(fresh.file, widePath);
    if (loaded != ShellOk) {
        if (missing)
            *missing = IsLinkFileMissing(loaded);
        return false;
    }
    LinkTexts texts;
    if (ResolveLink(fresh.link, m_owner ? m_owner->Handle() : nullptr) != ShellOk || !ReadTexts(fresh.link, texts))
        return false;
    const int beyond = TextsBeyondCodePage(fresh.link, texts);
    CTextString path(0);
    if (beyond < 0 || !AssignWhole(path, widePath) ||
        (texts.iconPath.IsEmpty() && !AssignWhole(texts.iconPath, texts.target)))
        return false;

    m_link.Swap(fresh);
    m_linkPath.Swap(path);
    m_linkTarget.Swap(texts.target);
    m_linkArgs.Swap(texts.arguments);
    m_linkIconPath.Swap(texts.iconPath);
    m_linkWorkDir.Swap(texts.workDir);
    m_linkIconIndex = texts.iconIndex;
    m_linkBeyondCodePage = beyond;
    return true;
}

void CLinkDropTarget::ReportLoadFailure()
{
    if (m_owner)
        m_owner->ShowMessage(LoadFailureText, "Load Failure", MessageOk);
}

SaveRefusal CLinkDropTarget::ProveEnhanced(const CTextString& target, const CTextString& workDir,
                                           const CTextString& args, const CChain<CTextString>& profiles,
                                           CTextString& line)
{
    CTextString composed = ComposeArguments(target, workDir, args, profiles);
    line.Swap(composed);
    if (!m_link.link || m_linkPath.IsEmpty() || line.IsEmpty())
        return SaveRefusal::Unmade;
    if (line.Length() > LongestLinkText)
        return SaveRefusal::TooLong;
    CChain<CTextString> tokens;
    CChain<CTextString> named;
    CTextString namedTarget(0);
    CTextString namedDir(0);
    CTextString namedArgs(0);
    if (!TakeApartArguments(line, tokens, named, namedTarget, namedDir, namedArgs))
        return SaveRefusal::Unmade;
    if (!namedTarget.Equals(target) || !namedDir.Equals(workDir) || !namedArgs.Equals(args) ||
        !SameChains(named, profiles) || BeyondCodePage(LinkTextIconLocation))
        return SaveRefusal::Unsupported;
    return SetLinkPath(m_link.link, target.Text()) == ShellOk ? SaveRefusal::None : SaveRefusal::TargetRefused;
}

bool CLinkDropTarget::SaveEnhanced(const CTextString& parentPath, const CTextString& line)
{
    const CTextString parentFolder = FolderOf(parentPath.Text(), true);
    if (!m_link.link || parentFolder.IsEmpty() || line.IsEmpty() ||
        SetLinkIconLocation(m_link.link, m_linkIconPath.Text(), m_linkIconIndex) != ShellOk)
        return false;
    return SaveChecked(parentPath, parentFolder, line);
}

bool CLinkDropTarget::SaveRestored(const CTextString& target, const CTextString& workDir, const CTextString& args)
{
    return SaveChecked(target, workDir, args);
}

// Sets the target, folder and arguments, and writes nothing unless every Set succeeded. The
// object must then hold what was set: a shell that changed a text on the way in would write
// something other than was meant. It goes to the temporary, which must read back as the
// object holds it, everything the saves do not set included, before it takes the shortcut's
// place. Whatever fails, the temporary goes and the shortcut stays.
bool CLinkDropTarget::SaveChecked(const CTextString& target, const CTextString& workDir, const CTextString& args)
{
    if (!m_link.link || SetLinkPath(m_link.link, target.Text()) != ShellOk ||
        SetLinkWorkingDirectory(m_link.link, workDir.Text()) != ShellOk ||
        SetLinkArguments(m_link.link, args.Text()) != ShellOk)
        return false;
    LinkTexts meant;
    CTextString temporary(0);
    if (m_linkPath.IsEmpty() || !ReadTexts(m_link.link, meant) ||
        meant.target.CompareNoCase(target.Text(), target.Length()) != 0 || !meant.workDir.Equals(workDir) ||
        !meant.arguments.Equals(args) || !TemporaryBeside(m_linkPath, temporary))
        return false;
    if (SaveLinkFile(m_link.file, temporary) == ShellOk && ReadsAsMeant(temporary, meant) &&
        ReplaceLinkFile(temporary, m_linkPath) == ShellOk)
        return true;
    (void)DeleteLinkFile(temporary);
    return false;
}
