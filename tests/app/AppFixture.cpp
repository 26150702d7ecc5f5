#include "AppFixture.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

#include "chunks/EventProfile.h"
#include "platform/Files.h"

namespace fs = std::filesystem;

void AppFixture::SetUp()
{
    ResetModels();
    nativeFolder = (fs::temp_directory_path() / ("lw-app-" + std::to_string(std::random_device()()))).string();
    folder = "Z:" + nativeFolder;
    std::replace(folder.begin(), folder.end(), '/', '\\');
    OverrideProgramPath(ProgramPath("Linkwright.exe").c_str());
    WriteProgramFile("Zelmar.exe", "MZ");
    for (const char* name : {"Gamma", "Alpha", "Beta"})
        WriteProfile(name, name);
}

void AppFixture::TearDown()
{
    OverrideProgramPath(nullptr);
    RemoveProgramFile("");
}

void AppFixture::ResetModels()
{
    ResetDialogModel();
    ShellLinkModel::Reset();
    shellCallsSeen = 0;
    CDialogModel& model = DialogModel();
    for (int id : {IDCANCEL, IDC_PROFILE_COMBO, IDC_ADD, IDC_SELECTED_LIST, IDC_REMOVE, IDC_HELP_BUTTON, IDOK,
                   IDC_RESTORE, IDC_ENABLED_LABEL, IDC_SHORTCUT_NAME})
        model.templates[IDD_LINKWRIGHT_DIALOG][id] = {id != IDOK && id != IDC_RESTORE, id != IDC_ENABLED_LABEL, {}, {}, {}};
    model.templates[IDD_HELP_DIALOG] = {{IDOK, {}}, {IDC_HELP_TEXT, {}}};
    model.beforeCall = [this] { Log(); };
}

std::string AppFixture::NativePath(std::string relative) const
{
    std::replace(relative.begin(), relative.end(), '\\', '/');
    return nativeFolder + "/" + relative;
}

void AppFixture::WriteProgramFile(const std::string& relative, const std::string& bytes) const
{
    fs::create_directories(fs::path(NativePath(relative)).parent_path());
    std::ofstream(NativePath(relative), std::ios::binary) << bytes;
}

std::string AppFixture::ReadProgramFile(const std::string& relative) const
{
    std::ifstream in(NativePath(relative), std::ios::binary);
    return in ? std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()) : "(none)";
}

void AppFixture::RemoveProgramFile(const std::string& relative) const
{
    std::error_code ignored;
    fs::remove_all(NativePath(relative), ignored);
}

void AppFixture::WriteProfile(const std::string& fileName, const std::string& displayName) const
{
    CTextString bytes(0);
    CEventProfile profile;
    ASSERT_TRUE(profile.BeginMemory(bytes) && profile.OpenGroup(CEventProfile::TypeGroupId) &&
                profile.WriteLeaf(CTextString("EventProfile")) && profile.CloseGroup() &&
                profile.OpenGroup(CEventProfile::NameGroupId) && profile.WriteLeaf(CTextString(displayName.c_str())) &&
                profile.Close());
    WriteProgramFile("Profiles\\" + fileName + ".idprof", std::string(bytes.Text(), static_cast<std::size_t>(bytes.Length())));
}

int AppFixture::Run(CLinkDlg& dialog, std::function<void(CModelWindow&)> session)
{
    DialogModel().sessions[IDD_LINKWRIGHT_DIALOG] = session;
    return dialog.DoModal();
}

// A CF_HDROP block: the DROPFILES record (names at 20, wide), the name, and the zero unit
// that ends the list.
bool AppFixture::Drop(CLinkDlg& dialog, const std::string& path)
{
    const std::string block = std::string("\x14\0\0\0", 4) + std::string(12, '\0') + std::string("\1\0\0\0", 4) +
                              ShellLinkModel::Wide(path) + std::string(3, '\0');
    CLinkDropTarget& target = dialog.m_dropTarget;
    const bool accepted = target.OnDragEnter(block.data(), block.size(), 0) == DropEffectCopy;
    const bool taken = target.OnDrop(target.OnDragOver(0));
    DialogModel().PumpMessages();
    return accepted && taken;
}

bool AppFixture::Add(CModelWindow& window, int entry)
{
    return window.Select(IDC_PROFILE_COMBO, {entry}) && window.Press(IDC_ADD);
}

std::string AppFixture::States(CModelWindow& window)
{
    const char* names[] = {"combo", "add", "list", "remove", "save", "restore"};
    std::string states;
    int i = 0;
    for (int id : {IDC_PROFILE_COMBO, IDC_ADD, IDC_SELECTED_LIST, IDC_REMOVE, IDOK, IDC_RESTORE})
        states += names[i++] + std::string(window.dialog->IsItemEnabled(id) ? "+ " : "- ");
    return states + (window.dialog->IsItemVisible(IDC_ENABLED_LABEL) ? "label+" : "label-");
}

Lines AppFixture::Log(const Lines& prefixes)
{
    const Lines shell = ShellLinkModel::Calls();
    for (shellCallsSeen = std::min(shellCallsSeen, shell.size()); shellCallsSeen < shell.size(); ++shellCallsSeen)
        DialogModel().calls.push_back(shell[shellCallsSeen]);
    Lines lines;
    for (const std::string& line : DialogModel().calls) {
        if (prefixes.empty() || std::any_of(prefixes.begin(), prefixes.end(),
                                            [&](const std::string& p) { return line.rfind(p, 0) == 0; }))
            lines.push_back(line);
    }
    return lines;
}
