#pragma once
// Shared by the application's tests: a program folder of the test's own, with Zelmar.exe
// and a Profiles folder in it, the module path pointed there, the model reset, and the
// controls of the two dialog templates declared.

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "app/LinkDlg.h"
#include "app/Resource.h"
#include "platform/model/DialogModel.h"

// The controls of template 102 (main dialog) and 129 (help), as the templates have them:
// Save and Restore start disabled, the status label hidden. `leaveOut` drops controls.
std::vector<ModelControlSpec> MainTemplateControls(const std::vector<int>& leaveOut = {});
std::vector<ModelControlSpec> HelpTemplateControls(const std::vector<int>& leaveOut = {});

// The names in a chain, in chain order.
std::vector<std::string> Names(const CChain<CTextString>& chain);

class AppFixture : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // Windows path of a file in the program folder ("" for the folder itself).
    std::string ProgramPath(const std::string& relative = "") const;
    // Writes bytes to a file in the program folder, making its folders.
    void WriteProgramFile(const std::string& relative, const std::string& bytes) const;
    bool ProgramFileExists(const std::string& relative) const;
    void RemoveProgramFile(const std::string& relative) const;
    // A profile file in Profiles with this display name inside.
    void WriteProfile(const std::string& fileName, const std::string& displayName) const;

    // Runs the main dialog modally; the session plays the user once the start is done.
    int Run(CLinkDlg& dialog, std::function<void(CModelWindow&)> session = nullptr);

    std::string nativeFolder;   // the program folder as the C++ library names it
    std::string folder;         // the same as a Windows path, no trailing backslash
};
