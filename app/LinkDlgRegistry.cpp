// The registry of modified shortcuts, the quote characters, and the restore-all run that
// puts every listed shortcut back when the command line asks for it.

#include "app/LinkDlg.h"

#include "files/Paths.h"
#include "platform/App.h"
#include "platform/Files.h"
#include "shortcuts/ArgumentLine.h"
#include "shortcuts/QuoteChars.h"
#include "shortcuts/ShortcutList.h"

namespace {

const char RestoreAllSwitch[] = "-RestoreAll";

}   // namespace

void CLinkDlg::ReadQuoteChars()
{
    ::ReadQuoteChars(ModuleFolder(nullptr), m_leftArgQuote, m_rightArgQuote);
}

void CLinkDlg::LoadList()
{
    ::LoadList(m_shortcuts, ModuleFolder(nullptr));
}

bool CLinkDlg::PrepareAdd(const CTextString& path, ListChange& change)
{
    return ::PrepareAdd(m_shortcuts, ModuleFolder(nullptr), path, change);
}

bool CLinkDlg::PrepareRemove(const CTextString& path, ListChange& change)
{
    return ::PrepareRemove(m_shortcuts, ModuleFolder(nullptr), path, change);
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
// files, so that a later run can still restore them.
void CLinkDlg::RunRestoreAll()
{
    if (!m_dropTarget.m_interfacesReady)
        return;
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

    const CTextString folder = ModuleFolder(nullptr);
    DeleteFileAt(ShortcutListPath(folder).Text());
    DeleteFileAt(ShortcutReportPath(folder).Text());
}
