#pragma once
// Resource ids shared by the dialog templates (Linkwright.rc) and the code.
// Plain #defines, because the resource compiler reads this file too.

#ifndef IDOK
#define IDOK 1
#endif
#ifndef IDCANCEL
#define IDCANCEL 2
#endif

#define IDD_LINKWRIGHT_DIALOG 102
#define IDR_MAINFRAME 128
#define IDD_HELP_DIALOG 129

#define IDC_HELP_BUTTON 1000
#define IDC_HELP_TEXT 1001
#define IDC_RESTORE 1002
#define IDC_PROFILE_COMBO 1004
#define IDC_ADD 1005
#define IDC_SELECTED_LIST 1008
#define IDC_REMOVE 1009
#define IDC_ENABLED_LABEL 1011
#define IDC_SHORTCUT_NAME 1012
