#include "AppFixture.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>

#include "chunks/EventProfile.h"
#include "platform/Files.h"

namespace fs = std::filesystem;

namespace {

std::vector<ModelControlSpec> Without(std::vector<ModelControlSpec> controls, const std::vector<int>& leaveOut)
{
    controls.erase(std::remove_if(controls.begin(), controls.end(),
                                  [&](const ModelControlSpec& c) {
                                      return std::find(leaveOut.begin(), leaveOut.end(), c.id) != leaveOut.end();
                                  }),
                   controls.end());
    return controls;
}

// A native path as a Windows path: natively the root "/" is the drive Z:.
std::string WindowsPath(std::string path)
{
    if (!path.empty() && path[0] == '/')
        path = "Z:" + path;
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

std::string NativeRelative(std::string relative)
{
    std::replace(relative.begin(), relative.end(), '\\', '/');
    return relative;
}

}   // namespace

std::vector<ModelControlSpec> MainTemplateControls(const std::vector<int>& leaveOut)
{
    return Without({{IDCANCEL, ModelButton},
                    {IDC_PROFILE_COMBO, ModelCombo},
                    {IDC_ADD, ModelButton},
                    {IDC_SELECTED_LIST, ModelListView},
                    {IDC_REMOVE, ModelButton},
                    {IDC_HELP_BUTTON, ModelButton},
                    {IDOK, ModelButton, false, true},
                    {IDC_RESTORE, ModelButton, false, true},
                    {IDC_ENABLED_LABEL, ModelStatic, true, false},
                    {IDC_SHORTCUT_NAME, ModelStatic}},
                   leaveOut);
}

std::vector<ModelControlSpec> HelpTemplateControls(const std::vector<int>& leaveOut)
{
    return Without({{IDOK, ModelButton}, {IDC_HELP_TEXT, ModelEdit}}, leaveOut);
}

std::vector<std::string> Names(const CChain<CTextString>& chain)
{
    std::vector<std::string> names;
    for (CChainNode<CTextString>* node = chain.Head(); node; node = node->next)
        names.push_back(node->payload->Text());
    return names;
}

void AppFixture::SetUp()
{
    ResetDialogModel();
    DialogModel().templates[IDD_LINKWRIGHT_DIALOG] = MainTemplateControls();
    DialogModel().templates[IDD_HELP_DIALOG] = HelpTemplateControls();

    std::random_device random;
    fs::path made = fs::temp_directory_path() / ("lw-app-" + std::to_string(random()));
    fs::create_directories(made / "Profiles");
    nativeFolder = made.string();
    folder = WindowsPath(nativeFolder);
    OverrideProgramPath(ProgramPath("Linkwright.exe").c_str());
    WriteProgramFile("Zelmar.exe", "MZ");
}

void AppFixture::TearDown()
{
    OverrideProgramPath(nullptr);
    std::error_code ignored;
    fs::permissions(nativeFolder, fs::perms::owner_all, fs::perm_options::add, ignored);
    fs::remove_all(nativeFolder, ignored);
}

std::string AppFixture::ProgramPath(const std::string& relative) const
{
    return relative.empty() ? folder : folder + "\\" + relative;
}

void AppFixture::WriteProgramFile(const std::string& relative, const std::string& bytes) const
{
    fs::path path = fs::path(nativeFolder) / NativeRelative(relative);
    fs::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

void AppFixture::WriteProfile(const std::string& fileName, const std::string& displayName) const
{
    CTextString bytes(0);
    CEventProfile profile;
    ASSERT_TRUE(profile.BeginMemory(bytes));
    ASSERT_TRUE(profile.OpenGroup(CEventProfile::TypeGroupId));
    ASSERT_TRUE(profile.WriteLeaf(CTextString("EventProfile")));
    ASSERT_TRUE(profile.CloseGroup());
    ASSERT_TRUE(profile.OpenGroup(CEventProfile::NameGroupId));
    ASSERT_TRUE(profile.WriteLeaf(CTextString(displayName.c_str())));
    ASSERT_TRUE(profile.Close());
    WriteProgramFile("Profiles\\" + fileName, std::string(bytes.Text(), static_cast<std::size_t>(bytes.Length())));
}

bool AppFixture::ProgramFileExists(const std::string& relative) const
{
    return fs::exists(fs::path(nativeFolder) / NativeRelative(relative));
}

void AppFixture::RemoveProgramFile(const std::string& relative) const
{
    std::error_code ignored;
    fs::remove_all(fs::path(nativeFolder) / NativeRelative(relative), ignored);
}

int AppFixture::Run(CLinkDlg& dialog, std::function<void(CModelWindow&)> session)
{
    DialogModel().sessions[IDD_LINKWRIGHT_DIALOG] = session;
    return dialog.DoModal();
}
