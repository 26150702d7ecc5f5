// The registry of modified shortcuts, the quote characters, and the restore-all run that
// puts every listed shortcut back when the command line asks for it.

#include "app/LinkDlg.h"

#include "files/Paths.h"
#include "platform/App.h"
#include "shortcuts/ArgumentLine.h"
#include "shortcuts/QuoteChars.h"
#include "shortcuts/ShortcutList.h"

namespace {

const char RestoreAllSwitch[] = "-RestoreAll";

}   // namespace

// A reading cut short starts again from the defaults the next time.
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
// again first, and without it whole nothing is written.
bool CLinkDlg::AddEntry(const CTextString& path)
{
    if (!m_listWhole)
        LoadList();
    return m_listWhole && ::AddEntry(m_shortcuts, ModuleFolder(nullptr), path);
}

void CLinkDlg::RemoveEntry(const CTextString& path)
{
    if (!m_listWhole)
        LoadList();
    if (m_listWhole)
        (void)::RemoveEntry(m_shortcuts, ModuleFolder(nullptr), path);
}

// The first token is the program's name, whatever it says. Every "-RestoreAll", in any
// case, starts a run; other tokens are passed over. A command line that could not be read
// whole might have lost the switch, and an uninstaller's run must never open the dialog:
// such a start ends at once and restores nothing.
bool CLinkDlg::ProcessCommandLine()
{
    bool stayOpen = true;
    CTextString line(0);
    CChain<CTextString> tokens;
    if (!AssignWhole(line, ProcessCommandLineText()) || !Tokenize(line, tokens))
        return false;
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

// The same steps a person takes, one shortcut after the other, without a word, the dialog
// left as it is. Afterwards the list names what may still be enhanced: a shortcut that could
// not be loaded though it is there, refused for characters beyond the code page, or not
// written back. When none is left both files go. Without the link object nothing can be
// loaded, and with a list not read whole or an entry not kept the files stay as they are, so
// that a later run can still restore them; one put back already is plain by then, and a
// later run passes it over.
void CLinkDlg::RunRestoreAll()
{
    if (!m_dropTarget.m_interfacesReady)
        return;
    CChain<CTextString> enhanced;
    bool whole = m_listWhole;
    for (CChainNode<CTextString>* node = m_shortcuts.Head(); node; node = node->next) {
        bool missing = false;
        bool plain;
        if (!m_dropTarget.LoadLink(*node->payload, &missing))
            plain = missing;
        else if (const LinkKind kind = Analyse(); kind == LinkKind::Enhanced)
            plain = WriteRestored();
        else
            plain = kind != LinkKind::Unsupported && kind != LinkKind::NotTaken;
        if (!plain && !InsertEntry(enhanced, *node->payload))
            whole = false;
    }
    if (!whole)
        return;
    const CTextString folder = ModuleFolder(nullptr);
    if (enhanced.IsEmpty())
        DeleteList(folder);
    else
        (void)SaveList(enhanced, folder);
}
