// The registry of modified shortcuts, the quote characters, and the restore-all run that
// puts every listed shortcut back when the command line asks for it.

#include "app/LinkDlg.h"

#include "files/Paths.h"
#include "platform/App.h"
#include "platform/Files.h"
#include "shortcuts/ArgumentLine.h"
#include "shortcuts/QuoteChars.h"
#include "shortcuts/ShortcutList.h"
#include "text/Allocation.h"

namespace {

const char RestoreAllSwitch[] = "-RestoreAll";

}   // namespace

// A reading cut short by memory starts again from the defaults the next time.
void CLinkDlg::ReadQuoteChars()
{
    m_leftArgQuote = DefaultLeftArgQuote;
    m_rightArgQuote = DefaultRightArgQuote;
    m_quoteCharsWhole = ::ReadQuoteChars(ModuleFolder(nullptr), m_leftArgQuote, m_rightArgQuote);
}

// The quote characters as the file gives them; read again when the last reading was cut
// short. Quotes substituted or put back with others would not restore the arguments.
bool CLinkDlg::QuoteCharsKnown()
{
    if (!m_quoteCharsWhole)
        ReadQuoteChars();
    return m_quoteCharsWhole;
}

void CLinkDlg::LoadList()
{
    m_listWhole = ::LoadList(m_shortcuts, ModuleFolder(nullptr));
}

// A list read only in part would be written back without the entries it lacks: it is read
// again first, and without it whole nothing is prepared.
bool CLinkDlg::PrepareAdd(const CTextString& path, ListChange& change)
{
    if (!m_listWhole)
        LoadList();
    return m_listWhole && ::PrepareAdd(m_shortcuts, ModuleFolder(nullptr), path, change);
}

bool CLinkDlg::PrepareRemove(const CTextString& path, ListChange& change)
{
    if (!m_listWhole)
        LoadList();
    return m_listWhole && ::PrepareRemove(m_shortcuts, ModuleFolder(nullptr), path, change);
}

// The first token is the program's name, whatever it says. Every "-RestoreAll", in any
// case, starts a run; other tokens are passed over.
bool CLinkDlg::ProcessCommandLine()
{
    bool stayOpen = true;
    CChain<CTextString> tokens;
    Tokenize(CTextString(ProcessCommandLineText()), tokens);
    if (!tokens.IsEmpty())
        tokens.Remove(tokens.Head());
    for (CChainNode<CTextString>* node = tokens.Head(); node; node = node->next) {
        const CTextString& token = *node->payload;
        if (token.Length() == sizeof(RestoreAllSwitch) - 1 &&
            token.CompareNoCase(RestoreAllSwitch, token.Length()) == 0) {
            stayOpen = false;
            RunRestoreAll();
        }
    }
    return stayOpen;
}

// The same steps a person takes, one shortcut after the other, without a word. Without the
// link interfaces nothing can be loaded: the shortcuts stay as they are and so do the list
// files, so that a later run can still restore them. So too when the list was not read
// whole, or memory failed during the run, since a shortcut may then have been passed over;
// one put back already is plain by then, and a later run passes it over in turn.
void CLinkDlg::RunRestoreAll()
{
    if (!m_dropTarget.m_interfacesReady)
        return;
    const long failuresBefore = AllocationFailures();
    m_restoringAll = true;
    for (CChainNode<CTextString>* node = m_shortcuts.Head(); node; node = node->next) {
        m_dropTarget.m_linkPath.Assign(*node->payload);
        if (!m_dropTarget.LoadLink())
            continue;
        OnShortcutLoaded(0, 0);
        if (m_isEnhanced)
            OnRestore();
    }
    m_restoringAll = false;
    if (!m_listWhole || AllocationFailures() != failuresBefore)
        return;

    const CTextString folder = ModuleFolder(nullptr);
    DeleteFileAt(ShortcutListPath(folder).Text());
    DeleteFileAt(ShortcutReportPath(folder).Text());
}
