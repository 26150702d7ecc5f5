#pragma once
// The one fixture of the application's tests: a program folder in the test's folder with
// Zelmar.exe and three profiles (Alpha, Beta, Gamma), the module path pointed there, the
// dialog model with the controls of both templates, and the in-memory link store, all
// fresh. The model's log holds the link store's calls too, in order.

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "app/LinkDlg.h"
#include "app/Resource.h"
#include "platform/model/DialogModel.h"
#include "platform/model/ShellLinkModel.h"
#include "tests/files/FilesFixture.h"

using Lines = std::vector<std::string>;

// The control sets of the states, as States shows them.
const char Empty[] = "combo- add- list- remove- save- restore- label-";
const char Plain[] = "combo+ add+ list- remove- save- restore- label-";
const char Picking[] = "combo+ add+ list+ remove+ save+ restore- label-";
const char Enhanced[] = "combo+ add+ list+ remove+ save- restore+ label+";
const char Edited[] = "combo+ add+ list+ remove+ save+ restore+ label+";
const char EditedNone[] = "combo+ add+ list+ remove+ save- restore+ label+";

// "combo+ add- ...": each control on or off, the label shown or hidden; missing is off.
std::string States(CModelWindow& window);

class AppFixture : public FilesFixture {
protected:
    void SetUp() override;
    void TearDown() override;
    void ResetModels();   // the dialog model and the link store as SetUp leaves them

    // Files of the program folder, P in the test's folder, by name ("Profiles/x" natively); a
    // missing one reads "(none)".
    std::string ProgramPath(const std::string& relative) const { return Full("P\\" + relative); }
    static void WriteProgramFile(const std::string& relative, const std::string& bytes) { WriteFile("P/" + relative, bytes); }
    static std::string ReadProgramFile(const std::string& relative)
    {
        return std::filesystem::is_regular_file("P/" + relative) ? ReadFile("P/" + relative) : "(none)";
    }
    static void RemoveProgramFile(const std::string& relative) { std::filesystem::remove_all("P/" + relative); }

    // Runs the main dialog modally; the session plays the user once the start is done.
    int Run(CLinkDlg& dialog, std::function<void(CModelWindow&)> session = nullptr);
    // Drags the shortcut over the dialog and drops it, and the analysis runs. True when the
    // drag was accepted and the drop taken.
    bool Drop(CLinkDlg& dialog, const std::string& path);
    // The model's log; only the lines that begin with one of the prefixes, when given.
    Lines Log(const Lines& prefixes = {});

    std::string programFolder;   // the program folder's Windows path
};
