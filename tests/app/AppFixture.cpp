#include "AppFixture.h"

#include <algorithm>

#include "platform/Files.h"
#include "tests/chunks/ChunkBytes.h"

void AppFixture::SetUp()
{
    FilesFixture::SetUp();
    ResetModels();
    programFolder = Full("P");
    OverrideProgramPath(ProgramPath("Linkwright.exe").c_str());
    WriteProgramFile("Zelmar.exe", "MZ");
    for (const char* name : {"Gamma", "Alpha", "Beta"})
        WriteProgramFile("Profiles/" + std::string(name) + ".idprof", Profile(name));
}

void AppFixture::TearDown()
{
    OverrideProgramPath(nullptr);
    FilesFixture::TearDown();
}

void AppFixture::ResetModels()
{
    ResetDialogModel();
    ShellLinkModel::Reset();
    for (int id : {IDCANCEL, IDC_PROFILE_COMBO, IDC_ADD, IDC_SELECTED_LIST, IDC_REMOVE, IDC_HELP_BUTTON, IDOK,
                   IDC_RESTORE, IDC_ENABLED_LABEL, IDC_SHORTCUT_NAME})
        DialogModel().templates[IDD_LINKWRIGHT_DIALOG][id] = {id != IDOK && id != IDC_RESTORE,
                                                              id != IDC_ENABLED_LABEL, {}, {}, {}};
    DialogModel().templates[IDD_HELP_DIALOG] = {{IDOK, {}}, {IDC_HELP_TEXT, {}}};
}

int AppFixture::Run(CLinkDlg& dialog, std::function<void(CModelWindow&)> session)
{
    DialogModel().sessions[IDD_LINKWRIGHT_DIALOG] = session;
    return dialog.DoModal();
}

// A CF_HDROP block: the DROPFILES record (names at 20, wide), the name, and the zero unit
// that ends the list. The model delivers the message the drop posts at once.
bool AppFixture::Drop(CLinkDlg& dialog, const std::string& path)
{
    const std::string block = std::string("\x14\0\0\0", 4) + std::string(12, '\0') + std::string("\1\0\0\0", 4) +
                              ShellLinkModel::Wide(path) + std::string(3, '\0');
    const bool accepted = dialog.m_dropTarget.OnDragEnter(block.data(), block.size(), 0) == DropEffectCopy;
    return dialog.m_dropTarget.OnDrop(dialog.m_dropTarget.OnDragOver(0)) && accepted;
}

std::string States(CModelWindow& window)
{
    std::string states;
    for (auto [name, id] : {std::pair<const char*, int>{"combo", IDC_PROFILE_COMBO}, {"add", IDC_ADD},
                            {"list", IDC_SELECTED_LIST}, {"remove", IDC_REMOVE}, {"save", IDOK},
                            {"restore", IDC_RESTORE}})
        states += name + std::string(window.dialog->IsItemEnabled(id) ? "+ " : "- ");
    return states + (window.dialog->IsItemVisible(IDC_ENABLED_LABEL) ? "label+" : "label-");
}

Lines AppFixture::Log(const Lines& prefixes)
{
    Lines lines;
    for (const std::string& line : DialogModel().calls) {
        if (prefixes.empty() ||
            std::any_of(prefixes.begin(), prefixes.end(), [&](auto& p) { return line.rfind(p, 0) == 0; }))
            lines.push_back(line);
    }
    return lines;
}
