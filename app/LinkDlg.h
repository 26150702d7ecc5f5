#pragma once
// CLinkDlg: the one dialog of the program, and the hub of its work.
//
// It holds the loaded shortcut's four values as the dialog sees them (m_target,
// m_targetDir, m_args, m_selected), the registry in memory (m_shortcuts) and whether the
// shortcut is enhanced. Its state is what the control switches left behind:
// there is no state variable. Every control is reached by id at each use.
//
// The members are implemented one concern to a file: LinkDlgStartup.cpp (start-up and
// shutdown), LinkDlgStates.cpp (control states), LinkDlgLists.cpp (the profile lists),
// LinkDlgAnalysis.cpp (what a loaded shortcut is), LinkDlgCommands.cpp (Save and
// Restore), LinkDlgRegistry.cpp (ShortcutList, QuoteChars.txt and the restore-all run),
// LinkDlgLook.cpp (paint, colours, tool tips, help).

#include <cstdint>

#include "app/DialogItems.h"
#include "platform/Dialog.h"
#include "shortcuts/LinkDropTarget.h"
#include "shortcuts/ShortcutList.h"
#include "text/Chain.h"
#include "text/TextString.h"

// The quote characters in force when "QuoteChars.txt" names none.
const char DefaultLeftArgQuote = '[';
const char DefaultRightArgQuote = ']';

class CLinkDlg : public CDialog {
public:
    CLinkDlg();
    ~CLinkDlg() override;

    // Start-up and shutdown.
    bool OnInitDialog() override;   // always true
    void OnCancel() override;       // every end of the dialog goes through here
    bool FindParent();              // Zelmar.exe beside the program; path left in m_parentPath
    bool LoadProfiles();            // the catalogue into m_selected and the combo box

    // The message map: commands by id, the posted message, paint, colours, tips.
    void OnCommand(int id) override;
    void OnAppMessage() override;   // OnShortcutLoaded()
    void OnPaint() override;
    IconHandle OnQueryDragIcon() override;
    BrushHandle OnCtlColor(CColourContext& context, int controlId, int kind) override;
    bool OnNeedText(int controlId, const char** text) override;
    void OnHelp();

    // Control states.
    void ResetControls();
    void ShowEditable();

    // The profile lists.
    void OnAdd();
    void OnRemove();
    void RefreshSelected();

    // What a loaded shortcut is. Analyse decides and fills the four values and m_isEnhanced,
    // showing nothing; OnShortcutLoaded shows the outcome.
    enum class LinkKind {
        Enhanced,       // points at Zelmardeck, with a target and a profile
        ParentItself,   // points at Zelmardeck without them
        ThisProgram,
        Plain,
        Unsupported,    // a text that a write would take holds characters beyond the code page
        NotTaken,       // its values could not be had whole
    };
    LinkKind Analyse();
    void OnShortcutLoaded();
    void RefreshIcon();
    void ShowUnsupported();

    // Save and Restore.
    void OnOK() override;   // saves; never ends the dialog
    void OnRestore();
    bool WriteRestored();   // the loaded shortcut written back; the dialog does not change

    // The registry, the quote characters and the restore-all run.
    void ReadQuoteChars();
    bool QuoteCharsKnown();
    void LoadList();
    bool AddEntry(const CTextString& path);      // true: listed on the disk now
    void RemoveEntry(const CTextString& path);
    bool ProcessCommandLine();   // false: the dialog is to end (a restore-all ran, or the line could not be read)
    void RunRestoreAll();

    // Fields, in the order they are built. Public so that tests can see what the
    // handlers left behind; nothing else touches them from outside.
    CDialogItems m_items;
    IconHandle m_hIcon;
    IconHandle m_hTargetIcon;   // owned
    CLinkDropTarget m_dropTarget;
    bool m_oleStarted;
    FontHandle m_statusFont;    // owned
    FontHandle m_nameFont;      // owned
    bool m_isEnhanced;
    bool m_listWhole;         // LoadList read every entry of ShortcutList (or found none to read)
    bool m_quoteCharsWhole;   // ReadQuoteChars read the file whole (or found none)
    CTextString m_parentPath;
    CTextString m_target;
    CTextString m_targetDir;
    CTextString m_args;
    CTextString m_tipText;
    char m_leftArgQuote;
    char m_rightArgQuote;
    CChain<CTextString> m_argTokens;
    CChain<CTextString> m_selected;
    CChain<CTextString> m_shortcuts;
};
